#include "wip/panel_bench.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;

// PLANT holds GROUP and PLATE, GROUP holds BOLT and CORE, CORE holds PIN.
class NodeStates : public PanelTest {
 protected:
  enum : int { kPlant = 1, kGroup, kBolt, kCore, kPin, kPlate };

  NodeStates() {
    const auto core = PaperOf(4, "CORE", {PaperOf(5, "PIN")});
    const auto group = PaperOf(2, "GROUP", {PaperOf(3, "BOLT"), core});
    GivenPanel(MakeRef<PaperObject>(PaperOf(1, "PLANT", {group, PaperOf(6, "PLATE")}))).Load();
  }

  std::vector<std::string> Tags() {
    std::vector<std::string> tags;
    for (int node = 1; node <= Nodes().Count(); ++node) {
      EXPECT_EQ(Nodes().Picture(node), Nodes().Tag(node));
      tags.push_back(Nodes().Tag(node));
    }
    return tags;
  }

  void Cycle(int node, int times = 1) {
    for (int i = 0; i < times; ++i) Inside().CycleNodeState(node);
  }
};

TEST_F(NodeStates, OfAPartGoRound) {
  std::vector<std::string> tags;
  for (int i = 0; i < 3; ++i) {
    Cycle(kPlate);
    tags.push_back(Nodes().Tag(kPlate));
  }

  EXPECT_THAT(tags, ElementsAre("part lwt", "part doc", "part none"));
}

TEST_F(NodeStates, OfAProductGoRound) {
  std::vector<std::string> tags;
  for (int i = 0; i < 3; ++i) {
    Cycle(kGroup);
    tags.push_back(Nodes().Tag(kGroup));
  }

  EXPECT_THAT(tags, ElementsAre("product lwt", "product doc", "product none"));
}

TEST_F(NodeStates, GoToAllBelowAndLeaveThemTheirKinds) {
  Cycle(kGroup);

  EXPECT_THAT(Tags(), ElementsAre("product none", "product lwt", "part lwt", "product lwt", "part lwt", "part none"));
}

TEST_F(NodeStates, OfTheRootTakeAllNodesAlong) {
  Cycle(kPlant);
  EXPECT_THAT(Tags(), ElementsAre("product lwt", "product lwt", "part lwt", "product lwt", "part lwt", "part lwt"));

  Cycle(kPlant);
  EXPECT_THAT(Tags(), ElementsAre("product doc", "product doc", "part doc", "product doc", "part doc", "part doc"));

  Cycle(kPlant);
  EXPECT_THAT(Tags(),
              ElementsAre("product none", "product none", "part none", "product none", "part none", "part none"));
}

TEST_F(NodeStates, AreLockedBelowAProductThatIsLoaded) {
  for (const int times : {1, 2}) {
    Cycle(kGroup, times);
    const auto before = Tags();

    Cycle(kBolt);
    Cycle(kCore);

    EXPECT_EQ(Tags(), before);
    Cycle(kGroup, 3 - times);
  }
}

// A state below that is another one than it could ever be shows whether it was touched.
TEST_F(NodeStates, OfALockedNodeGoNowhere) {
  Cycle(kGroup);
  Inside().SetState(kPin, "part doc");
  ShowPanel([](ScriptedView& view) { view.RightClick("Tree1", "CORE - A"); });

  EXPECT_THAT(Tags(), ElementsAre("product none", "product lwt", "part lwt", "product lwt", "part doc", "part none"));
}

TEST_F(NodeStates, AreLockedBelowAPart) {
  auto bolt = PaperOf(2, "BOLT");
  bolt.children = [this] { return ListOf({PaperOf(3, "THREAD")}); };
  GivenPanel(MakeRef<PaperObject>(PaperOf(1, "PLANT", {bolt}))).Load();

  Cycle(3);
  EXPECT_EQ(Nodes().Tag(3), "part none");

  Cycle(2);
  EXPECT_EQ(Nodes().Tag(3), "part lwt");
}

TEST_F(NodeStates, AreFreeAgainOnceTheProductIsNotLoaded) {
  Cycle(kGroup, 3);

  Cycle(kBolt);

  EXPECT_EQ(Nodes().Tag(kBolt), "part lwt");
}

TEST_F(NodeStates, ForgetTheChoicesBelowThem) {
  Cycle(kBolt);
  Cycle(kCore, 2);

  Cycle(kGroup, 3);

  EXPECT_THAT(Tags(),
              ElementsAre("product none", "product none", "part none", "product none", "part none", "part none"));
}

TEST_F(NodeStates, StayWithTheSiblings) {
  Cycle(kBolt);

  EXPECT_THAT(Tags(),
              ElementsAre("product none", "product none", "part lwt", "product none", "part none", "part none"));
}

TEST_F(NodeStates, AreHandedOnChangedFromNodeToNode) {
  std::string tag = "product doc";

  Inside().PropagateNodeState(kGroup, tag);

  EXPECT_EQ(tag, "part doc");
  EXPECT_THAT(Tags(), ElementsAre("product none", "product none", "part doc", "product doc", "part doc", "part none"));
}

TEST_F(NodeStates, ReplaceEveryOccurrenceOfTheFirstWord) {
  std::string tag = "none none";

  EXPECT_THAT(FailureOf([&] { Inside().PropagateNodeState(kGroup, tag); }), FailsWith(failure::kElementNotFound));
  EXPECT_EQ(tag, "part part");
}

TEST_F(NodeStates, FailForATagThatIsNone) {
  Nodes().SetTag(kPlate, "part wrong");

  EXPECT_THAT(FailureOf([&] { Cycle(kPlate); }), FailsWith(failure::kInvalidCall));
}

TEST_F(NodeStates, ChangeWithTheRightButton) {
  ShowPanel([&](ScriptedView& view) {
    const int before = view.Of("Tree1").treeChanges;

    view.RightClick("Tree1", "GROUP - A");

    EXPECT_EQ(view.Of("Tree1").treeChanges, before + 1);
  });

  EXPECT_THAT(Tags(), ElementsAre("product none", "product lwt", "part lwt", "product lwt", "part lwt", "part none"));
}

TEST_F(NodeStates, ComeBackWithThreeRightClicks) {
  ShowPanel([&](ScriptedView& view) {
    for (int i = 0; i < 3; ++i) view.RightClick("Tree1", "PLANT - A");
  });

  EXPECT_THAT(Tags(),
              ElementsAre("product none", "product none", "part none", "product none", "part none", "part none"));
}

TEST_F(NodeStates, NeverChangeInAnotherWay) {
  const auto before = Tags();
  ShowPanel([&](ScriptedView& view) {
    view.LeftClick("Tree1", "GROUP - A");
    view.DoubleClick("Tree1", "PLATE - A");
    view.GoTo("Tree1", "BOLT - A");
    view.Click("Tree1", 3, kPlate);
    view.Click("Tree1", 4, kPlate);
    view.Click("Tree1", dialog::button::kRight, 0);
  });

  EXPECT_EQ(Tags(), before);
}

TEST_F(NodeStates, NeverChangeBesideTheTree) {
  const auto before = Tags();

  panel->OnMouseDown("FrameReview", dialog::button::kRight, 0, 0, 0);
  panel->OnMouseUp("Tree1", dialog::button::kRight);

  EXPECT_EQ(Tags(), before);
}

TEST_F(NodeStates, AreForgottenWithThePanel) {
  Cycle(kPlant);
  panel->Unload();

  panel->Load();

  EXPECT_THAT(Tags(),
              ElementsAre("product none", "product none", "part none", "product none", "part none", "part none"));
}

}  // namespace
}  // namespace quintara::test
