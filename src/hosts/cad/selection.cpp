#include "hosts/cad/selection.h"

#include <string>

#include "hosts/cad/occurrence.h"
#include "hosts/cad/session.h"

namespace quintara::cad {
namespace {

// The product whose children `object` stands for: itself, or the owner of the collection.
std::shared_ptr<Occurrence> TargetOf(const Ref<AnyObject>& object, const Session& session) {
  if (!object) throw Failure(failure::kObjectNotSet, "A product or its children are needed, nothing was given");
  auto product = std::dynamic_pointer_cast<zorva::Product>(object.Shared());
  if (const auto children = std::dynamic_pointer_cast<ChildrenObject>(object.Shared())) product = children->TheOwner();
  if (product) return OccurrenceOf(Ref<zorva::Product>(std::move(product)), session);
  throw Failure(failure::kTypeMismatch, "Type mismatch: only products of this host and their children can be selected");
}

}  // namespace

int SelectionObject::Count() {
  Pass<"Count">();
  return static_cast<int>(entries_.size());
}

Ref<zorva::SelectedElement> SelectionObject::Item(int index) {
  Pass<"Item">([&] { return std::to_string(index); });
  if (index < 1 || std::cmp_greater(index, entries_.size())) {
    throw Failure(failure::kSubscriptOutOfRange, "Subscript out of range: " + std::to_string(index) + " of the " +
                                                     std::to_string(entries_.size()) + " selected objects");
  }
  return MakeRef<SelectedElementObject>(life_, shared_from_this(), entries_[static_cast<std::size_t>(index) - 1]);
}

void SelectionObject::Add(const Ref<AnyObject>& object) {
  Pass<"Add">();
  TargetOf(object, *life_->TheSession());
  entries_.push_back(object);
}

void SelectionObject::Clear() {
  Pass<"Clear">();
  entries_.clear();
}

void SelectionObject::Copy() {
  Pass<"Copy">();
  if (entries_.empty()) throw Failure(failure::kInvalidCall, "Nothing is selected that could be copied");
  const auto session = life_->TheSession();
  std::vector<std::shared_ptr<Occurrence>> sources;
  for (const auto& entry : entries_) {
    const auto product = std::dynamic_pointer_cast<zorva::Product>(entry.Shared());
    if (!product) throw Failure(failure::kInvalidCall, "Only products can be copied");
    sources.push_back(OccurrenceOf(Ref<zorva::Product>(product), *session));
  }
  session->Copy(sources);
}

void SelectionObject::Paste() {
  Pass<"Paste">();
  if (entries_.size() != 1) {
    throw Failure(failure::kInvalidCall,
                  "One object must be selected to paste into, not " + std::to_string(entries_.size()));
  }
  const auto session = life_->TheSession();
  session->Paste(*TargetOf(entries_.front(), *session));
}

Ref<AnyObject> SelectedElementObject::Value() {
  Pass<"Value">();
  return value_;
}

}  // namespace quintara::cad
