#include "wip/node_tags.h"
#include "wip/panel_bench.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// PLANT holds GROUP and Plate, GROUP holds BOLT and plug, in this order.
class Find : public PanelTest {
 protected:
  enum : int { kNothing = 0, kPlant, kGroup, kBolt, kPlug, kPlate };

  Find() {
    Process().gTreeViewAttributes = {"NM_CN_PART_NUMBER"};
    const auto group = PaperOf(2, "GROUP", {PaperOf(3, "BOLT"), PaperOf(4, "plug (new*)")});
    GivenPanel(MakeRef<PaperObject>(PaperOf(1, "PLANT", {group, PaperOf(5, "Plate")})));
  }

  // Opens the dialog once, with this user, who closes it in the end.
  void Open(const UserScript& script) {
    desk.WhenShown("frmFind", [&](ScriptedView& find) {
      script(find);
      if (find.IsShown()) find.Press("cmdCancel");
    });
    ShowPanel([&](ScriptedView& view) { view.Press("cmdFind"); });
  }

  int Selected() { return desk.Last("MainPanel").Of("Tree1").selectedNode; }

  static void Search(ScriptedView& find, const std::string& text) {
    find.Type("txtInput", text);
    find.Press("cmdFind");
  }

  // The nodes that are selected one after the other, the first one by the search.
  std::vector<int> Steps(ScriptedView& find, const std::string& button, int count) {
    std::vector<int> selected = {Selected()};
    for (int i = 0; i < count; ++i) {
      find.Press(button);
      selected.push_back(Selected());
    }
    return selected;
  }
};

TEST_F(Find, ComesUpWithItsTextsAndNothingToStepThrough) {
  Open([](ScriptedView& find) {
    EXPECT_EQ(find.Of("").text, "EN QD.FIND_CAPTION");
    EXPECT_EQ(find.Of("lblFind").text, "EN QD.FIND_LBLFIND");
    EXPECT_EQ(find.Of("cmdFind").text, "EN QD.FIND_CMDFIND");
    EXPECT_EQ(find.Of("cmdCancel").text, "EN QD.FIND_CMDCANCEL");
    EXPECT_EQ(find.Of("cmdBack").text, "<");
    EXPECT_EQ(find.Of("cmdNext").text, ">");
    EXPECT_EQ(find.Of("txtInput").text, "");
    EXPECT_EQ(find.Of("lblStatus").text, "");
    EXPECT_FALSE(find.Of("cmdBack").isEnabled);
    EXPECT_FALSE(find.Of("cmdNext").isEnabled);
  });
}

TEST_F(Find, IsShownInTheFontOfTheSettings) {
  Process().gFontName = "Verdana";

  Open([](ScriptedView& find) { EXPECT_EQ(find.Of("lblStatus").font.name, "Verdana"); });
}

TEST_F(Find, ShowsTheFirstMatch) {
  Open([&](ScriptedView& find) {
    Search(find, "PL");

    EXPECT_EQ(Selected(), kPlant);
    EXPECT_TRUE(find.Of("cmdBack").isEnabled);
    EXPECT_TRUE(find.Of("cmdNext").isEnabled);
    EXPECT_EQ(find.Of("lblStatus").text, "EN QD.FIND_LBLOCCURRENCES [3] [PL]");
  });
}

TEST_F(Find, StepsOnThroughTheTreeAndRoundAgain) {
  Open([&](ScriptedView& find) {
    Search(find, "pl");

    EXPECT_EQ(Steps(find, "cmdNext", 4), (std::vector<int>{kPlant, kPlug, kPlate, kPlant, kPlug}));
  });
}

TEST_F(Find, StepsBackFromTheFirstToTheLast) {
  Open([&](ScriptedView& find) {
    Search(find, "pl");

    EXPECT_EQ(Steps(find, "cmdBack", 4), (std::vector<int>{kPlant, kPlate, kPlug, kPlant, kPlate}));
  });
}

TEST_F(Find, ShowsTheOnlyMatchAgainAndAgain) {
  Open([&](ScriptedView& find) {
    Search(find, "bolt");

    EXPECT_TRUE(find.Of("cmdBack").isEnabled);
    EXPECT_TRUE(find.Of("cmdNext").isEnabled);
    EXPECT_EQ(Steps(find, "cmdNext", 2), (std::vector<int>{kBolt, kBolt, kBolt}));
    EXPECT_EQ(Steps(find, "cmdBack", 2), (std::vector<int>{kBolt, kBolt, kBolt}));
  });
}

TEST_F(Find, LooksAnywhereInATextWhateverItsCapitals) {
  Open([&](ScriptedView& find) {
    Search(find, "a");
    EXPECT_EQ(Steps(find, "cmdNext", 1), (std::vector<int>{kPlant, kPlate}));

    Search(find, "LAT");
    EXPECT_EQ(Selected(), kPlate);
  });
}

TEST_F(Find, KnowsNoWildcards) {
  Open([&](ScriptedView& find) {
    Search(find, "*");
    EXPECT_EQ(Selected(), kPlug);

    Search(find, "B*T");
    EXPECT_EQ(Selected(), kNothing);
  });
}

