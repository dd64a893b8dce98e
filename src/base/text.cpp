#include "base/text.h"

#include <utf8proc.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "base/failure.h"

namespace quintara {
namespace {

// Windows-1252 from 0x80 to 0x9F; everything else is Latin-1.
constexpr std::array<std::uint16_t, 32> kHighPage = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                     0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::size_t AsciiPrefix(std::string_view bytes) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::size_t at = 0;
  for (std::uint64_t word = 0; at + sizeof word <= bytes.size(); at += sizeof word) {
    std::memcpy(&word, bytes.data() + at, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80) ++at;
  return at;
}

std::int32_t Capital(std::int32_t character) {
  constexpr std::int32_t kSharpS = 0xDF;
  return character == kSharpS ? character : utf8proc_toupper(character);
}

std::vector<std::int32_t> FoldedCharacters(std::string_view text) {
  std::vector<std::int32_t> characters;
  for (auto rest = text; !rest.empty();) characters.push_back(Capital(TakeCharacter(rest).code));
  return characters;
}

char PageByte(std::int32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
  for (std::size_t i = 0; i < kHighPage.size(); ++i) {
    if (kHighPage[i] == character) return static_cast<char>(0x80 + i);
  }
  return '?';
}

}  // namespace

bool IsUtf8(std::string_view bytes) {
  for (auto rest = bytes.substr(AsciiPrefix(bytes)); !rest.empty(); rest.remove_prefix(AsciiPrefix(rest))) {
    if (TakeCharacter(rest).code < 0) return false;
  }
  return true;
}

Character TakeCharacter(std::string_view& rest) {
  utf8proc_int32_t code = -1;
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(rest.data());
  const auto length = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(rest.size()), &code);
  const auto taken = rest.substr(0, length > 0 ? static_cast<std::size_t>(length) : 1);
  rest.remove_prefix(taken.size());
  return {taken, length > 0 ? code : -1};
}

void AppendCharacter(std::string& text, std::int32_t code) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const auto length = utf8proc_encode_char(code, bytes.data());
  text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
}

std::size_t ScreenColumns(const Character& character) {
  if (character.code < 0) return 1;
  const int width = utf8proc_charwidth(character.code);
  return width > 0 ? static_cast<std::size_t>(width) : 0;
}

bool IsControlCharacter(const Character& character) {
  return character.code < 0 || utf8proc_category(character.code) == UTF8PROC_CATEGORY_CC;
}

std::string Capitals(std::string_view text) {
  std::string capitals;
  capitals.reserve(text.size());
  for (auto rest = text; !rest.empty();) {
    const auto character = TakeCharacter(rest).code;
    if (character < 0) throw Failure(failure::kInvalidCall, "A text is not valid UTF-8");
    AppendCharacter(capitals, Capital(character));
  }
  return capitals;
}

bool MatchesPattern(std::string_view pattern, std::string_view text) {
  const auto wanted = FoldedCharacters(pattern);
  const auto given = FoldedCharacters(text);
  std::size_t at = 0;
  std::size_t in = 0;
  std::size_t star = wanted.size();
  std::size_t retry = 0;
  while (in < given.size()) {
    if (at < wanted.size() && wanted[at] == '*') {
      star = at++;
      retry = in;
    } else if (at < wanted.size() && (wanted[at] == '?' || wanted[at] == given[in])) {
      ++at;
      ++in;
    } else if (star != wanted.size()) {
      at = star + 1;
      in = ++retry;
    } else {
      return false;
    }
  }
  while (at < wanted.size() && wanted[at] == '*') ++at;
  return at == wanted.size();
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  for (auto end = text.find(separator); end != text.npos; end = text.find(separator)) {
    pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  pieces.emplace_back(text);
  return pieces;
}

std::filesystem::path ToPath(std::string_view utf8) {
  return {std::u8string(utf8.begin(), utf8.end())};
}

std::string FromPath(const std::filesystem::path& path) {
  const auto text = path.u8string();
  return {text.begin(), text.end()};
}

std::string ToCodePage1252(std::string_view utf8) {
  constexpr std::int32_t kFirstPair = 0x10000;
  std::string bytes;
  bytes.reserve(utf8.size());
  for (auto rest = utf8; !rest.empty();) {
    const auto character = TakeCharacter(rest).code;
    if (character < 0 || character >= kFirstPair) {
      bytes.append(character < 0 ? 1 : 2, '?');
    } else {
      bytes.push_back(PageByte(character));
    }
  }
  return bytes;
}

std::string FromCodePage1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    AppendCharacter(text, code >= 0x80 && code < 0xA0 ? kHighPage[code - 0x80U] : code);
  }
  return text;
}

}  // namespace quintara
