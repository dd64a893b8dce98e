#pragma once

#include <string>
#include <vector>

namespace quintara::bench {

/// What a program took from its start to its end.
struct Consumption {
  double seconds;
  double megabytes;  ///< the most that it, or a process that it waited for, held in memory at one time
};

/// Runs a program, `command.front()`, with the rest as its arguments, in `folder`; what it prints goes to `output`.
/// Throws with the end of that for any exit code but 0.
/// A new process counts at least what the one that starts it has ever held, so that this one has to stay small.
Consumption Run(const std::vector<std::string>& command, const std::string& folder, const std::string& output);

}  // namespace quintara::bench