TEST_F(Find, WithoutAMatchLeavesNothingSelected) {
  Open([&](ScriptedView& find) {
    Search(find, "pl");

    Search(find, "absent");

    EXPECT_EQ(Selected(), kNothing);
    EXPECT_FALSE(find.Of("cmdBack").isEnabled);
    EXPECT_FALSE(find.Of("cmdNext").isEnabled);
    EXPECT_EQ(find.Of("lblStatus").text, "EN QD.FIND_LBLNOOCCURRENCES [absent]");
  });
}

TEST_F(Find, BeginsAnewWithEachSearch) {
  Open([&](ScriptedView& find) {
    Search(find, "pl");
    find.Press("cmdNext");
    Search(find, "absent");

    Search(find, "pl");

    EXPECT_EQ(Selected(), kPlant);
    EXPECT_EQ(find.Of("lblStatus").text, "EN QD.FIND_LBLOCCURRENCES [3] [pl]");
    EXPECT_TRUE(find.Of("cmdNext").isEnabled);
  });
}

TEST_F(Find, ForAnEmptyTextChangesNothing) {
  Open([&](ScriptedView& find) {
    Search(find, "pl");
    find.Press("cmdNext");

    Search(find, "");

    EXPECT_EQ(Selected(), kPlug);
    EXPECT_EQ(find.Of("lblStatus").text, "EN QD.FIND_LBLOCCURRENCES [3] [pl]");
    EXPECT_EQ(Steps(find, "cmdNext", 1), (std::vector<int>{kPlug, kPlate}));
  });
}

TEST_F(Find, ForAnEmptyTextTouchesNothing) {
  Open([&](ScriptedView& find) {
    desk.Last("MainPanel").SelectNode("Tree1", kPlate);
    desk.ForgetRecord();

    Search(find, "");

    EXPECT_THAT(desk.Record(), IsEmpty());
    EXPECT_EQ(Selected(), kPlate);
    EXPECT_FALSE(find.Of("cmdNext").isEnabled);
  });
}

TEST_F(Find, LooksThroughCapitalsOfAnyAlphabet) {
  GivenPanel(MakeRef<PaperObject>(PaperOf(1, "PLANT", {PaperOf(2, "Étau ß")})));

  Open([&](ScriptedView& find) {
    Search(find, "éTAU");

    EXPECT_EQ(Selected(), 2);
  });
}

TEST_F(Find, OpensWhatIsClosedAboveAMatch) {
  Open([&](ScriptedView& find) {
    Nodes().SetExpanded(kGroup, false);

    Search(find, "bolt");

    EXPECT_TRUE(Nodes().IsExpanded(kGroup));
  });
}

TEST_F(Find, SelectsAMatchBeforeItScrollsThere) {
  Open([&](ScriptedView& find) {
    desk.ForgetRecord();

    Search(find, "bolt");

    EXPECT_THAT(desk.Record(), ElementsAre("frmFind.SetEnabled(cmdBack, True)", "frmFind.SetEnabled(cmdNext, True)",
                                           "frmFind.SetText(lblStatus, EN QD.FIND_LBLOCCURRENCES [1] [bolt])",
                                           "MainPanel.SelectNode(Tree1, 3)", "MainPanel.EnsureVisible(Tree1, 3)"));
  });
}

TEST_F(Find, WithoutAMatchClearsTheSelectionBeforeItSaysSo) {
  Open([&](ScriptedView& find) {
    desk.ForgetRecord();

    Search(find, "absent");

    EXPECT_THAT(desk.Record(), ElementsAre("frmFind.SetEnabled(cmdBack, False)", "frmFind.SetEnabled(cmdNext, False)",
                                           "MainPanel.SelectNode(Tree1, 0)",
                                           "frmFind.SetText(lblStatus, EN QD.FIND_LBLNOOCCURRENCES [absent])"));
  });
}

TEST_F(Find, ClosedByItsButtonLeavesNothingBehind) {
  Process().FoundNode = kBolt;
  Open([&](ScriptedView& find) {
    Search(find, "pl");
    desk.ForgetRecord();

    find.Press("cmdCancel");

    EXPECT_THAT(desk.Record(),
                ElementsAre("frmFind.SetText(txtInput, )", "MainPanel.SelectNode(Tree1, 0)", "frmFind.Unload"));
  });

  EXPECT_EQ(Process().FoundNode, kNothing);
  EXPECT_EQ(Selected(), kNothing);
}

TEST_F(Find, ClosedByItsCloseBoxLeavesTheSelection) {
  Open([&](ScriptedView& find) {
    Search(find, "bolt");
    find.Close();
  });

  EXPECT_EQ(Selected(), kBolt);
}

TEST_F(Find, OpenedAgainBeginsAfresh) {
  Open([&](ScriptedView& find) {
    Search(find, "bolt");
    find.Close();
  });
  Open([](ScriptedView& find) {
    EXPECT_EQ(find.Of("txtInput").text, "");
    EXPECT_FALSE(find.Of("cmdNext").isEnabled);
  });
}

