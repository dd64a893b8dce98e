#pragma once

#include <string>
#include <vector>

#include "hosts/workbook/cell_grid.h"

namespace quintara::workbook {

/// One worksheet as its file has it.
struct SheetContent {
  std::string name;
  CellGrid cells;
};

/// The worksheets of a workbook in their order.
using Sheets = std::vector<SheetContent>;

}  // namespace quintara::workbook
