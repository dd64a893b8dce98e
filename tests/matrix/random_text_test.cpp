#include "matrix/random_text.h"

#include <gtest/gtest.h>

#include "support/test_platform.h"

namespace quintara::test {
namespace {

TEST(RandomText, IsTheShortestThatReadsBackToItsNumber) {
  const TestPlatform platform;

  EXPECT_EQ(TextOf(0.0F), "0");
  EXPECT_EQ(TextOf(10'000.0F), "10000");
  EXPECT_EQ(TextOf(7'055.475F), "7055.475");
  EXPECT_EQ(TextOf(0.1F), "0.1");
  EXPECT_EQ(TextOf(9'999.999F), "9999.999");
}

TEST(RandomFromTheClock, FillsTheUnitInterval) {
  const auto random = RandomFromClock();
  double sum = 0;
  constexpr int kCount = 10'000;

  for (int i = 0; i < kCount; ++i) {
    const float number = random();
    ASSERT_GE(number, 0.0F);
    ASSERT_LT(number, 1.0F);
    sum += static_cast<double>(number);
  }

  EXPECT_NEAR(sum / kCount, 0.5, 0.05) << "more than fifteen standard deviations off";
}

}  // namespace
}  // namespace quintara::test
