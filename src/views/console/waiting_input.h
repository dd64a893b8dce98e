#pragma once

#include <signal.h>
#include <termios.h>

#include <iosfwd>
#include <string>

namespace quintara {

/// Reads what is typed. While it lives an interruption waits for the next reading of a terminal, and ends that, as
/// the end of the input would; so it is to be made before the question is asked.
class WaitingInput {
 public:
  enum class Echo { kOn, kOff };

  /// `kOff` keeps what is typed off the screen, where the process has a terminal.
  explicit WaitingInput(Echo echo = Echo::kOn);
  ~WaitingInput();
  WaitingInput(const WaitingInput&) = delete;
  WaitingInput& operator=(const WaitingInput&) = delete;

  /// The next line of `in`; false at its end and after an interruption.
  bool ReadLine(std::istream& in, std::string& line) const;

 private:
  sigset_t signals_{};  ///< those that were held back before
  termios terminal_{};
  bool isSilent_;
};

}  // namespace quintara
