#include "hosts/workbook/cell_grid.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/failure.h"

namespace quintara::workbook {
namespace {

const Cell kEmptyCell;

std::size_t Index(int number) {
  return static_cast<std::size_t>(number - 1);
}

}  // namespace

const Cell& CellGrid::At(int row, int column) const noexcept {
  if (std::cmp_greater(row, rows_.size())) return kEmptyCell;
  const auto& cells = rows_[Index(row)];
  return std::cmp_greater(column, cells.size()) ? kEmptyCell : cells[Index(column)];
}

Cell& CellGrid::Touch(int row, int column) {
  if (std::cmp_greater(row, rows_.size())) rows_.resize(Index(row) + 1);
  auto& cells = rows_[Index(row)];
  for (int next = static_cast<int>(cells.size()) + 1; next <= column; ++next) {
    cells.emplace_back().format = FormatOfAreas(row, next);
  }
  return cells[Index(column)];
}

void CellGrid::Enter(int row, int column, Cell cell) {
  if (cell.isFormula) hasFormulas_ = true;
  Touch(row, column) = std::move(cell);
}

void CellGrid::Enter(int row, int column, Cell cell, const std::string& format) {
  cell.format = FormatIndex(format);
  Enter(row, column, std::move(cell));
}

int CellGrid::LastRow() const noexcept {
  for (auto row = rows_.size(); row > 0; --row) {
    if (std::ranges::any_of(rows_[row - 1], &Cell::IsInUse)) return static_cast<int>(row);
  }
  return 0;
}

int CellGrid::LastColumn() const noexcept {
  std::size_t last = 0;
  for (const auto& cells : rows_) {
    for (auto column = cells.size(); column > last; --column) {
      if (cells[column - 1].IsInUse()) last = column;
    }
  }
  return static_cast<int>(last);
}

const std::string& CellGrid::Format(int row, int column) const {
  const auto* cell = &At(row, column);
  if (cell != &kEmptyCell) return formats_[cell->format];
  return formats_[FormatOfAreas(row, column)];
}

std::vector<std::pair<CellArea, std::string>> CellGrid::FormatAreas() const {
  std::vector<std::pair<CellArea, std::string>> areas;
  for (const auto& [area, format] : formatAreas_) areas.emplace_back(area, formats_[format]);
  return areas;
}

std::uint16_t CellGrid::FormatOfAreas(int row, int column) const {
  const auto found =
      std::ranges::find_if(formatAreas_, [&](const auto& each) { return each.first.Holds(row, column); });
  return found == formatAreas_.end() ? std::uint16_t{0} : found->second;
}

std::uint16_t CellGrid::FormatIndex(const std::string& format) {
  const auto known = std::ranges::find(formats_, format);
  const auto index = known - formats_.begin();
  if (index > std::numeric_limits<std::uint16_t>::max()) throw Failure(failure::kRefused, "Too many number formats");
  if (known == formats_.end()) formats_.push_back(format);
  return static_cast<std::uint16_t>(index);
}

void CellGrid::EnterFormat(const CellArea& area, const std::string& format) {
  const auto index = FormatIndex(format);
  formatAreas_.emplace_back(area, index);
  const int last = std::min(area.LastRow(), static_cast<int>(rows_.size()));
  for (int row = area.row; row <= last; ++row) {
    auto& cells = rows_[Index(row)];
    for (auto column = Index(area.column); column < std::min(cells.size(), Index(area.LastColumn()) + 1); ++column) {
      cells[column].format = index;
    }
  }
}

void CellGrid::SetValue(int row, int column, const Variant& value) {
  auto& cell = Touch(row, column);
  const bool becomesText = formats_[cell.format] == kTextFormat && !value.IsEmpty();
  Change(cell, becomesText ? Variant(value.ToText()) : value);
}

void CellGrid::Change(Cell& cell, const Variant& value) {
  auto taken = value.IsInteger() ? Variant(value.ToDouble()) : value;
  if (taken == Variant("")) taken = {};
  if (taken.IsBoolean() != cell.value.IsBoolean()) cell.formatChanged = true;
  cell.value = std::move(taken);
  cell.isFormula = cell.isError = false;
  cell.valueChanged = changed_ = true;
}

void CellGrid::SetFormat(int row, int column, const std::string& format) {
  const auto index = FormatIndex(format);
  auto& cell = Touch(row, column);
  cell.format = index;
  cell.formatChanged = changed_ = true;
}

void CellGrid::Overwrite(int row, int column, const Cell& by, const std::string& format) {
  // An empty cell that stays one is nothing to be sent.
  if (format != Format(row, column)) SetFormat(row, column, format);
  if (!by.IsInUse() && !At(row, column).IsInUse()) return;
  auto& cell = Touch(row, column);
  Change(cell, by.value);
  cell.isError = by.isError;
}

// What stands between two changed cells of a row and is empty goes out with them.
std::vector<CellArea> CellGrid::ChangedRuns(int row) const {
  std::vector<CellArea> runs;
  bool open = false;
  const auto& cells = rows_[Index(row)];
  for (int column = 1; std::cmp_less_equal(column, cells.size()); ++column) {
    const auto& cell = cells[Index(column)];
    if (cell.valueChanged) {
      if (open) {
        runs.back() = Union(runs.back(), {row, column});
      } else {
        runs.push_back({row, column});
      }
      open = true;
    } else if (cell.IsInUse()) {
      open = false;
    }
  }
  return runs;
}

bool CellGrid::MayCover(const CellArea& area) const {
  const int last = std::min(area.LastRow(), static_cast<int>(rows_.size()));
  for (int row = area.row; row <= last; ++row) {
    for (int column = area.column; column <= area.LastColumn(); ++column) {
      const auto& cell = At(row, column);
      if (cell.IsInUse() && !cell.valueChanged) return false;
    }
  }
  return true;
}

// Only what the block would take in anew is looked at, so that a block of many rows stays cheap.
bool CellGrid::MayGrow(const CellArea& block, const CellArea& run, std::size_t cells) const {
  const auto grown = Union(block, run);
  if (static_cast<std::size_t>(grown.rows) * static_cast<std::size_t>(grown.columns) > cells) return false;
  return MayCover({block.row, grown.column, block.rows, block.column - grown.column}) &&
         MayCover({block.row, block.LastColumn() + 1, block.rows, grown.LastColumn() - block.LastColumn()}) &&
         MayCover({block.LastRow() + 1, grown.column, grown.LastRow() - block.LastRow(), grown.columns});
}

std::vector<CellArea> CellGrid::ChangedBlocks(std::size_t cells) const {
  std::vector<CellArea> blocks;
  for (int row = 1; std::cmp_less_equal(row, rows_.size()); ++row) {
    for (const auto& run : ChangedRuns(row)) {
      if (!blocks.empty() && MayGrow(blocks.back(), run, cells)) {
        blocks.back() = Union(blocks.back(), run);
      } else {
        blocks.push_back(run);
      }
    }
  }
  return blocks;
}

std::map<std::string, std::vector<CellArea>> CellGrid::ChangedFormats() const {
  std::map<std::string, std::vector<CellArea>> formats;
  for (int column = 1; column <= kColumns; ++column) {
    for (int row = 1; std::cmp_less_equal(row, rows_.size()); ++row) {
      const auto& cell = At(row, column);
      if (!cell.formatChanged) continue;
      auto& areas = formats[cell.value.IsBoolean() ? kBooleanFormat : formats_[cell.format]];
      const bool goesOn = !areas.empty() && areas.back().column == column && areas.back().LastRow() == row - 1;
      if (goesOn) {
        ++areas.back().rows;
      } else {
        areas.push_back({row, column});
      }
    }
  }
  return formats;
}

void CellGrid::ForgetChanges() {
  for (auto& cells : rows_) {
    for (auto& cell : cells) cell.valueChanged = cell.formatChanged = false;
  }
  changed_ = false;
}

}  // namespace quintara::workbook
