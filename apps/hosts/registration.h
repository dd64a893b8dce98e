#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/served_names.h"

namespace quintara::hosts {

/// How program names came to be registered for the current user.
struct Registered {
  std::vector<const ServedName*> taken;
  std::vector<const ServedName*> held;  ///< by another program, which keeps them
};

/// One registration of names, told apart by its own name. It keeps a journal of what it wrote, in the registry itself,
/// so that exactly that is taken back, also after a process has died: a value that has changed since stays, and so
/// does a key that holds anything more. What two registrations have in common goes with the last of them.
class Registration {
 public:
  /// That of an installation, and that of a running process.
  static Registration ForGood();
  static Registration OfProcess(unsigned long id);

  /// Registers names that nothing else holds. `commandOf` gives the command that starts the server of a name.
  Registered Register(const std::vector<const ServedName*>& names,
                      const std::function<std::string(const ServedName&)>& commandOf) const;
  /// Takes back what was written.
  void Unregister() const;
  bool IsThere() const;

  /// Takes back what processes left that have died.
  static void TidyUp();

 private:
  explicit Registration(std::string name);

  void Register(const ServedName& name, const std::string& command) const;
  void Key(const std::string& path) const;
  void Text(const std::string& path, const std::string& value, const std::string& text) const;
  bool IsInAnother(const std::string& entry) const;
  void Note(const std::string& entry) const;

  std::string name_;
  std::string journal_;
};

}  // namespace quintara::hosts
