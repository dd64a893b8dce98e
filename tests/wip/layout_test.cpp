#include "wip/panel_bench.h"

namespace quintara::test {
namespace {

using dialog::Box;

class PanelLayout : public PanelTest {
 protected:
  PanelLayout() { GivenPanel(MakeRef<PaperObject>(PaperOf(1, "PLANT", std::vector<Paper>{}))); }

  Box BoxOf(const std::string& control) { return desk.Last("MainPanel").Of(control).box; }
  int Right(const std::string& control) { return BoxOf(control).left + BoxOf(control).width; }
  int Bottom(const std::string& control) { return BoxOf(control).top + BoxOf(control).height; }

  // The panel, at this place and of this size, without a user.
  void Given(const Box& box) {
    panel->Load();
    desk.Last("MainPanel").SetBox("", box);
    Inside().Save(box);
  }
};

bool Overlap(const Box& one, const Box& other) {
  return one.left < other.left + other.width && other.left < one.left + one.width &&
         one.top < other.top + other.height && other.top < one.top + one.height;
}

bool Holds(const Box& outer, const Box& inner) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.left + inner.width <= outer.left + outer.width &&
         inner.top + inner.height <= outer.top + outer.height;
}

// No two controls in one container overlap, and each stays within what holds it; the dialog's own frame and caption
// take away a little at its edges.
void ExpectInOrder(const ScriptedView& view) {
  const auto& panel = view.Of("").box;
  const Box inside = {0, 0, panel.width - 240, panel.height - 585};
  const auto& controls = view.MadeFrom().controls;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    if (controls[i].kind == dialog::Kind::kTimer) continue;
    const auto& box = view.Of(controls[i].name).box;
    EXPECT_GT(box.width, 0) << controls[i].name;
    EXPECT_GT(box.height, 0) << controls[i].name;
    const auto& frame = view.Of(controls[i].container).box;
    EXPECT_TRUE(Holds(controls[i].container.empty() ? inside : Box{0, 0, frame.width, frame.height}, box))
        << controls[i].name << " sticks out";
    for (std::size_t j = i + 1; j < controls.size(); ++j) {
      if (controls[j].kind == dialog::Kind::kTimer || controls[i].container != controls[j].container) continue;
      EXPECT_FALSE(Overlap(box, view.Of(controls[j].name).box)) << controls[i].name << " and " << controls[j].name;
    }
  }
}

TEST_F(PanelLayout, ComesUpInItsLeastSizeWithNothingOverlapping) {
  panel->Load();

  EXPECT_EQ(BoxOf("").width, 9525);
  EXPECT_EQ(BoxOf("").height, 10935);
  EXPECT_TRUE(desk.Last("MainPanel").MadeFrom().isSizable);
  ExpectInOrder(desk.Last("MainPanel"));
}

TEST_F(PanelLayout, IsMadeAsTheLeastSizeArrangesIt) {
  panel->Load();

  const auto& view = desk.Last("MainPanel");
  for (const auto& control : view.MadeFrom().controls) {
    EXPECT_EQ(view.Of(control.name).box, control.box) << control.name;
  }
}

TEST_F(PanelLayout, LetsNothingOverlapInLargerSizes) {
  Given({0, 0, 9525, 10935});
  auto& view = desk.Last("MainPanel");

  for (const auto& [width, height] :
       {std::pair{9526, 10936}, {12000, 10935}, {9525, 14000}, {15360, 11520}, {32767, 32767}}) {
    SCOPED_TRACE(std::to_string(width) + " by " + std::to_string(height));
    view.SetBox("", {0, 0, width, height});

    ExpectInOrder(view);
  }
}

TEST_F(PanelLayout, GivesWhatIsLargerToTheTreeAndTheName) {
  Given({0, 0, 12000, 13000});

  EXPECT_EQ(BoxOf("cmdShow").left, 12000 - (2850 + 250));
  EXPECT_EQ(BoxOf("cmdExpand").left, 8900);
  EXPECT_EQ(BoxOf("cmdCollapse").left, 8900);
  EXPECT_EQ(BoxOf("cmdFind").left, 8900);
  EXPECT_EQ(BoxOf("FrameLegend").left, 8900);
  EXPECT_EQ(BoxOf("FrameInstances").width, 12000 - (2850 + 600));
  EXPECT_EQ(BoxOf("txtWIPName").width, 12000 - (2160 + 2850 + 600));
  EXPECT_EQ(BoxOf("FrameReview").width, 8550);
  EXPECT_EQ(BoxOf("Tree1").width, 8050);
  EXPECT_EQ(BoxOf("cmdCancel").left, 120 + 8550 - 1680);
  EXPECT_EQ(BoxOf("cmdCreateWIP").left, 120 + 8550 - (1680 + 1680 + 250));
  EXPECT_EQ(BoxOf("cmdCancel").top, 13000 - (375 + 600));
  EXPECT_EQ(BoxOf("cmdCreateWIP").top, 12025);
  EXPECT_EQ(BoxOf("FrameReview").height, 13000 - (375 + 2850));
  EXPECT_EQ(BoxOf("FrameInstances").top, 600 + 9775 + 120);
  EXPECT_EQ(BoxOf("Tree1").height, 9175);
}

