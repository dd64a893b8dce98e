#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "access/contracts/spreadsheet.h"
#include "access/contracts/zorva.h"
#include "base/counter16.h"
#include "base/ref.h"
#include "positioning/flat_list.h"
#include "positioning/opened_workbook.h"
#include "positioning/workbook_positions.h"

namespace quintara {

/// Places the components of a new work in progress where its matrix has them, and names them after their instances.
class Cls_AllInstances : public WorkbookPositions {
 public:
  /// Works on the active document of the CAD host, its selection and the clipboard. Does nothing where
  /// `gSkipPositioning` is set. With `gAllInstancesRequested` a component becomes as many as its part has instances,
  /// without it only the first instance is placed; instances inside of another component are left out. The matrix
  /// comes from the vault into the work directory. Nothing is said when all went well, but for a workbook of an older
  /// generator, whose age is told first. A failure is shown and leaves what was done before it, and no spreadsheet
  /// application.
  void Run();

  /// Moves `startLine` down the flat list, the second worksheet of a matrix workbook, to the first row with this part
  /// number and instance name, whose instance's row and column go to the two members; False, with nothing changed,
  /// where there is none. Failures go to the caller: 1004 outside of the worksheet, 6 and 13 for what is no 16-bit
  /// number, 6 past row 32,767.
  bool getLineColumn(const Ref<excel::Worksheet>& CurrentWorkSheet, const std::string& PartNumber,
                     const std::string& InstanceName, std::int16_t& startLine);

  /// Fills `MatriceResultat` with the position of the instance at this row and column of the first worksheet of a
  /// matrix workbook, in the frame of the root, the root's own position included. At row 1, column 1, the root itself,
  /// it keeps what it held. Failures go to the caller: 1004 outside of the worksheet, 13 for a cell that is no number.
  void Positionner(const Ref<excel::Worksheet>& CurrentWorkSheet, std::int16_t ligne_fils, std::int16_t colonne_fils);

  std::int16_t lineFound = 0;    ///< the instance's row on the first worksheet, by `getLineColumn`
  std::int16_t columnFound = 0;  ///< its column there

 private:
  struct Wip {
    Ref<zorva::Products> components;
    Ref<zorva::Selection> selection;
    Counter16 count;  ///< of the components at the start
  };

  bool PlaceComponents(OpenedWorkbook& workbook);
  void ProcessExcelFile(const Wip& wip, OpenedWorkbook& workbook, const std::string& path);
  void PlaceFromSheets(const Wip& wip, const matrix_workbook::Sheets& sheets);
  void PlaceEachInstance(const Wip& wip, const Ref<zorva::Product>& source, const std::vector<ExcelPosition>& instances,
                         const Ref<excel::Worksheet>& tree, Counter16& lastIndex);
};

}  // namespace quintara
