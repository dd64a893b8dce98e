#include "hosts/workbook/xml_writer.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/failure.h"
#include "base/xml.h"
#include "hosts/workbook/xml_values.h"

namespace quintara::workbook {
namespace {

constexpr const char* kNamespace = "urn:schemas-microsoft-com:office:spreadsheet";

/// The workbook's number formats, each a style of its own.
class Styles {
 public:
  explicit Styles(XmlNode root) : styles_(root.append_child("Styles")) {
    auto plain = styles_.append_child("Style");
    plain.append_attribute("ss:ID") = "Default";
    plain.append_attribute("ss:Name") = "Normal";
    names_[kGeneralFormat] = "Default";
  }

  void Give(XmlNode element, const std::string& format) { element.append_attribute("ss:StyleID") = Of(format).c_str(); }

 private:
  const std::string& Of(const std::string& format) {
    auto& name = names_[format];
    if (!name.empty()) return name;
    name = "s" + std::to_string(names_.size());
    auto style = styles_.append_child("Style");
    style.append_attribute("ss:ID") = name.c_str();
    style.append_child("NumberFormat").append_attribute("ss:Format") = format.c_str();
    return name;
  }

  XmlNode styles_;
  std::map<std::string, std::string> names_;
};

bool IsForbidden(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

void RequireXmlText(const Cell& cell, int row, int column, const std::string& sheet) {
  if (!cell.value.IsText() || !std::ranges::any_of(cell.value.ToText(), IsForbidden)) return;
  throw Failure(failure::kRefused, "The text of cell " + AddressOf({row, column}) + " of worksheet \"" + sheet +
                                       "\" holds a control character, which a file of XML can't hold");
}

// As it stands, a carriage return would be read as the end of a line.
std::string WithCarriageReturns(const std::string& text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char byte : text) {
    if (byte == '\r') {
      escaped += "&#13;";
    } else {
      escaped += byte;
    }
  }
  return escaped;
}

/// Writes one worksheet.
class SheetWriter {
 public:
  SheetWriter(XmlNode workbook, const SheetContent& sheet, Styles& styles)
      : sheet_(sheet), cells_(sheet.cells), styles_(styles) {
    auto element = workbook.append_child("Worksheet");
    element.append_attribute("ss:Name") = sheet.name.c_str();
    table_ = element.append_child("Table");
  }

  void Write() {
    for (const auto& [area, format] : cells_.FormatAreas()) NoteArea(area, format);
    WriteColumns();
    const int last = std::max(cells_.Rows(), rowFormats_.empty() ? 0 : rowFormats_.rbegin()->first);
    for (int row = 1; row <= last; ++row) WriteRow(row);
  }

 private:
  void NoteArea(const CellArea& area, const std::string& format) {
    if (area.rows == kRows) {
      columns_.emplace(area.column, std::pair(area.columns, format));
    } else {
      for (int row = area.row; row <= area.LastRow(); ++row) rowFormats_.emplace(row, format);
    }
  }

  void WriteColumns() {
    for (const auto& [first, column] : columns_) {
      auto element = table_.append_child("Column");
      element.append_attribute("ss:Index") = first;
      if (column.first > 1) element.append_attribute("ss:Span") = column.first - 1;
      styles_.Give(element, column.second);
    }
  }

  bool IsWorthWriting(int row, int column) const {
    return cells_.At(row, column).IsInUse() || cells_.Format(row, column) != cells_.AreaFormat(row, column);
  }

  void WriteRow(int row) {
    const int columns = row <= cells_.Rows() ? cells_.Columns(row) : 0;
    const auto format = rowFormats_.find(row);
    XmlNode element;
    const auto begin = [&] {
      if (element) return;
      element = table_.append_child("Row");
      element.append_attribute("ss:Index") = row;
      if (format != rowFormats_.end()) styles_.Give(element, format->second);
    };
    if (format != rowFormats_.end()) begin();
    for (int column = 1; column <= columns; ++column) {
      if (!IsWorthWriting(row, column)) continue;
      begin();
      WriteCell(element, row, column);
    }
  }

  void WriteCell(XmlNode rowElement, int row, int column) {
    const auto& cell = cells_.At(row, column);
    auto element = rowElement.append_child("Cell");
    element.append_attribute("ss:Index") = column;
    const auto& format = cells_.Format(row, column);
    if (format != cells_.AreaFormat(row, column)) styles_.Give(element, format);
    if (!cell.IsInUse()) return;
    RequireXmlText(cell, row, column, sheet_.name);
    xml::WriteValue(element, cell);
  }

  const SheetContent& sheet_;
  const CellGrid& cells_;
  Styles& styles_;
  XmlNode table_;
  std::map<int, std::pair<int, std::string>> columns_;
  std::map<int, std::string> rowFormats_;
};

}  // namespace

std::string WriteXmlWorkbook(const Sheets& sheets) {
  XmlDocument document;
  auto declaration = document.Node().append_child(pugi::node_declaration);
  declaration.append_attribute("version") = "1.0";
  declaration.append_attribute("encoding") = "UTF-8";
  auto program = document.Node().append_child(pugi::node_pi);
  program.set_name("mso-application");
  program.set_value("progid=\"Excel.Sheet\"");
  auto root = document.Node().append_child("Workbook");
  root.append_attribute("xmlns") = kNamespace;
  root.append_attribute("xmlns:ss") = kNamespace;
  Styles styles(root);
  for (const auto& sheet : sheets) SheetWriter(root, sheet, styles).Write();
  return WithCarriageReturns(document.Text());
}

}  // namespace quintara::workbook
