#include "base/counter16.h"

#include <gtest/gtest.h>

#include <vector>

namespace quintara {
namespace {

template <class Body>
int FailureNumberOf(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

TEST(Counter16, HoldsBothEndsOfItsRange) {
  EXPECT_EQ(Counter16(32'767), 32'767);
  EXPECT_EQ(Counter16(-32'768), -32'768);
}

TEST(Counter16, OverflowsInsteadOfWrapping) {
  Counter16 highest = 32'767;
  Counter16 lowest = -32'768;

  EXPECT_EQ(FailureNumberOf([&] { ++highest; }), failure::kOverflow);
  EXPECT_EQ(FailureNumberOf([&] { --lowest; }), failure::kOverflow);
  EXPECT_EQ(FailureNumberOf([] { Counter16(32'768); }), failure::kOverflow);
  EXPECT_EQ(FailureNumberOf([] { Counter16(std::size_t{1} << 40); }), failure::kOverflow);
  EXPECT_EQ(highest, 32'767);
}

TEST(Counter16, SaysOverflow) {
  try {
    Counter16(40'000);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Description(), "Overflow");
  }
}

TEST(Counting, ReachesTheLastNumberOfTheRangeAndLeavesIt) {
  int count = 0;

  for (const int i : Counting(1, 32'767)) count = i;

  EXPECT_EQ(count, 32'767);
}

TEST(Counting, RunsNotAtAllWhenTheLastLiesBelowTheFirst) {
  for (const int i : Counting(1, 0)) FAIL() << i;
  for (const int i : Counting(1, -5)) FAIL() << i;
}

TEST(Counting, StepsByOne) {
  std::vector<int> numbers;

  for (const int i : Counting(-1, 2)) numbers.push_back(i);

  EXPECT_EQ(numbers, (std::vector<int>{-1, 0, 1, 2}));
}

}  // namespace
}  // namespace quintara
