#include <atomic>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/task/XInteractionAbort.hpp>
#include <com/sun/star/task/XInteractionHandler.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <cppuhelper/implbase1.hxx>
#include <initializer_list>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "hosts/office/connection.h"
#include "hosts/office/passing_file.h"
#include "hosts/office/sheet_reader.h"

namespace quintara::office {
namespace {

namespace star = com::sun::star;
using uno::Any;

// So many cells at most go out in one piece.
constexpr std::size_t kBlockCells = 1U << 18U;

star::beans::PropertyValue Property(const char* name, const Any& value) {
  star::beans::PropertyValue property;
  property.Name = rtl::OUString::createFromAscii(name);
  property.Value = value;
  return property;
}

uno::Sequence<star::beans::PropertyValue> Properties(std::initializer_list<star::beans::PropertyValue> list) {
  return {list.begin(), static_cast<sal_Int32>(list.size())};
}

// Whatever LibreOffice asks on opening, nobody is there to answer: it gives up, and we say why.
class Refusal : public cppu::WeakImplHelper1<star::task::XInteractionHandler> {
 public:
  void SAL_CALL handle(const Reference<star::task::XInteractionRequest>& request) override {
    if (request->getRequest().getValueTypeName().indexOf("Password") >= 0) askedForPassword = true;
    for (const auto& choice : request->getContinuations()) {
      const Reference<star::task::XInteractionAbort> abort(choice, uno::UNO_QUERY);
      if (abort.is()) abort->select();
    }
  }

  std::atomic<bool> askedForPassword = false;
};

Any ValueFor(const Cell& cell) {
  if (cell.value.IsText()) return Any(ToUno(cell.value.ToText()));
  if (cell.value.IsBoolean()) return Any(cell.value.ToBoolean() ? 1.0 : 0.0);
  if (cell.value.IsDouble()) return Any(cell.value.ToDouble());
  // Nothing is how an error goes out, and the empty text is how an empty cell does.
  return cell.isError ? Any() : Any(rtl::OUString());
}

uno::Sequence<uno::Sequence<Any>> ValuesIn(const CellGrid& grid, const CellArea& area) {
  uno::Sequence<uno::Sequence<Any>> rows(area.rows);
  auto* row = rows.getArray();
  for (int i = 0; i < area.rows; ++i, ++row) {
    row->realloc(area.columns);
    auto* value = row->getArray();
    for (int j = 0; j < area.columns; ++j, ++value) *value = ValueFor(grid.At(area.row + i, area.column + j));
  }
  return rows;
}

class UnoDocument : public workbook::Document {
 public:
  UnoDocument(std::shared_ptr<Connection> connection, const Reference<star::sheet::XSpreadsheetDocument>& document)
      : connection_(std::move(connection)), document_(document) {
    connection_->Talk("Opening a workbook", [&] {
      auto sheets = connection_->Call([&] { return document_->getSheets(); });
      sheets_ = connection_->Query<star::container::XIndexAccess>(sheets);
    });
  }

  int SheetCount() override {
    return connection_->Talk("Counting worksheets",
                             [&] { return connection_->Call([&] { return sheets_->getCount(); }); });
  }

  CellGrid Read(int sheet) override {
    return connection_->Talk("Reading a worksheet",
                             [&] { return SheetReader(*connection_, Formats()).Read(Sheet(sheet)); });
  }

  void Write(int sheet, const CellGrid& grid) override {
    if (!grid.HasChanges()) return;
    connection_->Talk("Writing a worksheet", [&] {
      const auto cells = Sheet(sheet);
      for (const auto& [format, areas] : grid.ChangedFormats()) WriteFormat(sheet, format, areas);
      for (const auto& area : grid.ChangedBlocks(kBlockCells)) {
        const auto range = connection_->Call([&] {
          return cells->getCellRangeByPosition(area.column - 1, area.row - 1, area.LastColumn() - 1,
                                               area.LastRow() - 1);
        });
        const auto data = connection_->Query<star::sheet::XCellRangeData>(range);
        connection_->Call([&] { data->setDataArray(ValuesIn(grid, area)); });
      }
    });
  }

  std::string Bytes() override {
    const PassingFile copy(connection_->NewFile(".xls"));
    connection_->Talk("Saving a workbook", [&] {
      const auto storable = connection_->Query<star::frame::XStorable>(document_);
      connection_->Call([&] {
        storable->storeToURL(ToUno(FileUrl(copy.Path())),
                             Properties({Property("FilterName", Any(rtl::OUString("MS Excel 97")))}));
      });
    });
    return copy.Read();
  }

  void Close() override {
    connection_->Talk("Closing a workbook", [&] {
      const auto closeable = connection_->Query<star::util::XCloseable>(document_);
      connection_->Call([&] { closeable->close(true); });
    });
  }

