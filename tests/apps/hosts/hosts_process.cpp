#include "apps/hosts/hosts_process.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "apps/hosts/user_classes.h"
#include "base/failure.h"
#include "base/text.h"
#include "base/text16_windows.h"

namespace quintara::test {
namespace {

using automation::ComPtr;
namespace fs = std::filesystem;

// A machine at work may take its time, and waiting costs nothing where all is well.
constexpr DWORD kPatience = 120'000;
constexpr DWORD kBetweenLooks = 20;
constexpr auto kWindowClass = L"QuintaraHosts";

struct Apartment {
  Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
};

std::string Quoted(const std::string& argument) {
  return argument.find(' ') == std::string::npos ? argument : "\"" + argument + "\"";
}

CLSID ClassOf(const std::string& programName) {
  CLSID clsid{};
  if (const auto result = CLSIDFromProgID(Wide(programName).c_str(), &clsid); FAILED(result))
    throw Failure(static_cast<int>(result), "\"" + programName + "\" is no known name");
  return clsid;
}

ComPtr<IDispatch> Required(HRESULT result, ComPtr<IDispatch> object, const std::string& programName) {
  if (FAILED(result)) {
    throw Failure(static_cast<int>(result), "\"" + programName + "\" isn't there: error " + std::to_string(result));
  }
  return object;
}

fs::path OwnPath() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

int EndOf(HANDLE process) {
  if (WaitForSingleObject(process, kPatience) != WAIT_OBJECT_0) return -1;
  DWORD code = 0;
  GetExitCodeProcess(process, &code);
  return static_cast<int>(code);
}

// Those of a process, or of all for 0.
void CloseWindows(DWORD wanted) {
  for (HWND window = nullptr;;) {
    window = FindWindowExW(HWND_MESSAGE, window, kWindowClass, nullptr);
    if (!window) return;
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (wanted == 0 || process == wanted) PostMessageW(window, WM_CLOSE, 0, 0);
  }
}

}  // namespace

HostsProcess::HostsProcess(const std::vector<std::string>& arguments) {
  static const Apartment apartment;
  ShowUserClasses();
  static int number = 0;
  const auto base =
      FromPath(fs::temp_directory_path() /
               ToPath("quintara-hosts-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++number)));
  errorsFile_ = base + ".err";
  readyFile_ = base + ".ready";
  auto command = Quoted(Program()) + " --hidden --ends-with " + std::to_string(GetCurrentProcessId()) + " --ready " +
                 Quoted(readyFile_);
  for (const auto& argument : arguments) command += " " + Quoted(argument);
  Start(command);
  WaitUntilReady(readyFile_);
}

HostsProcess::~HostsProcess() {
  if (IsRunning()) {
    Close();
    if (WaitForEnd() < 0) TerminateProcess(process_, 1);
  }
  CloseHandle(process_);
  std::error_code error;
  fs::remove(ToPath(readyFile_), error);
  fs::remove(ToPath(errorsFile_), error);
}

void HostsProcess::Start(const std::string& command) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  const auto errors = CreateFileW(Wide(errorsFile_).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = errors;
  start.hStdError = errors;
  PROCESS_INFORMATION made{};
  auto line = Wide(command);
  const bool isStarted =
      CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &made);
  CloseHandle(errors);
  if (!isStarted) throw std::runtime_error("'" + command + "' can't be started");
  CloseHandle(made.hThread);
  process_ = made.hProcess;
  id_ = made.dwProcessId;
}

void HostsProcess::WaitUntilReady(const std::string& readyFile) const {
  std::error_code error;
  for (DWORD waited = 0; waited < kPatience && !fs::exists(ToPath(readyFile), error); waited += kBetweenLooks) {
    if (WaitForSingleObject(process_, kBetweenLooks) != WAIT_TIMEOUT) return;
  }
}

bool HostsProcess::IsRunning() const {
  return WaitForSingleObject(process_, 0) == WAIT_TIMEOUT;
}

int HostsProcess::WaitForEnd() {
  return EndOf(process_);
}

void HostsProcess::Close() const {
  CloseWindows(id_);
}

void HostsProcess::CloseAll() {
  CloseWindows(0);
}

std::string HostsProcess::Errors() const {
  std::ifstream file(ToPath(errorsFile_), std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

ComPtr<IDispatch> HostsProcess::Running(const std::string& programName) {
  ComPtr<IUnknown> found;
  ComPtr<IDispatch> object;
  auto result = GetActiveObject(ClassOf(programName), nullptr, &found);
  if (SUCCEEDED(result)) result = found.As(&object);
  return Required(result, object, programName);
}

ComPtr<IDispatch> HostsProcess::Created(const std::string& programName) {
  ComPtr<IDispatch> object;
  const auto result = CoCreateInstance(ClassOf(programName), nullptr, CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&object));
  return Required(result, object, programName);
}

std::string HostsProcess::Program() {
  // Programs of tests stand in the same build folder, at whatever depth.
  for (auto folder = OwnPath().parent_path(); folder != folder.parent_path(); folder = folder.parent_path()) {
    if (const auto program = folder / "apps" / "hosts" / "QuintaraHosts.exe"; fs::exists(program))
      return FromPath(program);
  }
  throw std::runtime_error("QuintaraHosts.exe isn't built");
}

std::string HostsProcess::Beside(const std::string& name) {
  return FromPath(OwnPath().parent_path() / ToPath(name + ".exe"));
}

int HostsProcess::RunToEnd(const std::string& program, const std::vector<std::string>& arguments) {
  auto command = Quoted(program);
  for (const auto& argument : arguments) command += " " + Quoted(argument);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION made{};
  auto line = Wide(command);
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &made))
    throw std::runtime_error("'" + command + "' can't be started");
  CloseHandle(made.hThread);
  const auto code = EndOf(made.hProcess);
  CloseHandle(made.hProcess);
  return code;
}

}  // namespace quintara::test
