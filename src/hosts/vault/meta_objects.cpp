#include "hosts/vault/meta_objects.h"

#include <utility>

#include "base/arrays.h"
#include "base/failure.h"

namespace quintara::vault {

AttributeObject::AttributeObject(std::shared_ptr<Core> core, const ClassInfo& info, const AttributeInfo& attribute)
    : Served(std::move(core)), class_(&info), attribute_(&attribute) {}

std::string AttributeObject::Name() {
  Pass<"Name">();
  return attribute_->name;
}

AttributesObject::AttributesObject(std::shared_ptr<Core> core, const ClassInfo& info, bool keysOnly)
    : Served(std::move(core)), class_(&info) {
  for (const auto& attribute : info.attributes) {
    if (!keysOnly || attribute.isKey) attributes_.push_back(&attribute);
  }
}

int AttributesObject::Count() {
  Pass<"Count">();
  return static_cast<int>(attributes_.size());
}

Ref<veldora::VdAttribute> AttributesObject::Item(const Variant& index) {
  Pass<"Item">([&] { return index.ToText(); });
  return MakeRef<AttributeObject>(core_, *class_, *ElementAt(attributes_, index.ToInteger32()));
}

Ref<veldora::VdAttribute> AttributesObject::Found(const std::string& name) const {
  for (const auto* attribute : attributes_) {
    if (attribute->name == name) return MakeRef<AttributeObject>(core_, *class_, *attribute);
  }
  return nullptr;
}

Ref<veldora::VdAttribute> AttributesObject::ItemByName(const std::string& name) {
  Pass<"ItemByName">([&] { return name; });
  if (const auto found = Found(name)) return found;
  throw Failure(failure::kInvalidCall, "The class \"" + class_->name + "\" has no attribute \"" + name + "\"");
}

Ref<veldora::VdAttribute> AttributesObject::Find(const std::string& name) {
  Pass<"Find">([&] { return name; });
  return Found(name);
}

ClassObject::ClassObject(std::shared_ptr<Core> core, const ClassInfo& info) : Served(std::move(core)), class_(&info) {}

std::int16_t ClassObject::ClassId() {
  Pass<"ClassId">();
  return class_->id;
}

std::int16_t ClassObject::QueryClassId() {
  Pass<"QueryClassId">();
  return class_->id;
}

std::string ClassObject::ClassName() {
  Pass<"ClassName">();
  return class_->name;
}

Ref<veldora::VdAttributes> ClassObject::Attributes() {
  Pass<"Attributes">();
  return MakeRef<AttributesObject>(core_, *class_, false);
}

Ref<veldora::VdAttributes> ClassObject::KeyAttributes() {
  Pass<"KeyAttributes">();
  return MakeRef<AttributesObject>(core_, *class_, true);
}

Ref<veldora::VdClass> ClassesObject::Find(const std::string& name) {
  Pass<"Find">([&] { return name; });
  const auto* info = core_->TheSchema().FindClass(name);
  return info == nullptr ? Ref<veldora::VdClass>() : MakeRef<ClassObject>(core_, *info);
}

OperationObject::OperationObject(std::shared_ptr<Core> core, std::int32_t id) : Served(std::move(core)), id_(id) {}

std::int32_t OperationObject::OperationId() {
  Pass<"OperationId">();
  return id_;
}

Ref<veldora::VdOperation> OperationsObject::Find(const std::string& name) {
  Pass<"Find">([&] { return name; });
  return MakeRef<OperationObject>(core_, core_->TheSchema().OperationByName(name));
}

Ref<veldora::VdClass> MetaInfoObject::ClassByName(const std::string& name) {
  Pass<"ClassByName">([&] { return name; });
  return MakeRef<ClassObject>(core_, core_->TheSchema().ClassByName(name));
}

Ref<veldora::VdClass> MetaInfoObject::ClassById(std::int16_t classId) {
  Pass<"ClassById">([&] { return std::to_string(classId); });
  return MakeRef<ClassObject>(core_, core_->TheSchema().ClassById(classId));
}

Ref<veldora::VdClass> MetaInfoObject::ClassByTable(const std::string& table) {
  Pass<"ClassByTable">([&] { return table; });
  const auto* info = core_->TheSchema().FindTable(table);
  return info == nullptr ? Ref<veldora::VdClass>() : MakeRef<ClassObject>(core_, *info);
}

Ref<veldora::VdClasses> MetaInfoObject::Classes() {
  Pass<"Classes">();
  return MakeRef<ClassesObject>(core_);
}

Ref<veldora::VdOperation> MetaInfoObject::OperationByName(const std::string& name) {
  Pass<"OperationByName">([&] { return name; });
  return MakeRef<OperationObject>(core_, core_->TheSchema().OperationByName(name));
}

Ref<veldora::VdOperations> MetaInfoObject::Operations(int /*kind*/) {
  Pass<"Operations">();
  return MakeRef<OperationsObject>(core_);
}

}  // namespace quintara::vault
