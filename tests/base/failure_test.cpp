#include "base/failure.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/arrays.h"
#include "base/attempt.h"
#include "base/ref.h"

namespace quintara {
namespace {

struct Base {
  virtual ~Base() = default;
  int value = 1;
};
struct Derived : Base {};

TEST(Failure, WithoutADescriptionHasTheStandardText) {
  EXPECT_EQ(Failure(13).Description(), "Type mismatch");
  EXPECT_EQ(Failure(91).Description(), "Object variable or With block variable not set");
  EXPECT_EQ(Failure(1234).Description(), "Application-defined or object-defined error");
  EXPECT_STREQ(Failure(5, "its own").what(), "its own");
}

TEST(Attempt, KeepsTheFailureOfItsStatement) {
  ErrorState state;

  EXPECT_FALSE(Attempt(state, [] { throw Failure(6); }));

  EXPECT_TRUE(bool(state));
  EXPECT_EQ(state.number, 6);
  EXPECT_EQ(state.description, "Overflow");
}

TEST(Attempt, ForgetsTheFailureOfTheStatementBefore) {
  ErrorState state{6, "Overflow"};

  EXPECT_TRUE(Attempt(state, [] {}));

  EXPECT_FALSE(bool(state));
  EXPECT_EQ(state.description, "");
}

TEST(Attempt, TellsForeignExceptionsApart) {
  ErrorState state;

  Attempt(state, [] { throw std::bad_alloc(); });
  EXPECT_EQ(state.number, failure::kOutOfMemory);
  Attempt(state, [] { throw std::runtime_error("foreign"); });
  EXPECT_EQ(state.number, failure::kInternal);
  EXPECT_EQ(state.description, "foreign");
}

TEST(OrElse, GivesTheNeutralResultForAFailure) {
  EXPECT_EQ(OrElse(7, []() -> int { throw Failure(5); }), 7);
  EXPECT_EQ(OrElse(7, [] { return 8; }), 8);
}

TEST(Ref, FailsWithNumber91WhereNothingIsUsed) {
  const Ref<Base> nothing;
  ErrorState state;

  EXPECT_FALSE(Attempt(state, [&] { (void)nothing->value; }));
  EXPECT_EQ(state.number, failure::kObjectNotSet);
  EXPECT_FALSE(Attempt(state, [&] { (void)(*nothing).value; }));
  EXPECT_EQ(state.number, failure::kObjectNotSet);
}

TEST(Ref, IsEqualToAnotherHoldOnTheSameObject) {
  const auto derived = MakeRef<Derived>();
  const Ref<Base> base = derived;

  EXPECT_EQ(base, Ref<Base>(derived));
  EXPECT_NE(base, Ref<Base>(MakeRef<Derived>()));
  EXPECT_EQ(Ref<Base>(), Ref<Base>(nullptr));
  EXPECT_TRUE(bool(base));
  EXPECT_EQ(base->value, 1);
}

TEST(Arrays, FailWithNumber9OutsideTheirBounds) {
  std::vector<int> array{1, 2};
  ErrorState state;

  EXPECT_EQ(ElementAt(array, 1), 2);
  EXPECT_EQ(UpperBound(array), 1U);
  EXPECT_FALSE(Attempt(state, [&] { ElementAt(array, 2); }));
  EXPECT_EQ(state.number, failure::kSubscriptOutOfRange);
  EXPECT_FALSE(Attempt(state, [&] { ElementAt(array, -1); }));
  EXPECT_EQ(state.number, failure::kSubscriptOutOfRange);
  EXPECT_FALSE(Attempt(state, [&] { UpperBound(std::vector<int>()); }));
  EXPECT_EQ(state.number, failure::kSubscriptOutOfRange);
}

}  // namespace
}  // namespace quintara
