#include "apps/quintara/cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class Tree : public CliWithAs1 {};

TEST_F(Tree, IsDrawnInAsciiWithoutAUtf8Screen) {
  const auto outcome = Run({"tree", "rod-assembly"});

  EXPECT_THAT(outcome.out, AllOf(HasSubstr("|-- nut"), HasSubstr("`-- rod"), Not(HasSubstr("─"))));
}

TEST_F(Tree, IsDrawnWithLinesOnAUtf8Screen) {
  terminal.utf8 = true;

  const auto outcome = Run({"tree", "as1"});

  EXPECT_THAT(outcome.out, AllOf(HasSubstr("├── rod-assembly"), HasSubstr("│   "), HasSubstr("└── ")));
}

TEST_F(Tree, ShowsEveryNode) {
  EXPECT_EQ(std::ranges::count(Run({"tree", "as1"}).out, '\n'), 2 + 28);
}

TEST_F(Tree, OfTheStepFileHasTheSameNodes) {
  EXPECT_EQ(std::ranges::count(Run({"tree", Data("as1-oc-214.stp")}).out, '\n'), 2 + 28);
}

TEST_F(Tree, EndsAtTheDepthAskedForAndTellsSo) {
  const auto outcome = Run({"tree", "as1", "--depth", "1"});

  EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 2 + 1 + 4);
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("rod-assembly ..."), Not(HasSubstr("plate ..."))));
}

TEST_F(Tree, OfDepthNothingIsTheRoot) {
  EXPECT_EQ(std::ranges::count(Run({"tree", "as1", "--depth", "0"}).out, '\n'), 2 + 1);
}

TEST_F(Tree, TellsTheFormOfAComponent) {
  EXPECT_THAT(Run({"tree", kWip}).out, AllOf(HasSubstr("light     nut.lwt"), HasSubstr("document  rod.stp")));
}

TEST_F(Tree, FindsAWorkInProgressWithoutItsPrefix) {
  Run({"flatten", "as1", "--name", "mine"});

  EXPECT_THAT(Run({"tree", "mine"}).out, HasSubstr("WIP~~mine"));
}

TEST_F(Tree, TakesANameOfTheWorkDirectoryForAFile) {
  EXPECT_EQ(Run({"tree", "as1.ZVAProduct"}).out, Run({"tree", "as1"}).out);
}

TEST_F(Tree, ShowsSeveralProducts) {
  EXPECT_EQ(std::ranges::count(Run({"tree", "rod-assembly", "nut-bolt-assembly"}).out, '\n'), 2 + 4 + 2 + 3);
}

}  // namespace
}  // namespace quintara::test
