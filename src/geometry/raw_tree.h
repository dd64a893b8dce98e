#pragma once

#include <TDF_Label.hxx>
#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "geometry/kernel.h"

namespace quintara {

/// The tree of a document as a STEP reader left it: names as the file gives them. What came apart
/// into nameless bodies or pieces is one part here.
struct RawTree {
  AssemblyStructure structure;                     ///< without changes and size
  std::vector<TDF_Label> labels;                   ///< of each definition; null for a root made up
  std::vector<std::vector<TDF_Label>> components;  ///< of each definition's children; empty for such a root
};

/// `rootName` names the root that is made up when the document has several.
/// Fails when there is nothing in the document, naming `path`.
RawTree RawTreeOf(const Document& document, const std::string& path);

}  // namespace quintara
