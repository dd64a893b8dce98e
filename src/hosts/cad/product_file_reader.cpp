#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>
#include <unordered_set>

#include "base/numbers.h"
#include "base/xml.h"
#include "hosts/cad/file_kind.h"
#include "hosts/cad/product_file.h"

namespace quintara::cad {
namespace {

using std::string_view;

/// Reads one file; every complaint names it.
class Reader {
 public:
  explicit Reader(const std::string& path) : path_(path) {}

  ProductFile Read(const std::string& bytes);

 private:
  [[noreturn]] void Complain(XmlNode element, const std::string& what) const;
  void RequireAttributes(XmlNode element, std::initializer_list<string_view> known) const;
  void RequireNothingBut(XmlNode element, std::initializer_list<string_view> known) const;
  std::string Required(XmlNode element, const char* attribute) const;
  std::string Filled(XmlNode element, const char* attribute) const;
  PositionMatrix PositionOf(XmlNode element) const;
  PropertyList PropertiesOf(XmlNode element) const;
  ProductFile::Component ComponentOf(XmlNode element) const;
  ProductFile::Reference ReferenceOf(XmlNode element) const;
  void ReadChildren(XmlNode root, ProductFile& product) const;

  const std::string& path_;
};

// "Component 3 (PLATE.1)": the third of its kind, so that unnamed ones can be found too.
std::string Described(XmlNode element) {
  int place = 1;
  for (auto before = element.previous_sibling(element.name()); before;
       before = before.previous_sibling(element.name())) {
    ++place;
  }
  auto text = "<" + std::string(element.name()) + "> " + std::to_string(place);
  const string_view name = element.attribute("name").value();
  return name.empty() ? text : text + " (\"" + std::string(name) + "\")";
}

void Reader::Complain(XmlNode element, const std::string& what) const {
  ThrowUnreadable(path_, Described(element) + ": " + what);
}

bool IsBlank(string_view text) {
  return text.find_first_not_of(" \t\r\n") == text.npos;
}

void Reader::RequireAttributes(XmlNode element, std::initializer_list<string_view> known) const {
  for (auto attribute : element.attributes()) {
    if (std::ranges::find(known, string_view(attribute.name())) == known.end()) {
      Complain(element, "the attribute \"" + std::string(attribute.name()) + "\" isn't known");
    }
  }
}

void Reader::RequireNothingBut(XmlNode element, std::initializer_list<string_view> known) const {
  for (auto child : element.children()) {
    switch (child.type()) {
      case pugi::node_element:
        if (std::ranges::find(known, string_view(child.name())) == known.end()) {
          Complain(element, "<" + std::string(child.name()) + "> isn't known there");
        }
        break;
      case pugi::node_pcdata:
      case pugi::node_cdata:
        if (!IsBlank(child.value())) Complain(element, "no text can stand there");
        break;
      default: break;
    }
  }
}

std::string Reader::Required(XmlNode element, const char* attribute) const {
  const auto found = element.attribute(attribute);
  if (!found) Complain(element, "the attribute \"" + std::string(attribute) + "\" is missing");
  return found.value();
}

std::string Reader::Filled(XmlNode element, const char* attribute) const {
  auto text = Required(element, attribute);
  if (text.empty()) Complain(element, "the attribute \"" + std::string(attribute) + "\" is empty");
  return text;
}

PositionMatrix Reader::PositionOf(XmlNode element) const {
  const auto text = Required(element, "position");
  PositionMatrix position{};
  std::size_t count = 0;
  for (string_view rest = text; !rest.empty();) {
    const auto end = std::min(rest.find(' '), rest.size());
    if (count == position.size()) Complain(element, "the position has more than twelve numbers");
    try {
      position[count++] = ToDouble(rest.substr(0, end));
    } catch (const Failure& failure) {
      Complain(element, "the position can't be read: " + failure.Description());
    }
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  if (count != position.size()) Complain(element, "the position has " + std::to_string(count) + " numbers, not twelve");
  return position;
}

PropertyList Reader::PropertiesOf(XmlNode element) const {
  PropertyList properties;
  std::unordered_set<std::string> names;
  for (auto property : element.children("Property")) {
    RequireAttributes(property, {"name", "value"});
    RequireNothingBut(property, {});
    auto name = Filled(property, "name");
    auto value = Required(property, "value");
    if (!names.insert(name).second) Complain(element, "the property \"" + name + "\" stands twice");
    properties.AppendNew({std::move(name), std::move(value)});
  }
  return properties;
}

ProductFile::Component Reader::ComponentOf(XmlNode element) const {
  RequireAttributes(element, {"name", "file", "position"});
  RequireNothingBut(element, {"Property"});
  ProductFile::Component component{Required(element, "name"), Filled(element, "file"), PositionOf(element),
                                   PropertiesOf(element)};
  if (!KnownKind(component.file)) Complain(element, "\"" + component.file + "\" is no file of the CAD host");
  return component;
}

ProductFile::Reference Reader::ReferenceOf(XmlNode element) const {
  RequireAttributes(element, {"file"});
  RequireNothingBut(element, {"Property"});
  ProductFile::Reference reference{Filled(element, "file"), PropertiesOf(element)};
  if (KindOf(reference.file) == FileKind::kProduct) Complain(element, "a product file holds its properties itself");
  return reference;
}

void Reader::ReadChildren(XmlNode root, ProductFile& product) const {
  std::unordered_set<std::string> files;
  for (auto element : root.children("Component")) {
    files.insert(product.components.emplace_back(ComponentOf(element)).file);
  }
  for (auto element : root.children("Reference")) {
    const auto& file = product.references.emplace_back(ReferenceOf(element)).file;
    if (files.erase(file) == 0) Complain(element, "\"" + file + "\" stands twice, or is the file of no component");
  }
}

ProductFile Reader::Read(const std::string& bytes) {
  XmlDocument document;
  if (!document.Parse(bytes)) ThrowUnreadable(path_, document.ParseError().reason);
  const auto root = document.Root();
  if (string_view(root.name()) != "ZVAProduct") ThrowUnreadable(path_, "its root element isn't <ZVAProduct>");
  RequireAttributes(root, {"partNumber", "name", "position"});
  RequireNothingBut(root, {"Property", "Component", "Reference"});
  ProductFile product;
  product.partNumber = Filled(root, "partNumber");
  if (root.attribute("name")) product.name = Filled(root, "name");
  if (root.attribute("position")) product.position = PositionOf(root);
  product.properties = PropertiesOf(root);
  ReadChildren(root, product);
  return product;
}

}  // namespace

ProductFile ParseProductFile(const std::string& bytes, const std::string& path) {
  return Reader(path).Read(bytes);
}

}  // namespace quintara::cad
