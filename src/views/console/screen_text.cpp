#include "views/console/screen_text.h"

#include "base/text.h"

namespace quintara {
namespace {

std::string Harmless(std::string_view text, bool keepLineBreaks) {
  std::string harmless;
  harmless.reserve(text.size());
  for (auto rest = text; !rest.empty();) {
    const auto character = TakeCharacter(rest);
    const bool isKept = !IsControlCharacter(character) || (keepLineBreaks && character.code == '\n');
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
  for (auto rest = text; !rest.empty();) width += ScreenColumns(TakeCharacter(rest));
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
    width += ScreenColumns(character);
    if (width > columns) break;
    cut += character.bytes;
  }
  return cut;
}

}  // namespace quintara
