#include <memory>

#include "automation/platform/windows_platform.h"
#include "automation/server/class_factory.h"
#include "automation/server/module.h"
#include "automation/server/registration.h"

namespace {

namespace automation = quintara::automation;

std::shared_ptr<quintara::Platform> NewPlatform() {
  return std::make_shared<automation::WindowsPlatform>();
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** given) {
  automation::UsePlatform(NewPlatform);
  return automation::GetClassObject(classId, interfaceId, given);
}

STDAPI DllCanUnloadNow() {
  return automation::CanUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
  return automation::RegisterModule();
}

STDAPI DllUnregisterServer() {
  return automation::UnregisterModule();
}
