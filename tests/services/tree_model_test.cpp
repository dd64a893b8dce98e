#include "services/tree_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/failure.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;

constexpr int kMostNodes = 32767;

class ATree : public testing::Test {
 protected:
  static int NumberOfFailure(const std::function<void()>& body) {
    try {
      body();
    } catch (const Failure& failure) {
      return failure.Number();
    }
    return 0;
  }
  std::vector<int> ChildrenOf(int node) const {
    std::vector<int> children;
    for (int at = tree.FirstChild(node); at != 0; at = tree.Next(at)) children.push_back(at);
    return children;
  }

  TreeModel tree{{"part none", "part lwt"}, "xxx"};
};

TEST_F(ATree, NumbersItsNodesFromOneInTheOrderOfAdding) {
  EXPECT_EQ(tree.Count(), 0);

  const int root = tree.Add(0, "47_12", "root");
  const int first = tree.Add(root, "48_13", "first");
  const int below = tree.Add(first, "50_13", "below");
  const int second = tree.Add(root, "49_13", "second");

  EXPECT_EQ(std::vector({root, first, below, second}), std::vector({1, 2, 3, 4}));
  EXPECT_EQ(tree.Count(), 4);
  EXPECT_EQ(tree.Text(below), "below");
}

TEST_F(ATree, AddsANodeAsTheLastChildOfItsParent) {
  tree.Add(0, "1_1", "");
  tree.Add(1, "2_1", "");
  tree.Add(2, "3_1", "");
  tree.Add(1, "4_1", "");
  tree.Add(1, "5_1", "");

  EXPECT_THAT(ChildrenOf(1), ElementsAre(2, 4, 5));
  EXPECT_THAT(ChildrenOf(2), ElementsAre(3));
  EXPECT_THAT(ChildrenOf(5), ElementsAre());
  EXPECT_EQ(tree.ChildCount(1), 3);
  EXPECT_EQ(tree.ChildCount(2), 1);
  EXPECT_EQ(tree.ChildCount(5), 0);
  EXPECT_EQ(tree.Parent(1), 0);
  EXPECT_EQ(tree.Parent(3), 2);
  EXPECT_EQ(tree.Parent(4), 1);
}

TEST_F(ATree, LetsItsRootsFollowEachOther) {
  tree.Add(0, "1_1", "");
  tree.Add(1, "2_1", "");
  tree.Add(0, "3_1", "");
  tree.Add(0, "4_1", "");

  EXPECT_EQ(tree.Next(1), 3);
  EXPECT_EQ(tree.Next(3), 4);
  EXPECT_EQ(tree.Next(4), 0);
  EXPECT_THAT(ChildrenOf(1), ElementsAre(2));
}

TEST_F(ATree, MakesAKeyOfThePiecesOnTheWayToANode) {
  tree.Add(0, "47_12", "");
  tree.Add(1, "48_13", "");
  tree.Add(2, "50_13", "");

  EXPECT_EQ(tree.Key(1), "47_12");
  EXPECT_EQ(tree.Key(2), "47_12xxx48_13");
  EXPECT_EQ(tree.Key(3), "47_12xxx48_13xxx50_13");
  EXPECT_EQ(tree.Piece(3), "50_13");
}

TEST_F(ATree, TakesThePieceForTheKeyWithoutASeparator) {
  TreeModel flat({});
  flat.Add(0, "a", "");
  flat.Add(1, "b", "");

  EXPECT_EQ(flat.Key(2), "b");
}

TEST_F(ATree, TakesTheSamePieceUnderAnotherParent) {
  tree.Add(0, "1_1", "");
  tree.Add(1, "2_1", "");
  tree.Add(1, "3_1", "");
  tree.Add(2, "4_1", "");

  EXPECT_EQ(tree.Add(3, "4_1", ""), 5);
  EXPECT_EQ(tree.Add(4, "1_1", ""), 6);
}

TEST_F(ATree, RefusesAKeyThatIsThereAlready) {
  tree.Add(0, "1_1", "");
  tree.Add(1, "2_1", "two");

  EXPECT_EQ(NumberOfFailure([&] { tree.Add(1, "2_1", "again"); }), failure::kDuplicateKey);
  EXPECT_EQ(NumberOfFailure([&] { tree.Add(0, "1_1", "again"); }), failure::kDuplicateKey);

  EXPECT_EQ(tree.Count(), 2);
  EXPECT_EQ(tree.Text(2), "two");
  EXPECT_EQ(tree.ChildCount(1), 1);
  EXPECT_EQ(tree.Next(1), 0);
}

TEST_F(ATree, RefusesAKeyAnywhereWithoutASeparator) {
  TreeModel flat({});
  flat.Add(0, "a", "");
  flat.Add(1, "b", "");

  EXPECT_EQ(NumberOfFailure([&] { flat.Add(2, "a", ""); }), failure::kDuplicateKey);
  EXPECT_EQ(NumberOfFailure([&] { flat.Add(0, "b", ""); }), failure::kDuplicateKey);
}

