#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quintara {

/// The columns that a UTF-8 text takes on a screen: one for most characters, two for wide ones,
/// none for combining ones.
std::size_t ScreenWidth(std::string_view text);

/// `text` on one line that can't steer a terminal: each control character, line breaks included,
/// and each byte that is no UTF-8 becomes "?".
std::string OneLine(std::string_view text);
/// The same for a text of several lines, whose line breaks stay.
std::string Lines(std::string_view text);

/// The longest beginning of `text` that fits in `columns`.
std::string CutToWidth(std::string_view text, std::size_t columns);

}  // namespace quintara
