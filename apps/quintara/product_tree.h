#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "access/contracts/zorva.h"
#include "base/ref.h"

namespace quintara {

/// One node of an open product.
struct ProductNode {
  Ref<zorva::Product> product;
  std::size_t parent = 0;  ///< index of the node above; of the root, its own
  int depth = 0;
  std::string partNumber;  ///< empty when it can't be read
  std::string name;        ///< the instance name
  std::string file;        ///< full path of the document behind it; empty for none
  bool isLight = false;    ///< a light representation
  bool isWhole = false;    ///< False for a component that isn't loaded, or can't be read in full
  bool hasChildren = false;
};

/// All nodes of a product, parents before children, in the order of the tree; the root comes
/// first. Parts of a node that can't be read are left empty.
std::vector<ProductNode> NodesOf(const Ref<zorva::Product>& root);

/// The value of a string property of a product; empty when it has none of that name.
std::string StringProperty(const Ref<zorva::Product>& product, const std::string& name);

/// True when a file's name ends in `extension` (with its point), whatever the case.
bool HasExtension(const std::string& path, const std::string& extension);

}  // namespace quintara