// Where the controls are alike, a rule that took the measure of another one would go unnoticed.
TEST_F(PanelLayout, MeasuresEachControlByItself) {
  Given({0, 0, 9525, 10935});
  auto& view = desk.Last("MainPanel");
  int by = 0;
  for (const auto* control : {"cmdShow", "cmdExpand", "cmdCollapse", "cmdFind", "FrameLegend", "FrameInstances",
                              "txtWIPName", "FrameReview", "cmdCancel", "cmdCreateWIP"}) {
    by += 10;
    const auto box = view.BoxOf(control);
    view.SetBox(control, {box.left + 1000, box.top + by, box.width + 3 * by, box.height + 7 * by});
  }

  view.SetBox("", {0, 0, 12000, 13000});

  const auto widthOfShow = 2850 + 30;
  EXPECT_EQ(BoxOf("cmdShow").left, 12000 - (widthOfShow + 250));
  EXPECT_EQ(BoxOf("cmdExpand").left, 12000 - (2850 + 60 + 250));
  EXPECT_EQ(BoxOf("cmdCollapse").left, 12000 - (2850 + 90 + 250));
  EXPECT_EQ(BoxOf("cmdFind").left, 12000 - (2850 + 120 + 250));
  EXPECT_EQ(BoxOf("FrameLegend").left, 12000 - (2850 + 150 + 250));
  EXPECT_EQ(BoxOf("FrameInstances").width, 12000 - (widthOfShow + 600));
  EXPECT_EQ(BoxOf("txtWIPName").width, 12000 - (2160 + 1000 + widthOfShow + 600));
  EXPECT_EQ(BoxOf("FrameReview").width, 12000 - (widthOfShow + 600));
  EXPECT_EQ(BoxOf("Tree1").width, 8520 - 500);
  EXPECT_EQ(BoxOf("cmdCancel").left, Right("FrameReview") - (1680 + 270));
  EXPECT_EQ(BoxOf("cmdCreateWIP").left, Right("FrameReview") - (1680 + 270 + 1680 + 300 + 250));
  EXPECT_EQ(BoxOf("cmdCancel").top, 13000 - (375 + 630 + 600));
  EXPECT_EQ(BoxOf("cmdCreateWIP").top, 13000 - (375 + 700 + 600));
  EXPECT_EQ(BoxOf("FrameReview").height, 13000 - (375 + 630 + 2850));
  EXPECT_EQ(BoxOf("FrameInstances").top, Bottom("FrameReview") + (BoxOf("cmdCollapse").top - Bottom("cmdExpand")));
  EXPECT_EQ(BoxOf("Tree1").height, BoxOf("FrameReview").height - 600);
}

TEST_F(PanelLayout, LeavesEverythingElseWhereItWas) {
  panel->Load();
  auto& view = desk.Last("MainPanel");
  const auto name = BoxOf("txtWIPName");
  const auto show = BoxOf("cmdShow");

  view.SetBox("", {0, 0, 20000, 20000});

  EXPECT_EQ(BoxOf("txtWIPName").left, name.left);
  EXPECT_EQ(BoxOf("txtWIPName").top, name.top);
  EXPECT_EQ(BoxOf("cmdShow").top, show.top);
  EXPECT_EQ(BoxOf("cmdShow").width, show.width);
  EXPECT_EQ(BoxOf("cmdShow").height, show.height);
  for (const auto* unmoved : {"lblWIPName", "GetAllInstances(0)", "GetAllInstances(1)", "lblNoSelection", "img_3d"}) {
    EXPECT_EQ(BoxOf(unmoved), view.Of(unmoved).made.box) << unmoved;
  }
}

