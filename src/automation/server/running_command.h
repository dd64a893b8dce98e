#pragma once

#include <string_view>

namespace quintara::automation {

/// What a command fails with that is called while another one runs.
inline constexpr int kCommandRunning = static_cast<int>(0x80040201U);

/// The command that runs, of which there is one at a time: a panel that it shows lets calls in. `name` must be a
/// literal. Fails with `kCommandRunning` where another one runs.
class RunningCommand {
 public:
  explicit RunningCommand(std::string_view name);
  ~RunningCommand();
  RunningCommand(const RunningCommand&) = delete;
  RunningCommand& operator=(const RunningCommand&) = delete;
};

}  // namespace quintara::automation
