#pragma once

#include <string>
#include <vector>

#include "automation/driver/desktop.h"

namespace quintara::driver {

/// A program that a script of steps has started; it ends with this at the latest. What it prints is printed.
class Program {
 public:
  Program() = default;
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  void Start(const std::vector<std::string>& words);
  bool IsStarted() const { return process_ != nullptr; }
  bool HasEnded() const;
  /// Of one that has ended.
  int ExitCode() const;
  void Forget();

 private:
  HANDLE process_ = nullptr;
};

}  // namespace quintara::driver
