#pragma once

#include <string>

namespace quintara::workbook {

/// How far a worksheet of the format `.xls` reaches.
inline constexpr int kRows = 65'536;
inline constexpr int kColumns = 256;

/// A rectangle of cells; its first cell is counted from 1.
struct CellArea {
  int row;
  int column;
  int rows = 1;
  int columns = 1;

  int LastRow() const noexcept { return row + rows - 1; }
  int LastColumn() const noexcept { return column + columns - 1; }
  bool IsOneCell() const noexcept { return rows == 1 && columns == 1; }
  bool Holds(int atRow, int atColumn) const noexcept {
    return atRow >= row && atRow <= LastRow() && atColumn >= column && atColumn <= LastColumn();
  }
  bool operator==(const CellArea&) const = default;
};

/// The whole worksheet.
inline constexpr CellArea kWholeSheet = {1, 1, kRows, kColumns};

/// The smallest area that holds both.
CellArea Union(const CellArea& left, const CellArea& right);

/// Fails with 1004 for an area that leaves the worksheet.
void RequireOnSheet(const CellArea& area);

/// The area of an address such as "B3" or "$A$1:N20", capitals ignored; of two corners in whatever order.
/// Fails with 1004 for anything else.
CellArea AreaOf(const std::string& address);
/// The address of an area, for messages: "B3", "A1:N20".
std::string AddressOf(const CellArea& area);

}  // namespace quintara::workbook
