#include "hosts/cad/definition.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <unordered_set>
#include <utility>

#include "base/text.h"
#include "hosts/cad/document.h"
#include "hosts/cad/occurrence.h"

namespace quintara::cad {

ContentDigest DigestOf(const std::string& bytes) {
  constexpr std::uint64_t kFirstFactor = 0x9E3779B97F4A7C15U;
  constexpr std::uint64_t kSecondFactor = 0xC2B2AE3D27D4EB4FU;
  constexpr int kTurn = 29;
  ContentDigest digest{bytes.size(), kSecondFactor, kFirstFactor};
  for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data() + at, std::min(sizeof word, bytes.size() - at));
    digest.first = std::rotl((digest.first ^ word) * kFirstFactor, kTurn);
    digest.second = (std::rotl(digest.second, kTurn) + word) * kSecondFactor;
    digest.second ^= digest.second >> kTurn;
  }
  return digest;
}

Definition::Definition(Kind kind, std::string number) : partNumber(std::move(number)), kind_(kind) {}

// A tree of any depth goes without recursion: what nobody else holds is emptied before it is dropped.
Definition::~Definition() {
  std::vector<std::shared_ptr<Definition>> pending;
  Release(pending);
  while (!pending.empty()) {
    const auto definition = std::move(pending.back());
    pending.pop_back();
    if (definition.use_count() == 1) definition->Release(pending);
  }
}

void Definition::Release(std::vector<std::shared_ptr<Definition>>& pending) {
  if (document) std::exchange(document, nullptr)->Detach();
  while (firstOccurrence_ != nullptr) firstOccurrence_->LeaveList();
  for (auto* const child : children_) pending.push_back(std::move(child->definition));
  children_.Clear();
}

Instance& Definition::Append(std::unique_ptr<Instance> instance) {
  instance->owner = this;
  instance->index = children_.size();
  if (names_) names_->Add(instance->name);
  return children_.Append(std::move(instance));
}

void Definition::Remove(std::size_t index) {
  const auto instance = children_.TakeOut(index);
  if (names_) names_->Remove(instance->name);
  ForgetOccurrences(*instance);
}

void Definition::Replace(std::size_t index, std::shared_ptr<Definition> definition) {
  auto& instance = *children_[index];
  const auto before = std::exchange(instance.definition, std::move(definition));
  instance.properties = {};
  ForgetOccurrences(instance);
}

void Definition::Adopt(Instance& child, const std::shared_ptr<Definition>& found) {
  found->properties.AddMissing(child.definition->properties);
  const auto missing = std::exchange(child.definition, found);
  for (auto* each = missing->firstOccurrence_; each != nullptr;) {
    auto* const next = each->next_;
    if (each->instance_ == &child) {
      each->LeaveList();
      each->JoinList(*found);
    }
    each = next;
  }
}

void Definition::ForgetOccurrences(const Instance& child) {
  for (auto* each = firstOccurrence_; each != nullptr; each = each->next_) each->Forget(child);
}

void Definition::Rename(Instance& instance, const std::string& name) {
  if (names_) {
    names_->Add(name);
    names_->Remove(instance.name);
  }
  instance.name = name;
}

std::size_t Definition::IndexOf(Instance& instance) const {
  auto& index = instance.index;
  if (index >= children_.size()) index = children_.size() - 1;
  while (children_[index] != &instance) --index;
  return index;
}

std::string Definition::FreeName(const std::string& base) {
  return Names().FirstFree(base);
}

std::string Definition::BaseName() const {
  return kind_ == Kind::kMissing ? FromPath(ToPath(path).stem()) : partNumber;
}

NameLedger& Definition::Names() {
  if (!names_) {
    auto names = std::make_unique<NameLedger>();
    for (const auto* const child : children_) names->Add(child->name);
    names_ = std::move(names);
  }
  return *names_;
}

bool Definition::Holds(const Definition& other) const {
  if (children_.empty()) return this == &other;
  std::unordered_set<const Definition*> seen{this};
  std::vector<const Definition*> pending{this};
  while (!pending.empty()) {
    const auto* const definition = pending.back();
    pending.pop_back();
    if (definition == &other) return true;
    for (const auto* const child : definition->children_) {
      if (seen.insert(child->definition.get()).second) pending.push_back(child->definition.get());
    }
  }
  return false;
}

}  // namespace quintara::cad
