#include "base/xml_faults.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>

#include "base/text.h"
#include "base/xml_tags.h"

namespace quintara::xml {
namespace {

// Eight bytes at a time: a word is looked at byte by byte only when one of them is below 0x20.
bool HasForbiddenControl(std::string_view bytes) {
  constexpr std::uint64_t kOnes = 0x0101010101010101U;
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  while (bytes.size() >= sizeof kOnes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), sizeof word);
    const auto group = bytes.substr(0, sizeof word);
    if (((word - kOnes * 0x20) & ~word & kHighBits) != 0 && std::ranges::any_of(group, IsForbiddenControl)) return true;
    bytes.remove_prefix(sizeof word);
  }
  return std::ranges::any_of(bytes, IsForbiddenControl);
}

bool IsXmlCharacter(std::uint32_t c) {
  return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0x10FFFF);
}

// `name` is what stands between "&" and ";".
bool AppendReference(std::string& text, std::string_view name) {
  if (name == "amp") return text += '&', true;
  if (name == "lt") return text += '<', true;
  if (name == "gt") return text += '>', true;
  if (name == "quot") return text += '"', true;
  if (name == "apos") return text += '\'', true;
  if (!name.starts_with('#')) return false;
  const bool hexadecimal = name.starts_with("#x");
  const auto digits = name.substr(hexadecimal ? 2 : 1);
  std::uint32_t character = 0;
  const auto end = digits.data() + digits.size();
  const auto read = std::from_chars(digits.data(), end, character, hexadecimal ? 16 : 10);
  if (read.ec != std::errc{} || read.ptr != end || !IsXmlCharacter(character)) return false;
  AppendCharacter(text, static_cast<std::int32_t>(character));
  return true;
}

std::optional<std::string> Decoded(std::string_view raw) {
  std::string text;
  text.reserve(raw.size());
  while (!raw.empty()) {
    const auto ampersand = raw.find('&');
    text += raw.substr(0, ampersand);
    if (ampersand == raw.npos) break;
    const auto end = raw.find(';', ampersand);
    if (end == raw.npos || !AppendReference(text, raw.substr(ampersand + 1, end - ampersand - 1))) return {};
    raw.remove_prefix(end + 1);
  }
  return text;
}

Fault DecodeAttributes(XmlNode element) {
  for (auto attribute : element.attributes()) {
    if (std::strchr(attribute.value(), '&') == nullptr) continue;
    const auto text = Decoded(attribute.value());
    if (!text) return "the value of attribute " + std::string(attribute.name()) + " is not well-formed";
    attribute.set_value(text->c_str());
  }
  return {};
}

Fault DecodeText(XmlNode node) {
  if (std::strstr(node.value(), "]]>") != nullptr) return "\"]]>\" is not allowed in a text";
  if (std::strchr(node.value(), '&') == nullptr) return {};
  const auto text = Decoded(node.value());
  if (!text) return "a text holds a reference that is not defined";
  node.set_value(text->c_str());
  return {};
}

bool IsReservedTarget(XmlNode node) {
  return Capitals(node.name()) == "XML";
}

// The one before the end of the comment counts too.
bool HoldsTwoHyphens(std::string_view comment) {
  return comment.find("--") != comment.npos || comment.ends_with('-');
}

Fault FaultInNode(XmlNode node) {
  switch (node.type()) {
    case pugi::node_element: return DecodeAttributes(node);
    case pugi::node_pcdata: return DecodeText(node);
    case pugi::node_comment:
      if (HoldsTwoHyphens(node.value())) return "\"--\" is not allowed in a comment";
      return {};
    case pugi::node_doctype: return "a document type declaration is not accepted";
    case pugi::node_declaration:
      if (std::string_view(node.name()) != "xml") return "a processing instruction has a reserved name";
      return "an XML declaration stands elsewhere than at the start";
    case pugi::node_pi:
      if (IsReservedTarget(node)) return "a processing instruction has a reserved name";
      return {};
    default: return {};
  }
}

bool IsVersion(std::string_view text) {
  return text.size() > 2 && text.starts_with("1.") && text.find_first_not_of("0123456789", 2) == text.npos;
}

// The version, then perhaps the encoding, then perhaps whether it stands alone.
bool IsDeclarationInOrder(XmlNode declaration) {
  auto attribute = declaration.first_attribute();
  const auto take = [&](std::string_view name) {
    if (attribute.name() != name) return false;
    attribute = attribute.next_attribute();
    return true;
  };
  const std::string_view version = attribute.value();
  if (!take("version") || !IsVersion(version)) return false;
  take("encoding");
  const std::string_view standalone = attribute.value();
  if (take("standalone") && standalone != "yes" && standalone != "no") return false;
  return !attribute;
}

// The library also ends it at "/>", and then takes tags that stand before its "?>".
bool IsDeclarationClosed(std::string_view bytes) {
  return bytes.substr(0, bytes.find("?>")).find('<', 1) == bytes.npos;
}

Fault FaultInDeclaration(XmlNode declaration, std::string_view bytes) {
  if (!IsDeclarationClosed(bytes) || !IsDeclarationInOrder(declaration))
    return "the XML declaration is not well-formed";
  const std::string encoding = Capitals(declaration.attribute("encoding").value());
  if (encoding.empty() || encoding == "UTF-8" || encoding == "US-ASCII") return {};
  return "the encoding is " + encoding + ", only UTF-8 is accepted";
}

Fault FaultInTopLevel(XmlNode document) {
  int roots = 0;
  for (auto node : document.children()) {
    if (node.type() == pugi::node_element) ++roots;
    if (node.type() == pugi::node_cdata || node.type() == pugi::node_pcdata)
      return "text stands outside the root element";
  }
  if (roots == 0) return "there is no root element";
  if (roots > 1) return "there is more than one root element";
  return {};
}

// Whether more can be wrong, or waits to be decoded, than what the scan of the tags sees. `sections`:
// those beside the declaration at the start.
bool NeedsWalk(std::string_view bytes, int sections) {
  return sections > 0 || bytes.find('&') != bytes.npos || bytes.find("]]>") != bytes.npos;
}

}  // namespace

bool IsForbiddenControl(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

XmlNode NextInDocumentOrder(XmlNode node, XmlNode top) {
  if (node.first_child()) return node.first_child();
  while (node != top && !node.next_sibling()) node = node.parent();
  return node == top ? XmlNode() : node.next_sibling();
}

Fault FaultInBytes(std::string_view bytes) {
  if (bytes.empty()) return "the file is empty";
  if (!IsUtf8(bytes)) return "the text is not valid UTF-8";
  if (HasForbiddenControl(bytes)) return "a control character is not allowed here";
  if (bytes.find("\xEF\xBF\xBE") != bytes.npos || bytes.find("\xEF\xBF\xBF") != bytes.npos) {
    return "a character is not allowed here";
  }
  return {};
}

Fault FaultInTree(XmlNode document, std::string_view bytes) {
  const auto tags = ScanTags(bytes);
  if (tags.fault) return tags.fault;
  const XmlNode first = document.first_child();
  const bool declared = first.type() == pugi::node_declaration && bytes.starts_with("<?xml");
  if (declared) {
    if (auto fault = FaultInDeclaration(first, bytes)) return fault;
  }
  if (NeedsWalk(bytes, tags.sections - (declared ? 1 : 0))) {
    for (auto node = first; node; node = NextInDocumentOrder(node, document)) {
      if (declared && node == first) continue;
      if (auto fault = FaultInNode(node)) return fault;
    }
  }
  return FaultInTopLevel(document);
}

}  // namespace quintara::xml
