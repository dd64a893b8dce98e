#include "geometry/placing.h"

#include <limits>

namespace quintara::test {
namespace {

PositionMatrix Axes(double x, double y, double z) {
  return {x, 0, 0, 0, y, 0, 0, 0, z, 1, 2, 3};
}

TEST(KindOf, TakesARotationForAMovement) {
  EXPECT_EQ(KindOf({0, 1, 0, -1, 0, 0, 0, 0, 1, 5, 6, 7}), PositionKind::kMovement);
}

TEST(KindOf, ForgivesAxesRoundedToSevenDigits) {
  EXPECT_EQ(KindOf(Axes(1.0000001, 0.9999999, 1)), PositionKind::kMovement);
}

TEST(KindOf, KnowsMirrors) {
  EXPECT_EQ(KindOf(Axes(-1, 1, 1)), PositionKind::kMirrored);
  EXPECT_EQ(KindOf(Axes(-1, -1, -1)), PositionKind::kMirrored);
  EXPECT_EQ(KindOf(Axes(-1, -1, 1)), PositionKind::kMovement);
}

TEST(KindOf, KnowsWhatIsStretched) {
  EXPECT_EQ(KindOf(Axes(2, 2, 2)), PositionKind::kStretched);
  EXPECT_EQ(KindOf(Axes(-2, 1, 1)), PositionKind::kStretched);
  EXPECT_EQ(KindOf({1, 0, 0, 0.5, 1, 0, 0, 0, 1, 0, 0, 0}), PositionKind::kStretched);
  EXPECT_EQ(KindOf(Axes(1e-3, 1e-3, 1e-3)), PositionKind::kStretched);
}

TEST(KindOf, KnowsWhatIsSingular) {
  EXPECT_EQ(KindOf({}), PositionKind::kSingular);
  EXPECT_EQ(KindOf(Axes(1, 1, 0)), PositionKind::kSingular);
  EXPECT_EQ(KindOf({1, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0}), PositionKind::kSingular);
}

TEST(KindOf, CountsWhatIsNotFiniteAsSingular) {
  EXPECT_EQ(KindOf(Axes(std::numeric_limits<double>::quiet_NaN(), 1, 1)), PositionKind::kSingular);
  EXPECT_EQ(KindOf({1, 0, 0, 0, 1, 0, 0, 0, 1, std::numeric_limits<double>::infinity(), 0, 0}),
            PositionKind::kSingular);
}

TEST(Placed, CarriesTheOriginThroughTheParent) {
  const PositionMatrix child = {1, 0, 0, 0, 1, 0, 0, 0, 1, 10, 0, 0};
  const PositionMatrix quarterTurn = {0, 1, 0, -1, 0, 0, 0, 0, 1, 1, 2, 3};

  EXPECT_EQ(Placed(child, quarterTurn), (PositionMatrix{0, 1, 0, -1, 0, 0, 0, 0, 1, 1, 12, 3}));
}

TEST(Placed, OfAxesAndOriginGivesThePositionAgain) {
  const PositionMatrix position = {2, 1, 0, -1, 3, 0, 0, 0, -1, 5, 6, 7};

  EXPECT_EQ(Placed(AxesOf(position), OriginOf(position)), position);
}

}  // namespace
}  // namespace quintara::test
