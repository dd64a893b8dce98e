#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/spreadsheet.h"
#include "hosts/gate/gate.h"

namespace quintara::test {

/// The cells of a worksheet by row and column; the others are empty.
using SheetCells = std::map<std::pair<int, int>, Variant>;

/// A spreadsheet application that only reads, whatever file is there as the workbook that the test fills. Its
/// operations pass the gate under the names of the embedded one's; a worksheet is as large as one of `.xls`.
class FakeSpreadsheet {
 public:
  /// What all applications share, and what they leave behind.
  struct Desk {
    std::shared_ptr<Gate> gate;
    std::vector<SheetCells> sheets{2};
    int running = 0;                ///< applications that haven't been quit
    std::vector<std::string> open;  ///< paths of the workbooks that haven't been closed
    std::vector<std::string> saved;
  };

  explicit FakeSpreadsheet(std::shared_ptr<Gate> gate) { desk_->gate = std::move(gate); }

  Ref<excel::Application> Start() const;
  /// A worksheet, without an application.
  Ref<excel::Worksheet> Sheet(int index) const;

  Desk* operator->() const { return desk_.get(); }

 private:
  std::shared_ptr<Desk> desk_ = std::make_shared<Desk>();
};

}  // namespace quintara::test
