#pragma once

#include <string>
#include <vector>

#include "quintara/product_tree.h"

namespace quintara {

/// How a component comes into a flat product.
enum class Choice { kNone, kLight, kDocument };

/// Gives `choice` to each component that `pattern` matches. A pattern ("*", "?", capitals ignored)
/// is compared with the part number, the instance name, its last piece, and the path of part
/// numbers from the root, parted by "/"; "part:" or "product:" in front restricts it to components
/// without or with children.
struct ChoiceRule {
  Choice choice;
  std::string pattern;
};

/// What each node of the tree comes to when the rules are applied, the first one first. The root
/// has no choice. A rule on a node overwrites what was chosen below it, and below a component that
/// is taken nothing can be chosen. Wrong use for a pattern that matches nothing.
std::vector<Choice> Choose(const std::vector<ProductNode>& nodes, const std::vector<ChoiceRule>& rules);

/// The nodes that are taken, as indexes, in the order of the tree: of each part number the first.
std::vector<std::size_t> TakenNodes(const std::vector<ProductNode>& nodes, const std::vector<Choice>& choices);

}  // namespace quintara
