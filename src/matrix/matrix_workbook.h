#pragma once

#include <string>

#include "access/contracts/position_matrix.h"
#include "access/contracts/spreadsheet.h"
#include "base/ref.h"

/// The layout of a matrix workbook. Both worksheets have one row for each instance, depth first, the root
/// in row 1. The first one has the part number in the column of the instance's level, from 1, and the
/// position in the columns O to Z; the second one has part number, row, level and instance name in the
/// columns A to D.
namespace quintara::matrix_workbook {

inline constexpr int kPartNumber = 1;  // columns of the second worksheet
inline constexpr int kRow = 2;
inline constexpr int kLevel = 3;
inline constexpr int kInstanceName = 4;
inline constexpr int kFirstOfPosition = 15;  // of the first one

struct Sheets {
  Ref<excel::Worksheet> tree;  ///< with the positions
  Ref<excel::Worksheet> list;
};

/// The two worksheets of an open workbook. Failure 9 where there are fewer.
Sheets SheetsOf(const Ref<excel::Workbook>& workbook);

/// Tells of a workbook that an older generator made: it has no instance name in the first row of `list`, nor in any.
void TellOfAge(const Ref<excel::Worksheet>& list);

/// Makes the application's new workbooks have as many worksheets as a matrix takes, three at least, and gives
/// the number that they had.
int RaiseSheetsInNewWorkbook(const Ref<excel::Application>& excel);

/// A new workbook of at least three worksheets. The application's number for others stays as it is.
Ref<excel::Workbook> Add(const Ref<excel::Application>& excel);

/// Writes the twelve numbers of one row of `tree`, a cell each.
void WritePosition(const Ref<excel::Worksheet>& tree, int row, const PositionMatrix& position);

/// Gives a row of the active workbook another instance name, as a text whatever it looks like.
void Rename(const Ref<excel::Application>& excel, int row, const std::string& name);

}  // namespace quintara::matrix_workbook
