#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "quintara/command_context.h"
#include "quintara/interruption.h"
#include "quintara/life_cycle_preview.h"
#include "quintara/object_arguments.h"
#include "quintara/session_start.h"
#include "quintara/vault_verbs.h"

namespace quintara {
namespace {

using veldora::VdObject;

struct Step {
  const char* name;            ///< as the life cycle names it
  const char* vaultOperation;  ///< as the vault does
  const char* done;
  const char* what;
  bool givesObject;  ///< the newest revision is what is worked on afterwards, and its file is brought
};
constexpr Step kCheckOut{"CHECKOUT", "CHECKOUT", "checked out ", "be checked out", true};
constexpr Step kNewRelease{"NEWRELEASE", "NEWRELEASE", "made ", "get a new revision", true};
constexpr Step kObsolete{"OBSOLETE", "FREEZE", "obsolete now: ", "become obsolete", false};

void Bring(CommandContext& context, const Ref<VdObject>& object) {
  if (object->Record()->ValueAsString(Process().CAD_REF_FILE_NAME).empty()) return;
  const auto path = Utils().CopyVeldoraObjectToWork(object);
  if (!path.empty()) context.Print("brought '" + path + "'");
}

void Take(CommandContext& context, const Ref<VdObject>& object, const Step& step) {
  if (!Utils().LifeCycleOperation(Process().gSession, object, step.name)) return;
  const auto result = step.givesObject ? Utils().LastVersion(object) : object;
  context.Print(step.done + Called(result));
  if (step.givesObject) Bring(context, result);
}

void TakeAll(CommandContext& context, const LifeCycleOptions& options, const Step& step) {
  StartSession(context);
  for (const auto& object : ObjectArguments(context, options.objects)) {
    ThrowIfInterrupted();
    if (options.dryRun) {
      PrintPreview(context, object, step.vaultOperation, step.what);
    } else {
      Take(context, object, step);
    }
  }
}

}  // namespace

void RunCheckOut(CommandContext& context, const LifeCycleOptions& options) {
  TakeAll(context, options, kCheckOut);
}

void RunNewRelease(CommandContext& context, const LifeCycleOptions& options) {
  TakeAll(context, options, kNewRelease);
}

void RunObsolete(CommandContext& context, const LifeCycleOptions& options) {
  TakeAll(context, options, kObsolete);
}

}  // namespace quintara
