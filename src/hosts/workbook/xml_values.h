#pragma once

#include <string>
#include <string_view>

#include "base/xml.h"
#include "hosts/workbook/cell_grid.h"

/// What a cell is in the spreadsheet program's XML form of 2003: an element `Data` with a type and a text.
namespace quintara::workbook::xml {

/// The attribute or the first child of this name, whatever their prefix.
XmlAttribute AttributeOf(XmlNode node, std::string_view name);
XmlNode ChildOf(XmlNode node, std::string_view name);

/// The cell that an element `Data` describes. Fails with 1004 for an unknown type, and for a text that is no
/// value of its type.
Cell ReadValue(XmlNode data);
/// Whether this is what a cell with an error shows. Some programs write it as the text that a formula gives.
bool IsError(std::string_view text);
/// Describes the value of `cell`, which is in use, within the element `Cell`.
void WriteValue(XmlNode element, const Cell& cell);

/// The number format that a name such as "Fixed" stands for; any other text is one itself.
std::string FormatNamed(std::string_view name);

}  // namespace quintara::workbook::xml
