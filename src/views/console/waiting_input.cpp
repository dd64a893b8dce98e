#include "views/console/waiting_input.h"

#include <unistd.h>

namespace quintara {

WaitingInput::WaitingInput(Echo echo) : isSilent_(echo == Echo::kOff && tcgetattr(STDIN_FILENO, &terminal_) == 0) {
  sigaction(SIGINT, nullptr, &interruption_);
  auto ending = interruption_;
  ending.sa_flags &= ~SA_RESTART;
  sigaction(SIGINT, &ending, nullptr);
  if (!isSilent_) return;
  auto silent = terminal_;
  silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
}

WaitingInput::~WaitingInput() {
  if (isSilent_) tcsetattr(STDIN_FILENO, TCSAFLUSH, &terminal_);
  sigaction(SIGINT, &interruption_, nullptr);
}

}  // namespace quintara
