#pragma once

#include <array>
#include <string_view>

namespace quintara {

/// One element of a matrix file, as it is read: who the instance is and where it stands in its
/// parent. The texts are the document's own and live as long as it stays unchanged.
struct XMLElement {
  std::string_view PartNumber;
  std::string_view InstanceName;
  std::string_view FullInstanceName;  ///< instance names from the root down, parted by backslashes
  double XX = 0, XY = 0, XZ = 0;
  double YX = 0, YY = 0, YZ = 0;
  double ZX = 0, ZY = 0, ZZ = 0;
  double XO = 0, YO = 0, ZO = 0;
  bool Used = false;  ///< False when read; what has been given away is counted for each part number
};

/// The numbers of `XMLElement`, in the order of `PositionMatrix`.
inline constexpr std::array<double XMLElement::*, 12> kXMLElementNumbers = {
    &XMLElement::XX, &XMLElement::XY, &XMLElement::XZ, &XMLElement::YX, &XMLElement::YY, &XMLElement::YZ,
    &XMLElement::ZX, &XMLElement::ZY, &XMLElement::ZZ, &XMLElement::XO, &XMLElement::YO, &XMLElement::ZO};

/// The fields of `XMLElement`: 0 to 11 its numbers in their order, then the three texts.
enum XMLField : int { kNoField = -1, kPartNumberField = 12, kInstanceNameField, kFullInstanceNameField };

/// The field that an attribute of the matrix file fills, by its base name; `kNoField` for any
/// other attribute.
int FieldOf(std::string_view qualifiedName);

/// Fills a field. False, with the record as it was, for a text that isn't a number where one belongs.
bool StoreField(XMLElement& element, int field, std::string_view value);

}  // namespace quintara
