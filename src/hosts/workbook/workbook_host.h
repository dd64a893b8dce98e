#pragma once

#include <memory>

#include "access/contracts/file_system.h"
#include "access/contracts/spreadsheet.h"
#include "hosts/gate/gate.h"

namespace quintara {

/// Starts an application with workbooks in memory, behind the contract of the spreadsheet application. It ends with
/// `Quit` or with the last object that was had of it. Every operation passes the gate, as "ExcelApplication.Quit",
/// "Worksheet.Cells(2, 1)" and so on.
///
/// Files are of the spreadsheet program's XML form of 2003, whatever they are called; a binary or a zipped workbook
/// is refused with 1004, by name. Of a file the worksheets with their names, the values and the number formats are
/// known and kept, and nothing else. A workbook has the rows and columns of the format `.xls`.
/// - A text stays the text that was written, in whatever cell.
/// - Dates are the numbers that their cells hold; a formula is the value that its file has.
/// - `Copy` takes values and number formats along.
/// - The last cell is the last one that holds something, be it formatted or not.
/// - There is nobody to be shown anything: what `Visible` is set to changes nothing.
/// - Saving fails with 1004 for a text with control characters that XML can't hold, and names the cell.
Ref<excel::Application> StartWorkbooksInMemory(std::shared_ptr<Gate> gate, std::shared_ptr<FileContents> files);

}  // namespace quintara
