#pragma once

#include <memory>
#include <string>

#include "access/contracts/file_system.h"
#include "access/contracts/spreadsheet.h"
#include "hosts/gate/gate.h"
#include "hosts/office/bridge.h"

namespace quintara {

/// What the embedded spreadsheet application needs of its surroundings.
struct SpreadsheetSurroundings {
  std::shared_ptr<Gate> gate;
  std::shared_ptr<FileContents> files;
  office::Limits limits = {};
  /// LibreOffice; the empty text is the one that this was built with.
  std::string program = {};
};

/// Starts an application of its own: a LibreOffice without windows, with a profile of its own, behind the contract
/// of the spreadsheet application. It ends with `Quit` or with the last object that was had of it, and with the
/// thread that started it, which alone may use it. Every operation passes the gate, as "ExcelApplication.Quit",
/// "Worksheet.Cells(2, 1)" and so on. Fails with 429 when it can't be started.
///
/// Worksheets are read as a whole at their first use, and what is written goes out when it is needed, at the
/// latest on saving. A workbook has the rows and columns of the format `.xls`, whatever it came from.
/// - Files of `.xls`, of the newer format and of the XML form of 2003 are opened, whatever they are called; `.xls` is
///   what is saved.
/// - A text stays the text that was written, in whatever cell.
/// - Dates are the numbers that their cells hold; what a formula finds to be true or false is 1 or 0.
/// - `Copy` takes values and number formats along, and of a formula the value that it has.
/// - The last cell is the last one that holds something, be it formatted or not.
/// - There is nobody to be shown anything: what `Visible` is set to changes nothing.
Ref<excel::Application> StartSpreadsheet(const SpreadsheetSurroundings& surroundings);

}  // namespace quintara
