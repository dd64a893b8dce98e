#include "quintara/position_comparison.h"

#include <limits>

namespace quintara {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double kSize = 1000;

PositionMatrix At(double x) {
  auto position = kIdentityPosition;
  position[9] = x;
  return position;
}

class TheComparison : public ::testing::Test {
 protected:
  std::vector<PlacedOccurrence> occurrences{{"R\\frame", "frame", true, At(1)},
                                            {"R\\frame\\bolt", "bolt", false, At(2)},
                                            {"R\\frame2", "bolt", false, At(3)}};

  std::vector<std::pair<std::string, Verdict>> Verdicts(const std::vector<FlatComponent>& components) {
    std::vector<std::pair<std::string, Verdict>> verdicts;
    for (const auto& instance : ComparePositions(occurrences, kSize, components).instances) {
      verdicts.emplace_back(instance.name, instance.verdict);
    }
    return verdicts;
  }
};

TEST_F(TheComparison, ExpectsEachInstanceOfAPartNumberThatIsThere) {
  EXPECT_THAT(Verdicts({{"R\\frame\\bolt", "bolt", true, At(2)}}),
              ElementsAre(std::pair("R\\frame\\bolt", Verdict::kInPlace), std::pair("R\\frame2", Verdict::kMissing)));
}

TEST_F(TheComparison, ExpectsNothingBelowAnExpectedAssembly) {
  EXPECT_THAT(Verdicts({{"R\\frame", "frame", false, At(1)}, {"R\\frame2", "bolt", false, At(3)}}),
              ElementsAre(std::pair("R\\frame", Verdict::kInPlace), std::pair("R\\frame2", Verdict::kInPlace)));
}

TEST_F(TheComparison, ExpectsNothingOfAnEmptyProduct) {
  EXPECT_THAT(Verdicts({}), IsEmpty());
}

TEST_F(TheComparison, CallsAComponentWithoutAnInstanceSurplus) {
  EXPECT_THAT(Verdicts({{"frame.1", "frame", false, At(1)}}),
              ElementsAre(std::pair("R\\frame", Verdict::kMissing), std::pair("frame.1", Verdict::kSurplus)));
}

TEST_F(TheComparison, CallsTheSecondComponentOfAnInstanceSurplus) {
  EXPECT_THAT(Verdicts({{"R\\frame", "frame", false, At(1)}, {"R\\frame", "frame", false, At(1)}}),
              ElementsAre(std::pair("R\\frame", Verdict::kInPlace), std::pair("R\\frame", Verdict::kSurplus)));
}

TEST_F(TheComparison, SeesAComponentOfAnotherPart) {
  EXPECT_THAT(Verdicts({{"R\\frame", "frame", false, At(1)}, {"R\\frame2", "frame", false, At(3)}}),
              ElementsAre(std::pair("R\\frame", Verdict::kInPlace), std::pair("R\\frame2", Verdict::kSurplus)));
  EXPECT_THAT(Verdicts({{"R\\frame\\bolt", "bolt", false, At(2)}, {"R\\frame2", "nut", false, At(3)}}),
              ElementsAre(std::pair("R\\frame\\bolt", Verdict::kInPlace), std::pair("R\\frame2", Verdict::kOtherPart)));
}

TEST_F(TheComparison, ToleratesABillionthOfTheSize) {
  EXPECT_THAT(Verdicts({{"R\\frame", "frame", false, At(1 + 0.9e-6)}}),
              ElementsAre(std::pair("R\\frame", Verdict::kInPlace)));
}

TEST_F(TheComparison, SeesWhatIsFurtherOff) {
  EXPECT_THAT(Verdicts({{"R\\frame", "frame", false, At(1 + 1.1e-6)}}),
              ElementsAre(std::pair("R\\frame", Verdict::kOutOfPlace)));
}

TEST_F(TheComparison, SeesATurnWhoseOriginIsRight) {
  auto turned = At(1);
  turned[1] = 1.1e-9;

  EXPECT_THAT(Verdicts({{"R\\frame", "frame", false, turned}}),
              ElementsAre(std::pair("R\\frame", Verdict::kOutOfPlace)));
}

TEST_F(TheComparison, TakesWhatIsNoNumberForOutOfPlace) {
  EXPECT_THAT(Verdicts({{"R\\frame", "frame", false, At(std::numeric_limits<double>::quiet_NaN())}}),
              ElementsAre(std::pair("R\\frame", Verdict::kOutOfPlace)));
}

TEST(TheDeviation, OfEqualPositionsIsNothing) {
  EXPECT_EQ(Deviation(At(7), At(7), kSize), 0);
}

TEST(TheDeviation, OfAMoveIsItsLength) {
  auto moved = kIdentityPosition;
  moved[9] = 3;
  moved[11] = 4;

  EXPECT_DOUBLE_EQ(Deviation(kIdentityPosition, moved, kSize), 5);
}

TEST(TheDeviation, OfATurnGrowsWithTheSize) {
  auto turned = kIdentityPosition;
  turned[1] = 1e-3;

  EXPECT_DOUBLE_EQ(Deviation(kIdentityPosition, turned, kSize), 1);
}

}  // namespace
}  // namespace quintara
