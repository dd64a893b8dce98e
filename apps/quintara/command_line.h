#pragma once

#include <functional>
#include <string>
#include <vector>

#include "quintara/command_context.h"

namespace quintara {

/// What a command line asks for.
struct Command {
  CommonOptions common;
  std::function<void(CommandContext&)> verb;  ///< empty when only `text` is to be printed
  std::string text;                           ///< a help text or the version
};

/// Reads the arguments, the program's name left out. What isn't understood is a WrongUse.
Command ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace quintara
