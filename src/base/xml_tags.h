#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quintara::xml {

/// What the XML library lets pass in start tags: an attribute that stands twice, a
/// "<" in a value, a name with more than one colon or nothing on one side of it.
/// `bytes` must have been taken by the library, so tags, quotes and sections are known to close.
std::optional<std::string> FaultInTags(std::string_view bytes);

}  // namespace quintara::xml
