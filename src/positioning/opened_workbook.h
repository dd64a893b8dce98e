#pragma once

#include <string>

#include "access/contracts/spreadsheet.h"
#include "base/ref.h"
#include "matrix/matrix_workbook.h"

namespace quintara {

/// A matrix workbook on its way through a spreadsheet application of its own. Only `SaveAndQuit` and `Abandon` end
/// the application: letting go of it doesn't. But for `Abandon`, failures go to the caller.
class OpenedWorkbook {
 public:
  void StartApplication();
  /// Keeps the application out of sight, opens the file, and takes the worksheets of what is active then. Failure 9
  /// where there are fewer than two.
  void Open(const std::string& path);
  /// Writes the workbook back, closes it and ends the application.
  void SaveAndQuit();
  /// Ends what was begun and isn't ended yet, as far as that is possible.
  void Abandon();

  /// Nothing before `Open`.
  const matrix_workbook::Sheets& Sheets() const { return sheets_; }

 private:
  Ref<excel::Application> application_;
  Ref<excel::Workbook> workbook_;
  matrix_workbook::Sheets sheets_;
};

}  // namespace quintara
