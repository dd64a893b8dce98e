#include "quintara/wip_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

PositionMatrix At(double x) {
  auto position = kIdentityPosition;
  position[9] = x;
  return position;
}

struct AWip : ::testing::Test {
  std::vector<AskedComponent> asked{{{3, 1}, "nut", true}, {{3, 2}, "bolt", false}};
  std::vector<MatrixInstance> instances{{"nut", At(111)}, {"nut", At(21)}, {"bolt", At(211)}};
};

TEST_F(AWip, InPlaceHasNoShortcomings) {
  EXPECT_THAT(
      Shortcomings(asked, true, {{"nut", "a", At(111)}, {"nut", "b", At(21)}, {"bolt", "c", At(211)}}, instances),
      IsEmpty());
  EXPECT_THAT(Shortcomings(asked, false, {{"nut", "a", At(111)}, {"bolt", "c", At(211)}}, instances), IsEmpty());
}

TEST_F(AWip, LacksWhatIsNotThere) {
  EXPECT_THAT(Shortcomings(asked, false, {{"nut", "a", At(111)}}, instances), ElementsAre("'bolt' is missing"));
}

TEST_F(AWip, LacksInstancesWhenAllWereAskedFor) {
  EXPECT_THAT(Shortcomings(asked, true, {{"nut", "a", At(111)}, {"bolt", "c", At(211)}}, instances),
              ElementsAre("1 of 2 'nut' are missing"));
}

TEST_F(AWip, LacksWhatWasAskedForTwiceAndIsThereOnce) {
  asked.push_back(asked.front());

  EXPECT_THAT(Shortcomings(asked, false, {{"nut", "a", At(111)}, {"bolt", "c", At(211)}}, instances),
              ElementsAre("1 of 2 'nut' are missing"));
}

TEST_F(AWip, TellsWhatIsStillAtTheOrigin) {
  EXPECT_THAT(Shortcomings(asked, false, {{"nut", "nut.1", At(0)}, {"bolt", "c", At(211)}}, instances),
              ElementsAre("'nut' (nut.1) is still at the origin, though the matrix places it elsewhere"));
}

TEST_F(AWip, MayStandAtTheOriginWhereTheMatrixPlacesIt) {
  instances[0].position = At(0);

  EXPECT_THAT(Shortcomings(asked, false, {{"nut", "nut.1", At(0)}, {"bolt", "c", At(211)}}, instances), IsEmpty());
}

TEST_F(AWip, IsNotComparedWithPlacesThatNobodyKnows) {
  EXPECT_THAT(Shortcomings(asked, true, {{"nut", "a", At(0)}, {"bolt", "c", At(0)}}, std::nullopt), IsEmpty());
  EXPECT_THAT(Shortcomings(asked, true, {{"nut", "a", At(0)}}, std::nullopt), ElementsAre("'bolt' is missing"));
}

TEST_F(AWip, TellsWhatTheMatrixHasNoPlaceFor) {
  instances.pop_back();

  EXPECT_THAT(Shortcomings(asked, false, {{"nut", "a", At(111)}, {"bolt", "bolt.1", At(0)}}, instances),
              ElementsAre("'bolt' (bolt.1) is still at the origin, since the matrix has no place for it"));
}

TEST_F(AWip, MayHoldSomethingElsewhereThatTheMatrixHasNoPlaceFor) {
  instances.pop_back();

  EXPECT_THAT(Shortcomings(asked, false, {{"nut", "a", At(111)}, {"bolt", "bolt.1", At(5)}}, instances), IsEmpty());
}

TEST_F(AWip, IsSoughtInTheMatrixWithWhatItLacks) {
  const auto sought = SoughtFor(asked, {{"nut", "a", At(0)}, {"cover", "x", At(0)}});

  EXPECT_THAT(sought.partNumbers, ElementsAre("bolt", "cover", "nut"));
  EXPECT_THAT(sought.components, ElementsAre("cover", "nut"));
}

TEST_F(AWip, MayHoldWhatWasThereBefore) {
  EXPECT_THAT(
      Shortcomings(asked, false, {{"cover", "x", At(0)}, {"nut", "a", At(21)}, {"bolt", "c", At(211)}}, instances),
      IsEmpty());
}

}  // namespace
}  // namespace quintara::test
