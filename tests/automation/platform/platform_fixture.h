#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>

#include "automation/platform/program_names.h"
#include "automation/platform/windows_platform.h"
#include "base/failure.h"

namespace quintara::test {

inline Failure FailureOf(const std::function<void()>& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure;
  }
  ADD_FAILURE() << "no failure";
  return Failure(0, "none");
}

MATCHER_P(FailsNaming, text, "") {
  *result_listener << arg.Description();
  return arg.Number() == failure::kCannotCreateObject && arg.Description().find(text) != std::string::npos;
}

/// A platform on the thread of the tests, on which automation is in use until the end of the program.
class PlatformTest : public testing::Test {
 protected:
  PlatformTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~PlatformTest() override { CoUninitialize(); }

  /// A program name of this test program alone.
  static std::string OwnName(const std::string& last) {
    return "QuintaraTest" + std::to_string(GetCurrentProcessId()) + "." + last;
  }

  automation::WindowsPlatform platform;
};

}  // namespace quintara::test
