#include "base/numbers.h"

#include <cmath>
#include <system_error>

#include "base/failure.h"

namespace quintara {
namespace {

constexpr std::size_t kLongestQuote = 40;

// Cut between characters, never inside one.
std::string Quote(std::string_view text) {
  if (text.size() <= kLongestQuote) return "\"" + std::string(text) + "\"";
  std::size_t length = kLongestQuote;
  while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) --length;
  return "\"" + std::string(text.substr(0, length)) + "...\"";
}

[[noreturn]] void ThrowNoNumber(std::string_view text) {
  throw Failure(failure::kTypeMismatch, "Type mismatch: " + Quote(text) + " is not a number");
}

}  // namespace

NumberText::NumberText(double value) : length_(0) {
  if (!std::isfinite(value)) throw Failure(failure::kInvalidCall, "A number is not finite");
  const auto end = std::to_chars(text_.data(), text_.data() + text_.size() - 1, value).ptr;
  length_ = static_cast<std::size_t>(end - text_.data());
  text_[length_] = '\0';
}

std::string ToText(double value) {
  return std::string(NumberText(value).View());
}

std::string ToText(long long value) {
  return std::to_string(value);
}

std::optional<double> TryToDouble(std::string_view text) noexcept {
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, value);
  if (read.ec != std::errc{} || read.ptr != end || !std::isfinite(value)) return {};
  return value;
}

double ToDouble(std::string_view text) {
  const auto value = TryToDouble(text);
  if (!value) ThrowNoNumber(text);
  return *value;
}

}  // namespace quintara
