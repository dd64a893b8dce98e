#pragma once

#include <exception>
#include <string_view>

#include "automation/dispatch/com.h"

namespace quintara::automation {

/// Leaves what was thrown for the caller, with `source` as where it came from, and gives its result: number n of a
/// `Failure` is 0x800A0000 + n, a result of another program stays so, anything else is 0x80004005.
HRESULT LeaveError(const std::exception& error, std::string_view source, REFIID interfaceId) noexcept;

/// Takes what was left along with a failed `result` into `details`, which may be missing.
void TakeError(HRESULT result, EXCEPINFO* details) noexcept;

}  // namespace quintara::automation
