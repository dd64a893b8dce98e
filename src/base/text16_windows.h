#pragma once

#include <string>
#include <string_view>

namespace quintara {

/// UTF-8 as UTF-16; what is no UTF-8 becomes U+FFFD.
std::wstring Wide(std::string_view utf8);
/// UTF-16 as UTF-8; a lone surrogate becomes U+FFFD.
std::string Narrow(std::wstring_view utf16);

}  // namespace quintara
