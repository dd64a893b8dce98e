#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "matrix/get_matrix_internals.h"
#include "matrix/matrix_fixture.h"
#include "matrix/paper_spreadsheet.h"

namespace quintara {

inline void PrintTo(const Variant& value, std::ostream* out) {
  const char* const around = value.IsText() ? "\"" : "";
  *out << around << value.ToText() << around;
}

}  // namespace quintara

namespace quintara::test {

/// The cells of a worksheet by their addresses.
using Page = std::map<std::string, Variant>;

Page PageOf(const PaperSheet& sheet);

/// What one row of a matrix workbook holds on each of its worksheets: the part number in the column of
/// that name, the position in O to Z; and part number, row, level and instance name in A to D.
Page TreeRow(int row, const std::string& column, const std::string& partNumber, const PositionMatrix& position);
Page ListRow(int row, const std::string& partNumber, int level, const std::string& name);
Page operator+(Page left, const Page& right);

/// A matrix command beside a spreadsheet application that is started when it is asked for.
class WorkbookBench : public Stage {
 public:
  WorkbookBench();

  std::int16_t Write() {
    Counter16 level = 1;
    return command.WriteProductRows(root, level);
  }
  bool Generate() { return command.GenerateWorkbook(root, Target()); }
  std::string Target() const { return folder.Path("CAR Matrix.xls"); }
  Page Tree() const { return PageOf(paper->open.at(0)->sheets.at(0)); }
  Page List() const { return PageOf(paper->open.at(0)->sheets.at(1)); }
  /// What was done to the application beside writing cells.
  std::vector<std::string> Steps() const;

  TemporaryFolder folder;
  std::shared_ptr<PaperSpreadsheet> paper = std::make_shared<PaperSpreadsheet>();
  int started = 0;
  GetMatrixInternals command;
};

/// One instance without children; they may be added.
Node Instance(const std::string& partNumber, double x, std::vector<Node> children = {});

}  // namespace quintara::test
