#pragma once

#include "matrix/Cls_GetMatrix.h"

namespace quintara {

/// The tests' way to the private operations of a matrix command and to what it holds.
class GetMatrixInternals {
 public:
  bool GenerateWorkbook(const Ref<zorva::Product>& product, const std::string& path) {
    return command.GenerateWorkbook(product, path);
  }
  bool StartExcelApplication() { return command.StartExcelApplication(); }
  std::int16_t WriteProductRows(const Ref<zorva::Product>& product, Counter16& level) {
    return command.WriteProductRows(product, level);
  }
  bool CheckChildrenForMerge(const Ref<zorva::Product>& product) { return command.CheckChildrenForMerge(product); }
  bool MergeExcelMatrix(const Ref<zorva::Product>& product) { return command.MergeExcelMatrix(product); }
  std::int32_t RenameDoublesInSheet() { return command.RenameDoublesInSheet(); }

  Ref<excel::Application>& Excel() { return command.excel_; }
  Ref<excel::Workbook>& Workbook() { return command.workbook_; }
  Counter16& Row() { return command.row_; }
  std::vector<PN_IN_Couple>& Couples() { return command.Array_PN_IN_Couple; }
  std::int32_t& CoupleCount() { return command.ArrayIndex; }

  Cls_GetMatrix command;
};

}  // namespace quintara
