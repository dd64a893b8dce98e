#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "hosts/cad/occurrence.h"
#include "hosts/cad/session.h"

namespace quintara::cad {

const Life& ChildrenObject::TheLife() const {
  return owner_.TheLife();
}

std::shared_ptr<Occurrence> ChildrenObject::TheOwner() const {
  return owner_.shared_from_this();
}

Ref<AnyObject> ChildrenObject::Owner() {
  return Ref<AnyObject>(TheOwner());
}

void ChildrenObject::RequireAlive() const {
  owner_.RequireAlive();
}

Definition& ChildrenObject::RequireChildren() const {
  owner_.RequireLoaded();
  return owner_.TheDefinition();
}

std::size_t ChildrenObject::RequireIndex(int index) const {
  const auto count = RequireChildren().Children().size();
  if (index < 1 || std::cmp_greater(index, count)) {
    throw Failure(failure::kSubscriptOutOfRange, "Subscript out of range: " + std::to_string(index) + " of the " +
                                                     std::to_string(count) + " children of " + owner_.Label());
  }
  return static_cast<std::size_t>(index) - 1;
}

int ChildrenObject::Count() {
  Pass<"Count">();
  return static_cast<int>(RequireChildren().Children().size());
}

Ref<zorva::Product> ChildrenObject::Item(int index) {
  Pass<"Item">([&] { return std::to_string(index); });
  return Ref<zorva::Product>(owner_.ChildAt(RequireIndex(index)));
}

void ChildrenObject::Remove(int index) {
  Pass<"Remove">([&] { return std::to_string(index); });
  owner_.TheDefinition().Remove(RequireIndex(index));
}

Ref<zorva::Product> ChildrenObject::ReplaceWithFile(const Ref<zorva::Product>& component, const std::string& fullPath,
                                                    bool allInstances) {
  Pass<"ReplaceWithFile">([&] { return fullPath; });
  auto& parent = RequireChildren();
  if (allInstances) throw Failure(failure::kInvalidCall, "All instances at once can't be replaced");
  const auto session = TheLife().TheSession();
  const auto old = OccurrenceOf(component, *session);
  if (!old->IsChildOf(owner_)) {
    throw Failure(failure::kInvalidCall, old->Label() + " is no direct child of " + owner_.Label());
  }
  const auto loaded = session->LoadInto(parent, {fullPath});
  const auto index = parent.IndexOf(*old->TheInstance());
  parent.Replace(index, loaded.front());
  return Ref<zorva::Product>(owner_.ChildAt(index));
}

void ChildrenObject::AddComponentsFromFiles(const std::vector<std::string>& fullPaths, const std::string& typeFilter) {
  Pass<"AddComponentsFromFiles">([&] {
    std::string text;
    for (const auto& path : fullPaths) text += (text.empty() ? "" : ", ") + path;
    return text;
  });
  auto& parent = RequireChildren();
  if (typeFilter != "All") throw Failure(failure::kInvalidCall, "There is no file filter \"" + typeFilter + "\"");
  const auto session = TheLife().TheSession();
  const auto loaded = session->LoadInto(parent, fullPaths);
  for (const auto& definition : loaded) {
    auto instance = std::make_unique<Instance>();
    instance->name = parent.FreeName(definition->BaseName());
    instance->definition = definition;
    parent.Append(std::move(instance));
  }
}

std::shared_ptr<AnyObject> ChildrenObject::Self() {
  return {TheOwner(), this};
}

const Life& PositionObject::TheLife() const {
  return owner_.TheLife();
}

Ref<AnyObject> PositionObject::Owner() {
  return Ref<AnyObject>(owner_.shared_from_this());
}

void PositionObject::RequireAlive() const {
  owner_.RequireAlive();
}

namespace {

void RequireTwelve(std::size_t count) {
  if (count == std::tuple_size_v<PositionMatrix>) return;
  throw Failure(failure::kInvalidCall, "A position has twelve numbers, the array has " + std::to_string(count));
}

}  // namespace

void PositionObject::GetComponents(std::span<double> components) {
  Pass<"GetComponents">();
  RequireTwelve(components.size());
  std::ranges::copy(owner_.Place(), components.begin());
}

void PositionObject::SetComponents(std::span<const double> components) {
  Pass<"SetComponents">();
  RequireTwelve(components.size());
  for (const double number : components) {
    if (!std::isfinite(number)) {
      throw Failure(failure::kInvalidCall,
                    "The position of " + owner_.Label() + " would hold a number that isn't finite");
    }
  }
  std::ranges::copy(components, owner_.Place().begin());
}

}  // namespace quintara::cad
