#include "quintara/life_cycle_preview.h"

#include "access/session/process.h"
#include "quintara/object_arguments.h"

namespace quintara {

bool CanPerform(const Ref<veldora::VdObject>& object, const std::string& vaultOperation) {
  const auto& process = Process();
  return process.gSessionUtil->CanPerform(object, process.gSession->MetaInfo()->OperationByName(vaultOperation), 0);
}

void PrintPreview(CommandContext& context, const Ref<veldora::VdObject>& object, const std::string& vaultOperation,
                  const std::string& what, const std::string& further) {
  if (CanPerform(object, vaultOperation)) {
    return context.Print("nothing changed, as asked: " + Called(object) + " would " + what + further);
  }
  const auto state = object->Record()->ValueAsInteger(Process().STATE);
  context.Complain(Called(object) + " is " + StateName(state) + ", and '" + context.User() + "' can't let it " + what);
}

}  // namespace quintara
