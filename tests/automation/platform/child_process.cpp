#include "automation/platform/child_process.h"

#include <stdexcept>
#include <string>

#include "automation/dispatch/text16.h"

namespace quintara::test {
namespace {

using automation::ComPtr;

constexpr DWORD kLongest = 60'000;
constexpr DWORD kPoll = 20;
constexpr std::size_t kLongestPath = 32768;

std::wstring HostProgram() {
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L"\\/") + 1) + L"mortal_host.exe";
}

bool Runs(const ProgramName& name) {
  ComPtr<IUnknown> running;
  return SUCCEEDED(GetActiveObject(name.Class(), nullptr, &running));
}

}  // namespace

ChildProcess::ChildProcess(const ProgramName& name) {
  auto line = L"\"" + HostProgram() + L"\" " + Wide(name.ClassText());
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION child{};
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &child)) {
    throw std::runtime_error("the host program can't be started");
  }
  CloseHandle(child.hThread);
  process_ = child.hProcess;
  for (DWORD waited = 0; !Runs(name); waited += kPoll) {
    if (waited > kLongest) throw std::runtime_error("the host program doesn't serve");
    if (WaitForSingleObject(process_, kPoll) == WAIT_OBJECT_0) throw std::runtime_error("the host program has ended");
  }
}

ChildProcess::~ChildProcess() {
  Kill();
  CloseHandle(process_);
}

void ChildProcess::Kill() {
  TerminateProcess(process_, 1);
  AwaitEnd();
}

void ChildProcess::AwaitEnd() {
  WaitForSingleObject(process_, kLongest);
}

}  // namespace quintara::test
