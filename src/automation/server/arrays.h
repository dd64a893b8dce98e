#pragma once

#include <cstdint>
#include <vector>

#include "automation/dispatch/com.h"
#include "base/variant.h"
#include "matrix/hash_records.h"

namespace quintara::automation {

/// The elements of an array of one dimension, from any index and of any type that has a value. Nothing is an array
/// without elements. Failure 13 for one of several dimensions.
std::vector<Variant> VariantsIn(SAFEARRAY* array);
/// The same for an array that its reader counts from index 0. Failure 9 where it begins behind that.
std::vector<Variant> VariantsFromZero(SAFEARRAY* array);
/// Failure 13 for an element that is no number, 6 for one that is no byte.
std::vector<std::uint8_t> BytesIn(SAFEARRAY* array);
/// Takes records, arrays of three, or a row of three for each. Failure 13 for anything else.
std::vector<PN_IN_Couple> CouplesIn(SAFEARRAY* array);

/// A new array, which the caller frees.
SAFEARRAY* NewArray(const std::vector<std::uint8_t>& bytes);

}  // namespace quintara::automation
