#include "hosts/workbook/open_workbook.h"

#include <utility>

namespace quintara::workbook {

OpenWorkbook::OpenWorkbook(std::unique_ptr<Document> document, std::string path)
    : document_(std::move(document)), path_(std::move(path)) {
  sheets_.resize(static_cast<std::size_t>(document_->SheetCount()));
  if (!path_.empty()) return;
  for (auto& sheet : sheets_) sheet.emplace();
}

OpenWorkbook::Sheet& OpenWorkbook::Known(int sheet) {
  auto& known = sheets_[static_cast<std::size_t>(sheet - 1)];
  if (!known) known = Sheet{document_->Read(sheet), revision_};
  return *known;
}

// Formulas may look at any sheet, so that whatever was written makes them old.
const CellGrid& OpenWorkbook::FreshCells(int sheet) {
  auto& known = Known(sheet);
  if (known.revision != revision_ && known.cells.HasFormulas()) {
    Flush();
    known = Sheet{document_->Read(sheet), revision_};
  }
  return known.cells;
}

const Cell& OpenWorkbook::CellAt(int sheet, int row, int column) {
  const auto& cell = Cells(sheet).At(row, column);
  return cell.isFormula ? FreshCells(sheet).At(row, column) : cell;
}

CellGrid& OpenWorkbook::Change(int sheet) {
  auto& cells = Known(sheet).cells;
  ++revision_;
  return cells;
}

void OpenWorkbook::Flush() {
  for (int sheet = 1; sheet <= SheetCount(); ++sheet) {
    auto& known = sheets_[static_cast<std::size_t>(sheet - 1)];
    if (!known || !known->cells.HasChanges()) continue;
    document_->Write(sheet, known->cells);
    known->cells.ForgetChanges();
  }
}

std::string OpenWorkbook::Bytes() {
  Flush();
  return document_->Bytes();
}

void OpenWorkbook::Close() {
  const auto document = std::exchange(document_, nullptr);
  sheets_.clear();
  document->Close();
}

}  // namespace quintara::workbook
