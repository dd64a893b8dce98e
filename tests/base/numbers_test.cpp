#include "base/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "base/failure.h"

namespace quintara {
namespace {

int NumberOfFailure(std::string_view text) {
  try {
    ToDouble(text);
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

TEST(ToText, IsTheShortestThatReadsBack) {
  EXPECT_EQ(ToText(0.1), "0.1");
  EXPECT_EQ(ToText(1.0), "1");
  EXPECT_EQ(ToText(1e-7), "1e-07");
}

TEST(ToText, KeepsTheSignOfAZero) {
  EXPECT_TRUE(std::signbit(ToDouble(ToText(-0.0))));
}

TEST(ToText, RefusesWhatNoReaderWouldTake) {
  EXPECT_THROW(ToText(std::numeric_limits<double>::infinity()), Failure);
  EXPECT_THROW(ToText(std::numeric_limits<double>::quiet_NaN()), Failure);
}

TEST(ToDouble, GivesBackEveryBit) {
  std::mt19937_64 random(4711);
  for (int i = 0; i < 100'000; ++i) {
    const auto bits = random();
    double value = 0;
    static_assert(sizeof value == sizeof bits);
    std::memcpy(&value, &bits, sizeof value);
    if (!std::isfinite(value)) continue;

    const double read = ToDouble(ToText(value));

    ASSERT_EQ(std::memcmp(&read, &value, sizeof value), 0) << value;
  }
}

TEST(ToDouble, RefusesWhatIsNotAWholeFiniteDecimal) {
  for (const char* text :
       {"", " ", "nan", "inf", "-inf", "0,5", " 1", "1 ", "1.2.3", "0x10", "1e", "1e999", "1e-400", "one", "1\n"}) {
    EXPECT_EQ(NumberOfFailure(text), failure::kTypeMismatch) << text;
  }
}

TEST(ToDouble, NamesTheTextInItsFailure) {
  try {
    ToDouble("0,5");
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Description(), "Type mismatch: \"0,5\" is not a number");
  }
}

TEST(ToDouble, CutsALongTextBetweenCharacters) {
  const std::string start(39, 'x');
  try {
    ToDouble(start + "\xC3\xA4 and more");
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Description(), "Type mismatch: \"" + start + "...\" is not a number");
  }
}

TEST(TryToDouble, GivesNothingWhereToDoubleFails) {
  EXPECT_EQ(TryToDouble("1.5"), 1.5);
  EXPECT_FALSE(TryToDouble("1,5"));
  EXPECT_FALSE(TryToDouble("inf"));
}

}  // namespace
}  // namespace quintara
