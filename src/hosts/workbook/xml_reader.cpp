#include "hosts/workbook/xml_reader.h"

#include <charconv>
#include <map>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "base/xml.h"
#include "hosts/workbook/xml_values.h"

namespace quintara::workbook {
namespace {

using namespace std::string_view_literals;
using xml::AttributeOf;
using xml::ChildOf;

constexpr int kMostParents = 100;

[[noreturn]] void ThrowNot(const std::string& name, const std::string& what) {
  throw Failure(failure::kRefused, name + " " + what + "; a workbook is only opened in the XML form of 2003");
}

void RequireXml(const std::string& bytes, const std::string& name) {
  if (bytes.empty()) ThrowNot(name, "is empty");
  if (bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv)) ThrowNot(name, "is a binary workbook");
  if (bytes.starts_with("PK\x03\x04"sv)) ThrowNot(name, "is a zipped workbook");
  if (bytes.find('<') == bytes.npos) ThrowNot(name, "is no workbook");
}

/// The number formats of the workbook's styles.
class Styles {
 public:
  explicit Styles(XmlNode root) {
    for (const auto style : ChildOf(root, "Styles").children()) {
      if (BaseName(style.name()) == "Style") styles_.emplace(AttributeOf(style, "ID").value(), style);
    }
    formats_[""] = FormatOf("Default");
  }

  /// The format of an element by its style; that of cells without a style where it has none.
  const std::string& Of(XmlNode element) {
    const std::string id = AttributeOf(element, "StyleID").value();
    const auto known = formats_.find(id);
    return known != formats_.end() ? known->second : formats_[id] = FormatOf(id);
  }

 private:
  std::string FormatOf(std::string id) const {
    for (int parents = 0; parents < kMostParents; ++parents) {
      const auto style = styles_.find(id);
      if (style == styles_.end()) break;
      const auto format = ChildOf(style->second, "NumberFormat");
      if (format) return xml::FormatNamed(AttributeOf(format, "Format").value());
      id = AttributeOf(style->second, "Parent").value();
    }
    return kGeneralFormat;
  }

  std::map<std::string, XmlNode, std::less<>> styles_;
  std::map<std::string, std::string, std::less<>> formats_;
};

// The number in an attribute, from `least` on; `otherwise` without the attribute.
int NumberIn(XmlNode element, std::string_view name, int least, int otherwise) {
  const auto attribute = AttributeOf(element, name);
  if (!attribute) return otherwise;
  const std::string_view text = attribute.value();
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < least || number > kRows) {
    throw Failure(failure::kRefused, "\"" + std::string(text) + "\" is no " + std::string(name));
  }
  return number;
}

/// Where the elements of a list stand: each behind the one before it, unless it says where itself.
class Counter {
 public:
  /// Takes the place of `element`, which covers the ones behind it as `span` says. No place behind `last`.
  int Place(XmlNode element, std::string_view span, int last) {
    const int place = NumberIn(element, "Index", next_, next_);  // never where another one stands
    next_ = place + 1 + NumberIn(element, span, 0, 0);
    if (next_ - 1 > last) throw Failure(failure::kRefused, std::to_string(next_ - 1) + " is past the last one");
    return place;
  }
  int Next() const noexcept { return next_; }

 private:
  int next_ = 1;
};

/// Reads one worksheet. What fails, fails with the place.
class SheetReader {
 public:
  SheetReader(XmlNode worksheet, Styles& styles)
      : table_(ChildOf(worksheet, "Table")), styles_(styles), plain_(styles.Of({})) {}

  CellGrid Read() {
    ReadFormats();
    Counter rows;
    for (const auto row : table_.children()) {
      if (BaseName(row.name()) == "Row") ReadRow(row, rows.Place(row, "Span", kRows));
    }
    return std::move(cells_);
  }

 private:
  void EnterFormat(const CellArea& area, XmlNode element) {
    if (AttributeOf(element, "StyleID")) cells_.EnterFormat(area, styles_.Of(element));
  }

