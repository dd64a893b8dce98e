#include "base/variant.h"

#include <gtest/gtest.h>

#include "access/contracts/any_object.h"
#include "base/failure.h"

namespace quintara {
namespace {

template <class Body>
int FailureNumber(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

class SomeObject : public AnyObject {};

TEST(Variant, IsEmptyAtFirst) {
  EXPECT_TRUE(Variant().IsEmpty());
}

TEST(Variant, EmptyReadsAsZeroFalseAndTheEmptyText) {
  const Variant empty;

  EXPECT_EQ(empty.ToInteger32(), 0);
  EXPECT_EQ(empty.ToDouble(), 0);
  EXPECT_FALSE(empty.ToBoolean());
  EXPECT_EQ(empty.ToText(), "");
}

TEST(Variant, ALiteralIsATextAndNoBoolean) {
  EXPECT_TRUE(Variant("x").IsText());
}

TEST(Variant, TrueReadsAsMinusOne) {
  EXPECT_EQ(Variant(true).ToInteger16(), -1);
  EXPECT_EQ(Variant(true).ToText(), "True");
  EXPECT_EQ(Variant(false).ToText(), "False");
}

TEST(Variant, HalvesRoundToTheEvenNumber) {
  EXPECT_EQ(Variant(2.5).ToInteger32(), 2);
  EXPECT_EQ(Variant(3.5).ToInteger32(), 4);
  EXPECT_EQ(Variant(-0.5).ToInteger32(), 0);
}

TEST(Variant, ATextIsReadAsTheNumberItShows) {
  EXPECT_EQ(Variant("12").ToInteger16(), 12);
  EXPECT_EQ(Variant("1e2").ToDouble(), 100);
}

TEST(Variant, ATextThatIsNoNumberIsATypeMismatch) {
  EXPECT_EQ(FailureNumber([] { Variant("abc").ToInteger32(); }), failure::kTypeMismatch);
  EXPECT_EQ(FailureNumber([] { Variant("").ToInteger32(); }), failure::kTypeMismatch);
  EXPECT_EQ(FailureNumber([] { Variant(" 1").ToDouble(); }), failure::kTypeMismatch);
  EXPECT_EQ(FailureNumber([] { Variant("yes").ToBoolean(); }), failure::kTypeMismatch);
}

TEST(Variant, WhatDoesNotFitOverflows) {
  EXPECT_EQ(FailureNumber([] { Variant(32768).ToInteger16(); }), failure::kOverflow);
  EXPECT_EQ(FailureNumber([] { Variant("-32769").ToInteger16(); }), failure::kOverflow);
  EXPECT_EQ(FailureNumber([] { Variant(2147483647.5).ToInteger32(); }), failure::kOverflow);
}

TEST(Variant, TheEndsOfTheRangesFit) {
  EXPECT_EQ(Variant(32767.5 - 0.1).ToInteger16(), 32767);
  EXPECT_EQ(Variant("-2147483648").ToInteger32(), -2147483647 - 1);
}

TEST(Variant, ADoubleKeepsItsShortestText) {
  EXPECT_EQ(Variant(0.1).ToText(), "0.1");
}

TEST(Variant, BooleansAreReadWithoutRegardToCase) {
  EXPECT_TRUE(Variant("tRuE").ToBoolean());
  EXPECT_FALSE(Variant("FALSE").ToBoolean());
  EXPECT_TRUE(Variant("-1").ToBoolean());
}

TEST(Variant, GivesTheObjectItHolds) {
  const Ref<AnyObject> object = MakeRef<SomeObject>();

  EXPECT_EQ(Variant(object).ToObject(), object);
}

TEST(Variant, AnObjectIsNeitherNumberNorText) {
  const Variant object{Ref<AnyObject>(MakeRef<SomeObject>())};

  EXPECT_EQ(FailureNumber([&] { object.ToInteger32(); }), failure::kTypeMismatch);
  EXPECT_EQ(FailureNumber([&] { object.ToText(); }), failure::kTypeMismatch);
}

TEST(Variant, NoOtherValueIsAnObject) {
  EXPECT_EQ(FailureNumber([] { Variant().ToObject(); }), failure::kTypeMismatch);
  EXPECT_EQ(FailureNumber([] { Variant("x").ToObject(); }), failure::kTypeMismatch);
}

TEST(Variant, ComparesKindAndValue) {
  EXPECT_EQ(Variant("a"), Variant("a"));
  EXPECT_FALSE(Variant(1) == Variant("1"));
  EXPECT_FALSE(Variant(1) == Variant(1.0));
}

}  // namespace
}  // namespace quintara
