#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/variant.h"
#include "hosts/workbook/cell_area.h"

namespace quintara::workbook {

inline constexpr const char* kGeneralFormat = "General";
inline constexpr const char* kTextFormat = "@";
/// What makes a number a Boolean in some applications. Outside it is never seen: a Boolean shows as "General".
inline constexpr const char* kBooleanFormat = "BOOLEAN";

/// One cell as it is known here.
struct Cell {
  Variant value;             ///< empty, a Boolean, a double or a text
  std::uint16_t format = 0;  ///< index in the formats of the grid
  bool isFormula = false;
  bool isError = false;
  bool valueChanged = false;
  bool formatChanged = false;

  bool IsInUse() const noexcept { return !value.IsEmpty() || isFormula || isError; }
};

/// The cells of one worksheet, read once, with what was written since and has yet to go out. Rows and columns
/// are counted from 1 and lie on the worksheet.
class CellGrid {
 public:
  const Cell& At(int row, int column) const noexcept;
  /// The last row and the last column with a cell in use; 0 on an empty worksheet.
  int LastRow() const noexcept;
  int LastColumn() const noexcept;
  const std::string& Format(int row, int column) const;
  /// How far cells were entered or written, empty ones too.
  int Rows() const noexcept { return static_cast<int>(rows_.size()); }
  int Columns(int row) const noexcept { return static_cast<int>(rows_[static_cast<std::size_t>(row - 1)].size()); }
  /// The areas that were entered, with their formats, and the format that a cell has of them.
  std::vector<std::pair<CellArea, std::string>> FormatAreas() const;
  const std::string& AreaFormat(int row, int column) const { return formats_[FormatOfAreas(row, column)]; }

  /// What is read.
  void Enter(int row, int column, Cell cell);
  void Enter(int row, int column, Cell cell, const std::string& format);
  /// Gives its format to the cells that were entered in the area, and to those that are made there later unless
  /// an area entered before holds them.
  void EnterFormat(const CellArea& area, const std::string& format);

  /// What is written. A number in a cell of texts becomes one; the empty text clears.
  void SetValue(int row, int column, const Variant& value);
  void SetFormat(int row, int column, const std::string& format);
  /// Puts another cell, whose formula becomes its value, in the place of this one.
  void Overwrite(int row, int column, const Cell& by, const std::string& format);

  bool HasFormulas() const noexcept { return hasFormulas_; }
  bool HasChanges() const noexcept { return changed_; }
  /// Areas, of at most so many cells each, that hold all changed values and beside them nothing but empty
  /// cells: few, so that they go out in few pieces.
  std::vector<CellArea> ChangedBlocks(std::size_t cells) const;
  /// The areas whose number format changed, for each format.
  std::map<std::string, std::vector<CellArea>> ChangedFormats() const;
  void ForgetChanges();

 private:
  using Row = std::vector<Cell>;

  Cell& Touch(int row, int column);
  void Change(Cell& cell, const Variant& value);
  std::uint16_t FormatOfAreas(int row, int column) const;
  std::uint16_t FormatIndex(const std::string& format);
  std::vector<CellArea> ChangedRuns(int row) const;
  bool MayCover(const CellArea& area) const;
  bool MayGrow(const CellArea& block, const CellArea& run, std::size_t cells) const;

  std::vector<Row> rows_;
  std::vector<std::string> formats_ = {kGeneralFormat};
  std::vector<std::pair<CellArea, std::uint16_t>> formatAreas_;
  bool changed_ = false;
  bool hasFormulas_ = false;
};

}  // namespace quintara::workbook
