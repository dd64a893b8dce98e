// mortal_host CLASS: makes an object the running one of a class and serves it until it is told to end.
#include <string>

#include "access/contracts/zorva.h"
#include "automation/dispatch/com.h"
#include "automation/dispatch/objects.h"
#include "automation/dispatch/text16.h"

namespace quintara::test {
namespace {

constexpr UINT kEnded = 3;

/// A session of a CAD host that ends in the midst of being asked for some of its items.
class MortalApplication final : public zorva::Application, public std::enable_shared_from_this<MortalApplication> {
 public:
  std::string Name() override { return "mortal"; }
  Ref<AnyObject> GetItem(const std::string& name) override {
    if (name == "kill") TerminateProcess(GetCurrentProcess(), kEnded);
    if (name == "exit") ExitProcess(kEnded);
    if (name == "fault") RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, 0, nullptr);
    if (name == "refuse") throw Failure(static_cast<int>(E_ACCESSDENIED), "not for you");
    return Ref<AnyObject>(shared_from_this());
  }
  Ref<zorva::Documents> Documents() override { return nullptr; }
  Ref<AnyObject> ActiveDocument() override { return nullptr; }
  Ref<zorva::ScriptService> ScriptService() override { return nullptr; }
  bool DisplayFileAlerts() override { return true; }
  void SetDisplayFileAlerts(bool /*alerts*/) override {}
  void SetRefreshDisplay(bool /*refresh*/) override {}
  Ref<zorva::Window> ActiveWindow() override { return nullptr; }
  Ref<zorva::Application> AsApplication() override { return Ref<zorva::Application>(shared_from_this()); }
};

int Serve(const std::string& classText) {
  CLSID id{};
  DWORD handle = 0;
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) ||
      FAILED(CLSIDFromString(Wide(classText).c_str(), &id)))
    return 1;
  const auto served = automation::Outgoing(Ref<zorva::Application>(MakeRef<MortalApplication>()));
  if (FAILED(RegisterActiveObject(served.Get(), id, ACTIVEOBJECT_STRONG, &handle))) return 1;
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}

}  // namespace
}  // namespace quintara::test

int main(int count, char** arguments) {
  return count == 2 ? quintara::test::Serve(arguments[1]) : 2;
}
