#include <algorithm>

#include "quintara/command_context.h"
#include "quintara/pattern.h"
#include "quintara/vault_objects.h"
#include "quintara/vault_verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

using Listed = EmbeddedVault::Listed;

bool Matches(const Pattern& pattern, const Listed& object) {
  return pattern.TakesKind(object.hasComponents) &&
         (pattern.Matches(object.partNumber) || pattern.Matches(object.partNumber + " - " + object.revision));
}

void KeepClass(EmbeddedVault& vault, const std::string& name, std::vector<Listed>& objects) {
  if (name.empty()) return;
  if (!SessionOf(vault)->MetaInfo()->Classes()->Find(name)) {
    throw WrongUse("the vault has no class '" + name + "'");
  }
  std::erase_if(objects, [&](const Listed& one) { return one.className != name; });
}

void KeepMatching(const std::vector<std::string>& patterns, std::vector<Listed>& objects) {
  if (patterns.empty()) return;
  std::vector<char> isTaken(objects.size());
  for (const auto& given : patterns) {
    const Pattern pattern(given);
    bool found = false;
    for (std::size_t i = 0; i < objects.size(); ++i) {
      if (!Matches(pattern, objects[i])) continue;
      isTaken[i] = 1;
      found = true;
    }
    if (!found) throw WrongUse("the pattern '" + given + "' matches no object of the vault");
  }
  std::size_t at = 0;
  std::erase_if(objects, [&](const Listed&) { return isTaken[at++] == 0; });
}

}  // namespace

void RunLs(CommandContext& context, const LsOptions& options) {
  auto& vault = context.RequireVault();
  auto objects = vault.List(options.all);
  KeepClass(vault, options.className, objects);
  KeepMatching(options.patterns, objects);
  if (objects.empty()) {
    context.Print(options.className.empty() ? "the vault holds no products or parts yet"
                                            : "the vault holds nothing of the class '" + options.className + "'");
    return;
  }
  TextTable table({{"part number"}, {"revision"}, {"state"}, {"class"}, {"file"}, {"changed (UTC)"}, {"by"}});
  for (const auto& one : objects) {
    table.AddRow({one.partNumber, one.revision, StateText(one), one.className, one.fileName, TimeText(one.changedAt),
                  one.changedBy});
  }
  context.Print(table);
}

}  // namespace quintara
