#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "base/attempt.h"
#include "base/variant.h"
#include "commands/Cls_SwitchToLWT.h"
#include "commands/Cls_SwitchToProduct.h"
#include "quintara/component_choice.h"
#include "quintara/component_verbs.h"
#include "quintara/documents.h"
#include "quintara/session_start.h"

namespace quintara {
namespace {

// A light representation has no children that would tell its kind, but the class of its object.
bool IsLightProduct(const ProductNode& node) {
  return node.isLight && OrElse(false, [&] {
           const auto classId = Variant(StringProperty(node.product, "CLASS_ID")).ToInteger16();
           return Utils().IsCorrectClassID(Process().gSession, Process().gClassProducts, classId);
         });
}

// What stands below a selected component goes with it: its nodes are gone once it is replaced.
void Select(const Ref<zorva::ProductDocument>& document, const std::vector<std::string>& patterns) {
  std::vector<ChoiceRule> rules;
  for (const auto& pattern : patterns) rules.push_back({Choice::kDocument, pattern});
  auto nodes = NodesOf(document->Product());
  for (auto& node : nodes) node.hasChildren = node.hasChildren || IsLightProduct(node);
  const auto choices = Choose(nodes, rules);
  const auto selection = document->Selection();
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (choices[i] != Choice::kNone) selection->Add(nodes[i].product);
  }
}

template <class SwitchCommand>
void RunSwitch(CommandContext& context, const SwitchOptions& options) {
  StartSession(context);
  const auto document = OpenWip(context, options.product);
  Select(document, options.patterns);
  SwitchCommand().Run();
  SaveChanges(context, document, options.dryRun);
}

}  // namespace

void RunSwitchToLwt(CommandContext& context, const SwitchOptions& options) {
  RunSwitch<Cls_SwitchToLWT>(context, options);
}

void RunSwitchToProduct(CommandContext& context, const SwitchOptions& options) {
  RunSwitch<Cls_SwitchToProduct>(context, options);
}

}  // namespace quintara
