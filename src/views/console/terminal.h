#pragma once

namespace quintara {

/// What the standard streams of a process are connected to.
struct Terminal {
  bool input = false;   ///< someone can type answers
  bool output = false;  ///< results go to a screen
  bool errors = false;  ///< messages go to a screen
  bool utf8 = false;    ///< the locale's characters are UTF-8
  int columns = 80;     ///< of the screen that messages go to
};

/// Looks at the streams and the locale of this process.
Terminal TerminalOfThisProcess();

}  // namespace quintara
