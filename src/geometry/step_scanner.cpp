#include "geometry/step_scanner.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace quintara {
namespace {

constexpr std::string_view kEndMark = "END-ISO-10303-21";

bool IsBlank(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

bool IsPlain(char character) {
  return (character > ' ' && character < '\x7F') || IsBlank(character);
}

}  // namespace

std::string StepScanner::Fault() {
  while (!ended_ && at_ < text_.size()) {
    if (ScanStatement()) continue;
    if (at_ >= text_.size()) break;
    return "is damaged in the statement " + At(statement_);
  }
  return ended_ ? EntityFault() : "is cut off: its end mark is missing";
}

// False where the text is broken; also where it ends before the statement does.
bool StepScanner::ScanStatement() {
  if (!SkipBlanks()) return false;
  statement_ = at_;
  depth_ = 0;
  ended_ = text_.substr(at_).starts_with(kEndMark);
  if (text_[at_] == '#' && !ScanEntity()) return false;
  while (at_ < text_.size() && text_[at_] != ';') {
    if (!ScanToken()) return false;
  }
  if (at_ >= text_.size() || depth_ != 0) return false;
  ++at_;
  return true;
}

bool StepScanner::ScanToken() {
  const char character = text_[at_++];
  switch (character) {
    case '(': ++depth_; return true;
    case ')': return --depth_ >= 0;
    case '\'': return SkipPast("'");
    case '"': return SkipPast("\"");
    case '/': return at_ < text_.size() && text_[at_] == '*' && SkipPast("*/");
    case '#': {
      std::uint64_t number = 0;
      const auto rest = text_.substr(at_);
      const auto read = std::from_chars(rest.data(), rest.data() + rest.size(), number);
      if (read.ec == std::errc()) used_.push_back(number);
      return true;
    }
    default: return IsPlain(character);
  }
}

bool StepScanner::SkipPast(std::string_view mark) {
  const auto found = text_.find(mark, at_);
  at_ = found == std::string_view::npos ? text_.size() : found + mark.size();
  return found != std::string_view::npos;
}

bool StepScanner::SkipBlanks() {
  while (at_ < text_.size()) {
    if (IsBlank(text_[at_])) {
      ++at_;
    } else if (!text_.substr(at_).starts_with("/*") || !SkipPast("*/")) {
      return true;
    }
  }
  return false;
}

// The number of an entity and what stands behind it.
bool StepScanner::ScanEntity() {
  std::uint64_t number = 0;
  const auto rest = text_.substr(at_ + 1);
  const auto read = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  if (read.ec != std::errc()) return true;
  at_ += 1 + static_cast<std::size_t>(read.ptr - rest.data());
  defined_.push_back(number);
  return SkipBlanks() && text_[at_] == '=';
}

std::string StepScanner::EntityFault() {
  std::ranges::sort(defined_);
  std::ranges::sort(used_);
  used_.erase(std::ranges::unique(used_).begin(), used_.end());
  const auto twice = std::ranges::adjacent_find(defined_);
  if (twice != defined_.end()) return "is damaged: it has two entities #" + std::to_string(*twice);
  std::vector<std::uint64_t> missing;
  std::ranges::set_difference(used_, defined_, std::back_inserter(missing));
  if (missing.empty()) return {};
  return "is damaged: it refers to #" + std::to_string(missing.front()) + ", which it does not have";
}

std::string StepScanner::At(std::size_t place) const {
  const auto line = std::ranges::count(text_.substr(0, place), '\n') + 1;
  return "that begins in line " + std::to_string(line);
}

}  // namespace quintara
