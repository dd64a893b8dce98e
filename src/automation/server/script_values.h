#pragma once

#include "automation/dispatch/value.h"
#include "automation/server/methods.h"

namespace quintara::automation {

/// A value that a caller gave, as an argument of a method takes it: of the very type, converted as automation scripts
/// do. Empty and Null are the neutral value. An array is lent, whatever its elements. Failure 13 or 6 for what can't
/// be converted.
Value ToParameter(const VARIANT& given, const Parameter& parameter);

/// Writes a value back to where the caller's argument refers to, in that place's own type; nothing happens where it
/// was given by value. The same failures.
void WriteBack(VARIANT& given, Value value);

}  // namespace quintara::automation
