#include "quintara/wip_check.h"

#include "base/failure.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

PositionMatrix At(double x) {
  auto position = kIdentityPosition;
  position[9] = x;
  return position;
}

std::string Element(const std::string& tag, const std::string& partNumber, int x, const std::string& below = {}) {
  std::string numbers;
  for (const auto* name : {"XX", "YY", "ZZ"}) numbers += std::string(name) + "=\"1\" ";
  for (const auto* name : {"XY", "XZ", "YX", "YZ", "ZX", "ZY", "YO", "ZO"}) numbers += std::string(name) + "=\"0\" ";
  return "<" + tag + " PART_NUMBER=\"" + partNumber + "\" INSTANCE_NAME=\"i\" FULL_INSTANCE_NAME=\"i\" " + numbers +
         "XO=\"" + std::to_string(x) + "\">" + below + "</" + tag + ">";
}

std::vector<std::string> PlacesOf(const std::vector<MatrixInstance>& instances) {
  std::vector<std::string> places;
  for (const auto& instance : instances) {
    places.push_back(instance.partNumber + " " + std::to_string(static_cast<int>(instance.position[9])));
  }
  return places;
}

const std::string& Matrix() {
  static const auto kText =
      Element("PRODUCT", "gear", 1,
              Element("PRODUCT", "axle", 10, Element("PART", "nut", 100) + Element("PART", "bolt", 200)) +
                  Element("PART", "nut", 20));
  return kText;
}

TEST(TheInstancesOfAMatrix, StandInTheFrameOfItsRoot) {
  EXPECT_THAT(PlacesOf(InstancesFor({"nut"}, Matrix())), ElementsAre("nut 111", "nut 21"));
}

TEST(TheInstancesOfAMatrix, LeaveOutWhatAComponentHolds) {
  EXPECT_THAT(PlacesOf(InstancesFor({"nut", "axle"}, Matrix())), ElementsAre("axle 11", "nut 21"));
  EXPECT_THAT(PlacesOf(InstancesFor({"gear", "nut"}, Matrix())), ElementsAre("gear 1"));
}

TEST(TheInstancesOfAMatrix, NeedAMatrix) {
  EXPECT_THROW(InstancesFor({"nut"}, "no matrix"), Failure);
  EXPECT_THROW(InstancesFor({"nut"}, "<PART PART_NUMBER='nut' XX='one'/>"), Failure);
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
  EXPECT_THAT(Shortcomings(asked, true, {{"nut", "a", At(0)}, {"bolt", "c", At(0)}}, {}), IsEmpty());
}

TEST_F(AWip, MayHoldWhatWasThereBefore) {
  EXPECT_THAT(
      Shortcomings(asked, false, {{"cover", "x", At(0)}, {"nut", "a", At(21)}, {"bolt", "c", At(211)}}, instances),
      IsEmpty());
}

}  // namespace
}  // namespace quintara::test
