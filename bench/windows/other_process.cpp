#include "windows/other_process.h"

#include <array>

#include "automation/dispatch/late_object.h"
#include "automation/dispatch/objects.h"
#include "automation/dispatch/text16.h"
#include "windows/figures.h"

namespace quintara::bench {
namespace {

using automation::ComPtr;

constexpr DWORD kPoll = 20;
constexpr double kLongest = 120;

std::wstring ThisProgram() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

ComPtr<IDispatch> RunningObject(const CLSID& id) {
  ComPtr<IUnknown> running;
  ComPtr<IDispatch> object;
  if (SUCCEEDED(GetActiveObject(id, nullptr, &running))) running.As(&object);
  return object;
}

}  // namespace

OtherProcess::OtherProcess(const std::string& task) {
  std::array<wchar_t, 64> text{};
  CoCreateGuid(&class_);
  StringFromGUID2(class_, text.data(), int{text.size()});
  auto line = L"\"" + ThisProgram() + L"\" " + Wide(task) + L" " + text.data();
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION child{};
  Demand(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &child) != 0,
         "the other process can't be started");
  CloseHandle(child.hThread);
  process_ = child.hProcess;
  const auto started = Clock::now();
  while (!RunningObject(class_)) {
    Demand(WaitForSingleObject(process_, kPoll) == WAIT_TIMEOUT, "the other process has ended");
    Demand(SecondsSince(started) < kLongest, "the other process doesn't serve");
  }
}

OtherProcess::~OtherProcess() {
  TerminateProcess(process_, 0);
  WaitForSingleObject(process_, INFINITE);
  CloseHandle(process_);
}

Ref<AnyObject> OtherProcess::Attach() const {
  return automation::Incoming(RunningObject(class_), std::make_shared<automation::Connection>());
}

int ServeUntilTheEnd(const Ref<AnyObject>& object, const std::string& classText) {
  CLSID id{};
  DWORD handle = 0;
  const auto served = automation::Outgoing(object);
  if (FAILED(CLSIDFromString(Wide(classText).c_str(), &id)) ||
      FAILED(RegisterActiveObject(served.Get(), id, ACTIVEOBJECT_STRONG, &handle))) {
    return 1;
  }
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}

}  // namespace quintara::bench
