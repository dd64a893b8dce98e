#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace quintara {

using XmlNode = pugi::xml_node;
using XmlAttribute = pugi::xml_attribute;

/// What a parser found wrong: code 0 when nothing is.
struct XmlParseError {
  int code = 0;
  std::string reason;
};

/// What becomes of the blanks of an element that holds nothing else.
enum class XmlBlanks { kDropped, kKept };

/// One XML document in memory. Nothing outside it is ever resolved.
class XmlDocument {
 public:
  /// Replaces the content by that of `bytes`. Refused are: what isn't well-formed, isn't UTF-8 or
  /// says that it isn't, has no root element or several, or has a document type declaration. A
  /// prefix needs no declaration: names count by what stands behind it. False when refused; the document is empty then
  /// and `ParseError` tells why.
  bool Parse(std::string_view bytes, XmlBlanks blanks = XmlBlanks::kDropped);
  const XmlParseError& ParseError() const noexcept { return error_; }

  /// The document node: parent of the root element and of what stands beside it.
  XmlNode Node() const noexcept { return document_; }
  XmlNode Root() const noexcept { return document_.document_element(); }

  /// The whole document as UTF-8, without any white space of its own. Failure 5 when a name or
  /// text in it can't be kept in XML: no reader would take it.
  std::string Text() const;

 private:
  pugi::xml_document document_;
  XmlParseError error_;
};

/// The name of a node or attribute without its prefix; empty for the document.
std::string_view BaseName(std::string_view qualifiedName) noexcept;

}  // namespace quintara
