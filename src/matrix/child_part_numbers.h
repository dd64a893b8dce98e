#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/failure.h"

namespace quintara {

/// The part numbers of a flat product's children as they stood at the start, one for each child.
/// Comparisons are exact.
class ChildPartNumbers {
 public:
  void Add(const std::string& partNumber) { ++counts_[partNumber]; }

  int CountOf(std::string_view partNumber) const {
    const auto found = counts_.find(partNumber);
    return found == counts_.end() ? 0 : found->second;
  }

  /// Failure 9 for a list without entries: an empty array has no bounds.
  bool Contains(std::string_view partNumber) const {
    if (counts_.empty()) throw Failure(failure::kSubscriptOutOfRange);
    return CountOf(partNumber) > 0;
  }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
  };

  std::unordered_map<std::string, int, Hash, std::equal_to<>> counts_;
};

}  // namespace quintara
