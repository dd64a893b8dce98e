#include "matrix/matrix_workbook.h"

#include <string>

#include "access/contracts/platform.h"
#include "access/utils/Cls_Utils.h"

namespace quintara::matrix_workbook {
namespace {

constexpr int kTree = 1;  // numbers of the worksheets
constexpr int kList = 2;
constexpr int kFewestSheets = 3;

}  // namespace

Sheets SheetsOf(const Ref<excel::Workbook>& workbook) {
  const auto sheets = workbook->Worksheets();
  return {sheets->Item(kTree), sheets->Item(kList)};
}

// The readers go on with empty names all the same.
void TellOfAge(const Ref<excel::Worksheet>& list) {
  if (!list->Cells(1, kInstanceName)->Value().ToText().empty()) return;
  std::string text =
      "The matrix has been created with an old version of QNTR (< DROP 4).\r\n"
      "The instances can't be positioned.\r\n"
      "Please generate a new matrix for this product.";
  Utils().ShowMessage(text, box::kInformation, {});
}

int RaiseSheetsInNewWorkbook(const Ref<excel::Application>& excel) {
  const int usual = excel->SheetsInNewWorkbook();
  if (usual < kFewestSheets) excel->SetSheetsInNewWorkbook(kFewestSheets);
  return usual;
}

Ref<excel::Workbook> Add(const Ref<excel::Application>& excel) {
  const int usual = RaiseSheetsInNewWorkbook(excel);
  const auto workbook = excel->Workbooks()->Add();
  if (usual < kFewestSheets) excel->SetSheetsInNewWorkbook(usual);
  return workbook;
}

void WritePosition(const Ref<excel::Worksheet>& tree, int row, const PositionMatrix& position) {
  for (int i = 0; const double number : position) tree->Cells(row, kFirstOfPosition + i++)->SetValue(number);
}

void Rename(const Ref<excel::Application>& excel, int row, const std::string& name) {
  const auto cell = excel->ActiveWorkbook()->Worksheets()->Item(kList)->Cells(row, kInstanceName);
  cell->SetNumberFormat("@");
  cell->SetValue(name);
}

}  // namespace quintara::matrix_workbook
