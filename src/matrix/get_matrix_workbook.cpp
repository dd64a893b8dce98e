#include <utility>
#include <vector>

#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "access/utils/Cls_Utils.h"
#include "access/utils/files.h"
#include "access/utils/messages.h"
#include "base/arrays.h"
#include "matrix/Cls_GetMatrix.h"
#include "matrix/Cls_HashTable.h"
#include "matrix/matrix_workbook.h"
#include "matrix/random_text.h"

namespace quintara {
namespace {

constexpr std::int32_t kGrowth = 3;
constexpr bool kDontSave = false;

// What the active workbook becomes where no matrix can be made.
void GiveUp(const Ref<excel::Application>& excel) {
  excel->ActiveWorkbook()->Close(kDontSave);
  excel->Quit();
}

// A closed workbook leaves the collection, so the last one goes first.
void CloseAll(const Ref<excel::Application>& excel) {
  const auto workbooks = excel->Workbooks();
  for (int i = workbooks->Count(); i > 0; --i) workbooks->Item(i)->Close(kDontSave);
}

bool SamePair(const PN_IN_Couple& left, const PN_IN_Couple& right) {
  return left.PartNumber == right.PartNumber && left.InstanceName == right.InstanceName;
}

}  // namespace

bool Cls_GetMatrix::GenerateWorkbook(const Ref<zorva::Product>& product, const std::string& path) {
  if (!excel_ && !StartExcelApplication()) return false;
  Counter16 level = 1;
  if (WriteProductRows(product, level) != 0 && !MergeInstead(product)) return false;
  if (!Cls_HashTable().RenameDoublesWithHashTable(Array_PN_IN_Couple, ArrayIndex, excel_)) return false;
  DeleteIfThere(*Process().gFileSystem, path);
  excel_->ActiveWorkbook()->SaveAs(path);
  CloseAll(excel_);
  excel_->Quit();
  excel_ = nullptr;
  workbook_ = nullptr;
  return true;
}

// The road for a tree that isn't loaded in full.
bool Cls_GetMatrix::MergeInstead(const Ref<zorva::Product>& product) {
  if (!CheckChildrenForMerge(product)) {
    GiveUp(excel_);
    excel_ = nullptr;
    return false;
  }
  if (MergeExcelMatrix(product)) return true;
  Show(Process().texts.QD_GETMATRIX_ERROR_MERGING_MATRIX, box::kCriticalModal);
  GiveUp(excel_);
  return false;
}

bool Cls_GetMatrix::StartExcelApplication() {
  const bool started = Reported("Cls_GetMatrix.StartExcelApplication", box::kCritical, false, [&] {
    excel_ = ThePlatform().Create(excel::kProgramName)->AsSpreadsheetApplication();
    const int usual = matrix_workbook::RaiseSheetsInNewWorkbook(excel_);
    excel_->SetVisible(false);
    workbook_ = excel_->Workbooks()->Add();
    excel_->SetSheetsInNewWorkbook(usual);
    return true;
  });
  if (!started) excel_ = nullptr;
  return started;
}

// Depth first, on a stack of its own: a tree may be deeper than the thread's. A product without part number
// leaves the level as its parent has raised it, so that what follows there stands a column further to the right.
std::int16_t Cls_GetMatrix::WriteProductRows(const Ref<zorva::Product>& Product, Counter16& Level) {
  struct Walk {
    Ref<zorva::Products> children;
    int count;
    int done = 0;
  };
  std::vector<Walk> walks;
  bool unresolved = false;
  const auto write = [&](const Ref<zorva::Product>& product) {
    if (!WriteProductRow(product, Level)) {
      unresolved = true;
      return;
    }
    const auto children = product->Products();
    walks.push_back({children, Counter16(children->Count())});
  };
  write(Product);
  while (!walks.empty()) {
    if (auto& walk = walks.back(); walk.done < walk.count) {
      ++Level;
      write(walk.children->Item(++walk.done));
    } else {
      walks.pop_back();
      --Level;
    }
  }
  return unresolved ? 1 : 0;
}

// False for a product without part number, which has no row.
bool Cls_GetMatrix::WriteProductRow(const Ref<zorva::Product>& product, Counter16 level) {
  const auto partNumber = Utils().GetThePartNumber(product);
  if (partNumber.empty()) return false;
  product->Position()->GetComponents(position_);
  ++row_;
  const auto [tree, list] = matrix_workbook::SheetsOf(workbook_);
  tree->Cells(row_, level)->SetValue(partNumber);
  list->Cells(row_, matrix_workbook::kPartNumber)->SetValue(partNumber);
  list->Cells(row_, matrix_workbook::kRow)->SetValue(Variant(int{row_}));
  list->Cells(row_, matrix_workbook::kLevel)->SetValue(Variant(int{level}));
  const auto name = product->Name();
  list->Cells(row_, matrix_workbook::kInstanceName)->SetValue(name);
  NoteCouple({partNumber, name, row_});
  matrix_workbook::WritePosition(tree, row_, position_);
  return true;
}

void Cls_GetMatrix::NoteCouple(PN_IN_Couple couple) {
  ElementAt(Array_PN_IN_Couple, ArrayIndex++) = std::move(couple);
  if (ArrayIndex % kGrowth != 0) return;
  const auto upperBound = (ArrayIndex / kGrowth + 1) * kGrowth + 1;
  Array_PN_IN_Couple.resize(static_cast<std::size_t>(upperBound) + 1);
}

std::int32_t Cls_GetMatrix::RenameDoublesInSheet() {
  const auto random = RandomFromClock();
  std::int32_t renamed = 0;
  for (std::int32_t i = 1; i < ArrayIndex; ++i) {
    const auto& couple = ElementAt(Array_PN_IN_Couple, i);
    bool isDouble = false;
    for (std::int32_t j = 0; j < i && !isDouble; ++j) isDouble = SamePair(ElementAt(Array_PN_IN_Couple, j), couple);
    if (!isDouble) continue;
    matrix_workbook::Rename(excel_, couple.Row, couple.InstanceName + TextOf(random() * 10000.0F));
    ++renamed;
  }
  return renamed;
}

}  // namespace quintara
