#include "quintara/review_rules.h"

#include <map>
#include <string>

#include "base/failure.h"
#include "quintara/wrong_use.h"
#include "services/tree_model.h"
#include "wip/node_tags.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// "gear" holds "axle", which holds "nut" and "bolt", and "cover", which holds "nut", and "nut" itself. Clicks do what
// those in the panel do.
class Rules : public ::testing::Test {
 protected:
  Rules() {
    Add(0, "1_2", "gear - A", true);
    Add(1, "2_2", "axle - A", true);
    Add(2, "3_3", "nut - B", false);
    Add(2, "4_3", "bolt - A", false);
    Add(1, "5_2", "cover - A", true);
    Add(5, "3_3", "nut - B", false);
    Add(1, "3_3", "nut - B", false);
    nodes = ReviewNodesOf(tree, [](const IntegrationVault::Identity& identity) {
      const std::map<int, std::string> names{{1, "gear"}, {2, "axle"}, {3, "nut"}, {4, "bolt"}, {5, "cover"}};
      return names.at(identity.objectId);
    });
  }
  void Add(int parent, const std::string& key, const std::string& text, bool isProduct) {
    const int node = tree.Add(parent, key, text);
    tree.SetPicture(node, isProduct ? node_tag::kProductNone : node_tag::kPartNone);
  }
  std::vector<RuleReport> Apply(const std::vector<ChoiceRule>& rules, bool everyNode = false) {
    return ApplyRules(tree, nodes, {rules, everyNode}, [this](int node) {
      ++clicks;
      Click(node);
    });
  }
  void Click(int node) {
    if (IsLocked(tree, node)) return;
    const int state = (StateOf(node) + 1) % 3;
    for (int below = node; below <= tree.Count(); ++below) {
      int above = below;
      while (above > node) above = tree.Parent(above);
      if (above == node) tree.SetPicture(below, TagOf(below, state));
    }
  }
  int StateOf(int node) const { return static_cast<int>(ChoiceOf(tree, node)); }
  std::string TagOf(int node, int state) const {
    return node_tag::All().at(
        static_cast<std::size_t>(state + (nodes.at(static_cast<std::size_t>(node)).isProduct ? 3 : 0)));
  }
  // A letter for each node: none, light, document.
  std::string States() const {
    std::string states;
    for (int node = 1; node <= tree.Count(); ++node) states += "-LD"[StateOf(node)];
    return states;
  }
  std::vector<std::string> Asked() const {
    std::vector<std::string> asked;
    for (const auto& component : AskedComponents(tree, nodes)) {
      asked.push_back(component.partNumber + (component.isLight ? " light" : ""));
    }
    return asked;
  }

  TreeModel tree{node_tag::All(), "xxx"};
  std::vector<ReviewNode> nodes;
  int clicks = 0;
};

TEST_F(Rules, MarkAnObjectAtItsFirstNode) {
  const auto reports = Apply({{Choice::kDocument, "nut"}});

  EXPECT_EQ(States(), "--D----");
  EXPECT_EQ(reports.at(0).left, 2);
  EXPECT_EQ(reports.at(0).locked, 0);
}

TEST_F(Rules, MarkEveryNodeWhenToldTo) {
  const auto reports = Apply({{Choice::kLight, "nut"}}, true);

  EXPECT_EQ(States(), "--L--LL");
  EXPECT_EQ(reports.at(0).left, 0);
}

TEST_F(Rules, MarkAnObjectAtItsFirstFreeNode) {
  const auto reports = Apply({{Choice::kLight, "axle"}, {Choice::kDocument, "nut"}});

  EXPECT_EQ(States(), "-LLL-D-");
  EXPECT_EQ(reports.at(1).locked, 1);
  EXPECT_EQ(reports.at(1).left, 1);
  EXPECT_THAT(Asked(), ElementsAre("axle light", "nut"));
}

TEST_F(Rules, AreAppliedFromLeftToRight) {
  Apply({{Choice::kDocument, "nut"}, {Choice::kLight, "axle"}});

  EXPECT_EQ(States(), "-LLL---");
}

