#pragma once

#include <string>
#include <string_view>

#include "automation/dispatch/com.h"

namespace quintara::automation {

/// UTF-8 as UTF-16; what is no UTF-8 becomes U+FFFD.
std::wstring Wide(std::string_view utf8);
/// UTF-16 as UTF-8; a lone surrogate becomes U+FFFD.
std::string Narrow(std::wstring_view utf16);
/// The text of a `BSTR`, for which nothing is the empty text.
std::string Narrow(BSTR text);
/// A new `BSTR`, which the caller frees. Fails with 7 where there is no memory.
BSTR NewBstr(std::string_view utf8);

}  // namespace quintara::automation
