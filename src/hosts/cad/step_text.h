#pragma once

#include <string>
#include <string_view>

namespace quintara::cad {

/// The text that stands between the quotes of a string in a STEP file, as UTF-8. Bytes that aren't
/// UTF-8 count as Windows-1252; an escape that isn't complete stands for itself.
std::string DecodeStepText(std::string_view raw);

}  // namespace quintara::cad
