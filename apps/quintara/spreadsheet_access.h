#pragma once

#include <memory>
#include <string>

#include "hosts/gate/gate.h"
#include "hosts/native/native_platform.h"

namespace quintara {

/// Where the library of the spreadsheet application lies: beside this program, or, as packages have it, in
/// "../lib/quintara" from there.
std::string SpreadsheetLibrary();

/// Makes `platform` start a spreadsheet application for each that is asked for. The library at `path`, which brings
/// LibreOffice's own along, is loaded then and not before; asking fails with 429 where it isn't there or can't be
/// loaded, and where no LibreOffice starts.
void RegisterSpreadsheet(NativePlatform& platform, const std::shared_ptr<Gate>& gate,
                         const std::string& path = SpreadsheetLibrary());

}  // namespace quintara
