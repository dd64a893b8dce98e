#include "quintara/component_choice.h"

#include <string_view>
#include <unordered_set>

#include "base/text.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

std::string PathOfPartNumbers(const std::vector<ProductNode>& nodes, std::size_t node) {
  std::string path = nodes[node].partNumber;
  while (node != 0) {
    node = nodes[node].parent;
    path.insert(0, nodes[node].partNumber + "/");
  }
  return path;
}

std::string_view LastPiece(std::string_view name) {
  return name.substr(name.find_last_of('\\') + 1);
}

struct Pattern {
  std::string_view text;
  bool takesParts = true;
  bool takesProducts = true;

  explicit Pattern(std::string_view given) : text(given) {
    constexpr std::string_view kPart = "part:";
    constexpr std::string_view kProduct = "product:";
    takesProducts = !given.starts_with(kPart);
    takesParts = !given.starts_with(kProduct);
    if (!takesProducts) text.remove_prefix(kPart.size());
    if (!takesParts) text.remove_prefix(kProduct.size());
    if (text.empty()) throw WrongUse("the pattern '" + std::string(given) + "' is empty");
  }

  bool Matches(const std::vector<ProductNode>& nodes, std::size_t index) const {
    const auto& node = nodes[index];
    if (!(node.hasChildren ? takesProducts : takesParts)) return false;
    return MatchesPattern(text, node.partNumber) || MatchesPattern(text, node.name) ||
           MatchesPattern(text, LastPiece(node.name)) || MatchesPattern(text, PathOfPartNumbers(nodes, index));
  }
};

void Apply(const ChoiceRule& rule, const std::vector<ProductNode>& nodes, std::vector<Choice>& choices) {
  const Pattern pattern(rule.pattern);
  std::vector<char> isLocked(nodes.size());
  std::vector<char> isOverwritten(nodes.size());
  bool found = false;
  for (std::size_t i = 1; i < nodes.size(); ++i) {
    const auto parent = nodes[i].parent;
    isLocked[i] = isLocked[parent] || choices[parent] != Choice::kNone;
    isOverwritten[i] = isOverwritten[parent];
    if (isOverwritten[i]) choices[i] = Choice::kNone;
    if (!pattern.Matches(nodes, i)) continue;
    found = true;
    if (isLocked[i]) continue;
    choices[i] = rule.choice;
    isOverwritten[i] = true;
  }
  if (!found) throw WrongUse("the pattern '" + rule.pattern + "' matches no component");
}

}  // namespace

std::vector<Choice> Choose(const std::vector<ProductNode>& nodes, const std::vector<ChoiceRule>& rules) {
  std::vector<Choice> choices(nodes.size(), Choice::kNone);
  for (const auto& rule : rules) Apply(rule, nodes, choices);
  return choices;
}

std::vector<std::size_t> TakenNodes(const std::vector<ProductNode>& nodes, const std::vector<Choice>& choices) {
  std::vector<std::size_t> taken;
  std::unordered_set<std::string> seen;
  for (std::size_t i = 1; i < nodes.size(); ++i) {
    if (choices[i] != Choice::kNone && seen.insert(nodes[i].partNumber).second) taken.push_back(i);
  }
  return taken;
}

}  // namespace quintara
