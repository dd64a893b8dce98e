#include "matrix/matrix_index.h"

#include <cstddef>
#include <cstdint>
#include <limits>

#include "base/arrays.h"
#include "base/counter16.h"
#include "base/failure.h"

namespace quintara {
namespace {

constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();

XmlNode FirstElement(XmlNode node) {
  while (node && node.type() != pugi::node_element) node = node.next_sibling();
  return node;
}

}  // namespace

void MatrixIndex::Build() {
  if (isBuilt_) return;
  int parent = kNone;
  for (auto node = FirstElement(document_.first_child()); node; node = Next(node, parent)) {
    auto& entry = elements_.emplace_back();
    entry.node = node;
    entry.parent = parent;
    Counter16(elements_.size());
  }
  byFullName_ = NameTable(elements_.size());
  records_.resize(elements_.size());
  for (int element = 0; element < Size(); ++element) Read(element);
  FindChainStarts();
  isBuilt_ = true;
}

// The element behind `node` in document order; `parent` is that of `node` and becomes that of the
// result.
XmlNode MatrixIndex::Next(XmlNode node, int& parent) const {
  if (const auto child = FirstElement(node.first_child())) {
    parent = Size() - 1;
    return child;
  }
  for (;;) {
    if (const auto sibling = FirstElement(node.next_sibling())) return sibling;
    if (parent == kNone) return {};
    const auto& above = elements_[static_cast<std::size_t>(parent)];
    node = above.node;
    parent = above.parent;
  }
}

void MatrixIndex::Read(int element) {
  auto& entry = elements_[static_cast<std::size_t>(element)];
  auto& record = records_[static_cast<std::size_t>(element)];
  std::size_t count = 0;
  int fullNames = 0;
  for (auto attribute = entry.node.first_attribute(); attribute; attribute = attribute.next_attribute()) {
    ++count;
    const int field = FieldOf(attribute.name());
    const std::string_view value = attribute.value();
    if (!StoreField(record.element, field, value)) record.isConverted = false;
    if (field == kPartNumberField && entry.partNumberId == kNone) {
      entry.partNumberId = IdOf(value);
      byPartNumber_[static_cast<std::size_t>(entry.partNumberId)].push_back(element);
    } else if (field == kFullInstanceNameField) {
      // The first one counts in a search, the last one in the record: nearly always it's the same.
      record.chainStart = fullNames++ == 0 ? byFullName_.Enter(value, element) : kNone;
    }
  }
  if (count > kMost && firstOverlong_ == kNone) firstOverlong_ = element;
}

void MatrixIndex::FindChainStarts() {
  for (auto& record : records_) {
    if (record.chainStart == kNone) record.chainStart = FindByFullName(record.element.FullInstanceName);
  }
}

int MatrixIndex::IdOf(std::string_view partNumber) {
  const auto [at, isNew] = partNumberIds_.try_emplace(partNumber, static_cast<int>(partNumbers_.size()));
  if (isNew) {
    partNumbers_.push_back(partNumber);
    byPartNumber_.emplace_back();
  }
  return at->second;
}

const std::vector<int>& MatrixIndex::WithPartNumber(std::string_view partNumber) const {
  static const std::vector<int> kNoElements;
  const auto found = partNumberIds_.find(partNumber);
  return found == partNumberIds_.end() ? kNoElements : byPartNumber_[static_cast<std::size_t>(found->second)];
}

int MatrixIndex::FindByFullName(std::string_view fullName) const {
  if (elements_.empty()) throw Failure(failure::kObjectNotSet);
  const int found = byFullName_.Find(fullName);
  return found == NameTable::kNone ? Size() - 1 : found;
}

void MatrixIndex::CheckScanUpTo(int element) const {
  if (firstOverlong_ != kNone && firstOverlong_ <= element) throw Failure(failure::kOverflow);
}

std::string_view MatrixIndex::PartNumberOf(int partNumberId) const {
  return ElementAt(partNumbers_, partNumberId);
}

XmlNode MatrixIndex::Node(int element) const {
  return ElementAt(elements_, element).node;
}

int MatrixIndex::Parent(int element) const {
  return ElementAt(elements_, element).parent;
}

int MatrixIndex::PartNumberId(int element) const {
  return ElementAt(elements_, element).partNumberId;
}

MatrixIndex::Cover& MatrixIndex::CoverOf(int element) {
  return ElementAt(elements_, element).cover;
}

MatrixIndex::Record& MatrixIndex::RecordOf(int element) {
  return ElementAt(records_, element);
}

}  // namespace quintara
