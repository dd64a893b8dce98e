#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "access/session/the_platform.h"
#include "hosts/gate/gate.h"
#include "hosts/native/native_platform.h"

namespace quintara::test {

/// One message box that was shown.
struct Box {
  std::string text;
  int style = 0;
  std::string title;

  bool operator==(const Box&) const = default;
};

/// Installs a platform on the files of this machine for as long as it lives. It records the boxes
/// and answers them from `answers`, the first one first; without any left, with the OK button.
/// Sleeps are recorded too, and over at once. The globals of the process are those of a fresh one at its
/// beginning and again at its end.
class TestPlatform {
 public:
  TestPlatform();
  ~TestPlatform();
  TestPlatform(const TestPlatform&) = delete;
  TestPlatform& operator=(const TestPlatform&) = delete;

  const std::shared_ptr<Gate>& TheGate() const { return gate_; }
  NativePlatform& Native() { return *platform_; }
  const std::vector<Box>& Boxes() const { return boxes_; }
  /// The sleeps asked for, in milliseconds.
  const std::vector<int>& Sleeps() const { return sleeps_; }
  std::deque<int> answers;

 private:
  std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
  std::vector<Box> boxes_;
  std::vector<int> sleeps_;
  std::shared_ptr<NativePlatform> platform_;
  std::shared_ptr<Platform> before_;
};

/// A folder of its own that goes, with all it holds, at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// The path of a file or folder in it; without `name`, its own.
  std::string Path(const std::string& name = {}) const;
  void Write(const std::string& name, const std::string& bytes) const;
  std::string Read(const std::string& name) const;
  bool Has(const std::string& name) const;
  /// The names of all that stands in it, sorted.
  std::vector<std::string> Names() const;

 private:
  std::string path_;
};

}  // namespace quintara::test
