#include "hosts/cad/step_text.h"

#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/text.h"

namespace quintara::cad {
namespace {

constexpr std::int32_t kReplacement = 0xFFFD;

void AppendCode(std::string& text, std::uint32_t code) {
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  const bool isCharacter = code != 0 && !isSurrogate && code <= 0x10FFFF;
  AppendCharacter(text, isCharacter ? static_cast<std::int32_t>(code) : kReplacement);
}

std::optional<std::uint32_t> Hexadecimal(std::string_view digits, std::size_t count) {
  if (digits.size() < count) return {};
  std::uint32_t value = 0;
  for (const char digit : digits.substr(0, count)) {
    const int place = digit >= '0' && digit <= '9'   ? digit - '0'
                      : digit >= 'A' && digit <= 'F' ? digit - 'A' + 10
                      : digit >= 'a' && digit <= 'f' ? digit - 'a' + 10
                                                     : -1;
    if (place < 0) return {};
    value = value << 4U | static_cast<std::uint32_t>(place);
  }
  return value;
}

/// Reads a string from front to back.
class Decoder {
 public:
  explicit Decoder(std::string_view raw) : rest_(raw) {}

  std::string Decode() {
    while (!rest_.empty()) {
      if (!TakeDoubled('\'') && !TakeDoubled('\\') && !TakeShifted() && !TakeByte() && !TakePage() &&
          !TakeRun("\\X2\\", 4) && !TakeRun("\\X4\\", 8)) {
        text_ += rest_.front();
        rest_.remove_prefix(1);
      }
    }
    return std::move(text_);
  }

 private:
  bool TakeDoubled(char character) {
    if (rest_.size() < 2 || rest_[0] != character || rest_[1] != character) return false;
    text_ += character;
    rest_.remove_prefix(2);
    return true;
  }

  // \S\c: the character of the upper half of the page; the page is Latin-1 unless it is switched,
  // and no exporter seen switches it.
  bool TakeShifted() {
    if (!rest_.starts_with("\\S\\") || rest_.size() < 4 || static_cast<unsigned char>(rest_[3]) >= 0x80) return false;
    AppendCode(text_, static_cast<unsigned char>(rest_[3]) + 0x80U);
    rest_.remove_prefix(4);
    return true;
  }

  bool TakeByte() {
    if (!rest_.starts_with("\\X\\")) return false;
    const auto character = Hexadecimal(rest_.substr(3), 2);
    if (!character) return false;
    AppendCode(text_, *character);
    rest_.remove_prefix(5);
    return true;
  }

  bool TakePage() {
    const bool isSwitch = rest_.size() >= 4 && rest_[0] == '\\' && rest_[1] == 'P' && rest_[2] >= 'A' &&
                          rest_[2] <= 'I' && rest_[3] == '\\';
    if (isSwitch) rest_.remove_prefix(4);
    return isSwitch;
  }

  // \X2\....\X0\ and \X4\........\X0\.
  bool TakeRun(std::string_view opening, std::size_t width) {
    constexpr std::string_view kClosing = "\\X0\\";
    if (!rest_.starts_with(opening)) return false;
    const auto end = rest_.find(kClosing, opening.size());
    if (end == rest_.npos) return false;
    std::string decoded;
    auto digits = rest_.substr(opening.size(), end - opening.size());
    for (; !digits.empty(); digits.remove_prefix(width)) {
      auto unit = Hexadecimal(digits, width);
      if (!unit) return false;
      const bool mayBePair = width == 4 && digits.size() >= 2 * width && *unit >= 0xD800 && *unit <= 0xDBFF;
      const auto low = mayBePair ? Hexadecimal(digits.substr(width), width).value_or(0) : 0;
      if (low >= 0xDC00 && low <= 0xDFFF) {
        unit = 0x10000 + ((*unit - 0xD800) << 10U) + (low - 0xDC00);
        digits.remove_prefix(width);
      }
      AppendCode(decoded, *unit);
    }
    text_ += decoded;
    rest_.remove_prefix(end + kClosing.size());
    return true;
  }

  std::string_view rest_;
  std::string text_;
};

}  // namespace

std::string DecodeStepText(std::string_view raw) {
  std::string line;
  for (const char character : raw) {
    if (character != '\r' && character != '\n') line += character;
  }
  if (!IsUtf8(line)) line = FromCodePage1252(line);
  return Decoder(line).Decode();
}

}  // namespace quintara::cad
