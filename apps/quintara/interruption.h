#pragma once

namespace quintara {

/// Makes Ctrl-C and a request to end stop the work at its next step, so that it cleans up behind
/// itself. A second one, from two seconds after the first, ends the process at once, and only gives a terminal back
/// that a dialog uses as a whole.
void CatchInterruptions();

/// True once an interruption has come.
bool WasInterrupted();

/// Fails once an interruption has come.
void ThrowIfInterrupted();

}  // namespace quintara
