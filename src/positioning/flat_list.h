#pragma once

#include <cstdint>
#include <string>

#include "access/contracts/spreadsheet.h"
#include "base/counter16.h"
#include "base/ref.h"
#include "base/variant.h"

namespace quintara {

/// One instance in the flat list of a matrix workbook, its second worksheet.
struct ExcelPosition {
  std::string InstanceName;
  std::int16_t Row = 0;     ///< on the first worksheet
  std::int16_t Column = 0;  ///< of its part number there: its level
};

/// A cell's value, and the text of it. What is empty and what holds the empty text are the same to a reader.
/// Failures 1004 outside of the worksheet and 13 for a cell that shows an error.
Variant ValueAt(const Ref<excel::Worksheet>& sheet, int row, int column);
std::string TextAt(const Ref<excel::Worksheet>& sheet, int row, int column);

/// Moves `row` down to the first row, itself included, that has this part number; False where the list ends before.
/// Failure 6 past row 32,767. The empty part number is in no row.
bool FindInList(const Ref<excel::Worksheet>& list, const std::string& partNumber, Counter16& row);

/// The entry in a row of the list. Failures 6 and 13 for what is no 16-bit number.
ExcelPosition EntryAt(const Ref<excel::Worksheet>& list, int row);

}  // namespace quintara
