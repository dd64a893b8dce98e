#include "automation/dispatch/value.h"

#include <gmock/gmock.h>

#include <limits>
#include <vector>

#include "automation/dispatch/text16.h"
#include "base/failure.h"

namespace quintara::automation {
namespace {

using testing::ElementsAre;

VARIANT Of(VARTYPE type) {
  VARIANT value;
  VariantInit(&value);
  value.vt = type;
  return value;
}

Variant Read(const VARIANT& value) {
  return ToVariant(value, nullptr);
}

template <class Body>
int NumberOf(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

// An array of doubles from index 1, as some hosts number theirs.
Value Doubles(const std::vector<double>& numbers) {
  SAFEARRAYBOUND bound{static_cast<ULONG>(numbers.size()), 1};
  Value array;
  array.Raw().vt = VT_ARRAY | VT_R8;
  array.Raw().parray = SafeArrayCreate(VT_R8, 1, &bound);
  auto* const slots = static_cast<double*>(array.Raw().parray->pvData);
  for (std::size_t i = 0; i < numbers.size(); ++i) slots[i] = numbers[i];
  return array;
}

TEST(Values, EachKindComesBackAsItWentOut) {
  const std::vector<Variant> kinds = {
      Variant(),       true, false, std::int16_t{-7}, std::int32_t{70000}, 1.5, "caf\xC3\xA9 \xF0\x9F\x94\xA9", "",
      Ref<AnyObject>()};

  for (const auto& kind : kinds) EXPECT_EQ(Read(Value(kind).Raw()), kind);
}

TEST(Values, WholeNumbersOfOtherKindsAreWhole) {
  auto small = Of(VT_UI1);
  small.bVal = 200;
  auto wide = Of(VT_I8);
  wide.llVal = -5;
  auto huge = Of(VT_I8);
  huge.llVal = 1LL << 40;

  EXPECT_EQ(Read(small), Variant(std::int16_t{200}));
  EXPECT_EQ(Read(wide), Variant(std::int32_t{-5}));
  EXPECT_EQ(Read(huge), Variant(double(1LL << 40)));
}

TEST(Values, ANumberAboveTheWholeOnesIsADouble) {
  auto above = Of(VT_UI4);
  above.ulVal = std::numeric_limits<ULONG>::max();

  EXPECT_EQ(Read(above), Variant(4294967295.0));
}

TEST(Values, ADateIsItsNumber) {
  auto date = Of(VT_DATE);
  date.date = 2.25;

  EXPECT_EQ(Read(date), Variant(2.25));
}

TEST(Values, TheNullOfADatabaseAndALeftOutArgumentAreEmpty) {
  auto absent = Of(VT_ERROR);
  absent.scode = DISP_E_PARAMNOTFOUND;

  EXPECT_TRUE(Read(Of(VT_NULL)).IsEmpty());
  EXPECT_TRUE(Read(absent).IsEmpty());
}

TEST(Values, AnErrorAndAnArrayAreNoValues) {
  auto error = Of(VT_ERROR);
  error.scode = E_FAIL;

  EXPECT_EQ(NumberOf([&] { Read(error); }), failure::kTypeMismatch);
  EXPECT_EQ(NumberOf([&] { Read(Doubles({1}).Raw()); }), failure::kTypeMismatch);
}

TEST(Values, WhatStandsBehindAReferenceIsRead) {
  Value text(std::string("behind"));
  auto reference = Of(VT_BYREF | VT_VARIANT);
  reference.pvarVal = &text.Raw();
  auto outer = Of(VT_BYREF | VT_VARIANT);
  outer.pvarVal = &reference;

  EXPECT_EQ(Read(reference), Variant("behind"));
  EXPECT_EQ(Read(Value::Reference(text).Raw()), Variant("behind"));
  EXPECT_EQ(&Behind(outer), &text.Raw());
}

TEST(Values, NoObjectIsNothingAndATextIsNone) {
  EXPECT_FALSE(ObjectIn(Of(VT_EMPTY)));
  EXPECT_FALSE(ObjectIn(Of(VT_DISPATCH)));
  EXPECT_EQ(NumberOf([] { ObjectIn(Value(std::string("text")).Raw()); }), failure::kTypeMismatch);
}

TEST(Arrays, AreReadInEveryForm) {
  const std::vector<double> numbers{1, 2.5, -3};
  Value ofVariants{std::span<const double>(numbers)};
  auto ofDoubles = Doubles(numbers);
  auto wrapped = Of(VT_BYREF | VT_VARIANT);
  wrapped.pvarVal = &ofDoubles.Raw();

  EXPECT_EQ(NumbersIn(ofVariants.Raw()), numbers);
  EXPECT_EQ(NumbersIn(ofDoubles.Raw()), numbers);
  EXPECT_EQ(NumbersIn(Value::Reference(ofVariants).Raw()), numbers);
  EXPECT_EQ(NumbersIn(wrapped), numbers);
}

TEST(Arrays, OfTextsAreRead) {
  EXPECT_THAT(TextsIn(Value(std::vector<std::string>{"a", "\xC3\xA9"}).Raw()), ElementsAre("a", "\xC3\xA9"));
}

TEST(Arrays, OfAnotherSizeAreRefused) {
  std::vector<double> numbers(12);

  EXPECT_EQ(NumberOf([&] { ReadNumbers(Doubles({1, 2}).Raw(), numbers); }), failure::kSubscriptOutOfRange);
}

TEST(Arrays, OfTextsOrOfTwoDimensionsAreNoNumbers) {
  SAFEARRAYBOUND bounds[2] = {{2, 0}, {2, 0}};
  Value table;
  table.Raw().vt = VT_ARRAY | VT_R8;
  table.Raw().parray = SafeArrayCreate(VT_R8, 2, bounds);

  EXPECT_EQ(NumberOf([&] { NumbersIn(table.Raw()); }), failure::kTypeMismatch);
  EXPECT_EQ(NumberOf([] { NumbersIn(Value(std::vector<std::string>{"x"}).Raw()); }), failure::kTypeMismatch);
  EXPECT_EQ(NumberOf([] { NumbersIn(Value(1.0).Raw()); }), failure::kTypeMismatch);
}

TEST(Arrays, AreWrittenInTheirOwnForm) {
  const std::vector<double> numbers{4, 5};
  auto ofDoubles = Doubles({0, 0});
  Value ofVariants(std::vector<std::string>{"old", "old"});

  WriteNumbers(Value::Reference(ofDoubles).Raw(), numbers);
  WriteNumbers(Value::Reference(ofVariants).Raw(), numbers);

  EXPECT_EQ(NumbersIn(ofDoubles.Raw()), numbers);
  EXPECT_EQ(NumbersIn(ofVariants.Raw()), numbers);
}

TEST(Texts, WhatIsNoTextDoesNotGoOut) {
  EXPECT_EQ(NumberOf([] { Value(std::string("a\xFFz")); }), failure::kInvalidCall);
}

TEST(Texts, WhatIsNoTextBecomesTheReplacementCharacter) {
  EXPECT_EQ(Wide("a\xFFz"), L"a\xFFFDz");
  EXPECT_EQ(Narrow(std::wstring_view(L"a\xD800z")), "a\xEF\xBF\xBDz");
  EXPECT_EQ(FromBstr(nullptr), "");
}

}  // namespace
}  // namespace quintara::automation