// The order of the rules decides where one reads what another one has set.
TEST_F(PanelLayout, AppliesItsRulesInTheirOrder) {
  panel->Load();
  desk.ForgetRecord();

  desk.Last("MainPanel").SetBox("", {0, 0, 10000, 11000});

  std::vector<std::string> order;
  for (const auto& call : desk.Record()) order.push_back(call.substr(0, call.find(',')));
  EXPECT_THAT(order, testing::ElementsAre(
                         "MainPanel.SetBox(", "MainPanel.SetBox(cmdShow", "MainPanel.SetBox(cmdExpand",
                         "MainPanel.SetBox(cmdCollapse", "MainPanel.SetBox(cmdFind", "MainPanel.SetBox(FrameLegend",
                         "MainPanel.SetBox(FrameInstances", "MainPanel.SetBox(txtWIPName",
                         "MainPanel.SetBox(FrameReview", "MainPanel.SetBox(Tree1", "MainPanel.SetBox(cmdCancel",
                         "MainPanel.SetBox(cmdCreateWIP", "MainPanel.SetBox(cmdCancel", "MainPanel.SetBox(cmdCreateWIP",
                         "MainPanel.SetBox(FrameReview", "MainPanel.SetBox(FrameInstances", "MainPanel.SetBox(Tree1"));
}

TEST_F(PanelLayout, KeepsTheGapOfTheButtonsBetweenTheFrames) {
  Given({0, 0, 9525, 10935});
  auto& view = desk.Last("MainPanel");
  auto collapse = view.BoxOf("cmdCollapse");
  collapse.top += 60;
  view.SetBox("cmdCollapse", collapse);

  view.SetBox("", {0, 0, 9525, 12000});

  const auto review = BoxOf("FrameReview");
  EXPECT_EQ(BoxOf("FrameInstances").top - (review.top + review.height), 180);
}

TEST_F(PanelLayout, HoldsTheRightEdgeOfAPanelDraggedTooSmallByItsLeftEdge) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) { view.DragLeft(2000); });

  EXPECT_EQ(BoxOf(""), (Box{1000 + 10000 - 9525, 500, 9525, 11000}));
  EXPECT_EQ(Inside().Saved(), BoxOf(""));
}

TEST_F(PanelLayout, StopsAtItsLeastWidthWhenDraggedByItsRightEdge) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) { view.DragRight(-2000); });

  EXPECT_EQ(BoxOf(""), (Box{1000, 500, 9525, 11000}));
}

TEST_F(PanelLayout, HoldsTheLowerEdgeOfAPanelDraggedTooSmallByItsUpperEdge) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) { view.DragTop(1500); });

  EXPECT_EQ(BoxOf(""), (Box{1000, 500 + 11000 - 10935, 10000, 10935}));
  EXPECT_EQ(Inside().Saved(), BoxOf(""));
}

TEST_F(PanelLayout, StopsAtItsLeastHeightWhenDraggedByItsLowerEdge) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) { view.DragBottom(-1500); });

  EXPECT_EQ(BoxOf(""), (Box{1000, 500, 10000, 10935}));
}

TEST_F(PanelLayout, MendsItsWidthBeforeItsHeight) {
  Given({1000, 500, 10000, 11000});
  auto& view = desk.Last("MainPanel");
  desk.ForgetRecord();

  view.SetBox("", {1000, 500, 9000, 10000});

  EXPECT_EQ(desk.Record()[1], "MainPanel.SetBox(, 1000, 500, 9525, 10000)");
  EXPECT_EQ(desk.Record()[2], "MainPanel.SetBox(, 1000, 500, 9525, 10935)");
  EXPECT_EQ(BoxOf(""), (Box{1000, 500, 9525, 10935}));
}

TEST_F(PanelLayout, TakesTheLeastSizeItselfAsItIs) {
  Given({1000, 500, 10000, 11000});
  auto& view = desk.Last("MainPanel");

  view.SetBox("", {1200, 600, 9525, 10935});

  EXPECT_EQ(BoxOf(""), (Box{1200, 600, 9525, 10935}));
  EXPECT_EQ(Inside().Saved(), BoxOf(""));
  EXPECT_EQ(BoxOf("FrameReview"), view.Of("FrameReview").made.box);
}

TEST_F(PanelLayout, IsTooSmallByASingleUnit) {
  Given({1000, 500, 10000, 11000});
  auto& view = desk.Last("MainPanel");

  view.SetBox("", {1000, 500, 9524, 10934});

  EXPECT_EQ(BoxOf(""), (Box{1000, 500, 9525, 10935}));
}