  void SetSheetCount(int wanted) {
    connection_->Talk("Making worksheets", [&] {
      const auto sheets = connection_->Call([&] { return document_->getSheets(); });
      auto count = connection_->Call([&] { return sheets_->getCount(); });
      for (; count < wanted; ++count) {
        const auto name = ToUno("Sheet" + std::to_string(count + 1));
        connection_->Call([&] { sheets->insertNewByName(name, static_cast<sal_Int16>(count)); });
      }
    });
  }

 private:
  Reference<star::table::XCellRange> Sheet(int sheet) {
    const auto found = connection_->Call([&] { return sheets_->getByIndex(sheet - 1); });
    return connection_->Query<star::table::XCellRange>(found);
  }

  Reference<star::util::XNumberFormats> Formats() {
    const auto supplier = connection_->Query<star::util::XNumberFormatsSupplier>(document_);
    return connection_->Call([&] { return supplier->getNumberFormats(); });
  }

  sal_Int32 FormatKey(const std::string& format) {
    const star::lang::Locale english("en", "US", "");
    const auto formats = Formats();
    const auto known = connection_->Call([&] { return formats->queryKey(ToUno(format), english, false); });
    return known >= 0 ? known : connection_->Call([&] { return formats->addNew(ToUno(format), english); });
  }

  // All areas of a format at once.
  void WriteFormat(int sheet, const std::string& format, const std::vector<CellArea>& areas) {
    uno::Sequence<star::table::CellRangeAddress> addresses(static_cast<sal_Int32>(areas.size()));
    auto* address = addresses.getArray();
    for (const auto& area : areas) {
      *address++ = {static_cast<sal_Int16>(sheet - 1), area.column - 1, area.row - 1, area.LastColumn() - 1,
                    area.LastRow() - 1};
    }
    const auto factory = connection_->Query<star::lang::XMultiServiceFactory>(document_);
    const auto made = connection_->Call([&] { return factory->createInstance("com.sun.star.sheet.SheetCellRanges"); });
    const auto ranges = connection_->Query<star::sheet::XSheetCellRangeContainer>(made);
    connection_->Call([&] { ranges->addRangeAddresses(addresses, false); });
    const auto properties = connection_->Query<star::beans::XPropertySet>(ranges);
    const Any key(FormatKey(format));
    connection_->Call([&] { properties->setPropertyValue("NumberFormat", key); });
  }

  std::shared_ptr<Connection> connection_;
  Reference<star::sheet::XSpreadsheetDocument> document_;
  Reference<star::container::XIndexAccess> sheets_;
};

using Arguments = uno::Sequence<star::beans::PropertyValue>;

Reference<star::lang::XComponent> Open(Connection& connection, const rtl::OUString& url, const Arguments& arguments) {
  return connection.Call([&] { return connection.desktop->loadComponentFromURL(url, "_blank", 0, arguments); });
}

}  // namespace

std::unique_ptr<workbook::Document> AddDocument(const std::shared_ptr<Connection>& connection, int sheets) {
  const auto document = connection->Talk("Adding a workbook", [&] {
    const auto opened = Open(*connection, "private:factory/scalc", Properties({Property("Hidden", Any(true))}));
    return connection->Query<star::sheet::XSpreadsheetDocument>(opened);
  });
  auto result = std::make_unique<UnoDocument>(connection, document);
  result->SetSheetCount(sheets);
  return result;
}

std::unique_ptr<workbook::Document> LoadDocument(const std::shared_ptr<Connection>& connection, const std::string& path,
                                                 const std::string& name) {
  auto* const refusal = new Refusal;
  const Reference<star::task::XInteractionHandler> handler(refusal);
  Reference<star::sheet::XSpreadsheetDocument> document;
  try {
    document = connection->Talk("Opening " + name, [&] {
      const auto opened =
          Open(*connection, ToUno(FileUrl(path)),
               Properties({Property("Hidden", Any(true)), Property("InteractionHandler", Any(handler)),
                           Property("MacroExecutionMode", Any(star::document::MacroExecMode::NEVER_EXECUTE)),
                           Property("UpdateDocMode", Any(star::document::UpdateDocMode::NO_UPDATE))}));
      return Reference<star::sheet::XSpreadsheetDocument>(opened, uno::UNO_QUERY);
    });
  } catch (const Failure& error) {
    // So ends the question for the password of a workbook of the newer format; of the older one it gives nothing.
    if (error.Number() != failure::kRefused || !refusal->askedForPassword) throw;
  }
  if (document.is()) return std::make_unique<UnoDocument>(connection, document);
  throw Failure(failure::kRefused,
                name + (refusal->askedForPassword ? " is protected by a password" : " is damaged, or is no workbook"));
}

}  // namespace quintara::office
