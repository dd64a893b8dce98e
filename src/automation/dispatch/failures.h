#pragma once

#include <string_view>

#include "automation/dispatch/com.h"
#include "base/failure.h"

namespace quintara::automation {

/// What went wrong in another program when `member` ("Product.PartNumber") was asked for. A run-time error of
/// automation scripts keeps its number, and so does one of the system that has a counterpart among them; any other
/// result is its own number. The description is the program's, else the system's, behind the member's name. Frees the
/// texts of `details`.
Failure FailureOf(HRESULT result, EXCEPINFO& details, std::string_view member);

/// The other way: the number n of a run-time error is 0x800A0000 + n, a number that is a failed result stays so.
HRESULT ResultOf(const Failure& failure);
/// Of anything that was thrown: 0x80004005 for what is no `Failure`.
HRESULT ResultOf(const std::exception& error);

}  // namespace quintara::automation
