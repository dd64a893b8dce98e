#include <algorithm>

#include "base/failure.h"
#include "base/numbers.h"
#include "matrix/Cls_Matrice.h"
#include "matrix/guarded.h"
#include "matrix/position_arithmetic.h"

namespace quintara {
namespace {

int AttributeCount(XmlNode node) {
  int count = 0;
  for (auto attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute()) ++count;
  return count;
}

}  // namespace

bool Cls_Matrice::ConvertNodeToXMLElement(XmlNode Node, XMLElement& Element) {
  return Guarded("Cls_Matrice.ConvertNodeToXMLElement", [&] {
    Element = {};
    if (!Node) throw Failure(failure::kObjectNotSet);
    [[maybe_unused]] const Counter16 count = AttributeCount(Node);
    for (auto attribute = Node.first_attribute(); attribute; attribute = attribute.next_attribute()) {
      if (!StoreField(Element, FieldOf(attribute.name()), attribute.value())) ToDouble(attribute.value());
    }
    return true;
  });
}

// What the index couldn't read is read again here, where its failure belongs.
bool Cls_Matrice::ConvertOnce(MatrixIndex& Document, int element) {
  auto& record = Document.RecordOf(element);
  return record.isConverted || ConvertNodeToXMLElement(Document.Node(element), record.element);
}

bool Cls_Matrice::ConvertXMLElementToMatrix(const XMLElement& Element, std::span<double> Matrix) {
  return Guarded("Cls_Matrice.ConvertXMLElementToMatrix", [&] {
    if (Matrix.size() != kXMLElementNumbers.size()) throw Failure(failure::kSubscriptOutOfRange);
    std::ranges::transform(kXMLElementNumbers, Matrix.begin(), [&](auto number) { return Element.*number; });
    return true;
  });
}

bool Cls_Matrice::MultiplicateMatrixes(std::span<const double> MatriceFils, std::span<const double> MatricePere,
                                       std::span<double> Result) {
  return Guarded("Cls_Matrice.MultiplicateMatrixes", [&] {
    Compose(MatriceFils, MatricePere, Result);
    return true;
  });
}

}  // namespace quintara
