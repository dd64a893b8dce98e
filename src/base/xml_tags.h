#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quintara::xml {

/// What a scan of the tags tells.
struct TagReport {
  std::optional<std::string> fault;  ///< empty when nothing is wrong
  int sections = 0;                  ///< comments, CDATA, instructions and declarations
};

/// Looks for what the XML library lets pass in start tags: an attribute that stands twice, a "<" in
/// a value, a name with more than one colon or nothing on one side of it. `bytes` must have been
/// taken by the library, so tags, quotes and sections are known to close.
TagReport ScanTags(std::string_view bytes);

}  // namespace quintara::xml
