#include "matrix/xml_element.h"

#include <cstddef>

#include "base/numbers.h"
#include "base/xml.h"

namespace quintara {
namespace {

// The number that an attribute such as "YX" or "ZO" holds.
int NumberOf(char first, char second) {
  constexpr std::string_view kAxes = "XYZ";
  const auto row = kAxes.find(first);
  const auto column = kAxes.find(second);
  if (row == kAxes.npos) return kNoField;
  if (second == 'O') return static_cast<int>(9 + row);
  return column == kAxes.npos ? kNoField : static_cast<int>(3 * row + column);
}

}  // namespace

int FieldOf(std::string_view qualifiedName) {
  // A name as short as those of the numbers has no prefix.
  const auto name = qualifiedName.size() <= 2 ? qualifiedName : BaseName(qualifiedName);
  if (name.size() == 2) return NumberOf(name[0], name[1]);
  if (name == "PART_NUMBER") return kPartNumberField;
  if (name == "INSTANCE_NAME") return kInstanceNameField;
  if (name == "FULL_INSTANCE_NAME") return kFullInstanceNameField;
  return kNoField;
}

bool StoreField(XMLElement& element, int field, std::string_view value) {
  switch (field) {
    case kNoField: return true;
    case kPartNumberField: element.PartNumber = value; return true;
    case kInstanceNameField: element.InstanceName = value; return true;
    case kFullInstanceNameField: element.FullInstanceName = value; return true;
    default: break;
  }
  const auto number = TryToDouble(value);
  if (number) element.*kXMLElementNumbers[static_cast<std::size_t>(field)] = *number;
  return number.has_value();
}

}  // namespace quintara
