#include "matrix/xml_element.h"

#include "base/numbers.h"
#include "base/xml.h"

namespace quintara {
namespace {

// The field that an attribute such as "YX" or "ZO" fills; null for any other name.
double XMLElement::*NumberOf(std::string_view name) {
  constexpr std::string_view kAxes = "XYZ";
  if (name.size() != 2) return nullptr;
  const auto first = kAxes.find(name[0]);
  const auto second = kAxes.find(name[1]);
  if (first == kAxes.npos) return nullptr;
  if (name[1] == 'O') return kXMLElementNumbers[9 + first];
  return second == kAxes.npos ? nullptr : kXMLElementNumbers[3 * first + second];
}

}  // namespace

bool StoreAttribute(XMLElement& element, std::string_view qualifiedName, std::string_view value) {
  // A name as short as those of the numbers has no prefix.
  const auto name = qualifiedName.size() <= 2 ? qualifiedName : BaseName(qualifiedName);
  if (const auto field = NumberOf(name)) {
    const auto number = TryToDouble(value);
    if (number) element.*field = *number;
    return number.has_value();
  }
  if (name == "PART_NUMBER") element.PartNumber = value;
  if (name == "INSTANCE_NAME") element.InstanceName = value;
  if (name == "FULL_INSTANCE_NAME") element.FullInstanceName = value;
  return true;
}

}  // namespace quintara
