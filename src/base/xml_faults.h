#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "base/xml.h"

/// What the XML library lets pass although it isn't well-formed.
namespace quintara::xml {

/// What is wrong, for the user; empty when nothing is.
using Fault = std::optional<std::string>;

/// True for a control character that XML can't hold.
bool IsForbiddenControl(char byte);
XmlNode NextInDocumentOrder(XmlNode node, XmlNode top);

/// Bytes that are no UTF-8, or hold what no XML document may.
Fault FaultInBytes(std::string_view bytes);

/// The rest, in what the library made of `bytes`, whose references it left as they stand: they are
/// decoded on the way.
Fault FaultInTree(XmlNode document, std::string_view bytes);

}  // namespace quintara::xml
