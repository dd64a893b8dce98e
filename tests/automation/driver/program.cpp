#include "automation/driver/program.h"

#include "automation/driver/steps.h"
#include "base/text16_windows.h"

namespace quintara::driver {
namespace {

// As the programs themselves part their arguments: backslashes before a quote are doubled.
std::string Argument(const std::string& word) {
  std::string text = "\"";
  std::size_t slashes = 0;
  for (const char letter : word) {
    if (letter == '"') text.append(slashes + 1, '\\');
    slashes = letter == '\\' ? slashes + 1 : 0;
    text += letter;
  }
  return text.append(slashes, '\\') + "\"";
}

}  // namespace

Program::~Program() {
  if (IsStarted() && !HasEnded()) TerminateProcess(process_, 1);
  Forget();
}

void Program::Start(const std::vector<std::string>& words) {
  if (IsStarted()) throw Failed("a program is running already");
  std::string line;
  for (const auto& word : words) line += (line.empty() ? "" : " ") + Argument(word);
  auto wide = Wide(line);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  start.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
  start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION made{};
  if (CreateProcessW(nullptr, wide.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &made) == 0) {
    throw Failed("the program can't be started: " + line);
  }
  CloseHandle(made.hThread);
  process_ = made.hProcess;
}

bool Program::HasEnded() const {
  return WaitForSingleObject(process_, 0) == WAIT_OBJECT_0;
}

int Program::ExitCode() const {
  DWORD code = 0;
  GetExitCodeProcess(process_, &code);
  return static_cast<int>(code);
}

void Program::Forget() {
  if (process_ != nullptr) CloseHandle(process_);
  process_ = nullptr;
}

}  // namespace quintara::driver
