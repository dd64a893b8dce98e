#include "matrix/workbook_bench.h"

#include <algorithm>
#include <iterator>

#include "access/session/process.h"

namespace quintara::test {
namespace {

std::string ColumnOf(int number) {
  const char last = static_cast<char>('A' + (number - 1) % 26);
  return number > 26 ? std::string(1, static_cast<char>('A' + (number - 1) / 26 - 1)) + last : std::string(1, last);
}

}  // namespace

Page PageOf(const PaperSheet& sheet) {
  Page page;
  for (const auto& [cell, value] : sheet.cells) page[ColumnOf(cell.second) + std::to_string(cell.first)] = value;
  return page;
}

Page TreeRow(int row, const std::string& column, const std::string& partNumber, const PositionMatrix& position) {
  Page page{{column + std::to_string(row), partNumber}};
  for (int i = 0; i < 12; ++i) page[ColumnOf(15 + i) + std::to_string(row)] = position[static_cast<std::size_t>(i)];
  return page;
}

Page ListRow(int row, const std::string& partNumber, int level, const std::string& name) {
  const auto digits = std::to_string(row);
  return {{"A" + digits, partNumber}, {"B" + digits, double(row)}, {"C" + digits, double(level)}, {"D" + digits, name}};
}

Page operator+(Page left, const Page& right) {
  for (const auto& [address, value] : right) left[address] = value;
  return left;
}

WorkbookBench::WorkbookBench() {
  Process().gFileSystem = platform.Native().FileSystem();
  Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
  Process().texts.QD_GETMATRIX_ERROR_MERGING_MATRIX.text = "no merge";
  platform.Native().RegisterMaker("excel.application", [this] {
    ++started;
    return paper->AsSpreadsheetApplication();
  });
}

std::vector<std::string> WorkbookBench::Steps() const {
  std::vector<std::string> steps;
  std::ranges::copy_if(paper->done, std::back_inserter(steps), [](const std::string& what) { return what[1] != '!'; });
  return steps;
}

Node Instance(const std::string& partNumber, double x, std::vector<Node> children) {
  return {partNumber, partNumber + ".1", At(x, x / 2, -x), std::move(children)};
}

}  // namespace quintara::test
