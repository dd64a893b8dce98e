#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "access/contracts/spreadsheet.h"
#include "access/contracts/zorva.h"
#include "base/ref.h"
#include "matrix/matrix_workbook.h"
#include "positioning/workbook_positions.h"

namespace quintara {

/// Puts the components of a work in progress back to where its matrix has them. None is added or taken away.
class Cls_RetrieveMatrix : public WorkbookPositions {
 public:
  /// Works on the active document of the CAD host. The matrix comes from the vault into the work directory; the
  /// root of the work in progress remembers which one it is. Nothing is said when all went well. A failure is shown
  /// and leaves the components placed before it where they are; one that comes up at a workbook leaves the
  /// spreadsheet application running.
  void Run();

  /// Fills `MatriceResultat` with the position of the instance at this row and column of the first worksheet of a
  /// matrix workbook, in the frame of the root, the root's own position included; at row 1, column 1, the root itself,
  /// with its cells as they stand. Failures go to the caller: 1004 outside of the worksheet, 13 for a cell that is no
  /// number.
  void Positionner(const Ref<excel::Worksheet>& CurrentWorkSheet, std::int16_t ligne_fils, std::int16_t colonne_fils);

 private:
  bool PlaceComponents();
  bool ProcessExcelFile(const std::string& path, const Ref<zorva::Products>& Products);
  void PlaceFromSheets(const matrix_workbook::Sheets& sheets, const Ref<zorva::Products>& Products);
  void PlaceInstancesOf(const Ref<zorva::Product>& product, const matrix_workbook::Sheets& sheets,
                        const Ref<zorva::Products>& Products);

  std::vector<std::string> MatrixPartNumbers;
};

}  // namespace quintara
