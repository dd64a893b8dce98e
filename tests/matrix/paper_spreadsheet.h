#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/spreadsheet.h"

namespace quintara::test {

/// A worksheet's cells, by row and column.
struct PaperSheet {
  std::map<std::pair<int, int>, Variant> cells;
  std::map<std::pair<int, int>, std::string> formats;
};

struct PaperBook {
  std::vector<PaperSheet> sheets;
  std::string path;
};

/// A spreadsheet application whose workbooks are held in memory. What it saves is a file that names one of
/// them, so that it can be copied and opened again by another application of this process.
class PaperSpreadsheet final : public excel::Application, public std::enable_shared_from_this<PaperSpreadsheet> {
 public:
  /// What was done to applications, workbooks and cells, in its order: "Add", "Open PATH", "SaveAs PATH",
  /// "Close", "Quit", "Visible=False", "SheetsInNewWorkbook=3", "2!D4=text", "2!D4 format @",
  /// "1!A1:N3 to 1!B2".
  std::vector<std::string> done;
  /// Called with each of these before it is done; what it throws becomes of it.
  std::function<void(const std::string& what)> before = [](const std::string&) {};
  int sheetsInNewWorkbook = 3;
  std::vector<std::shared_ptr<PaperBook>> open;

  bool Visible() override { return visible_; }
  void SetVisible(bool visible) override;
  int SheetsInNewWorkbook() override { return sheetsInNewWorkbook; }
  void SetSheetsInNewWorkbook(int count) override;
  Ref<excel::Workbooks> Workbooks() override;
  Ref<excel::Workbook> ActiveWorkbook() override;
  void Quit() override;
  Ref<excel::Application> AsSpreadsheetApplication() override;

  void Do(const std::string& what);

 private:
  bool visible_ = true;
};

}  // namespace quintara::test
