#include "geometry/virtual_screen.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <sstream>

#include "base/failure.h"

namespace quintara {
namespace {

constexpr int kStartMilliseconds = 30'000;

std::string FindProgram(const std::string& name) {
  const char* path = getenv("PATH");
  std::istringstream folders(path == nullptr ? "/usr/bin" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    const auto program = folder + "/" + name;
    if (access(program.c_str(), X_OK) == 0) return program;
  }
  return {};
}

// The server writes the number of the display that it took.
std::string ReadNumber(int file) {
  std::string number;
  pollfd waiting = {file, POLLIN, 0};
  while (poll(&waiting, 1, kStartMilliseconds) > 0) {
    char digit = 0;
    if (read(file, &digit, 1) != 1) return {};
    if (digit == '\n') return number;
    number += digit;
  }
  return {};
}

[[noreturn]] void BecomeServer(const std::string& program, int file, pid_t parent) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != parent) _exit(EXIT_FAILURE);
  fcntl(file, F_SETFD, 0);
  const auto number = std::to_string(file);
  execl(program.c_str(), program.c_str(), "-displayfd", number.c_str(), "-screen", "0", "64x64x24", "-nolisten", "tcp",
        static_cast<char*>(nullptr));
  _exit(EXIT_FAILURE);
}

}  // namespace

VirtualScreen::VirtualScreen() {
  const auto program = FindProgram("Xvfb");
  const char* display = getenv("DISPLAY");
  if (!program.empty()) {
    Start(program);
  } else if (display != nullptr && *display != '\0') {
    name_ = display;
  } else {
    throw Failure(failure::kCannotCreateObject,
                  "Pictures need an X server without a screen: the program Xvfb is missing (package xvfb)");
  }
}

VirtualScreen::~VirtualScreen() {
  if (process_ <= 0) return;
  kill(process_, SIGTERM);
  while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

void VirtualScreen::Start(const std::string& program) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw Failure(failure::kInternal, "No pipe could be made");
  const auto parent = getpid();
  process_ = fork();
  if (process_ == 0) BecomeServer(program, ends[1], parent);
  close(ends[1]);
  const auto number = process_ < 0 ? std::string() : ReadNumber(ends[0]);
  close(ends[0]);
  if (number.empty()) {
    if (process_ > 0) {
      kill(process_, SIGKILL);
      waitpid(process_, nullptr, 0);
    }
    throw Failure(failure::kCannotCreateObject, "The X server without a screen, " + program + ", could not be started");
  }
  name_ = ":" + number;
}

}  // namespace quintara
