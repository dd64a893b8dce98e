#include "geometry/step_scanner.h"

#include <algorithm>
#include <iterator>

namespace quintara {
namespace {

bool IsPlain(char character) {
  return (character >= ' ' && character <= '~') || (character >= '\t' && character <= '\r');
}

}  // namespace

std::string StepScanner::Fault() {
  while (!ended_ && !rest_.empty()) {
    if (ScanStatement()) continue;
    if (rest_.empty()) break;
    return "is damaged in the statement " + At(statement_);
  }
  return ended_ ? EntityFault() : "is cut off: its end mark is missing";
}

// False where the text is broken; also where it ends before the statement does.
bool StepScanner::ScanStatement() {
  SkipStepBlanks(rest_);
  statement_ = text_.size() - rest_.size();
  depth_ = 0;
  ended_ = rest_.starts_with(kStepEnd);
  if (!ScanEntity()) return false;
  while (!rest_.empty() && rest_.front() != ';') {
    if (!ScanToken()) return false;
  }
  if (rest_.empty() || depth_ != 0) return false;
  rest_.remove_prefix(1);
  return true;
}

bool StepScanner::ScanToken() {
  const char character = rest_.front();
  if (character == '\'') return TakeStepText(rest_), true;
  if (rest_.starts_with("/*")) return SkipStepBlanks(rest_), true;
  if (const auto used = TakeStepReference(rest_)) return used_.push_back(*used), true;
  rest_.remove_prefix(1);
  switch (character) {
    case '(': ++depth_; return true;
    case ')': return --depth_ >= 0;
    case '"': return SkipBinary();
    case '/': return false;
    default: return IsPlain(character);
  }
}

// What stands behind the first quote of a binary value, with the second.
bool StepScanner::SkipBinary() {
  const auto end = rest_.find('"');
  rest_.remove_prefix(end == rest_.npos ? rest_.size() : end + 1);
  return true;
}

// The number of an entity, if one begins here, and what stands behind it.
bool StepScanner::ScanEntity() {
  const auto number = TakeStepReference(rest_);
  if (!number) return true;
  defined_.push_back(*number);
  SkipStepBlanks(rest_);
  return rest_.starts_with('=');
}

std::string StepScanner::EntityFault() {
  std::ranges::sort(defined_);
  std::ranges::sort(used_);
  used_.erase(std::ranges::unique(used_).begin(), used_.end());
  const auto twice = std::ranges::adjacent_find(defined_);
  if (twice != defined_.end()) return "is damaged: it has two entities #" + std::to_string(*twice);
  std::vector<StepId> missing;
  std::ranges::set_difference(used_, defined_, std::back_inserter(missing));
  if (missing.empty()) return {};
  return "is damaged: it refers to #" + std::to_string(missing.front()) + ", which it does not have";
}

std::string StepScanner::At(std::size_t place) const {
  const auto line = std::ranges::count(text_.substr(0, place), '\n') + 1;
  return "that begins in line " + std::to_string(line);
}

}  // namespace quintara
