#include "hosts/workbook/cell_area.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "base/failure.h"

namespace quintara::workbook {
namespace {

[[noreturn]] void ThrowNoAddress(const std::string& address) {
  throw Failure(failure::kRefused, "\"" + address + "\" is no address of cells");
}

bool TakeIf(std::string_view& rest, char sign) {
  if (!rest.starts_with(sign)) return false;
  rest.remove_prefix(1);
  return true;
}

int TakeLetters(std::string_view& rest) {
  int column = 0;
  while (!rest.empty() && column <= kColumns) {
    const char letter = static_cast<char>(rest.front() & ~0x20);
    if (letter < 'A' || letter > 'Z') break;
    column = column * 26 + (letter - 'A' + 1);
    rest.remove_prefix(1);
  }
  return column;
}

int TakeDigits(std::string_view& rest) {
  int row = 0;
  while (!rest.empty() && rest.front() >= '0' && rest.front() <= '9' && row <= kRows) {
    row = row * 10 + (rest.front() - '0');
    rest.remove_prefix(1);
  }
  return row;
}

CellArea TakeCorner(std::string_view& rest, const std::string& address) {
  TakeIf(rest, '$');
  const int column = TakeLetters(rest);
  TakeIf(rest, '$');
  const int row = TakeDigits(rest);
  if (row < 1 || row > kRows || column < 1 || column > kColumns) ThrowNoAddress(address);
  return {row, column};
}

std::string CornerOf(int row, int column) {
  std::string letters;
  for (int rest = column; rest > 0; rest = (rest - 1) / 26) {
    letters.insert(letters.begin(), static_cast<char>('A' + (rest - 1) % 26));
  }
  return letters + std::to_string(row);
}

}  // namespace

CellArea Union(const CellArea& left, const CellArea& right) {
  const int row = std::min(left.row, right.row);
  const int column = std::min(left.column, right.column);
  return {row, column, std::max(left.LastRow(), right.LastRow()) - row + 1,
          std::max(left.LastColumn(), right.LastColumn()) - column + 1};
}

void RequireOnSheet(const CellArea& area) {
  if (area.row >= 1 && area.column >= 1 && area.LastRow() <= kRows && area.LastColumn() <= kColumns) return;
  throw Failure(failure::kRefused, "Row " + std::to_string(area.row) + ", column " + std::to_string(area.column) +
                                       " with " + std::to_string(area.rows) + " x " + std::to_string(area.columns) +
                                       " cells isn't on the worksheet");
}

CellArea AreaOf(const std::string& address) {
  std::string_view rest = address;
  auto area = TakeCorner(rest, address);
  if (TakeIf(rest, ':')) area = Union(area, TakeCorner(rest, address));
  if (!rest.empty()) ThrowNoAddress(address);
  return area;
}

std::string AddressOf(const CellArea& area) {
  const auto first = CornerOf(area.row, area.column);
  return area.IsOneCell() ? first : first + ":" + CornerOf(area.LastRow(), area.LastColumn());
}

}  // namespace quintara::workbook
