#pragma once

#include <string>

namespace quintara::test {

/// The bytes of a workbook with these tables, in the terms of LibreOffice's own format, which has the styles "date",
/// "time", "fixed", "text", "boolean" and, for a table, "hidden". LibreOffice makes it, once for each, and writes it
/// as `format`: an extension, and a filter's name behind a colon where it has several. Empty when that fails.
std::string ForeignWorkbook(const std::string& tables, const std::string& format);

}  // namespace quintara::test
