#include "quintara/matrix_instances.h"

#include <algorithm>

#include "base/failure.h"
#include "base/xml.h"
#include "matrix/position_arithmetic.h"
#include "matrix/xml_element.h"

namespace quintara {
namespace {

XMLElement ElementOf(XmlNode node) {
  XMLElement element;
  for (auto attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute()) {
    const auto field = FieldOf(attribute.name());
    if (field != kNoField && !StoreField(element, field, attribute.value())) {
      throw Failure(failure::kTypeMismatch, "'" + std::string(attribute.value()) + "' in a matrix is no number");
    }
  }
  return element;
}

PositionMatrix PositionOf(const XMLElement& element) {
  PositionMatrix position{};
  std::ranges::transform(kXMLElementNumbers, position.begin(), [&](auto number) { return element.*number; });
  return position;
}

// The chains are composed upward, as positioning does: sums in another order would give other bits.
PositionMatrix Composed(XmlNode node) {
  auto position = PositionOf(ElementOf(node));
  for (auto above = node.parent(); above.type() == pugi::node_element; above = above.parent()) {
    position = Compose(position, PositionOf(ElementOf(above)));
  }
  return position;
}

// The element behind `node`, with what is below it or without.
XmlNode Behind(XmlNode node, bool withBelow) {
  const auto element = [](XmlNode at) {
    while (at && at.type() != pugi::node_element) at = at.next_sibling();
    return at;
  };
  if (withBelow) {
    if (const auto child = element(node.first_child())) return child;
  }
  for (; node.type() == pugi::node_element; node = node.parent()) {
    if (const auto sibling = element(node.next_sibling())) return sibling;
  }
  return {};
}

Variant ValueAt(const Ref<excel::Worksheet>& sheet, int row, int column) {
  return sheet->Cells(row, column)->Value();
}

PositionMatrix PositionAt(const Ref<excel::Worksheet>& tree, int row) {
  PositionMatrix position{};
  for (int column = matrix_workbook::kFirstOfPosition; auto& number : position) {
    number = ValueAt(tree, row, column++).ToDouble();
  }
  return position;
}

// `rows` leads from the root to the instance.
PositionMatrix Composed(const Ref<excel::Worksheet>& tree, const std::vector<int>& rows) {
  auto position = PositionAt(tree, rows.back());
  for (auto row = rows.rbegin() + 1; row != rows.rend(); ++row) position = Compose(position, PositionAt(tree, *row));
  return position;
}

}  // namespace

std::vector<MatrixInstance> InstancesInXml(const SoughtInstances& sought, const std::string& matrix) {
  XmlDocument document;
  if (!document.Parse(matrix)) throw Failure(failure::kInvalidFormat, "the matrix: " + document.ParseError().reason);
  std::vector<MatrixInstance> instances;
  bool isComponent = false;
  for (auto node = document.Root(); node; node = Behind(node, !isComponent)) {
    const auto partNumber = ElementOf(node).PartNumber;
    isComponent = sought.components.contains(partNumber);
    if (sought.partNumbers.contains(partNumber)) instances.push_back({std::string(partNumber), Composed(node)});
  }
  return instances;
}

std::vector<MatrixInstance> InstancesInWorkbook(const SoughtInstances& sought, const matrix_workbook::Sheets& sheets) {
  std::vector<MatrixInstance> instances;
  std::vector<int> rows;             // from the root to the present instance
  std::size_t levelOfComponent = 0;  // of the one that holds it; 0 for none
  for (int entry = 1;; ++entry) {
    const auto partNumber = ValueAt(sheets.list, entry, matrix_workbook::kPartNumber).ToText();
    if (partNumber.empty()) return instances;
    const int level = ValueAt(sheets.list, entry, matrix_workbook::kLevel).ToInteger16();
    if (level < 1 || level > static_cast<int>(rows.size()) + 1) {
      throw Failure(failure::kInvalidFormat, "the matrix: row " + std::to_string(entry) + " has no parent");
    }
    rows.resize(static_cast<std::size_t>(level) - 1);
    rows.push_back(ValueAt(sheets.list, entry, matrix_workbook::kRow).ToInteger16());
    if (rows.size() <= levelOfComponent) levelOfComponent = 0;
    if (levelOfComponent != 0) continue;
    if (sought.components.contains(partNumber)) levelOfComponent = rows.size();
    if (sought.partNumbers.contains(partNumber)) instances.push_back({partNumber, Composed(sheets.tree, rows)});
  }
}

}  // namespace quintara
