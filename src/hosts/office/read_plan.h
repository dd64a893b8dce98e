#pragma once

#include <cstddef>
#include <vector>

#include "hosts/workbook/cell_area.h"

namespace quintara::office {

using workbook::CellArea;

/// The blocks, from the top down, that hold all of `areas`: as few as go, of at most so many cells each where
/// a single row has no more, and without long stretches of rows that hold nothing.
std::vector<CellArea> BlocksToRead(const std::vector<CellArea>& areas, std::size_t cells);

}  // namespace quintara::office
