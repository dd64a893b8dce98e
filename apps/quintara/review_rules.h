#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "quintara/review_nodes.h"

namespace quintara {

/// Patterns that mark the nodes of a review tree. A pattern ("*", "?", capitals ignored) is compared with the part
/// number, the node's text, and the path of part numbers from the root, parted by "/"; "part:" or "product:" in front
/// restricts it to nodes of that kind. The root is named by "." alone.
struct ReviewRules {
  std::vector<ChoiceRule> rules;
  bool everyNode = false;  ///< mark all matching nodes, not each object of the vault at its first one
};

/// What a rule left as it was.
struct RuleReport {
  std::string pattern;
  int left = 0;    ///< further nodes of objects that it marks at another one
  int locked = 0;  ///< nodes that a choice above them keeps
};

/// The first pattern that matches no node.
std::optional<std::string> UnmatchedPattern(const std::vector<ReviewNode>& nodes, const ReviewRules& rules);

/// Applies the rules from left to right, each to the nodes in the order of the tree, and marks as a user does: by
/// clicks, each of which gives a free node its next state. Taking out what was marked concerns all nodes.
std::vector<RuleReport> ApplyRules(const dialog::TreeContent& tree, const std::vector<ReviewNode>& nodes,
                                   const ReviewRules& rules, const std::function<void(int node)>& click);

}  // namespace quintara
