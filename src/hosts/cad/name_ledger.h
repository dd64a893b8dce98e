#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace quintara::cad {

/// The instance names in use under one parent. Names may stand twice.
class NameLedger {
 public:
  void Add(const std::string& name) { ++uses_[name]; }
  void Remove(const std::string& name);

  /// `base`, a point and the first number from 1 that is free. Asking again and again, with the
  /// name taken, renamed or removed in between, costs amortised constant time.
  std::string FirstFree(const std::string& base);

 private:
  std::unordered_map<std::string, int> uses_;
  // For each base asked for: all smaller numbers are in use.
  std::unordered_map<std::string, int> lowest_;
};

}  // namespace quintara::cad
