#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string_view>
#include <tuple>

#include "base/numbers.h"
#include "base/text.h"
#include "base/xml.h"
#include "hosts/cad/product_file.h"

namespace quintara::cad {
namespace {

bool IsForbidden(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte < 0x20 && character != '\t' && character != '\n' && character != '\r';
}

void RequireStorable(const std::string& text, const std::string& what) {
  const bool isStorable = IsUtf8(text) && std::ranges::none_of(text, IsForbidden) &&
                          text.find("\xEF\xBF\xBE") == text.npos && text.find("\xEF\xBF\xBF") == text.npos;
  if (!isStorable) throw Failure(failure::kInvalidCall, what + " holds a character that can't be saved");
}

void Put(XmlNode element, const char* attribute, const std::string& text, const std::string& owner) {
  RequireStorable(text, "The " + std::string(attribute) + " of " + owner);
  element.append_attribute(attribute).set_value(text.c_str());
}

void PutPosition(XmlNode element, const PositionMatrix& position) {
  std::string text;
  for (const double number : position) {
    if (!text.empty()) text += ' ';
    text += NumberText(number).View();
  }
  element.append_attribute("position").set_value(text.c_str());
}

XmlNode AppendOnNewLine(XmlNode parent, const char* name, const char* indent) {
  parent.append_child(pugi::node_pcdata).set_value(indent);
  return parent.append_child(name);
}

void PutProperties(XmlNode element, const PropertyList& properties, const std::string& owner, const char* indent) {
  for (const auto& property : properties.All()) {
    auto child = AppendOnNewLine(element, "Property", indent);
    Put(child, "name", property->name, "a property of " + owner);
    Put(child, "value", property->value, "the property \"" + property->name + "\" of " + owner);
  }
}

void CloseOnNewLine(XmlNode element, const char* indent) {
  if (element.first_child()) element.append_child(pugi::node_pcdata).set_value(indent);
}

// By the bits: a negative zero has to come back as one.
bool IsIdentity(const PositionMatrix& position) {
  using Bits = std::array<std::uint64_t, std::tuple_size_v<PositionMatrix>>;
  return std::bit_cast<Bits>(position) == std::bit_cast<Bits>(kIdentityPosition);
}

constexpr const char* kEnd = "\n";
constexpr const char* kOuter = "\n  ";
constexpr const char* kInner = "\n    ";

}  // namespace

std::string ProductFileText(const ProductFile& product) {
  XmlDocument document;
  auto root = document.Node().append_child("ZVAProduct");
  const auto whole = "\"" + product.partNumber + "\"";
  Put(root, "partNumber", product.partNumber, whole);
  if (product.name) Put(root, "name", *product.name, whole);
  if (!IsIdentity(product.position)) PutPosition(root, product.position);
  PutProperties(root, product.properties, whole, kOuter);
  for (const auto& component : product.components) {
    auto element = AppendOnNewLine(root, "Component", kOuter);
    const auto owner = "\"" + component.name + "\"";
    Put(element, "name", component.name, owner);
    Put(element, "file", component.file, owner);
    PutPosition(element, component.position);
    PutProperties(element, component.properties, owner, kInner);
    CloseOnNewLine(element, kOuter);
  }
  for (const auto& reference : product.references) {
    auto element = AppendOnNewLine(root, "Reference", kOuter);
    Put(element, "file", reference.file, "a reference");
    PutProperties(element, reference.properties, "\"" + reference.file + "\"", kInner);
    CloseOnNewLine(element, kOuter);
  }
  CloseOnNewLine(root, kEnd);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + document.Text() + "\n";
}

}  // namespace quintara::cad
