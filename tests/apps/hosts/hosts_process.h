#pragma once

#include <string>
#include <vector>

#include "access/contracts/any_object.h"
#include "automation/dispatch/hosts_control.h"
#include "automation/dispatch/late_bound.h"

namespace quintara::test {

/// QuintaraHosts.exe in a process of its own, hidden, which ends with this object or with the test program.
class HostsProcess {
 public:
  /// Starts it with these arguments besides, and waits until it serves, or until it has ended.
  explicit HostsProcess(const std::vector<std::string>& arguments);
  /// Ends it, gently where it still listens.
  ~HostsProcess();
  HostsProcess(const HostsProcess&) = delete;
  HostsProcess& operator=(const HostsProcess&) = delete;

  bool IsRunning() const;
  unsigned long Id() const { return id_; }
  /// Waits for its end and gives the exit code; -1 where it doesn't end.
  int WaitForEnd();
  /// Asks it to end, as closing its window does.
  void Close() const;
  /// Asks all such processes to end.
  static void CloseAll();
  /// What it wrote to its error stream so far.
  std::string Errors() const;

  /// The running object of a name, as what it is; fails where there is none.
  template <class Contract>
  static Ref<Contract> Attach(const char* programName) {
    return automation::Adapt<Contract>(Running(programName), nullptr);
  }
  /// A new object of a name.
  template <class Contract>
  static Ref<Contract> Create(const char* programName) {
    return automation::Adapt<Contract>(Created(programName), nullptr);
  }
  static Ref<automation::HostsControl> Control() { return Attach<automation::HostsControl>("QuintaraHosts.Control"); }

  /// The same as bare objects; failures carry the system's result as their number.
  static automation::ComPtr<IDispatch> Running(const std::string& programName);
  static automation::ComPtr<IDispatch> Created(const std::string& programName);

  /// The path of the program, and of a program beside that of the tests.
  static std::string Program();
  static std::string Beside(const std::string& name);
  /// Runs a program and gives its exit code; -1 where it doesn't end.
  static int RunToEnd(const std::string& program, const std::vector<std::string>& arguments = {});

 private:
  void Start(const std::string& command);
  void WaitUntilReady(const std::string& readyFile) const;

  HANDLE process_ = nullptr;
  unsigned long id_ = 0;
  std::string errorsFile_;
  std::string readyFile_;
};

}  // namespace quintara::test
