#include "hosts/cad/parameters.h"

namespace quintara::cad {

const PropertyList* ParametersObject::Inherited() const {
  if (scope_ == Scope::kOwn || owner_->IsRoot() || owner_->Form() == ComponentForm::kUnloaded) return nullptr;
  return &owner_->TheDefinition().properties;
}

int ParametersObject::Count() {
  Pass<"Count">();
  const auto* const inherited = Inherited();
  return static_cast<int>(owner_->OwnProperties().All().size() + (inherited != nullptr ? inherited->All().size() : 0));
}

Ref<zorva::Parameter> ParametersObject::Item(const std::string& name) {
  Pass<"Item">([&] { return name; });
  auto property = owner_->OwnProperties().Find(name);
  if (!property && Inherited() != nullptr) property = Inherited()->Find(name);
  if (!property) throw Failure(failure::kInvalidCall, owner_->Label() + " has no parameter \"" + name + "\"");
  return MakeRef<ParameterObject>(owner_, std::move(property));
}

Ref<zorva::Parameter> ParametersObject::CreateString(const std::string& name, const std::string& value) {
  Pass<"CreateString">([&] { return name + ", " + value; });
  return MakeRef<ParameterObject>(owner_, owner_->OwnProperties().Create(name, value));
}

std::string ParameterObject::Name() {
  Pass<"Name">();
  return property_->name;
}

std::string ParameterObject::ValueAsString() {
  Pass<"ValueAsString">();
  return property_->value;
}

void ParameterObject::ValuateFromString(const std::string& value) {
  Pass<"ValuateFromString">([&] { return value; });
  property_->value = value;
}

}  // namespace quintara::cad
