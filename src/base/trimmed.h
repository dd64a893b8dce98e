#pragma once

#include <string_view>

namespace quintara {

/// `text` without the characters of `blanks` at its ends: a piece of the same text.
constexpr std::string_view Trimmed(std::string_view text, std::string_view blanks = " \t\r\n") {
  const auto first = text.find_first_not_of(blanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace quintara
