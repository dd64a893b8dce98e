#pragma once

#include <string>
#include <string_view>

#include "automation/dispatch/com.h"
#include "base/text16_windows.h"

namespace quintara::automation {

/// UTF-16 as UTF-8; nothing is the empty text.
std::string FromBstr(BSTR text);
/// A new `BSTR`, which the caller frees. Fails with 7 where there is no memory.
BSTR NewBstr(std::string_view utf8);

}  // namespace quintara::automation
