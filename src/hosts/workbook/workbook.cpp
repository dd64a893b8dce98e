#include "hosts/workbook/workbook.h"

#include <utility>

#include "hosts/workbook/range.h"

namespace quintara::workbook {

Ref<excel::Worksheets> WorkbookObject::Worksheets() {
  Pass<"Worksheets">();
  return MakeRef<WorksheetsObject>(session_, workbook_);
}

void WorkbookObject::Save() {
  Pass<"Save">();
  session_->Save(*workbook_, workbook_->Path());
}

void WorkbookObject::SaveAs(const std::string& fullPath) {
  Pass<"SaveAs">([&] { return fullPath; });
  session_->Save(*workbook_, fullPath);
}

void WorkbookObject::Close(bool saveChanges) {
  Pass<"Close">([&] { return saveChanges ? "True" : "False"; });
  if (saveChanges) session_->Save(*workbook_, workbook_->Path());
  session_->Close(workbook_);
}

Ref<excel::Worksheet> WorksheetsObject::Item(int index) {
  Pass<"Item">([&] { return std::to_string(index); });
  if (index < 1 || index > workbook_->SheetCount()) {
    throw Failure(failure::kSubscriptOutOfRange, "Subscript out of range: worksheet " + std::to_string(index) + " of " +
                                                     std::to_string(workbook_->SheetCount()));
  }
  return MakeRef<WorksheetObject>(session_, workbook_, index);
}

WorksheetObject::WorksheetObject(std::shared_ptr<Session> session, std::shared_ptr<OpenWorkbook> workbook, int sheet)
    : WorkbookPart(std::move(session), std::move(workbook)), sheet_(sheet) {}

Ref<excel::Range> WorksheetObject::RangeOf(const CellArea& area) {
  RequireOnSheet(area);
  return MakeRef<RangeObject>(session_, workbook_, sheet_, area);
}

Ref<excel::Range> WorksheetObject::Range(const std::string& address) {
  Pass<"Range">([&] { return address; });
  return RangeOf(AreaOf(address));
}

Ref<excel::Range> WorksheetObject::Cells() {
  Pass<"Cells">();
  return RangeOf(kWholeSheet);
}

Ref<excel::Range> WorksheetObject::Cells(int row, int column) {
  Pass<"Cells">([&] { return std::to_string(row) + ", " + std::to_string(column); });
  return RangeOf({row, column});
}

Ref<excel::Worksheet> WorksheetObject::AsWorksheet() {
  session_->gate->Pass("Worksheet.AsWorksheet");
  return Ref<excel::Worksheet>(shared_from_this());
}

}  // namespace quintara::workbook