TEST_F(PanelLayout, RemembersItsGeometryAfterEachArrangement) {
  Given({1000, 500, 10000, 11000});

  desk.Last("MainPanel").SetBox("", {1100, 600, 11000, 12000});

  EXPECT_EQ(Inside().Saved(), (Box{1100, 600, 11000, 12000}));
}

TEST_F(PanelLayout, RemembersItsGeometryAsItIsLoaded) {
  panel->Load();

  EXPECT_EQ(Inside().Saved(), BoxOf(""));
  EXPECT_GT(Inside().Saved().left, 0);
}

TEST_F(PanelLayout, DoesntJumpBackAfterItWasMoved) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) {
    view.Move(2000, 1000);
    view.Tick("Timer1");
    view.DragRight(-1000);
    view.DragBottom(-1000);
  });

  EXPECT_EQ(BoxOf(""), (Box{3000, 1500, 9525, 10935}));
}

TEST_F(PanelLayout, JumpsBackWhenNobodyHasNoticedTheMove) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) {
    view.Move(2000, 0);
    view.DragRight(-1000);
  });

  EXPECT_EQ(BoxOf(""), (Box{1475, 500, 9525, 11000}));
}

// Only an edge that went to the right or down was dragged.
TEST_F(PanelLayout, StaysWhereAnUnnoticedMoveToTheLeftAndUpHasBroughtIt) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) {
    view.Move(-300, -200);
    view.DragRight(-1000);
    view.Move(-30, -20);
    view.DragBottom(-1000);
  });

  EXPECT_EQ(BoxOf(""), (Box{670, 280, 9525, 10935}));
}

TEST_F(PanelLayout, NoticesAMoveWithTheNextTick) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) {
    view.Move(0, 40);
    view.Tick("Timer1");
  });

  EXPECT_EQ(Inside().Saved(), (Box{1000, 540, 10000, 11000}));
}

TEST_F(PanelLayout, NoticesAMoveToTheSideWithTheNextTick) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) {
    view.Move(-40, 0);
    view.Tick("Timer1");
  });

  EXPECT_EQ(Inside().Saved(), (Box{960, 500, 10000, 11000}));
}

TEST_F(PanelLayout, NoticesAMoveWhenTheMouseIsLetGo) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) {
    view.Move(30, 40);
    view.ReleaseMouse();
  });

  EXPECT_EQ(Inside().Saved(), (Box{1030, 540, 10000, 11000}));
}

TEST_F(PanelLayout, TakesNoNoticeWhenTheMouseIsLetGoOnAControl) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) {
    view.Move(30, 40);
    view.ReleaseMouse("FrameLegend");
  });

  EXPECT_EQ(Inside().Saved(), (Box{1000, 500, 10000, 11000}));
}

TEST_F(PanelLayout, LooksAtItsPlaceTenTimesASecond) {
  panel->Load();

  EXPECT_EQ(desk.Last("MainPanel").Of("Timer1").made.interval, 100);
}

TEST_F(PanelLayout, FailsForAPlaceThatIsTooFarOut) {
  Given({1000, 500, 10000, 11000});
  desk.WhenShown("MainPanel", [](ScriptedView& view) {
    view.Move(31768, 0);
    view.Tick("Timer1");
  });

  EXPECT_THAT(FailureOf([&] { panel->ShowModal(); }), FailsWith(failure::kOverflow));
  EXPECT_FALSE(panel->IsLoaded());
}

TEST_F(PanelLayout, GoesToTheLastUnitThatItCanRemember) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) {
    view.Move(31767, -32768 - 500);
    view.Tick("Timer1");
  });

  EXPECT_EQ(Inside().Saved(), (Box{32767, -32768, 10000, 11000}));
}

TEST_F(PanelLayout, FailsForASizeThatIsTooLarge) {
  Given({1000, 500, 10000, 11000});
  desk.WhenShown("MainPanel", [](ScriptedView& view) { view.DragBottom(32768 - 11000); });

  EXPECT_THAT(FailureOf([&] { panel->ShowModal(); }), FailsWith(failure::kOverflow));
}

TEST_F(PanelLayout, FailsForAWidthThatIsTooLarge) {
  Given({1000, 500, 10000, 11000});
  desk.WhenShown("MainPanel", [](ScriptedView& view) { view.DragRight(32768 - 10000); });

  EXPECT_THAT(FailureOf([&] { panel->ShowModal(); }), FailsWith(failure::kOverflow));
}

}  // namespace
}  // namespace quintara::test
