#pragma once

#include "access/contracts/spreadsheet.h"
#include "base/ref.h"
#include "hosts/office/spreadsheet_host.h"

namespace quintara {

/// The entry of the library that a program loads when it first needs the spreadsheet application, so that it
/// starts on a machine without LibreOffice. Both come from one build: what passes between them are objects of
/// the language. `application` becomes what `StartSpreadsheet` gives, and its failures come out.
using SpreadsheetEntry = void(const SpreadsheetSurroundings& surroundings, Ref<excel::Application>& application);
inline constexpr const char* kSpreadsheetEntry = "QuintaraStartSpreadsheet";

}  // namespace quintara
