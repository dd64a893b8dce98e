#include "quintara/component_choice.h"

#include <string_view>
#include <unordered_set>

#include "quintara/pattern.h"
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

bool Matches(const Pattern& pattern, const std::vector<ProductNode>& nodes, std::size_t index) {
  const auto& node = nodes[index];
  return pattern.TakesKind(node.hasChildren) &&
         (pattern.Matches(node.partNumber) || pattern.Matches(node.name) || pattern.Matches(LastPiece(node.name)) ||
          pattern.Matches(PathOfPartNumbers(nodes, index)));
}

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
    if (!Matches(pattern, nodes, i)) continue;
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
