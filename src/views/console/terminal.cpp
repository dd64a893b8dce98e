#include "views/console/terminal.h"

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <string_view>

namespace quintara {

Terminal TerminalOfThisProcess() {
  Terminal terminal;
  terminal.input = isatty(STDIN_FILENO) == 1;
  terminal.output = isatty(STDOUT_FILENO) == 1;
  terminal.errors = isatty(STDERR_FILENO) == 1;
  terminal.utf8 = std::string_view(nl_langinfo(CODESET)) == "UTF-8";
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) terminal.columns = size.ws_col;
  return terminal;
}

}  // namespace quintara
