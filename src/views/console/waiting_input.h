#pragma once

#include <signal.h>
#include <termios.h>

namespace quintara {

/// While it lives an interruption ends a wait for typed text, which then counts as the end of the input. Without
/// it the wait would go on, and only the next interruption would end the program, at once.
class WaitingInput {
 public:
  enum class Echo { kOn, kOff };

  /// `kOff` keeps what is typed off the screen, where the process has a terminal.
  explicit WaitingInput(Echo echo = Echo::kOn);
  ~WaitingInput();
  WaitingInput(const WaitingInput&) = delete;
  WaitingInput& operator=(const WaitingInput&) = delete;

 private:
  struct sigaction interruption_ {};
  termios terminal_{};
  bool isSilent_;
};

}  // namespace quintara