  // Where several hold a cell, the row comes before the column, and both before the table.
  void ReadFormats() {
    ReadRowFormats();
    Counter columns;
    for (const auto column : table_.children()) {
      if (BaseName(column.name()) != "Column") continue;
      const int first = columns.Place(column, "Span", kColumns);
      EnterFormat({1, first, kRows, columns.Next() - first}, column);
    }
    if (AttributeOf(table_, "StyleID")) {
      EnterFormat(kWholeSheet, table_);
    } else if (plain_ != kGeneralFormat) {
      cells_.EnterFormat(kWholeSheet, plain_);
    }
  }

  // Neighbours of one format make one area, so that there are few.
  void ReadRowFormats() {
    Counter rows;
    CellArea run{1, 1, 0, kColumns};
    std::string format;
    const auto enter = [&] {
      if (!format.empty()) cells_.EnterFormat(run, format);
    };
    for (const auto row : table_.children()) {
      if (BaseName(row.name()) != "Row") continue;
      const int first = rows.Place(row, "Span", kRows);
      const CellArea area{first, 1, rows.Next() - first, kColumns};
      auto next = AttributeOf(row, "StyleID") ? styles_.Of(row) : std::string();
      if (next == format && first == run.LastRow() + 1) {
        run = Union(run, area);
        continue;
      }
      enter();
      run = area;
      format = std::move(next);
    }
    enter();
  }

  void ReadRow(XmlNode element, int row) {
    Counter columns;
    for (const auto cell : element.children()) {
      if (BaseName(cell.name()) == "Cell") ReadCell(cell, row, columns.Place(cell, "MergeAcross", kColumns));
    }
  }

  void ReadCell(XmlNode element, int row, int column) {
    auto cell = ValueOf(element, row, column);
    const bool isStyled = static_cast<bool>(AttributeOf(element, "StyleID"));
    if (!isStyled && !cell.IsInUse()) return;
    const auto format = isStyled ? styles_.Of(element) : cells_.AreaFormat(row, column);
    cells_.Enter(row, column, std::move(cell), format);
  }

  static Cell ValueOf(XmlNode element, int row, int column) {
    const auto data = ChildOf(element, "Data");
    const bool isFormula = static_cast<bool>(AttributeOf(element, "Formula"));
    Cell cell;
    cell.isError = isFormula && !data;
    if (!data) return cell;
    try {
      cell = xml::ReadValue(data);
    } catch (const Failure& failure) {
      throw Failure(failure.Number(), "cell " + AddressOf({row, column}) + ": " + failure.Description());
    }
    if (!isFormula && cell.value == Variant("")) cell.value = {};
    if (isFormula && cell.value.IsText() && xml::IsError(cell.value.ToText())) cell.isError = true;
    return cell;
  }

  XmlNode table_;
  Styles& styles_;
  std::string plain_;
  CellGrid cells_;
};

Sheets SheetsOf(XmlNode root) {
  Sheets sheets;
  Styles styles(root);
  for (const auto worksheet : root.children()) {
    if (BaseName(worksheet.name()) != "Worksheet") continue;
    const std::string name = AttributeOf(worksheet, "Name").value();
    try {
      sheets.push_back({name, SheetReader(worksheet, styles).Read()});
    } catch (const Failure& failure) {
      throw Failure(failure.Number(), "worksheet \"" + name + "\", " + failure.Description());
    }
  }
  return sheets;
}

}  // namespace

Sheets ReadXmlWorkbook(const std::string& bytes, const std::string& name) {
  RequireXml(bytes, name);
  XmlDocument document;
  if (!document.Parse(bytes, XmlBlanks::kKept)) ThrowNot(name, "is damaged: " + document.ParseError().reason);
  if (BaseName(document.Root().name()) != "Workbook") ThrowNot(name, "is XML, but no workbook");
  Sheets sheets;
  try {
    sheets = SheetsOf(document.Root());
  } catch (const Failure& failure) {
    throw Failure(failure::kRefused, name + " is damaged: " + failure.Description());
  }
  if (sheets.empty()) ThrowNot(name, "has no worksheet");
  return sheets;
}

}  // namespace quintara::workbook
