#include "quintara/session_start.h"

#include "access/session/process.h"
#include "base/failure.h"
#include "quintara/command_context.h"
#include "services/Cls_Init.h"

namespace quintara {

void StartSession(CommandContext& context) {
  const auto& vault = context.RequireVault();
  if (StartCommand()) return;
  const auto& process = Process();
  // The language is the last thing that is read before the texts, and without these the box has none.
  const auto why = process.gLanguage.empty()
                       ? std::string()
                       : ": the texts in '" + vault.Folder().base + "' can't be read, neither in " +
                             process.gSession->Language() + " nor in EN";
  throw Failure(failure::kInternal, "no session starts" + why);
}

}  // namespace quintara
