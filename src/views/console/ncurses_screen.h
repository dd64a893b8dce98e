#pragma once

#include <memory>

#include "views/console/screen.h"

namespace quintara {

/// The terminal that messages and answers go over, used as a whole through ncurses. Fails when it isn't one on
/// which the cursor can be moved.
std::unique_ptr<Screen> OpenTerminal();

/// Gives the terminal back at once, if it is used as a whole: for the last moment of a process, since it may be
/// called from the handler of a signal.
void GiveTerminalBackAtOnce() noexcept;

}  // namespace quintara
