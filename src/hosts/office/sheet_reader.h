#pragma once

#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/util/XNumberFormats.hpp>
#include <map>
#include <string>

#include "hosts/office/connection.h"
#include "hosts/workbook/cell_grid.h"

namespace quintara::office {

/// Reads whole worksheets. To be used within `Connection::Talk`.
class SheetReader {
 public:
  SheetReader(Connection& connection, const Reference<com::sun::star::util::XNumberFormats>& formats)
      : connection_(connection), formats_(formats) {}

  CellGrid Read(const Reference<com::sun::star::table::XCellRange>& sheet);

 private:
  using Addresses = uno::Sequence<com::sun::star::table::CellRangeAddress>;
  using Range = Reference<com::sun::star::table::XCellRange>;

  struct Format {
    std::string text;
    bool isLogical;
  };

  Addresses Content(const Range& sheet, int flags);
  void ReadBlock(const Range& sheet, const CellArea& area, CellGrid& grid);
  void ReadFormulas(const Range& sheet, const CellArea& area, CellGrid& grid);
  void ReadFormats(const Range& sheet, CellGrid& grid);
  Format FormatOf(const uno::Any& ranges);

  Connection& connection_;
  Reference<com::sun::star::util::XNumberFormats> formats_;
  std::map<sal_Int32, Format> known_;
};

}  // namespace quintara::office
