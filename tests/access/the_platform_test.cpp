#include "access/session/the_platform.h"

#include <gtest/gtest.h>

#include <memory>

#include "base/failure.h"
#include "hosts/native/native_platform.h"

namespace quintara::test {
namespace {

TEST(ThePlatform, FailsBeforeOneIsInstalled) {
  const auto before = InstallPlatform(nullptr);

  EXPECT_THROW(ThePlatform(), Failure);

  InstallPlatform(before);
}

TEST(ThePlatform, IsTheOneInstalledLast) {
  const auto first = std::make_shared<NativePlatform>(std::make_shared<Gate>(), nullptr);
  const auto before = InstallPlatform(first);

  EXPECT_EQ(&ThePlatform(), first.get());

  EXPECT_EQ(InstallPlatform(before), first);
}

}  // namespace
}  // namespace quintara::test