TEST_F(Find, TakesTheLastFoundNodeForItsStart) {
  Process().FoundNode = kBolt;
  Open([](ScriptedView&) { EXPECT_EQ(Process().PreviousFoundNode, kBolt); });
}

TEST_F(Find, KeepsItsStartWithoutALastFoundNode) {
  Process().PreviousFoundNode = kPlate;
  Open([](ScriptedView& find) {
    Search(find, "bolt");

    EXPECT_EQ(Process().FoundNode, kNothing);
  });

  EXPECT_EQ(Process().PreviousFoundNode, kPlate);
}

TEST_F(Find, TellsAFailedStepAndStaysOpen) {
  Open([&](ScriptedView& find) {
    Search(find, "pl");
    gate->FailOperation("View.SelectNode");
    find.Press("cmdNext");
    gate->Reset();

    EXPECT_TRUE(find.IsShown());
    EXPECT_EQ(Steps(find, "cmdNext", 1), (std::vector<int>{kPlant, kPlate}));
  });

  EXPECT_THAT(NewBoxes(), ElementsAre(Report("frmFind.HighlightNode", kCriticalModal, "Injected failure")));
}

TEST_F(Find, FailsInASearchWithoutAWord) {
  desk.WhenShown("frmFind", [&](ScriptedView& find) { Search(find, "\xFF"); });
  desk.WhenShown("MainPanel", [&](ScriptedView& view) { view.Press("cmdFind"); });

  EXPECT_THAT(FailureOf([&] { panel->ShowModal(); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(NewBoxes(), IsEmpty());
}

// Below the dialog: what can't be reached through it.
class FindInside : public Find {
 protected:
  FindInside() {
    panel->Load();
    find = std::make_shared<frmFind>(Nodes(), desk.Last("MainPanel"), "Tree1");
    find->Load();
  }
  FindInternals InsideFind() { return FindInternals(*find); }

  std::shared_ptr<frmFind> find;
};

TEST_F(FindInside, WalksOnlyBelowItsNode) {
  InsideFind().ResetMatches();

  InsideFind().FindInTree(kGroup, "P");

  EXPECT_THAT(InsideFind().Occurrences(), ElementsAre(kGroup, kPlug, 0));
}

TEST_F(FindInside, FindsNothingBelowNoNode) {
  InsideFind().ResetMatches();

  InsideFind().FindInTree(kNothing, "P");

  EXPECT_THAT(InsideFind().Occurrences(), ElementsAre(0));
}

TEST_F(FindInside, ForgetsItsMatchesWhenItIsClosed) {
  InsideFind().Occurrences() = {Counter16(int{kBolt}), Counter16(int{kPlug})};

  find->OnClick("cmdCancel");

  EXPECT_FALSE(find->IsLoaded());
  EXPECT_THAT(InsideFind().Occurrences(), ElementsAre(0));
}

TEST_F(FindInside, TellsAStepThroughNothing) {
  InsideFind().HighlightNode();

  EXPECT_THAT(NewBoxes(), ElementsAre(Report("frmFind.HighlightNode", kCriticalModal, "Subscript out of range")));
}

TEST_F(FindInside, TellsAMatchThatIsGone) {
  InsideFind().Occurrences() = {Counter16(99)};
  InsideFind().Position() = 0;

  InsideFind().HighlightNode();

  EXPECT_THAT(NewBoxes(), ElementsAre(Report("frmFind.HighlightNode", kCriticalModal, "Subscript out of range")));
  EXPECT_EQ(Selected(), kNothing);
}

TEST_F(FindInside, CantKeepANodePastTheSixteenBits) {
  EXPECT_THAT(FailureOf([&] { InsideFind().Occurrences().emplace_back(32768); }), FailsWith(failure::kOverflow));
}

TEST_F(FindInside, FindsAsManyNodesAsATreeHolds) {
  TreeModel many(node_tag::All(), "xxx");
  many.Add(0, "1_1", "node");
  for (int node = 2; node <= 32767; ++node) many.Add(1, std::to_string(node) + "_1", "node");
  find = std::make_shared<frmFind>(many, desk.Last("MainPanel"), "Tree1");
  InsideFind().ResetMatches();

  InsideFind().FindInTree(1, "NODE");

  EXPECT_EQ(InsideFind().Occurrences().size(), 32768U);
  EXPECT_EQ(int{InsideFind().Occurrences()[32766]}, 32767);
}

TEST_F(FindInside, GoesDownATreeOfAnyDepth) {
  TreeModel deep(node_tag::All(), "xxx");
  for (int node = 1; node <= 32767; ++node) deep.Add(node - 1, std::to_string(node) + "_1", "node");
  find = std::make_shared<frmFind>(deep, desk.Last("MainPanel"), "Tree1");
  InsideFind().ResetMatches();

  InsideFind().FindInTree(1, "ode");

  EXPECT_EQ(InsideFind().Occurrences().size(), 32768U);
}

}  // namespace
}  // namespace quintara::test
