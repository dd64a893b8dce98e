#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "quintara/command_context.h"
#include "quintara/object_arguments.h"
#include "quintara/session_start.h"
#include "quintara/vault_verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

// The name of a class that is there: what was asked for, else what the settings say.
std::string ClassNamed(const std::string& asked, const std::string& setting) {
  const auto& name = asked.empty() ? setting : asked;
  if (!Process().gSession->MetaInfo()->Classes()->Find(name)) throw WrongUse("the vault has no class '" + name + "'");
  return name;
}

}  // namespace

void RunChildren(CommandContext& context, const ChildrenOptions& options) {
  StartSession(context);
  const auto object = ObjectArgument(context, options.object);
  Ref<veldora::VdObjects> children;
  if (!Utils().GetAllChildren(Process().gSession, object, children, nullptr, AttributesOfTable())) return;
  if (children->Count() == 0) return context.Print(Called(object) + " has no components");
  context.Print(TableOf(children));
}

void RunLinks(CommandContext& context, const LinksOptions& options) {
  StartSession(context);
  const auto object = ObjectArgument(context, options.object);
  const auto linkedClass = ClassNamed(options.linkedClass, Process().gClassDocuments);
  const auto linkClass = ClassNamed(options.linkClass, Process().gClassDocLink);
  Ref<veldora::VdObjects> linked;
  if (!Utils().RetrieveAllObjectsLinked(Process().gSession, object, linkedClass, linkClass, linked)) return;
  if (linked) return context.Print(TableOf(linked));
  context.Print("nothing of the class '" + linkedClass + "' is linked to " + Called(object) + " through '" + linkClass +
                "'");
}

void RunUnlink(CommandContext& context, const UnlinkOptions& options) {
  StartSession(context);
  const auto& session = Process().gSession;
  const auto from = ObjectArgument(context, options.from);
  const auto to = ObjectArgument(context, options.to);
  const auto linkClass = ClassNamed(options.linkClass, Process().gClassDocLink);
  const auto link =
      session->ObjectStore()->LinkObject(session->MetaInfo()->ClassByName(linkClass)->ClassId(), from->ClassId(),
                                         from->ObjectId(), to->ClassId(), to->ObjectId());
  const auto which = "the link '" + linkClass + "' from " + Called(from) + " to " + Called(to);
  if (!link)
    return context.Print("there is nothing to remove: no link '" + linkClass + "' leads from " + Called(from) + " to " +
                         Called(to));
  if (options.dryRun) return context.Print("nothing removed, as asked: " + which);
  if (Utils().RemoveLogicalLink(session, from, to, linkClass)) context.Print("removed " + which);
}

}  // namespace quintara
