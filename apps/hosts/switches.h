#pragma once

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "hosts/served_names.h"

namespace quintara::hosts {

/// The command line asks for what can't be meant. The text names the switch.
class WrongSwitch : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What the program was asked to do.
struct Switches {
  enum class Task { kServe, kRegister, kUnregister, kHelp };

  Task task = Task::kServe;
  std::set<Host> hosts = {Host::kVault, Host::kCad, Host::kExcel};
  std::string only;  ///< the one program name that is served, where automation has started the process
  std::string vault;
  std::string user;
  std::string language;
  std::string work;
  bool init = false;
  bool zorvaStartedFirst = false;
  bool startedByAutomation = false;
  bool hidden = false;
  std::string readyFile;
  std::string logFile;
  unsigned long endsWith = 0;  ///< the id of a process; 0 for none
  /// Those of the switches that a start by automation is to have too.
  std::vector<std::string> kept;

  bool Serves(const ServedName& name) const;
};

/// Reads the arguments, the program's name left out.
Switches ParseSwitches(const std::vector<std::string>& arguments);

/// What `--help` tells.
std::string HelpText();

}  // namespace quintara::hosts
