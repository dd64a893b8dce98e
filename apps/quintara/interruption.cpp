#include "quintara/interruption.h"

#include <csignal>
#include <ctime>

#include "base/failure.h"
#include "views/console/ncurses_screen.h"

namespace quintara {
namespace {

volatile std::sig_atomic_t interrupted = 0;
volatile std::time_t interruptedAt = 0;

// What sends one interruption to the process and to its group, as timeouts do, means one. Set anew each time,
// since some systems take a handler away with each call.
extern "C" void NoteInterruption(int signal) {
  constexpr std::time_t kAsOne = 1;
  const auto now = std::time(nullptr);
  if (interrupted == 0) interruptedAt = now;
  const bool isSecond = interrupted != 0 && now - interruptedAt > kAsOne;
  interrupted = 1;
  std::signal(signal, isSecond ? SIG_DFL : NoteInterruption);
  if (!isSecond) return;
  GiveTerminalBackAtOnce();
  std::raise(signal);
}

}  // namespace

void CatchInterruptions() {
  std::signal(SIGINT, NoteInterruption);
  std::signal(SIGTERM, NoteInterruption);
}

bool WasInterrupted() {
  return interrupted != 0;
}

void ThrowIfInterrupted() {
  if (WasInterrupted()) throw Failure(failure::kInternal, "interrupted");
}

}  // namespace quintara
