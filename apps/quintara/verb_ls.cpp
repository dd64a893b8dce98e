#include <algorithm>
#include <tuple>

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

// Such as documents, which no list of products and parts has.
std::vector<Listed> OthersOf(EmbeddedVault& vault, const Ref<veldora::VdClass>& info, bool all) {
  const auto store = SessionOf(vault)->ObjectStore();
  const auto query = store->NewQuery();
  query->Definition()->From()->Add(info->ClassId(), "F");
  query->Definition()->Select()->Add("OBJECT_ID", "F", false);
  query->RunClassQuery();
  const auto objects = store->ObjectsFromRecList(query->Result(), 0)->ObjectsOf("F");
  std::vector<Listed> listed;
  for (int i = 0, count = objects->Count(); i < count; ++i) {
    const auto object = objects->Item(i);
    const auto revisions = vault.Revisions(object);
    const bool isNewest = !revisions.empty() && revisions.back().identity.objectId == object->ObjectId();
    for (const auto& one : revisions) {
      if (one.identity.objectId == object->ObjectId() && (all || isNewest)) listed.push_back(one);
    }
  }
  std::ranges::sort(listed, {}, [](const Listed& one) { return std::tie(one.partNumber, one.version); });
  return listed;
}

void KeepClass(EmbeddedVault& vault, const LsOptions& options, std::vector<Listed>& objects) {
  if (options.className.empty()) return;
  const auto info = SessionOf(vault)->MetaInfo()->Classes()->Find(options.className);
  if (!info) throw WrongUse("the vault has no class '" + options.className + "'");
  std::erase_if(objects, [&](const Listed& one) { return one.className != options.className; });
  if (objects.empty()) objects = OthersOf(vault, info, options.all);
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
  KeepClass(vault, options, objects);
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
