#include "automation/server/running_command.h"

#include <string>

#include "base/failure.h"

namespace quintara::automation {
namespace {

// All objects live on one thread.
std::string_view running;

}  // namespace

RunningCommand::RunningCommand(std::string_view name) {
  if (!running.empty()) {
    throw Failure(kCommandRunning,
                  std::string(name) + " can't run while " + std::string(running) + " is still running");
  }
  running = name;
}

RunningCommand::~RunningCommand() {
  running = {};
}

}  // namespace quintara::automation
