#pragma once

#include <string>

#include "hosts/workbook/sheet_content.h"

namespace quintara::workbook {

/// The workbook that a file of the spreadsheet program's XML form of 2003 holds: names of the worksheets, values
/// and number formats of their cells. A formula stands for the value that the file has of it, an error where it
/// has none. Dates are numbers. Fails with 1004, calling the file `name`, for anything else: a binary or a zipped
/// workbook is called so, and what is damaged says where.
Sheets ReadXmlWorkbook(const std::string& bytes, const std::string& name);

}  // namespace quintara::workbook
