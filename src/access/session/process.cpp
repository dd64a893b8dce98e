#include "access/session/process.h"

#include <vector>

#include "access/contracts/file_system.h"
#include "access/contracts/hix_engine.h"
#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
#include "base/attempt.h"

namespace quintara {

namespace {

// A dialog that can't be unloaded is let go all the same.
void UnloadDialogs() {
  auto& dialogs = Process().gLoadedDialogs;
  while (!dialogs.empty()) {
    const auto last = dialogs.back();
    ErrorState ignored;
    Attempt(ignored, [&] { last.view->Unload(); });
    std::erase_if(dialogs, [&](const LoadedDialog& dialog) { return dialog.view == last.view; });
  }
}

}  // namespace

ProcessGlobals& Process() {
  static auto& globals = *new ProcessGlobals();
  return globals;
}

void ResetProcess() {
  UnloadDialogs();
  // The end of a Cls_Init writes to the globals, so it comes before they are written anew.
  Process().gClsInit.reset();
  Process() = {};
}

}  // namespace quintara
