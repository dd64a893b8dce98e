#include "quintara/interruption.h"

#include <csignal>

#include "base/failure.h"

namespace quintara {
namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void NoteInterruption(int signal) {
  interrupted = 1;
  std::signal(signal, SIG_DFL);
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
