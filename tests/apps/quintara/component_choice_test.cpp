#include "quintara/component_choice.h"

#include "quintara/wrong_use.h"

namespace quintara {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// top
//   frame/F.1  beam/B.1, bolt/X.1
//   bolt/X.2
//   frame/F.2  beam/B.1, bolt/X.1
class TheRules : public ::testing::Test {
 protected:
  TheRules() {
    Add(0, 0, "top", "top", true);
    for (const auto* name : {"F.1", "F.2"}) {
      const auto frame = nodes.size();
      Add(0, 1, "frame", name, true);
      Add(frame, 2, "beam", "B.1", false);
      Add(frame, 2, "bolt", "top\\" + std::string(name) + "\\X.1", false);
      if (frame == 1) Add(0, 1, "bolt", "X.2", false);
    }
  }

  std::vector<std::string> Taken(const std::vector<ChoiceRule>& rules) {
    const auto choices = Choose(nodes, rules);
    std::vector<std::string> taken;
    for (const auto node : TakenNodes(nodes, choices)) {
      taken.push_back((choices[node] == Choice::kLight ? "light " : "document ") + nodes[node].name);
    }
    return taken;
  }

  std::vector<ProductNode> nodes;

 private:
  void Add(std::size_t parent, int depth, const std::string& partNumber, const std::string& name, bool hasChildren) {
    nodes.push_back({{}, parent, depth, partNumber, name, {}, false, true, hasChildren});
  }
};

TEST_F(TheRules, TakeAPartNumberOnce) {
  EXPECT_THAT(Taken({{Choice::kLight, "bolt"}}), ElementsAre("light top\\F.1\\X.1"));
}

TEST_F(TheRules, IgnoreCapitals) {
  EXPECT_THAT(Taken({{Choice::kLight, "BEAM"}}), ElementsAre("light B.1"));
}

TEST_F(TheRules, NeverTakeTheRoot) {
  EXPECT_THAT(Taken({{Choice::kDocument, "*"}}), ElementsAre("document F.1", "document X.2"));
}

TEST_F(TheRules, RestrictedToPartsPassAssembliesOver) {
  EXPECT_THAT(Taken({{Choice::kDocument, "part:*"}}), ElementsAre("document B.1", "document top\\F.1\\X.1"));
}

TEST_F(TheRules, RestrictedToProductsPassPartsOver) {
  EXPECT_THAT(Taken({{Choice::kDocument, "product:*"}}), ElementsAre("document F.1"));
}

TEST_F(TheRules, AreAppliedFromLeftToRight) {
  EXPECT_THAT(Taken({{Choice::kDocument, "part:*"}, {Choice::kLight, "bolt"}}),
              ElementsAre("document B.1", "light top\\F.1\\X.1"));
  EXPECT_THAT(Taken({{Choice::kLight, "bolt"}, {Choice::kDocument, "part:*"}}),
              ElementsAre("document B.1", "document top\\F.1\\X.1"));
}

TEST_F(TheRules, ChooseNothingBelowWhatIsTaken) {
  EXPECT_THAT(Taken({{Choice::kLight, "frame"}, {Choice::kDocument, "bolt"}}),
              ElementsAre("light F.1", "document X.2"));
}

TEST_F(TheRules, OnANodeOverwriteWhatWasChosenBelow) {
  EXPECT_THAT(Taken({{Choice::kDocument, "part:*"}, {Choice::kLight, "frame"}}),
              ElementsAre("light F.1", "document X.2"));
}

TEST_F(TheRules, ThatLeaveANodeOutLeaveOutAllBelowIt) {
  EXPECT_THAT(Taken({{Choice::kDocument, "part:*"}, {Choice::kNone, "frame"}}), ElementsAre("document X.2"));
}

TEST_F(TheRules, FreeWhatStandsBelowANodeThatIsLeftOutAgain) {
  EXPECT_THAT(Taken({{Choice::kLight, "frame"}, {Choice::kNone, "frame"}, {Choice::kDocument, "beam"}}),
              ElementsAre("document B.1"));
}

TEST_F(TheRules, MayLeaveEverythingOut) {
  EXPECT_THAT(Taken({{Choice::kNone, "*"}}), IsEmpty());
}

TEST_F(TheRules, KnowAnInstanceByItsName) {
  EXPECT_THAT(Taken({{Choice::kLight, "f.2"}}), ElementsAre("light F.2"));
}

TEST_F(TheRules, KnowAnInstanceByTheLastPieceOfItsName) {
  EXPECT_THAT(Taken({{Choice::kLight, "x.1"}}), ElementsAre("light top\\F.1\\X.1"));
}

TEST_F(TheRules, KnowANodeByThePathOfPartNumbers) {
  EXPECT_THAT(Taken({{Choice::kLight, "top/bolt"}}), ElementsAre("light X.2"));
}

TEST_F(TheRules, CountAMatchBelowATakenNodeAsAMatch) {
  EXPECT_THAT(Taken({{Choice::kLight, "frame"}, {Choice::kLight, "beam"}}), ElementsAre("light F.1"));
}

TEST_F(TheRules, RefuseAPatternWithoutAMatch) {
  EXPECT_THROW(Choose(nodes, {{Choice::kLight, "wheel"}}), WrongUse);
}

TEST_F(TheRules, RefuseAPatternThatMatchesTheRootAlone) {
  EXPECT_THROW(Choose(nodes, {{Choice::kLight, "top"}}), WrongUse);
}

TEST_F(TheRules, RefuseAnEmptyPattern) {
  EXPECT_THROW(Choose(nodes, {{Choice::kLight, ""}}), WrongUse);
  EXPECT_THROW(Choose(nodes, {{Choice::kLight, "product:"}}), WrongUse);
}

}  // namespace
}  // namespace quintara
