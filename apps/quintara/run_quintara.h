#pragma once

#include <string>
#include <vector>

#include "quintara/command_context.h"

namespace quintara {

/// Exit codes of the program.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUse = 2;

/// Runs the program with its arguments, the program's name left out; gives the exit code.
int RunQuintara(const std::vector<std::string>& arguments, const ProgramSurroundings& surroundings);

}  // namespace quintara
