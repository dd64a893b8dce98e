#include <algorithm>

#include "wip/panel_bench.h"

namespace quintara::test {
namespace {

using dialog::Box;

class PanelLayout : public PanelTest {
 protected:
  PanelLayout() { GivenPanel(MakeRef<PaperObject>(PaperOf(1, "PLANT", std::vector<Paper>{}))); }

  Box BoxOf(const std::string& control) { return desk.Last("MainPanel").Of(control).box; }

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

  view.SetBox("", {1475, 565, 9525, 10935});

  EXPECT_EQ(BoxOf(""), (Box{1475, 565, 9525, 10935}));
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

// Once more between the root and what is below it.
TEST_F(PanelLayout, LooksAtItsGeometryBeforeItReadsTheChildren) {
  GivenPanel(AddProduct("PLANT"));
  gate->StartRecording();

  panel->Load();

  gate->StopRecording();
  const auto& made = gate->Record();
  const auto children =
      std::ranges::find_if(made, [](const auto& call) { return call.starts_with("VdObject.Children"); });
  const auto tree = std::ranges::find(made, "View.SetTree(MainPanel, Tree1)");
  ASSERT_LT(tree, children);
  EXPECT_NE(std::find(tree, children, "View.BoxOf(MainPanel)"), children);
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

TEST_F(PanelLayout, NoticesAMoveWithTheNextTick) {
  Given({1000, 500, 10000, 11000});
  ShowPanel([](ScriptedView& view) {
    view.Move(0, 40);
    view.Tick("Timer1");
  });

  EXPECT_EQ(Inside().Saved(), (Box{1000, 540, 10000, 11000}));
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

TEST_F(PanelLayout, HasTheControlsInTheOrderInWhichTheyAreMade) {
  panel->Load();

  std::vector<std::string> names;
  for (const auto& control : desk.Last("MainPanel").MadeFrom().controls) names.push_back(control.name);
  EXPECT_THAT(
      names, testing::ElementsAre("Timer1", "FrameInstances", "GetAllInstances(0)", "GetAllInstances(1)", "FrameLegend",
                                  "lblNoSelection", "lblLightRepresentation", "lblDocument", "img_none", "img_3d",
                                  "img_lwt", "Image2", "cmdFind", "cmdCollapse", "cmdExpand", "cmdShow", "lblWIPName",
                                  "txtWIPName", "cmdCancel", "cmdCreateWIP", "FrameReview", "Tree1"));
}

TEST_F(PanelLayout, ExplainsTheStatesFromTopToBottom) {
  panel->Load();

  const auto& view = desk.Last("MainPanel");
  const std::vector<std::pair<std::string, std::string>> lines = {{"lblNoSelection", "img_none"},
                                                                  {"lblNoSelection", "Image2"},
                                                                  {"lblLightRepresentation", "img_lwt"},
                                                                  {"lblDocument", "img_3d"}};
  for (const auto& [label, sample] : lines) EXPECT_EQ(BoxOf(label).top, BoxOf(sample).top) << sample;
  EXPECT_LT(BoxOf("lblNoSelection").top, BoxOf("lblLightRepresentation").top);
  EXPECT_LT(BoxOf("lblLightRepresentation").top, BoxOf("lblDocument").top);
  EXPECT_EQ(view.Of("img_lwt").made.picture, "part lwt");
  EXPECT_EQ(view.Of("img_3d").made.picture, "part doc");
  EXPECT_THAT(view.MadeFrom().pictures, testing::UnorderedElementsAre("part none", "part lwt", "part doc",
                                                                      "product none", "product lwt", "product doc"));
}

TEST_F(PanelLayout, HasOneInstanceOfEachChosenAtFirst) {
  panel->Load();

  const auto& view = desk.Last("MainPanel");
  EXPECT_FALSE(view.Of("GetAllInstances(0)").isChecked);
  EXPECT_TRUE(view.Of("GetAllInstances(1)").isChecked);
}

TEST_F(PanelLayout, TakesEachCaptionFromTheCatalogue) {
  panel->Load();

  const auto& view = desk.Last("MainPanel");
  const std::vector<std::pair<std::string, std::string>> captions = {
      {"", "QD.WIP_CAPTION"},
      {"FrameInstances", "QD.WIP_FRAMEINSTANCES_CAPTION"},
      {"GetAllInstances(0)", "QD.WIP_FRAMEINSTANCES_RADIOBUTTON_YES"},
      {"GetAllInstances(1)", "QD.WIP_FRAMEINSTANCES_RADIOBUTTON_NO"},
      {"FrameLegend", "QD.WIP_FRAMELEGEND_CAPTION"},
      {"lblNoSelection", "QD.WIP_FRAMELEGEND_LBLNOSELECTION"},
      {"lblLightRepresentation", "QD.WIP_FRAMELEGEND_LBLLIGHTREPRESENTATION"},
      {"lblDocument", "QD.WIP_FRAMELEGEND_LBLDOCUMENT"},
      {"cmdFind", "QD.WIP_CMDFIND"},
      {"cmdCollapse", "QD.WIP_CMDCOLLAPSE"},
      {"cmdExpand", "QD.WIP_CMDEXPAND"},
      {"cmdShow", "QD.WIP_CMDSHOW"},
      {"lblWIPName", "QD.WIP_LBLWIPNAME"},
      {"cmdCancel", "QD.WIP_CMDCANCEL"},
      {"cmdCreateWIP", "QD.WIP_CMDCREATEWIP"},
      {"FrameReview", "QD.WIP_FRAMEREVIEW_CAPTION"}};
  for (const auto& [control, key] : captions) EXPECT_EQ(view.Of(control).text, "EN " + key);
  EXPECT_EQ(view.Of("txtWIPName").text, "");
}

TEST_F(PanelLayout, IsShownInTheFontOfTheSettings) {
  Process().gFontName = "Verdana";
  Process().gFontSize = 11;

  panel->Load();

  const auto& view = desk.Last("MainPanel");
  EXPECT_EQ(view.Of("").font.name, "Verdana");
  EXPECT_EQ(view.Of("Tree1").font.size, 11);
  EXPECT_EQ(view.Of("cmdShow").font.name, "Verdana");
}

// Arranged, then with its tree, then with its texts, then in its font.
TEST_F(PanelLayout, IsLoadedInThisOrder) {
  Process().gFontName = "Verdana";

  panel->Load();

  const auto& record = desk.Record();
  const auto first = [&](const std::string& call) {
    return std::ranges::find_if(record, [&](const auto& made) { return made.starts_with("MainPanel." + call); }) -
           record.begin();
  };
  EXPECT_LT(first("SetBox"), first("SetTree"));
  EXPECT_LT(first("SetTree"), first("SetText"));
  EXPECT_LT(first("SetText"), first("SetFont"));
  EXPECT_LT(first("SetFont"), static_cast<std::ptrdiff_t>(record.size()));
}

}  // namespace
}  // namespace quintara::test
