#include "hosts/workbook/range.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "base/text.h"

namespace quintara::workbook {
namespace {

constexpr long long kMostWritten = 1'000'000;
constexpr std::ptrdiff_t kLongestText = 32'767;  // in units of UTF-16

std::ptrdiff_t UnitsOf(const std::string& text) {
  return std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; }) +
         std::ranges::count_if(text, [](char byte) { return (byte & 0xF8) == 0xF0; });
}

void RequireWritable(const Variant& value) {
  if (value.IsObject()) throw Failure(failure::kTypeMismatch, "Type mismatch: a cell holds no objects");
  if (value.IsDouble() && !std::isfinite(value.ToDouble())) {
    throw Failure(failure::kRefused, "A number for a cell isn't finite");
  }
  if (!value.IsText()) return;
  const auto text = value.ToText();
  if (!IsUtf8(text)) throw Failure(failure::kInvalidCall, "A text for a cell isn't UTF-8");
  if (UnitsOf(text) > kLongestText) throw Failure(failure::kRefused, "A text is longer than a cell can hold");
}

// Fails for an area of more cells than anybody means to write one by one.
void RequireFew(const CellArea& area) {
  if (static_cast<long long>(area.rows) * area.columns <= kMostWritten) return;
  throw Failure(failure::kRefused, "The area " + AddressOf(area) + " is too large to be written");
}

template <class Visit>
void ForEachCell(const CellArea& area, Visit&& visit) {
  for (int row = area.row; row <= area.LastRow(); ++row) {
    for (int column = area.column; column <= area.LastColumn(); ++column) visit(row, column);
  }
}

// How much of a copied area has to be gone through: beyond it both sides are empty.
CellArea Worthwhile(const CellArea& source, const CellGrid& from, const CellArea& target, const CellGrid& to) {
  const int lastRow = std::max(from.LastRow() - source.row, to.LastRow() - target.row) + 1;
  const int lastColumn = std::max(from.LastColumn() - source.column, to.LastColumn() - target.column) + 1;
  return {source.row, source.column, std::clamp(lastRow, 0, source.rows), std::clamp(lastColumn, 0, source.columns)};
}

struct CopiedCell {
  Cell cell;
  std::string format;
};

}  // namespace

RangeObject::RangeObject(std::shared_ptr<Session> session, std::shared_ptr<OpenWorkbook> workbook, int sheet,
                         const CellArea& area)
    : WorkbookPart(std::move(session), std::move(workbook)), sheet_(sheet), area_(area) {}

std::string RangeObject::Place() const {
  return AddressOf(area_) + " of worksheet " + std::to_string(sheet_);
}

Ref<excel::Range> RangeObject::CellObject(int row, int column) const {
  return MakeRef<RangeObject>(session_, workbook_, sheet_, CellArea{row, column});
}

Variant RangeObject::Value() {
  Pass<"Value">([&] { return Place(); });
  if (!area_.IsOneCell()) throw Failure(failure::kTypeMismatch, "Type mismatch: " + Place() + " is no single cell");
  const auto& cell = workbook_->CellAt(sheet_, area_.row, area_.column);
  if (cell.isError) throw Failure(failure::kTypeMismatch, "Type mismatch: cell " + Place() + " shows an error");
  return cell.value;
}

void RangeObject::SetValue(const Variant& value) {
  Pass<"Value=">([&] { return Place(); });
  RequireWritable(value);
  RequireFew(area_);
  auto& cells = workbook_->Change(sheet_);
  ForEachCell(area_, [&](int row, int column) { cells.SetValue(row, column, value); });
}

std::string RangeObject::NumberFormat() {
  Pass<"NumberFormat">([&] { return Place(); });
  return workbook_->Cells(sheet_).Format(area_.row, area_.column);
}

void RangeObject::SetNumberFormat(const std::string& format) {
  Pass<"NumberFormat=">([&] { return Place() + ", " + format; });
  if (format.empty() || !IsUtf8(format)) throw Failure(failure::kRefused, "\"" + format + "\" is no number format");
  RequireFew(area_);
  auto& cells = workbook_->Change(sheet_);
  ForEachCell(area_, [&](int row, int column) { cells.SetFormat(row, column, format); });
}

void RangeObject::Copy(const Ref<excel::Range>& destination) {
  Pass<"Copy">([&] { return Place(); });
  const auto* to = dynamic_cast<const RangeObject*>(&*destination);
  if (to == nullptr) throw Failure(failure::kTypeMismatch, "Type mismatch: cells are copied to cells");
  to->RequireAlive();
  const CellArea target = {to->area_.row, to->area_.column, area_.rows, area_.columns};
  RequireOnSheet(target);
  const auto& from = workbook_->FreshCells(sheet_);
  const auto copied = Worthwhile(area_, from, target, to->workbook_->Cells(to->sheet_));
  RequireFew(copied);
  // Source and destination may overlap, so all is read first.
  std::vector<CopiedCell> cells;
  ForEachCell(copied, [&](int row, int column) { cells.push_back({from.At(row, column), from.Format(row, column)}); });
  auto next = cells.begin();
  auto& written = to->workbook_->Change(to->sheet_);
  ForEachCell({target.row, target.column, copied.rows, copied.columns}, [&](int row, int column) {
    written.Overwrite(row, column, next->cell, next->format);
    ++next;
  });
}

Ref<excel::Range> RangeObject::SpecialCells(int type) {
  Pass<"SpecialCells">([&] { return std::to_string(type); });
  if (type != excel::cell_type::kLastCell) {
    throw Failure(failure::kRefused, "There are no special cells of type " + std::to_string(type));
  }
  const auto& cells = workbook_->Cells(sheet_);
  return CellObject(std::max(cells.LastRow(), 1), std::max(cells.LastColumn(), 1));
}

Ref<excel::Range> RangeObject::End(int where) {
  Pass<"End">([&] { return std::to_string(where); });
  if (where != excel::direction::kToLeft) {
    throw Failure(failure::kRefused, "There is no end in the direction " + std::to_string(where));
  }
  const auto& cells = workbook_->Cells(sheet_);
  const auto isInUse = [&](int column) { return column >= 1 && cells.At(area_.row, column).IsInUse(); };
  int column = area_.column;
  if (isInUse(column) && isInUse(column - 1)) {
    while (isInUse(column - 1)) --column;
  } else {
    do --column;
    while (column > 1 && !isInUse(column));
  }
  return CellObject(area_.row, std::max(column, 1));
}

int RangeObject::Row() {
  Pass<"Row">();
  return area_.row;
}

}  // namespace quintara::workbook
