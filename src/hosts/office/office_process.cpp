#include "hosts/office/office_process.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <system_error>
#include <thread>
#include <vector>

#include "base/failure.h"
#include "base/text.h"

namespace quintara::office {
namespace {

constexpr std::chrono::milliseconds kPause{5};

[[noreturn]] void ThrowNotStarted(const std::string& why) {
  throw Failure(failure::kCannotCreateObject, "The spreadsheet application can't be started: " + why);
}

// Ours, but for what would lead LibreOffice to other libraries, types or languages.
std::vector<std::string> EnvironmentOfOffice() {
  std::vector<std::string> result = {"LC_ALL=C.UTF-8"};
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string_view text = *variable;
    const bool foreign = text.starts_with("URE_") || text.starts_with("UNO_") || text.starts_with("SAL_") ||
                         text.starts_with("LC_ALL=") || text.starts_with("LANGUAGE=");
    if (!foreign) result.emplace_back(text);
  }
  return result;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (auto& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

// Between fork and exec: what was opened or set here is none of its business, and it goes with us.
[[noreturn]] void BecomeOffice(char* const* arguments, char* const* variables, pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(EXIT_FAILURE);
  setpgid(0, 0);
  const int nowhere = open("/dev/null", O_RDWR);
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, file);
  close_range(STDERR_FILENO + 1, ~0U, 0);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  execve(arguments[0], arguments, variables);
  _exit(EXIT_FAILURE);
}

// The inodes of the sockets that a process has open.
std::set<std::string> SocketsOf(pid_t process) {
  std::set<std::string> inodes;
  std::error_code error;
  const auto folder = "/proc/" + std::to_string(process) + "/fd";
  for (std::filesystem::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    std::error_code gone;
    const auto target = std::filesystem::read_symlink(at->path(), gone).string();
    if (target.starts_with("socket:[")) inodes.insert(target.substr(8, target.size() - 9));
  }
  return inodes;
}

// The files of the pipes on which a process listens, which it removes only when it ends by itself.
std::vector<std::string> PipeFilesOf(pid_t process) {
  std::vector<std::string> files;
  const auto inodes = SocketsOf(process);
  std::ifstream table("/proc/net/unix");
  for (std::string line; std::getline(table, line);) {
    std::istringstream words(line);
    std::vector<std::string> fields{std::istream_iterator<std::string>(words), {}};
    if (fields.size() != 8 || !inodes.contains(fields[6])) continue;
    if (fields[7].find("/OSL_PIPE_") != std::string::npos) files.push_back(fields[7]);
  }
  return files;
}

}  // namespace

std::string FileUrl(std::string_view path) {
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/._-";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string url = "file://";
  for (const char byte : path) {
    const auto number = static_cast<unsigned char>(byte);
    if (kPlain.find(byte) != std::string_view::npos) {
      url += byte;
    } else {
      url.append({'%', kDigits[number / 16U], kDigits[number % 16U]});
    }
  }
  return url;
}

PrivateFolder::PrivateFolder() {
  std::error_code error;
  auto pattern = FromPath(std::filesystem::temp_directory_path(error) / "quintara-office-XXXXXX");
  if (error || mkdtemp(pattern.data()) == nullptr) ThrowNotStarted("no folder could be made at " + pattern);
  path_ = pattern;
}

PrivateFolder::~PrivateFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(ToPath(path_), ignored);
}

std::string PrivateFolder::Name() const {
  return FromPath(ToPath(path_).filename());
}

OfficeProcess::OfficeProcess(const std::string& program, const std::string& folder, const std::string& pipe) {
  if (access(program.c_str(), X_OK) != 0) ThrowNotStarted(program + ": " + std::strerror(errno));
  std::vector<std::string> arguments = {program,
                                        "--headless",
                                        "--invisible",
                                        "--norestore",
                                        "--nologo",
                                        "--nodefault",
                                        "--nofirststartwizard",
                                        "--nolockcheck",
                                        "--accept=pipe,name=" + pipe + ";urp;StarOffice.ComponentContext",
                                        "-env:UserInstallation=" + FileUrl(folder + "/profile")};
  auto variables = EnvironmentOfOffice();
  const auto argumentPointers = Pointers(arguments);
  const auto variablePointers = Pointers(variables);
  const auto parent = getpid();
  process_ = fork();
  if (process_ == 0) BecomeOffice(argumentPointers.data(), variablePointers.data(), parent);
  if (process_ < 0) ThrowNotStarted(std::strerror(errno));
}

OfficeProcess::~OfficeProcess() {
  Kill();
  for (const auto& file : pipeFiles_) unlink(file.c_str());
}

void OfficeProcess::NotePipes() {
  const std::scoped_lock lock(mutex_);
  pipeFiles_ = PipeFilesOf(process_);
}

std::optional<int> OfficeProcess::Collect(int options) {
  if (ending_) return ending_;
  int status = 0;
  pid_t collected = 0;
  do {
    collected = waitpid(process_, &status, options);
  } while (collected < 0 && errno == EINTR);
  if (collected != 0) ending_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return ending_;
}

std::optional<int> OfficeProcess::Ending() {
  const std::scoped_lock lock(mutex_);
  return Collect(WNOHANG);
}

bool OfficeProcess::EndsWithin(std::chrono::milliseconds time) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (!Ending()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

void OfficeProcess::Kill() {
  const std::scoped_lock lock(mutex_);
  if (ending_) return;
  kill(process_, SIGKILL);
  Collect(0);
}

}  // namespace quintara::office
