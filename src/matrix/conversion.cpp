#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "base/failure.h"
#include "base/numbers.h"
#include "matrix/Cls_Matrice.h"
#include "matrix/guarded.h"
#include "matrix/position_arithmetic.h"

namespace quintara {
namespace {

using Number = double XMLElement::*;

constexpr std::array<Number, 12> kNumbers = {
    &XMLElement::XX, &XMLElement::XY, &XMLElement::XZ, &XMLElement::YX, &XMLElement::YY, &XMLElement::YZ,
    &XMLElement::ZX, &XMLElement::ZY, &XMLElement::ZZ, &XMLElement::XO, &XMLElement::YO, &XMLElement::ZO};

// The field that an attribute such as "YX" or "ZO" fills; null for any other name.
Number NumberOf(std::string_view name) {
  constexpr std::string_view kAxes = "XYZ";
  if (name.size() != 2) return nullptr;
  const auto first = kAxes.find(name[0]);
  const auto second = kAxes.find(name[1]);
  if (first == kAxes.npos) return nullptr;
  if (name[1] == 'O') return kNumbers[9 + first];
  return second == kAxes.npos ? nullptr : kNumbers[3 * first + second];
}

void Store(XMLElement& element, std::string_view name, const char* value) {
  if (const auto number = NumberOf(name)) {
    element.*number = ToDouble(value);
  } else if (name == "PART_NUMBER") {
    element.PartNumber = value;
  } else if (name == "INSTANCE_NAME") {
    element.InstanceName = value;
  } else if (name == "FULL_INSTANCE_NAME") {
    element.FullInstanceName = value;
  }
}

}  // namespace

bool Cls_Matrice::ConvertNodeToXMLElement(XmlNode Node, XMLElement& Element) {
  return Guarded("ConvertNodeToXMLElement", [&] {
    Element = {};
    if (!Node) throw Failure(failure::kObjectNotSet);
    const auto attributes = Node.attributes();
    Counter16(std::distance(attributes.begin(), attributes.end()));
    for (const auto attribute : attributes) Store(Element, BaseName(attribute.name()), attribute.value());
    return true;
  });
}

// An element that many instances stand below is read once; one that can't be read fails each time.
bool Cls_Matrice::ConvertOnce(MatrixIndex& Document, int element) {
  auto& record = Document.RecordOf(element);
  if (!record.isConverted) {
    record.isConverted = ConvertNodeToXMLElement(Document.Node(element), record.element);
  }
  return record.isConverted;
}

bool Cls_Matrice::ConvertXMLElementToMatrix(const XMLElement& Element, std::span<double> Matrix) {
  return Guarded("ConvertXMLElementToMatrix", [&] {
    if (Matrix.size() != kNumbers.size()) throw Failure(failure::kSubscriptOutOfRange);
    std::ranges::transform(kNumbers, Matrix.begin(), [&](Number number) { return Element.*number; });
    return true;
  });
}

bool Cls_Matrice::MultiplicateMatrixes(std::span<const double> MatriceFils, std::span<const double> MatricePere,
                                       std::span<double> Result) {
  return Guarded("MultiplicateMatrixes", [&] {
    Compose(MatriceFils, MatricePere, Result);
    return true;
  });
}

}  // namespace quintara
