#include "matrix/position_arithmetic.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

#include "base/failure.h"
#include "matrix/matrix_fixture.h"

namespace quintara::test {
namespace {

PositionMatrix RandomPosition(std::mt19937_64& random) {
  std::uniform_real_distribution<double> numbers(-1000, 1000);
  PositionMatrix position;
  for (auto& number : position) number = numbers(random);
  return position;
}

TEST(Compose, GivesTheBitsOfTheFormulaInItsOrder) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 10'000; ++i) {
    const auto child = RandomPosition(random);
    const auto parent = RandomPosition(random);

    ASSERT_THAT(Compose(child, parent), HasBitsOf(WrittenOut(child, parent)));
  }
}

TEST(Compose, LeavesTheChildUnderTheIdentity) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 1'000; ++i) {
    const auto child = RandomPosition(random);

    ASSERT_THAT(Compose(child, kIdentityPosition), HasBitsOf(child));
  }
}

TEST(Compose, GivesTheParentForTheIdentity) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 1'000; ++i) {
    const auto parent = RandomPosition(random);

    ASSERT_EQ(Compose(kIdentityPosition, parent), parent);
  }
}

TEST(Compose, PutsAChildWithoutOriginAtItsParents) {
  std::mt19937_64 random(4);
  auto child = RandomPosition(random);
  child[9] = child[10] = child[11] = 0;
  const auto parent = RandomPosition(random);

  const auto result = Compose(child, parent);

  EXPECT_EQ(result[9], parent[9]);
  EXPECT_EQ(result[10], parent[10]);
  EXPECT_EQ(result[11], parent[11]);
}

TEST(Compose, DependsOnTheOrderOfTheOriginSum) {
  // With the parent's origin added last, the small products would not be lost one by one.
  PositionMatrix child = At(1, 1, 1);
  PositionMatrix parent = At(1e16);
  parent[0] = parent[3] = parent[6] = 1;

  EXPECT_EQ(Compose(child, parent)[9], ((1e16 + 1.0) + 1.0) + 1.0);
  EXPECT_NE(Compose(child, parent)[9], 1e16 + (1.0 + 1.0 + 1.0));
}

TEST(Compose, RoundsEachProductBeforeItIsAdded) {
  PositionMatrix child{};
  PositionMatrix parent{};
  child[9] = parent[0] = 1 + 0x1p-27;
  parent[9] = -(1 + 0x1p-26);

  EXPECT_EQ(Compose(child, parent)[9], 0) << "a fused sum would keep 2^-54";
}

TEST(Compose, TurnsAndMoves) {
  const PositionMatrix quarterTurnAboutZ = {0, 1, 0, -1, 0, 0, 0, 0, 1, 100, 0, 0};

  const auto result = Compose(At(10, 0, 5), quarterTurnAboutZ);

  EXPECT_EQ(result, (PositionMatrix{0, 1, 0, -1, 0, 0, 0, 0, 1, 100, 10, 5}));
}

TEST(Compose, LeavesItsInputsAlone) {
  std::mt19937_64 random(5);
  const auto child = RandomPosition(random);
  const auto parent = RandomPosition(random);
  auto childCopy = child;
  auto parentCopy = parent;
  PositionMatrix result;

  Compose(std::span<const double>(childCopy), std::span<const double>(parentCopy), std::span<double>(result));

  EXPECT_THAT(childCopy, HasBitsOf(child));
  EXPECT_THAT(parentCopy, HasBitsOf(parent));
}

TEST(Compose, RefusesAnArrayThatHasNotTwelveElements) {
  const std::array<double, 12> twelve{};
  std::array<double, 12> result{};
  const std::vector<double> eleven(11);
  std::vector<double> none;

  EXPECT_THROW(Compose(std::span<const double>(eleven), std::span<const double>(twelve), std::span<double>(result)),
               Failure);
  EXPECT_THROW(Compose(std::span<const double>(twelve), std::span<const double>(eleven), std::span<double>(result)),
               Failure);
  EXPECT_THROW(Compose(std::span<const double>(twelve), std::span<const double>(twelve), std::span<double>(none)),
               Failure);
}

}  // namespace
}  // namespace quintara::test
