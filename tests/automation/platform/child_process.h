#pragma once

#include <string>

#include "automation/platform/program_names.h"

namespace quintara::test {

/// The program `mortal_host` in a process of its own, whose object is the running one of a class.
class ChildProcess {
 public:
  /// Waits until the object can be attached to.
  explicit ChildProcess(const ProgramName& name);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Ends it from outside, as a crash or the user would, and waits until it is gone.
  void Kill();
  /// Waits until it has ended by itself.
  void AwaitEnd();

 private:
  HANDLE process_ = nullptr;
};

}  // namespace quintara::test
