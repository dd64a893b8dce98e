#include "hosts/cad/name_ledger.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace quintara::cad {
namespace {

// The number behind the last point of a name of the form "PLATE.12"; 0 if there is none.
int NumberIn(std::string_view digits) {
  int number = 0;
  const auto end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, number);
  const bool isPlain = !digits.empty() && digits.front() >= '1' && digits.front() <= '9';
  return isPlain && read.ec == std::errc{} && read.ptr == end ? number : 0;
}

}  // namespace

void NameLedger::Remove(const std::string& name) {
  const auto use = uses_.find(name);
  if (use == uses_.end() || --use->second > 0) return;
  uses_.erase(use);
  const auto point = name.rfind('.');
  if (point == name.npos || lowest_.empty()) return;
  const int number = NumberIn(std::string_view(name).substr(point + 1));
  const auto lowest = number == 0 ? lowest_.end() : lowest_.find(name.substr(0, point));
  if (lowest != lowest_.end()) lowest->second = std::min(lowest->second, number);
}

std::string NameLedger::FirstFree(const std::string& base) {
  int& number = lowest_.try_emplace(base, 1).first->second;
  auto name = base + "." + std::to_string(number);
  while (uses_.contains(name)) name = base + "." + std::to_string(++number);
  return name;
}

}  // namespace quintara::cad
