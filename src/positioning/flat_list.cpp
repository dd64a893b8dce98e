#include "positioning/flat_list.h"

#include "matrix/matrix_workbook.h"

namespace quintara {

using matrix_workbook::kInstanceName;
using matrix_workbook::kLevel;
using matrix_workbook::kPartNumber;
using matrix_workbook::kRow;

Variant ValueAt(const Ref<excel::Worksheet>& sheet, int row, int column) {
  return sheet->Cells(row, column)->Value();
}

std::string TextAt(const Ref<excel::Worksheet>& sheet, int row, int column) {
  return ValueAt(sheet, row, column).ToText();
}

bool FindInList(const Ref<excel::Worksheet>& list, const std::string& partNumber, Counter16& row) {
  for (;; ++row) {
    const auto found = TextAt(list, row, kPartNumber);
    if (found.empty()) return false;
    if (found == partNumber) return true;
  }
}

ExcelPosition EntryAt(const Ref<excel::Worksheet>& list, int row) {
  ExcelPosition entry;
  entry.InstanceName = TextAt(list, row, kInstanceName);
  entry.Column = ValueAt(list, row, kLevel).ToInteger16();
  entry.Row = ValueAt(list, row, kRow).ToInteger16();
  return entry;
}

}  // namespace quintara
