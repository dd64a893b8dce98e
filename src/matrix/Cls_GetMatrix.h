#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "access/contracts/position_matrix.h"
#include "access/contracts/spreadsheet.h"
#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
#include "base/counter16.h"
#include "base/ref.h"
#include "matrix/hash_records.h"

namespace quintara {

/// Generates the matrix of a product when that is checked in or released, stores it in the vault as a
/// document linked to the product, and takes it through the same operation. An object lives for one call.
class Cls_GetMatrix {
 public:
  Cls_GetMatrix();

  /// `Operation` is "CheckIn" or "Release". `ZORVAProduct` is the vault object of the product whose
  /// document is the active one of the CAD host. Only a product that nothing holds, and that is no work
  /// in progress, gets a matrix. With `CalledFromGlobalRefresh` nothing is asked. Whatever stands in the
  /// way is shown, or passed over in silence; nothing is thrown.
  void Run(const std::string& Operation, const Ref<veldora::VdObject>& ZORVAProduct,
           bool CalledFromGlobalRefresh = false);

 private:
  friend class GetMatrixInternals;  // the tests' way to the private operations

  void Generate(const std::string& operation, const Ref<veldora::VdObject>& product, bool calledFromGlobalRefresh);
  bool WriteFile(const Ref<zorva::Product>& root, const std::string& path);
  bool CheckChildrenForMerge(const Ref<zorva::Product>& Product);

  // The older form, a workbook. It holds one row for each instance, so 32,767 at most.
  bool GenerateWorkbook(const Ref<zorva::Product>& product, const std::string& path);
  bool MergeInstead(const Ref<zorva::Product>& product);
  bool StartExcelApplication();
  std::int16_t WriteProductRows(const Ref<zorva::Product>& Product, Counter16& Level);
  bool WriteProductRow(const Ref<zorva::Product>& product, Counter16 level);
  void NoteCouple(PN_IN_Couple couple);
  bool MergeExcelMatrix(const Ref<zorva::Product>& Product);
  std::int32_t RenameDoublesInSheet();

  Ref<excel::Application> excel_;
  Ref<excel::Workbook> workbook_;
  Counter16 row_;  ///< the last one written
  PositionMatrix position_{};
  std::vector<PN_IN_Couple> Array_PN_IN_Couple;  ///< one for each row written
  std::int32_t ArrayIndex = 0;                   ///< how many of them are filled
};

}  // namespace quintara
