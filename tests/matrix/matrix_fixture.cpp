#include "matrix/matrix_fixture.h"

#include <cstring>
#include <ostream>

namespace quintara::test {
namespace {

std::size_t Define(const Node& node, AssemblyStructure& structure) {
  AssemblyStructure::Definition definition{node.partNumber, !node.children.empty(), {}};
  for (const auto& child : node.children) {
    definition.children.push_back({child.name, Define(child, structure), child.position});
  }
  structure.definitions.push_back(std::move(definition));
  return structure.definitions.size() - 1;
}

std::string Digits(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}

void AppendElement(const Node& node, const std::string& parentFullName, std::string& text) {
  static const char* const kNames[] = {"XX", "XY", "XZ", "YX", "YY", "YZ", "ZX", "ZY", "ZZ", "XO", "YO", "ZO"};
  const std::string fullName = parentFullName.empty() ? node.name : parentFullName + "\\" + node.name;
  const std::string tag = node.children.empty() ? "PART" : "PRODUCT";
  text += "<" + tag + " PART_NUMBER=\"" + node.partNumber + "\" INSTANCE_NAME=\"" + node.name +
          "\" FULL_INSTANCE_NAME=\"" + fullName + "\"";
  for (std::size_t i = 0; i < 12; ++i) text += std::string(" ") + kNames[i] + "=\"" + Digits(node.position[i]) + "\"";
  text += ">";
  for (const auto& child : node.children) AppendElement(child, fullName, text);
  text += "</" + tag + ">";
}

}  // namespace

PositionMatrix At(double x, double y, double z) {
  PositionMatrix position = kIdentityPosition;
  position[9] = x;
  position[10] = y;
  position[11] = z;
  return position;
}

PositionMatrix WrittenOut(const PositionMatrix& c, const PositionMatrix& p) {
  return {(c[0] * p[0] + c[1] * p[3]) + c[2] * p[6],
          (c[0] * p[1] + c[1] * p[4]) + c[2] * p[7],
          (c[0] * p[2] + c[1] * p[5]) + c[2] * p[8],
          (c[3] * p[0] + c[4] * p[3]) + c[5] * p[6],
          (c[3] * p[1] + c[4] * p[4]) + c[5] * p[7],
          (c[3] * p[2] + c[4] * p[5]) + c[5] * p[8],
          (c[6] * p[0] + c[7] * p[3]) + c[8] * p[6],
          (c[6] * p[1] + c[7] * p[4]) + c[8] * p[7],
          (c[6] * p[2] + c[7] * p[5]) + c[8] * p[8],
          ((p[9] + c[9] * p[0]) + c[10] * p[3]) + c[11] * p[6],
          ((p[10] + c[9] * p[1]) + c[10] * p[4]) + c[11] * p[7],
          ((p[11] + c[9] * p[2]) + c[10] * p[5]) + c[11] * p[8]};
}

AssemblyStructure StructureOf(const Node& root) {
  AssemblyStructure structure{};
  structure.root = Define(root, structure);
  structure.definitions[structure.root].isAssembly = true;  // a document holds a product, were it empty
  return structure;
}

std::string MatrixText(const Node& root) {
  std::string text = "<?xml version='1.0' encoding='UTF-8'?>";
  AppendElement(root, {}, text);
  return text;
}

bool SameBits(const PositionMatrix& left, const PositionMatrix& right) {
  return std::memcmp(left.data(), right.data(), sizeof left) == 0;
}

bool Component::operator==(const Component& other) const {
  return partNumber == other.partNumber && name == other.name && SameBits(position, other.position);
}

std::ostream& operator<<(std::ostream& stream, const Component& component) {
  stream << component.partNumber << " \"" << component.name << "\" (";
  for (const double number : component.position) stream << number << " ";
  return stream << ")";
}

void Stage::GivenProduct(const Node& node) {
  document = host.Build(StructureOf(node));
  root = document->Product();
}

void Stage::GivenFlat(const std::vector<std::string>& partNumbers) {
  Node flat{"WIP~~TEST", "WIP~~TEST", kIdentityPosition, {}};
  for (std::size_t i = 0; i < partNumbers.size(); ++i) {
    flat.children.push_back({partNumbers[i], "child " + std::to_string(i + 1), kIdentityPosition, {}});
  }
  GivenProduct(flat);
}

std::vector<Component> Stage::Components() {
  std::vector<Component> components;
  const auto children = root->Products();
  for (int i = 1; i <= children->Count(); ++i) {
    const auto child = children->Item(i);
    Component component{child->PartNumber(), child->Name(), {}};
    child->Position()->GetComponents(component.position);
    components.push_back(std::move(component));
  }
  return components;
}

std::vector<PositionMatrix> Stage::Positions() {
  std::vector<PositionMatrix> positions;
  for (const auto& component : Components()) positions.push_back(component.position);
  return positions;
}

std::vector<std::string> Stage::Names() {
  std::vector<std::string> names;
  for (const auto& component : Components()) names.push_back(component.name);
  return names;
}

Box MatrixBox(const std::string& text) {
  return {text, 16, "QNTR"};
}

Box UnexpectedError(const std::string& operation, const std::string& description) {
  return MatrixBox("Unexpected error in function Cls_Matrice." + operation + " : " + description);
}

}  // namespace quintara::test
