#include "views/console/waiting_input.h"

#include <poll.h>
#include <unistd.h>

#include <iostream>

namespace quintara {
namespace {

// Waits for the terminal alone, which gives whole lines: what else stands in a buffer would be waited for in vain.
bool WasInterruptedFirst(const sigset_t& signals) {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  return isatty(STDIN_FILENO) == 1 && ppoll(&input, 1, nullptr, &signals) < 0;
}

}  // namespace

WaitingInput::WaitingInput(Echo echo) : isSilent_(echo == Echo::kOff && tcgetattr(STDIN_FILENO, &terminal_) == 0) {
  // A signal between the question and the wait would else be over before the wait begins.
  sigset_t interruption;
  sigemptyset(&interruption);
  sigaddset(&interruption, SIGINT);
  pthread_sigmask(SIG_BLOCK, &interruption, &signals_);
  if (!isSilent_) return;
  auto silent = terminal_;
  silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
}

WaitingInput::~WaitingInput() {
  if (isSilent_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &terminal_);
  pthread_sigmask(SIG_SETMASK, &signals_, nullptr);
}

bool WaitingInput::ReadLine(std::istream& in, std::string& line) const {
  if (&in == &std::cin && in && WasInterruptedFirst(signals_)) in.setstate(std::ios::eofbit);
  return static_cast<bool>(std::getline(in, line));
}

}  // namespace quintara
