#pragma once

#include <sys/types.h>
#include <termios.h>

#include <functional>
#include <string>

namespace quintara::test {

/// A process of its own on a terminal of its own. What it writes is kept as it comes, the terminal's controls
/// included.
class PseudoTerminal {
 public:
  /// Runs `body` in it; its result is the exit code.
  PseudoTerminal(int rows, int columns, const std::function<int()>& body);
  /// Ends the process.
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  void Type(const std::string& bytes) const;
  void Resize(int rows, int columns) const;
  void Send(int signal) const;

  /// Waits until the process has written `text` behind what the last call found; False when it doesn't.
  bool WaitFor(const std::string& text);
  /// Waits until the process does nothing but wait itself; False when it doesn't.
  bool WaitForWait();
  /// Waits for its end and gives the exit code; -1 when a signal ended it or it doesn't end.
  int WaitForEnd();
  /// The signal that ended it; 0 for none.
  int EndedBy() const { return endedBy_; }
  /// Takes the terminal away.
  void HangUp();

  const std::string& Written() const { return written_; }
  /// Whether the terminal treats what is typed as it did at the beginning.
  bool IsAsBefore() const;

 private:
  bool ReadSome(int milliseconds);

  int terminal_ = -1;
  int slave_ = -1;
  pid_t process_ = -1;
  int endedBy_ = 0;
  termios before_{};
  std::string written_;
  std::size_t seen_ = 0;
};

}  // namespace quintara::test
