#pragma once

#include <string>

namespace quintara::office {

/// Fails with 1004, naming `path`, unless `bytes` look like a whole workbook: a compound file (`.xls`) with all its
/// sectors, a package of XML files, or a workbook of the XML form of 2003. What is cut off would otherwise open with
/// what is left of it, and a page of HTML or a text as a workbook that nobody wrote.
void RequireWorkbook(const std::string& bytes, const std::string& path);

}  // namespace quintara::office
