#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quintara {

/// The decimal text of one number, kept without the heap.
class NumberText {
 public:
  /// The shortest text that reads back to the same double, "." as separator, the sign of a zero
  /// kept. Failure 5 for what is not finite: no reader would take it.
  explicit NumberText(double value);

  const char* c_str() const noexcept { return text_.data(); }
  std::string_view View() const noexcept { return {text_.data(), length_}; }

 private:
  std::array<char, 32> text_;
  std::size_t length_;
};

std::string ToText(double value);
std::string ToText(long long value);

/// Reads the whole of `text` as a finite decimal number. Anything else, blanks, a decimal comma,
/// "nan" and what is too large or too small for a double included, is failure 13, whose
/// description names the text.
double ToDouble(std::string_view text);
/// The same, with nothing in place of the failure.
std::optional<double> TryToDouble(std::string_view text) noexcept;

}  // namespace quintara
