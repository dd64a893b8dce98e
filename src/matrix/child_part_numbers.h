#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/failure.h"

namespace quintara {

/// The part numbers of a flat product's children as they stood at the start, one for each child.
/// Comparisons are exact. Equal part numbers share a kind, numbered from 0.
class ChildPartNumbers {
 public:
  void Add(const std::string& partNumber) {
    const int kind = KindOf(partNumber);
    ++kinds_[static_cast<std::size_t>(kind)].count;
    kindOfChild_.push_back(kind);
  }

  int CountOf(std::string_view partNumber) const {
    const auto found = byPartNumber_.find(partNumber);
    return found == byPartNumber_.end() ? 0 : kinds_[static_cast<std::size_t>(found->second)].count;
  }

  /// Failure 9 for a list without entries: an empty array has no bounds.
  bool Contains(std::string_view partNumber) const {
    if (kindOfChild_.empty()) throw Failure(failure::kSubscriptOutOfRange);
    return CountOf(partNumber) > 0;
  }

  /// The kind of `partNumber`, a new one if need be. `child`, from 0, is a child that had it at the
  /// start, or a guess: the answer is at hand then.
  int KindOf(const std::string& partNumber, std::size_t child) {
    if (child < kindOfChild_.size()) {
      const int kind = kindOfChild_[child];
      if (kinds_[static_cast<std::size_t>(kind)].partNumber == partNumber) return kind;
    }
    return KindOf(partNumber);
  }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
  };
  struct Kind {
    std::string partNumber;
    int count = 0;
  };

  int KindOf(const std::string& partNumber) {
    const auto [at, isNew] = byPartNumber_.try_emplace(partNumber, static_cast<int>(kinds_.size()));
    if (isNew) kinds_.push_back({partNumber, 0});
    return at->second;
  }

  std::vector<int> kindOfChild_;
  std::vector<Kind> kinds_;
  std::unordered_map<std::string, int, Hash, std::equal_to<>> byPartNumber_;
};

}  // namespace quintara
