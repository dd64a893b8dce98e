#pragma once

#include <sys/types.h>

#include <string>

namespace quintara {

/// A screen that nobody sees, for drawing without a display: an X server of our own, which ends with
/// this object or with this process. Without such a server on the machine, the user's display.
class VirtualScreen {
 public:
  /// Failure 429, naming the package, when there is neither.
  VirtualScreen();
  ~VirtualScreen();
  VirtualScreen(const VirtualScreen&) = delete;
  VirtualScreen& operator=(const VirtualScreen&) = delete;

  /// The name under which to connect, such as ":1".
  const std::string& Name() const { return name_; }

 private:
  void Start(const std::string& program);

  pid_t process_ = 0;
  std::string name_;
};

}  // namespace quintara
