#pragma once

#include <string>
#include <string_view>

#include "access/contracts/geometry.h"

namespace quintara {

/// A name as a file name that every system takes: what Windows refuses, control characters, blanks
/// and points at the end, and bytes that are no UTF-8 become "_"; the name of a device gets a "_";
/// what is too long is cut. Empty when the name says nothing: no character but blanks.
std::string AsFileName(std::string_view name);

/// A name as one step of a path of instance names: backslashes, control characters and bytes that
/// are no UTF-8 become "_". Empty when the name says nothing.
std::string AsInstanceName(std::string_view name);

/// Turns the names that a file gives into those of the CAD host, in place, and lists in `changes`
/// what was changed: part numbers become unique over all definitions without regard to case and
/// usable as file names, instance names unique under their parent. A name that is good as it is
/// stays, also where a mended one would like to take it; the same names always give the same result.
void MendNames(AssemblyStructure& structure);

}  // namespace quintara
