#pragma once

#include <string>

#include "hosts/workbook/sheet_content.h"

namespace quintara::workbook {

/// The file of the spreadsheet program's XML form of 2003 that holds these worksheets. Fails with 1004 for a text
/// that XML can't hold, naming its cell.
std::string WriteXmlWorkbook(const Sheets& sheets);

}  // namespace quintara::workbook
