#include "hosts/office/sheet_reader.h"

#include <algorithm>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <string>

#include "base/failure.h"
#include "hosts/office/read_plan.h"

namespace quintara::office {
namespace {

namespace star = com::sun::star;
using uno::Any;

// So many cells at most come in one piece.
constexpr std::size_t kBlockCells = 1U << 18U;

CellArea AreaOf(const star::table::CellRangeAddress& address) {
  return {address.StartRow + 1, address.StartColumn + 1, address.EndRow - address.StartRow + 1,
          address.EndColumn - address.StartColumn + 1};
}

std::vector<CellArea> AreasOf(const uno::Sequence<star::table::CellRangeAddress>& addresses) {
  std::vector<CellArea> areas;
  for (const auto& address : addresses) areas.push_back(AreaOf(address));
  return areas;
}

CellArea Clipped(const CellArea& area, const CellGrid& grid) {
  return {area.row, area.column, std::min(area.LastRow(), grid.LastRow()) - area.row + 1,
          std::min(area.LastColumn(), grid.LastColumn()) - area.column + 1};
}

// An empty cell comes as the empty text, an error as nothing.
Cell CellFrom(const Any& any) {
  Cell cell;
  double number = 0;
  rtl::OUString text;
  const bool isNumber = any >>= number;
  const bool isText = any >>= text;
  if (isNumber) cell.value = number;
  if (!text.isEmpty()) cell.value = FromUno(text);
  cell.isError = !isNumber && !isText;
  return cell;
}

template <class Visit>
void ForEachCell(const CellArea& area, Visit&& visit) {
  for (int row = area.row; row <= area.LastRow(); ++row) {
    for (int column = area.column; column <= area.LastColumn(); ++column) visit(row, column);
  }
}

void MarkFormulas(const CellArea& area, CellGrid& grid) {
  ForEachCell(area, [&](int row, int column) {
    auto cell = grid.At(row, column);
    cell.isFormula = true;
    if (!cell.isError && cell.value.IsEmpty()) cell.value = "";
    grid.Enter(row, column, std::move(cell));
  });
}

void MakeBooleans(const CellArea& area, CellGrid& grid) {
  ForEachCell(Clipped(area, grid), [&](int row, int column) {
    auto cell = grid.At(row, column);
    if (!cell.value.IsDouble() || cell.isFormula) return;
    cell.value = cell.value.ToBoolean();
    grid.Enter(row, column, std::move(cell));
  });
}

Reference<star::table::XCellRange> RangeOf(Connection& connection, const Reference<star::table::XCellRange>& sheet,
                                           const CellArea& area) {
  return connection.Call([&] {
    return sheet->getCellRangeByPosition(area.column - 1, area.row - 1, area.LastColumn() - 1, area.LastRow() - 1);
  });
}

}  // namespace

CellGrid SheetReader::Read(const Range& sheet) {
  using namespace star::sheet::CellFlags;
  CellGrid grid;
  const auto content = AreasOf(Content(sheet, VALUE | DATETIME | STRING | FORMULA));
  for (const auto& area : content) RequireOnSheet(area);
  const auto formulas = AreasOf(Content(sheet, FORMULA));
  for (const auto& block : BlocksToRead(content, kBlockCells)) ReadBlock(sheet, block, grid);
  for (const auto& area : formulas) MarkFormulas(area, grid);
  for (const auto& block : BlocksToRead(formulas, kBlockCells)) ReadFormulas(sheet, block, grid);
  ReadFormats(sheet, grid);
  return grid;
}

SheetReader::Addresses SheetReader::Content(const Range& sheet, int flags) {
  const auto query = connection_.Query<star::sheet::XCellRangesQuery>(sheet);
  const auto found = connection_.Call([&] { return query->queryContentCells(static_cast<sal_Int16>(flags)); });
  return connection_.Call([&] { return found->getRangeAddresses(); });
}

void SheetReader::ReadBlock(const Range& sheet, const CellArea& area, CellGrid& grid) {
  const auto data = connection_.Query<star::sheet::XCellRangeData>(RangeOf(connection_, sheet, area));
  const auto rows = connection_.Call([&] { return data->getDataArray(); });
  ForEachCell(area, [&](int row, int column) {
    auto cell = CellFrom(rows[row - area.row][column - area.column]);
    if (cell.IsInUse()) grid.Enter(row, column, std::move(cell));
  });
}

// A Boolean that stands in a cell comes as one of two formulas.
void SheetReader::ReadFormulas(const Range& sheet, const CellArea& area, CellGrid& grid) {
  const auto formula = connection_.Query<star::sheet::XCellRangeFormula>(RangeOf(connection_, sheet, area));
  const auto rows = connection_.Call([&] { return formula->getFormulaArray(); });
  ForEachCell(area, [&](int row, int column) {
    auto cell = grid.At(row, column);
    const auto& text = rows[row - area.row][column - area.column];
    const bool isTrue = text == "=TRUE()";
    if (!cell.isFormula || (!isTrue && text != "=FALSE()")) return;
    cell.isFormula = false;
    cell.value = isTrue;
    grid.Enter(row, column, std::move(cell));
  });
}

void SheetReader::ReadFormats(const Range& sheet, CellGrid& grid) {
  const auto supplier = connection_.Query<star::sheet::XUniqueCellFormatRangesSupplier>(sheet);
  const auto found = connection_.Call([&] { return supplier->getUniqueCellFormatRanges(); });
  const auto all = connection_.Query<star::container::XIndexAccess>(found);
  const auto count = connection_.Call([&] { return all->getCount(); });
  for (sal_Int32 i = 0; i < count; ++i) {
    const auto ranges = connection_.Call([&] { return all->getByIndex(i); });
    const auto format = FormatOf(ranges);
    if (format.text == workbook::kGeneralFormat) continue;
    const auto addressed = connection_.Query<star::sheet::XSheetCellRanges>(ranges);
    for (const auto& area : AreasOf(connection_.Call([&] { return addressed->getRangeAddresses(); }))) {
      if (format.isLogical) {
        MakeBooleans(area, grid);
      } else {
        grid.EnterFormat(area, format.text);
      }
    }
  }
}

SheetReader::Format SheetReader::FormatOf(const Any& ranges) {
  const auto properties = connection_.Query<star::beans::XPropertySet>(ranges);
  sal_Int32 key = 0;
  connection_.Call([&] { return properties->getPropertyValue("NumberFormat"); }) >>= key;
  const auto known = known_.find(key);
  if (known != known_.end()) return known->second;
  const auto format = connection_.Call([&] { return formats_->getByKey(key); });
  sal_Int16 type = 0;
  connection_.Call([&] { return format->getPropertyValue("Type"); }) >>= type;
  rtl::OUString text;
  connection_.Call([&] { return format->getPropertyValue("FormatString"); }) >>= text;
  return known_[key] = {FromUno(text), (type & star::util::NumberFormat::LOGICAL) != 0};
}

}  // namespace quintara::office
