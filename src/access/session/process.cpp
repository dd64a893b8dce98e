#include "access/session/process.h"

#include "access/contracts/file_system.h"
#include "access/contracts/hix_engine.h"
#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"

namespace quintara {

ProcessGlobals& Process() {
  static auto& globals = *new ProcessGlobals();
  return globals;
}

void ResetProcess() {
  // The end of a Cls_Init writes to the globals, so it comes before they are written anew.
  Process().gClsInit.reset();
  Process() = {};
}

}  // namespace quintara