TEST_F(ATree, RefusesAParentThatIsNotThere) {
  EXPECT_EQ(NumberOfFailure([&] { tree.Add(1, "1_1", ""); }), failure::kSubscriptOutOfRange);
  tree.Add(0, "1_1", "");
  EXPECT_EQ(NumberOfFailure([&] { tree.Add(2, "2_1", ""); }), failure::kSubscriptOutOfRange);
  EXPECT_EQ(NumberOfFailure([&] { tree.Add(-1, "2_1", ""); }), failure::kSubscriptOutOfRange);

  EXPECT_EQ(tree.Count(), 1);
}

TEST_F(ATree, RefusesAnIndexThatIsNotThere) {
  tree.Add(0, "1_1", "");

  for (const int node : {-1, 0, 2}) {
    const std::vector<std::function<void()>> uses = {
        [&] { tree.Text(node); },
        [&] { tree.Picture(node); },
        [&] { tree.Parent(node); },
        [&] { tree.FirstChild(node); },
        [&] { tree.Next(node); },
        [&] { tree.IsExpanded(node); },
        [&] { tree.SetExpanded(node, true); },
        [&] { tree.Piece(node); },
        [&] { tree.ChildCount(node); },
        [&] { tree.Tag(node); },
        [&] { tree.SetTag(node, "tag"); },
        [&] { tree.SetPicture(node, "part none"); },
    };
    for (const auto& use : uses) EXPECT_EQ(NumberOfFailure(use), failure::kSubscriptOutOfRange) << node;
  }
  EXPECT_EQ(NumberOfFailure([&] { tree.Key(2); }), failure::kSubscriptOutOfRange);
}

TEST_F(ATree, HasNewNodesClosedWithoutTagAndPicture) {
  tree.Add(0, "1_1", "");

  EXPECT_FALSE(tree.IsExpanded(1));
  EXPECT_EQ(tree.Tag(1), "");
  EXPECT_EQ(tree.Picture(1), "");
}

TEST_F(ATree, KeepsWhatIsSetOnANode) {
  tree.Add(0, "1_1", "");
  tree.Add(1, "2_1", "");

  tree.SetTag(2, "anything");
  tree.SetPicture(2, "part lwt");
  tree.SetExpanded(2, true);

  EXPECT_EQ(tree.Tag(2), "anything");
  EXPECT_EQ(tree.Picture(2), "part lwt");
  EXPECT_TRUE(tree.IsExpanded(2));
  EXPECT_EQ(tree.Tag(1), "");
  EXPECT_EQ(tree.Picture(1), "");
  EXPECT_FALSE(tree.IsExpanded(1));
  tree.SetPicture(2, "");
  tree.SetExpanded(2, false);
  EXPECT_EQ(tree.Picture(2), "");
  EXPECT_FALSE(tree.IsExpanded(2));
}

TEST_F(ATree, RefusesAPictureThatItHasNot) {
  tree.Add(0, "1_1", "");
  tree.SetPicture(1, "part none");

  EXPECT_EQ(NumberOfFailure([&] { tree.SetPicture(1, "part doc"); }), failure::kElementNotFound);

  EXPECT_EQ(tree.Picture(1), "part none");
}

TEST_F(ATree, HoldsAsManyNodesAsHaveA16BitNumber) {
  tree.Add(0, "0", "");
  for (int i = 1; i < kMostNodes; ++i) tree.Add(1, std::to_string(i), "");
  EXPECT_EQ(tree.Count(), kMostNodes);

  EXPECT_EQ(NumberOfFailure([&] { tree.Add(1, "more", ""); }), failure::kOverflow);

  EXPECT_EQ(tree.Count(), kMostNodes);
  EXPECT_EQ(tree.ChildCount(1), kMostNodes - 1);
  EXPECT_EQ(tree.Next(kMostNodes), 0);
}

TEST_F(ATree, MayBeAChainOfAllItsNodes) {
  for (int i = 0; i < kMostNodes; ++i) tree.Add(i, "1_1", "");

  EXPECT_EQ(tree.Key(kMostNodes).size(), 3U * kMostNodes + 3U * (kMostNodes - 1));
  EXPECT_EQ(tree.Piece(kMostNodes), "1_1");
}

TEST_F(ATree, IsEmptyAndFreshOnceItIsCleared) {
  tree.Add(0, "1_1", "");
  tree.Add(1, "2_1", "");
  tree.SetTag(1, "tag");

  tree.Clear();

  EXPECT_EQ(tree.Count(), 0);
  EXPECT_EQ(tree.Add(0, "1_1", "again"), 1);
  EXPECT_EQ(tree.Next(1), 0);
  EXPECT_EQ(tree.Tag(1), "");
  EXPECT_THAT(ChildrenOf(1), ElementsAre());
  EXPECT_EQ(tree.Add(0, "3_1", ""), 2);
  EXPECT_EQ(tree.Next(1), 2);
}

}  // namespace
}  // namespace quintara::test
