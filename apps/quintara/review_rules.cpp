#include "quintara/review_rules.h"

#include <algorithm>
#include <set>
#include <utility>

#include "quintara/pattern.h"

namespace quintara {
namespace {

constexpr auto kRoot = ".";

const ReviewNode& At(const std::vector<ReviewNode>& nodes, int node) {
  return nodes.at(static_cast<std::size_t>(node));
}

std::string PathOfPartNumbers(const std::vector<ReviewNode>& nodes, int node) {
  std::vector<const std::string*> pieces;
  for (int at = node; at != 0; at = At(nodes, at).parent) pieces.push_back(&At(nodes, at).partNumber);
  std::string path;
  for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
    if (piece != pieces.rbegin()) path += '/';
    path += **piece;
  }
  return path;
}

bool Matches(const Pattern& pattern, const std::vector<ReviewNode>& nodes, int node) {
  const auto& tried = At(nodes, node);
  return pattern.TakesKind(tried.isProduct) && (pattern.Matches(tried.partNumber) || pattern.Matches(tried.text) ||
                                                pattern.Matches(PathOfPartNumbers(nodes, node)));
}

std::vector<int> NodesFor(const std::string& text, const std::vector<ReviewNode>& nodes) {
  if (text == kRoot) return {1};
  const Pattern pattern(text);
  std::vector<int> found;
  for (int node = 2; node < static_cast<int>(nodes.size()); ++node) {
    if (Matches(pattern, nodes, node)) found.push_back(node);
  }
  return found;
}

bool IsAnyMarkedBelow(const dialog::TreeContent& tree, int top) {
  for (int node = tree.FirstChild(top); node != 0;) {
    if (ChoiceOf(tree, node) != Choice::kNone) return true;
    int next = tree.FirstChild(node);
    for (; next == 0 && node != top; node = tree.Parent(node)) next = tree.Next(node);
    node = next;
  }
  return false;
}

// Three clicks bring a node back to where it was, and take what is below it along.
void Mark(const dialog::TreeContent& tree, int node, Choice choice, const std::function<void(int)>& click) {
  constexpr int kStates = 3;
  if (choice == Choice::kNone && ChoiceOf(tree, node) == choice && IsAnyMarkedBelow(tree, node)) click(node);
  for (int clicks = 1; clicks < kStates && ChoiceOf(tree, node) != choice; ++clicks) click(node);
}

RuleReport Apply(const ChoiceRule& rule, const dialog::TreeContent& tree, const std::vector<ReviewNode>& nodes,
                 bool everyNode, const std::function<void(int)>& click) {
  RuleReport report{rule.pattern};
  std::set<std::pair<int, int>> marked;
  for (const int node : NodesFor(rule.pattern, nodes)) {
    const auto& identity = At(nodes, node).identity;
    if (IsLocked(tree, node)) {
      ++report.locked;
    } else if (everyNode || rule.choice == Choice::kNone ||
               marked.emplace(identity.classId, identity.objectId).second) {
      Mark(tree, node, rule.choice, click);
    } else {
      ++report.left;
    }
  }
  return report;
}

}  // namespace

std::optional<std::string> UnmatchedPattern(const std::vector<ReviewNode>& nodes, const ReviewRules& rules) {
  const auto found =
      std::ranges::find_if(rules.rules, [&](const ChoiceRule& rule) { return NodesFor(rule.pattern, nodes).empty(); });
  return found == rules.rules.end() ? std::nullopt : std::optional(found->pattern);
}

std::vector<RuleReport> ApplyRules(const dialog::TreeContent& tree, const std::vector<ReviewNode>& nodes,
                                   const ReviewRules& rules, const std::function<void(int node)>& click) {
  std::vector<RuleReport> reports;
  for (const auto& rule : rules.rules) reports.push_back(Apply(rule, tree, nodes, rules.everyNode, click));
  return reports;
}

}  // namespace quintara
