#include "support/pseudo_terminal.h"

#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utmp.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace quintara::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::seconds(60);

winsize SizeOf(int rows, int columns) {
  winsize size{};
  size.ws_row = static_cast<unsigned short>(rows);
  size.ws_col = static_cast<unsigned short>(columns);
  return size;
}

}  // namespace

PseudoTerminal::PseudoTerminal(int rows, int columns, const std::function<int()>& body) {
  auto size = SizeOf(rows, columns);
  if (openpty(&terminal_, &slave_, nullptr, nullptr, &size) != 0) throw std::runtime_error("there is no terminal");
  tcgetattr(slave_, &before_);
  process_ = fork();
  if (process_ < 0) throw std::runtime_error("there is no process");
  if (process_ > 0) return;
  close(terminal_);
  if (login_tty(slave_) != 0) _exit(120);
  _exit(body());
}

PseudoTerminal::~PseudoTerminal() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  if (terminal_ >= 0) close(terminal_);
  if (slave_ >= 0) close(slave_);
}

void PseudoTerminal::Type(const std::string& bytes) const {
  if (write(terminal_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
    throw std::runtime_error("the terminal takes no keys");
  }
}

void PseudoTerminal::Resize(int rows, int columns) const {
  const auto size = SizeOf(rows, columns);
  ioctl(terminal_, TIOCSWINSZ, &size);
}

void PseudoTerminal::Send(int signal) const {
  kill(process_, signal);
}

bool PseudoTerminal::ReadSome(int milliseconds) {
  pollfd output{terminal_, POLLIN, 0};
  if (terminal_ < 0 || poll(&output, 1, milliseconds) <= 0) return false;
  std::array<char, 4096> bytes{};
  const auto count = read(terminal_, bytes.data(), bytes.size());
  if (count > 0) written_.append(bytes.data(), static_cast<std::size_t>(count));
  return count > 0;
}

bool PseudoTerminal::WaitFor(const std::string& text) {
  for (const auto end = Clock::now() + kPatience; Clock::now() < end; ReadSome(20)) {
    const auto at = written_.find(text, seen_);
    if (at == std::string::npos) continue;
    seen_ = at + text.size();
    return true;
  }
  return false;
}

// What it has written is read all the while, so that it never waits for that.
bool PseudoTerminal::WaitForWait() {
  constexpr int kInARow = 5;
  int asleep = 0;
  for (const auto end = Clock::now() + kPatience; Clock::now() < end && asleep < kInARow; ReadSome(20)) {
    std::ifstream status("/proc/" + std::to_string(process_) + "/stat");
    std::string text;
    std::getline(status, text);
    const auto name = text.rfind(") ");
    asleep = name != std::string::npos && text[name + 2] == 'S' ? asleep + 1 : 0;
  }
  return asleep == kInARow;
}

int PseudoTerminal::WaitForEnd() {
  int status = 0;
  for (const auto end = Clock::now() + kPatience; Clock::now() < end;) {
    if (terminal_ < 0) poll(nullptr, 0, 20);
    const bool hasRead = ReadSome(20);
    const bool hasEnded = waitpid(process_, &status, WNOHANG) == process_;
    if (!hasEnded) continue;
    process_ = -1;
    while (hasRead && ReadSome(0)) {
    }
    if (WIFSIGNALED(status)) endedBy_ = WTERMSIG(status);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  return -1;
}

void PseudoTerminal::HangUp() {
  close(std::exchange(slave_, -1));
  close(std::exchange(terminal_, -1));
}

bool PseudoTerminal::IsAsBefore() const {
  termios now{};
  tcgetattr(slave_, &now);
  return now.c_lflag == before_.c_lflag && now.c_iflag == before_.c_iflag && now.c_oflag == before_.c_oflag;
}

}  // namespace quintara::test
