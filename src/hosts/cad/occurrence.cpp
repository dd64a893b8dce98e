#include "hosts/cad/occurrence.h"

#include <utility>

#include "hosts/cad/document.h"
#include "hosts/cad/parameters.h"
#include "hosts/cad/session.h"

namespace quintara::cad {

Occurrence::Occurrence(std::shared_ptr<Life> life, Definition& root)
    : life_(std::move(life)), products_(*this), position_(*this) {
  JoinList(root);
}

Occurrence::Occurrence(Occurrence& parent, Instance& instance)
    : life_(parent.life_), parent_(&parent), instance_(&instance), products_(*this), position_(*this) {
  JoinList(*instance.definition);
}

// As with definitions, a tree of any depth goes without recursion.
Occurrence::~Occurrence() {
  LeaveList();
  std::vector<std::shared_ptr<Occurrence>> pending;
  GiveUpChildren(pending);
  while (!pending.empty()) {
    const auto child = std::move(pending.back());
    pending.pop_back();
    child->dead_ = true;
    if (child.use_count() == 1) child->GiveUpChildren(pending);
  }
}

void Occurrence::GiveUpChildren(std::vector<std::shared_ptr<Occurrence>>& pending) {
  for (auto& [instance, child] : children_) pending.push_back(std::move(child));
  children_.clear();
}

void Occurrence::JoinList(Definition& definition) {
  definition_ = listed_ = &definition;
  previous_ = nullptr;
  next_ = std::exchange(definition.firstOccurrence_, this);
  if (next_ != nullptr) next_->previous_ = this;
}

void Occurrence::LeaveList() noexcept {
  if (listed_ == nullptr) return;
  if (next_ != nullptr) next_->previous_ = previous_;
  (previous_ != nullptr ? previous_->next_ : listed_->firstOccurrence_) = next_;
  listed_ = nullptr;
  next_ = previous_ = nullptr;
}

void Occurrence::Forget(const Instance& child) {
  const auto forgotten = children_.extract(&child);
  if (!forgotten.empty()) forgotten.mapped()->Kill();
}

void Occurrence::Kill() {
  std::vector<Occurrence*> pending{this};
  while (!pending.empty()) {
    auto* const each = pending.back();
    pending.pop_back();
    each->dead_ = true;
    for (const auto& [instance, child] : each->children_) pending.push_back(child.get());
  }
}

void Occurrence::RequireAlive() const {
  life_->RequireOpen();
  if (dead_) throw Failure(failure::kInvalidCall, "A component of \"" + life_->name + "\" was removed or replaced");
}

ComponentForm Occurrence::Form() const noexcept {
  return definition_->TheKind() == Definition::Kind::kMissing ? ComponentForm::kUnloaded : form_;
}

void Occurrence::RequireLoaded() const {
  if (Form() == ComponentForm::kUnloaded) {
    throw Failure(failure::kInvalidCall, "The component " + Label() + " isn't loaded");
  }
}

void Occurrence::RequireDesign() const {
  RequireLoaded();
  if (form_ != ComponentForm::kDesign) {
    throw Failure(failure::kInvalidCall, "The component " + Label() + " isn't loaded in design form");
  }
}

const std::string& Occurrence::NameText() const noexcept {
  if (!IsRoot()) return instance_->name;
  return definition_->rootName ? *definition_->rootName : definition_->partNumber;
}

std::string Occurrence::Label() const {
  return "\"" + NameText() + "\"";
}

PositionMatrix& Occurrence::Place() const noexcept {
  return IsRoot() ? definition_->rootPosition : instance_->position;
}

PropertyList& Occurrence::OwnProperties() const noexcept {
  return IsRoot() ? definition_->properties : instance_->properties;
}

std::shared_ptr<Occurrence> Occurrence::ChildAt(std::size_t index) {
  auto& instance = *definition_->Children()[index];
  const auto known = children_.find(&instance);
  if (known != children_.end()) return known->second;
  return children_.emplace(&instance, std::make_shared<Occurrence>(*this, instance)).first->second;
}

std::string Occurrence::Name() {
  Pass<"Name">();
  return NameText();
}

void Occurrence::SetName(const std::string& name) {
  Pass<"Name=">([&] { return name; });
  if (name.empty()) throw Failure(failure::kInvalidCall, "The name of " + Label() + " can't be empty");
  if (IsRoot()) {
    definition_->rootName = name;
  } else {
    instance_->owner->Rename(*instance_, name);
  }
}

Ref<zorva::Products> Occurrence::Products() {
  Pass<"Products">();
  RequireLoaded();
  return Ref<zorva::Products>(std::shared_ptr<zorva::Products>(shared_from_this(), &products_));
}

std::string Occurrence::PartNumber() {
  Pass<"PartNumber">();
  RequireDesign();
  return definition_->partNumber;
}

void Occurrence::SetPartNumber(const std::string& partNumber) {
  Pass<"PartNumber=">([&] { return partNumber; });
  RequireDesign();
  if (partNumber.empty()) throw Failure(failure::kInvalidCall, "The part number of " + Label() + " can't be empty");
  definition_->partNumber = partNumber;
}

Ref<zorva::Position> Occurrence::Position() {
  Pass<"Position">();
  return Ref<zorva::Position>(std::shared_ptr<zorva::Position>(shared_from_this(), &position_));
}

Ref<zorva::Product> Occurrence::Reference() {
  Pass<"Reference">();
  RequireLoaded();
  if (IsRoot()) return Ref<zorva::Product>(shared_from_this());
  return Ref<zorva::Product>(life_->TheSession()->DocumentOf(*definition_)->Root());
}

Ref<zorva::Parameters> Occurrence::Parameters() {
  Pass<"Parameters">();
  return MakeRef<ParametersObject>(shared_from_this(), ParametersObject::Scope::kAll);
}

Ref<zorva::Parameters> Occurrence::UserProperties() {
  Pass<"UserProperties">();
  return MakeRef<ParametersObject>(shared_from_this(), ParametersObject::Scope::kOwn);
}

void Occurrence::ApplyUpdate() {
  Pass<"ApplyUpdate">();
}

void Occurrence::SetWorkMode(int mode) {
  Pass<"SetWorkMode">([&] { return std::to_string(mode); });
  constexpr int kDesign = 0;
  constexpr int kBack = 1;
  constexpr int kDesignToo = 2;
  RequireLoaded();
  if (mode != kDesign && mode != kBack && mode != kDesignToo) {
    throw Failure(failure::kInvalidCall, "There is no work mode " + std::to_string(mode));
  }
  form_ = mode == kBack ? ComponentForm::kWithoutDesign : ComponentForm::kDesign;
}

Ref<AnyObject> Occurrence::Owner() {
  if (IsRoot()) return Ref<AnyObject>(life_->document.lock());
  return Ref<AnyObject>(parent_->shared_from_this());
}

std::shared_ptr<Occurrence> OccurrenceOf(const Ref<zorva::Product>& product, const Session& session) {
  if (!product) throw Failure(failure::kObjectNotSet, "A product is needed, nothing was given");
  auto occurrence = std::dynamic_pointer_cast<Occurrence>(product.Shared());
  if (!occurrence || !occurrence->TheLife().IsOf(session)) {
    throw Failure(failure::kTypeMismatch, "Type mismatch: the product belongs to another host");
  }
  occurrence->RequireAlive();
  return occurrence;
}

}  // namespace quintara::cad
