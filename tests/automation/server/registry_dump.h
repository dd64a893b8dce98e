#pragma once

#include <string>
#include <vector>

#include "automation/dispatch/com.h"

namespace quintara::test {

/// All that stands below a key, a line for each key and value: "KEY" and "KEY|NAME=TEXT".
std::vector<std::string> Dump(HKEY key, const std::wstring& path = {});

/// The names of the keys below one of its keys, sorted.
std::vector<std::string> NamesBelow(HKEY key, const std::wstring& path);

/// A key of the registry of this test's own, which goes at the end.
class OwnKey {
 public:
  OwnKey();
  ~OwnKey();
  OwnKey(const OwnKey&) = delete;
  OwnKey& operator=(const OwnKey&) = delete;

  HKEY Get() const noexcept { return key_; }
  /// Makes a key below it, which goes with the session where it is volatile.
  void Make(const std::wstring& path, bool isVolatile = false) const;
  void Write(const std::wstring& path, const std::wstring& text) const;

 private:
  std::wstring path_;
  HKEY key_ = nullptr;
};

/// One whose keys nobody may open.
class ForbiddenKey {
 public:
  ForbiddenKey();

  HKEY Get() const noexcept { return key_.Get(); }

 private:
  OwnKey key_;
};

}  // namespace quintara::test