TEST_F(Rules, GiveWhatIsMarkedAnotherForm) {
  Apply({{Choice::kDocument, "nut"}, {Choice::kLight, "nut"}});

  EXPECT_EQ(States(), "--L----");
}

TEST_F(Rules, TakeOutEveryNodeThatMatches) {
  Apply({{Choice::kLight, "nut"}}, true);

  const auto reports = Apply({{Choice::kNone, "nut"}});

  EXPECT_EQ(States(), "-------");
  EXPECT_EQ(reports.at(0).left, 0);
}

TEST_F(Rules, TakeOutWhatIsMarkedBelowANodeToo) {
  Apply({{Choice::kLight, "part:*"}, {Choice::kNone, "axle"}}, true);

  EXPECT_EQ(States(), "-----LL");
}

TEST_F(Rules, TakeOutEverythingWithTheRoot) {
  Apply({{Choice::kLight, "nut"}, {Choice::kDocument, "cover"}, {Choice::kNone, "."}});

  EXPECT_EQ(States(), "-------");
}

TEST_F(Rules, ClickNothingThatIsAsItIsToBe) {
  Apply({{Choice::kNone, "*"}});
  EXPECT_EQ(clicks, 0);

  Apply({{Choice::kLight, "gear/nut"}, {Choice::kLight, "axle"}});
  EXPECT_EQ(clicks, 2);
  Apply({{Choice::kLight, "axle"}, {Choice::kNone, "cover"}});
  EXPECT_EQ(clicks, 2);
}

TEST_F(Rules, MarkAgainWhatWasTakenOutBefore) {
  Apply({{Choice::kNone, "nut"}, {Choice::kLight, "part:*"}});

  EXPECT_EQ(States(), "--LL---");
}

TEST_F(Rules, LeaveWhatAChoiceAboveKeeps) {
  const auto reports = Apply({{Choice::kLight, "axle"}, {Choice::kNone, "bolt"}});

  EXPECT_EQ(States(), "-LLL---");
  EXPECT_EQ(reports.at(1).locked, 1);
}

TEST_F(Rules, CompareThePartNumberTheTextAndThePath) {
  Apply({{Choice::kLight, "BOLT"}, {Choice::kDocument, "cover - a"}, {Choice::kLight, "gear/nut"}});

  EXPECT_EQ(States(), "---LDDL");
}

TEST_F(Rules, TakePartsOrProductsOnly) {
  EXPECT_EQ(UnmatchedPattern(nodes, {{{Choice::kLight, "part:axle"}}}), "part:axle");
  EXPECT_EQ(UnmatchedPattern(nodes, {{{Choice::kLight, "product:axle"}}}), std::nullopt);

  Apply({{Choice::kLight, "product:*"}});

  EXPECT_EQ(States(), "-LLLLL-");
}

TEST_F(Rules, NeverMarkTheRootByItsName) {
  EXPECT_EQ(UnmatchedPattern(nodes, {{{Choice::kLight, "gear"}}}), "gear");
}

TEST_F(Rules, MarkTheRootByAPoint) {
  Apply({{Choice::kDocument, "."}});

  EXPECT_EQ(States(), "DDDDDDD");
  EXPECT_THAT(Asked(), ElementsAre("gear"));
}

TEST_F(Rules, NameTheFirstPatternThatMatchesNothing) {
  EXPECT_EQ(UnmatchedPattern(nodes, {{{Choice::kLight, "nut"}, {Choice::kLight, "x"}, {Choice::kLight, "y"}}}), "x");
}

TEST_F(Rules, RefuseAnEmptyPattern) {
  EXPECT_THROW(UnmatchedPattern(nodes, {{{Choice::kLight, "part:"}}}), WrongUse);
}

TEST_F(Rules, WithoutAnyMarkNothing) {
  EXPECT_THAT(Apply({}), IsEmpty());
  EXPECT_THAT(Asked(), IsEmpty());
}

TEST_F(Rules, NeedATreeOfVaultObjects) {
  TreeModel other({}, "xxx");
  other.Add(0, "none", "none");

  EXPECT_THROW(ReviewNodesOf(other, [](const auto&) { return std::string(); }), Failure);
}

}  // namespace
}  // namespace quintara::test
