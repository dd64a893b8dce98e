#include "views/console/screen_text.h"

#include <utf8proc.h>

namespace quintara {
namespace {

struct Character {
  std::string_view bytes;
  utf8proc_int32_t code;  // negative for what is no UTF-8
};

Character TakeCharacter(std::string_view& rest) {
  utf8proc_int32_t code = -1;
  const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(rest.data()),
                                       static_cast<utf8proc_ssize_t>(rest.size()), &code);
  const Character character{rest.substr(0, length > 0 ? static_cast<std::size_t>(length) : 1), length > 0 ? code : -1};
  rest.remove_prefix(character.bytes.size());
  return character;
}

std::size_t WidthOf(const Character& character) {
  if (character.code < 0) return 1;
  const int width = utf8proc_charwidth(character.code);
  return width > 0 ? static_cast<std::size_t>(width) : 0;
}

bool IsControl(const Character& character) {
  return character.code < 0 || utf8proc_category(character.code) == UTF8PROC_CATEGORY_CC;
}

std::string Harmless(std::string_view text, bool keepLineBreaks) {
  std::string harmless;
  harmless.reserve(text.size());
  for (auto rest = text; !rest.empty();) {
    const auto character = TakeCharacter(rest);
    const bool isKept = !IsControl(character) || (keepLineBreaks && character.code == '\n');
    if (isKept) {
      harmless += character.bytes;
    } else if (!keepLineBreaks || character.code != '\r') {
      harmless += '?';
    }
  }
  return harmless;
}

}  // namespace

std::size_t ScreenWidth(std::string_view text) {
  std::size_t width = 0;
  for (auto rest = text; !rest.empty();) width += WidthOf(TakeCharacter(rest));
  return width;
}

std::string OneLine(std::string_view text) {
  return Harmless(text, false);
}

std::string Lines(std::string_view text) {
  return Harmless(text, true);
}

std::string CutToWidth(std::string_view text, std::size_t columns) {
  std::string cut;
  std::size_t width = 0;
  for (auto rest = text; !rest.empty();) {
    const auto character = TakeCharacter(rest);
    width += WidthOf(character);
    if (width > columns) break;
    cut += character.bytes;
  }
  return cut;
}

}  // namespace quintara
