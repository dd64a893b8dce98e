#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quintara {

/// True when `bytes` are well-formed UTF-8: no overlong form, surrogate, or value past U+10FFFF.
bool IsUtf8(std::string_view bytes);

/// One character of a text. Its `code` is negative for a byte that is no UTF-8.
struct Character {
  std::string_view bytes;
  std::int32_t code;
};

/// Takes the character at the front of `rest`, which isn't empty, away.
Character TakeCharacter(std::string_view& rest);
/// Appends the character with this code, which is none of a surrogate, as UTF-8.
void AppendCharacter(std::string& text, std::int32_t code);
/// The columns that a character takes on a screen: two for a wide one, none for a combining one,
/// one for a byte that is no UTF-8.
std::size_t ScreenColumns(const Character& character);
/// True for the control characters of every plane, and for a byte that is no UTF-8.
bool IsControlCharacter(const Character& character);

/// UTF-8 text in capitals, character by character, whatever the locale; "ß" stays.
/// Failure 5 when `text` isn't UTF-8.
std::string Capitals(std::string_view text);

/// True when `text` matches `pattern` as a whole: "*" stands for any run of characters, the empty
/// one included, "?" for exactly one. Capitals are ignored. Both are UTF-8.
bool MatchesPattern(std::string_view pattern, std::string_view text);

/// The pieces of `text` between its separators, as they stand: one more than there are separators, so
/// that the empty text is one empty piece.
std::vector<std::string> Split(std::string_view text, char separator);

/// UTF-8 as a path of this platform, and back.
std::filesystem::path ToPath(std::string_view utf8);
std::string FromPath(const std::filesystem::path& path);

/// UTF-8 to Windows-1252: one byte for each UTF-16 unit, "?" for a character outside the page.
std::string ToCodePage1252(std::string_view utf8);
/// Windows-1252 to UTF-8. The five bytes that the page leaves open become the C1 control of the
/// same number, as the platform's own conversion does.
std::string FromCodePage1252(std::string_view bytes);

}  // namespace quintara
