#pragma once

#include <string>

#include "access/contracts/any_object.h"
#include "automation/dispatch/com.h"

namespace quintara::bench {

/// This program once more in a process of its own, which makes an object the running one of a class.
class OtherProcess {
 public:
  /// Runs it with `task` and the class's id as arguments and waits until it serves.
  explicit OtherProcess(const std::string& task);
  ~OtherProcess();
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  /// Its object, behind an adapter.
  Ref<AnyObject> Attach() const;

 private:
  CLSID class_{};
  HANDLE process_ = nullptr;
};

/// What the other process does: makes `object` the running one of the class and answers until it is ended. Gives its
/// exit code.
int ServeUntilTheEnd(const Ref<AnyObject>& object, const std::string& classText);

}  // namespace quintara::bench
