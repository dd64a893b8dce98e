#include <utility>
#include <vector>

#include "access/session/process.h"
#include "base/attempt.h"
#include "base/failure.h"
#include "base/variant.h"
#include "commands/Cls_ReplaceByLatestLWT.h"
#include "quintara/component_verbs.h"
#include "quintara/documents.h"
#include "quintara/pattern.h"
#include "quintara/product_tree.h"
#include "quintara/session_start.h"
#include "quintara/tick_desk.h"
#include "quintara/vault_objects.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

void CheckOptions(const CommandContext& context, const ReplaceByLatestOptions& options) {
  if (options.ticks.empty() && !context.IsAttended()) {
    throw WrongUse("without a terminal nobody can be asked for the components; name them with --tick");
  }
  for (const auto& pattern : options.ticks) Pattern{pattern};
}

// A component of the work in progress, and the object that its stamps lead to.
struct Stamped {
  std::string name;
  std::string classId;
  std::string objectId;

  bool operator==(const Stamped&) const = default;
};

std::vector<Stamped> ComponentsOf(const Ref<zorva::Product>& root) {
  std::vector<Stamped> components;
  const auto products = root->Products();
  for (int i = 1, count = products->Count(); i <= count; ++i) {
    const auto product = products->Item(i);
    components.push_back({product->Name(), StringProperty(product, "CLASS_ID"), StringProperty(product, "OBJECT_ID")});
  }
  return components;
}

// Empty for stamps that lead nowhere.
std::string RevisionOf(CommandContext& context, const Stamped& component) {
  return OrElse(std::string(), [&] {
    const auto object = ObjectOf(context.RequireVault(),
                                 {Variant(component.classId).ToInteger16(), Variant(component.objectId).ToInteger32()});
    return object->Record()->ValueAsString(Process().REVISION);
  });
}

// A replacement keeps its place among the components.
bool TellReplaced(CommandContext& context, const std::vector<Stamped>& before, const std::vector<Stamped>& after) {
  TextTable table({{"component"}, {"was"}, {"is"}});
  bool isAny = false;
  for (std::size_t i = 0; i < before.size() && i < after.size(); ++i) {
    if (before[i] == after[i]) continue;
    table.AddRow({after[i].name, RevisionOf(context, before[i]), RevisionOf(context, after[i])});
    isAny = true;
  }
  if (isAny) context.Print(table);
  return isAny;
}

}  // namespace

void RunReplaceByLatest(CommandContext& context, const ReplaceByLatestOptions& options) {
  CheckOptions(context, options);
  StartSession(context);
  const auto document = OpenWip(context, options.product);
  const auto root = document->Product();
  const auto before = ComponentsOf(root);
  const TickDesk desk(options.ticks, context.Dialogs());

  ErrorState failure;
  Attempt(failure, [] { Cls_ReplaceByLatestLWT().Run(); });

  if (desk.Unmatched()) {
    throw WrongUse("the pattern '" + *desk.Unmatched() + "' matches no light component with a newer revision");
  }
  const bool isReplaced = TellReplaced(context, before, ComponentsOf(root));
  if (isReplaced) SaveChanges(context, document, options.dryRun);
  if (failure) throw Failure(failure.number, failure.description);
  if (!isReplaced) context.Complain("nothing was replaced in '" + root->PartNumber() + "'");
}

}  // namespace quintara
