#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "views/console/test_dialog.h"

namespace quintara::test {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

// What a screen was given, and the keys that it will give.
struct Paper {
  ScreenSize size{12, 40};
  std::deque<std::string> keys;
  std::vector<std::string> lines;
  std::vector<ScreenLine> styled;
  std::optional<ScreenPoint> cursor;
  int draws = 0;
  int suspensions = 0;
  bool isOpen = false;
};

Key KeyNamed(const std::string& name) {
  static const std::vector<std::pair<std::string, Key::Code>> kNames = {
      {"Up", Key::Code::kUp},         {"Down", Key::Code::kDown},     {"Left", Key::Code::kLeft},
      {"Right", Key::Code::kRight},   {"PgUp", Key::Code::kPageUp},   {"PgDn", Key::Code::kPageDown},
      {"Home", Key::Code::kHome},     {"End", Key::Code::kEnd},       {"Enter", Key::Code::kEnter},
      {"Esc", Key::Code::kEscape},    {"Tab", Key::Code::kTab},       {"Backspace", Key::Code::kBackspace},
      {"Delete", Key::Code::kDelete}, {"Resize", Key::Code::kResize}, {"F1", Key::Code::kOther}};
  const auto found = std::ranges::find(kNames, name, &std::pair<std::string, Key::Code>::first);
  return found == kNames.end() ? Key{Key::Code::kCharacter, name} : Key{found->second, {}};
}

class PaperScreen final : public Screen {
 public:
  explicit PaperScreen(Paper& paper) : paper_(paper) { paper_.isOpen = true; }
  ~PaperScreen() override { paper_.isOpen = false; }

  ScreenSize Size() override { return paper_.size; }
  void Draw(const std::vector<ScreenLine>& lines, const std::optional<ScreenPoint>& cursor) override {
    ++paper_.draws;
    paper_.styled = lines;
    paper_.cursor = cursor;
    paper_.lines.clear();
    for (const auto& line : lines) {
      std::string text;
      for (const auto& span : line) text += span.text;
      text.erase(text.find_last_not_of(' ') + 1);
      paper_.lines.push_back(text);
    }
  }
  // With no key left the dialog would wait for ever.
  std::optional<Key> ReadKey(int /*milliseconds*/) override {
    if (paper_.keys.empty()) throw Failure(failure::kInternal, "no more keys");
    const auto name = paper_.keys.front();
    paper_.keys.pop_front();
    if (name == "wait") return std::nullopt;
    return KeyNamed(name);
  }
  void Suspend() override { ++paper_.suspensions; }

 private:
  Paper& paper_;
};

class AFullScreen : public ::testing::Test {
 protected:
  std::shared_ptr<FullScreenView> Make(const dialog::Layout& layout, TestDialog& owner) {
    auto view = std::make_shared<FullScreenView>(layout, owner, screen);
    owner.view = view;
    return view;
  }
  void ShowPanel(const dialog::Layout& layout = PanelLayout()) {
    Make(layout, panel)->SetTree("Tree1", &tree);
    Show();
  }
  static dialog::Layout Ticking() {
    auto layout = PanelLayout();
    for (auto& control : layout.controls) control.clicksTick = control.kind == dialog::Kind::kTree;
    return layout;
  }
  // Until the keys are used up.
  void Show() {
    try {
      panel.view->ShowModal();
    } catch (const Failure& end) {
      ended = end.Description();
    }
  }
  void Type(const std::deque<std::string>& keys) { paper.keys = keys; }
  // What is drawn where the keys end.
  const std::string& Line(std::size_t row) const { return paper.lines.at(row); }
  ScreenStyle StyleOfRow(std::size_t row) const { return paper.styled.at(row).at(0).style; }

  Paper paper;
  bool hasUtf8 = true;
  std::string checkFails;
  std::shared_ptr<FullScreen> screen = std::make_shared<FullScreen>(FullScreen::Surroundings{
      [this]() -> std::unique_ptr<Screen> { return std::make_unique<PaperScreen>(paper); }, true,
      [this] {
        if (!checkFails.empty()) throw Failure(failure::kInternal, checkFails);
      }});
  TestTree tree{{"gear", " axle", "  nut", "  bolt", " nut"}};
  TestDialog panel;
  std::string ended;
};

TEST_F(AFullScreen, ShowsTitleTreeFieldsLegendAndKeys) {
  ShowPanel();

  EXPECT_THAT(paper.lines, ElementsAre(" Create", "▾ ○ gear", "  ▾ ○ axle", "      ○ nut", "      ○ bolt", "    ○ nut",
                                       "", "", "a  All instances?  ( ) Yes  (*) No",
                                       "n  Name:", "Space  ○ Left out  ● In full", "/  Find  Esc  Cancel  Enter  Go"));
}

TEST_F(AFullScreen, MarksWhatIsChosenOnANode) {
  tree.SetPicture(2, "product lwt");
  tree.SetPicture(3, "part doc");

  ShowPanel();

  EXPECT_EQ(Line(2), "  ▾ ◐ axle");
  EXPECT_EQ(StyleOfRow(2), ScreenStyle::kLight);
  EXPECT_EQ(Line(3), "      ● nut");
  EXPECT_EQ(StyleOfRow(3), ScreenStyle::kDocument);
}

TEST_F(AFullScreen, WithoutUnicodeDrawsWithAscii) {
  screen = std::make_shared<FullScreen>(
      FullScreen::Surroundings{[this] { return std::make_unique<PaperScreen>(paper); }, false, {}});
  tree = TestTree({"gear", " Wellenträger"});
  tree.SetPicture(2, "part doc");

  ShowPanel();

  EXPECT_EQ(Line(1), "- . gear");
  EXPECT_EQ(Line(2), "    D Wellentr?ger");
}

TEST_F(AFullScreen, KeepsControlCharactersOffTheTerminal) {
  tree = TestTree({"ge\x1b[2Jar"});

  ShowPanel();

  EXPECT_EQ(Line(1), "  ○ ge?[2Jar");
}

TEST_F(AFullScreen, BeginsWithTheCursorAtTheFirstNode) {
  ShowPanel();

  EXPECT_EQ(StyleOfRow(1), ScreenStyle::kCursor);
  EXPECT_THAT(panel.events, ElementsAre("unloaded"));
}

TEST_F(AFullScreen, GivesTheArrowsToTheTree) {
  Type({"Down", "Down", "Up", "End", "Home"});

  ShowPanel();

  EXPECT_THAT(panel.events, ElementsAre("Tree1 2", "Tree1 3", "Tree1 2", "Tree1 5", "Tree1 1", "unloaded"));
}

TEST_F(AFullScreen, StopsAtTheEndsOfTheTree) {
  Type({"Up", "End", "Down"});

  ShowPanel();

  EXPECT_THAT(panel.events, ElementsAre("Tree1 1", "Tree1 5", "Tree1 5", "unloaded"));
}

TEST_F(AFullScreen, TakesSpaceForTheRightButtonOnTheCursorsNode) {
  Type({"Down", "Down", " "});

  ShowPanel();

  EXPECT_THAT(panel.events, ElementsAre("Tree1 2", "Tree1 3", "down Tree1 2 at 3", "up Tree1 2", "unloaded"));
}

TEST_F(AFullScreen, ClicksTheCursorsNodeBySpaceAloneWhereClicksTick) {
  Type({"Down", "Down", " ", "Up", "End", "F1"});

  ShowPanel(Ticking());

  EXPECT_THAT(panel.events, ElementsAre("Tree1 3", "unloaded"));
}

TEST_F(AFullScreen, ClicksTheFirstNodeWhereNoneIsSelectedYet) {
  Type({" "});
  int selected = 0;
  panel.answer = [&](const std::string& event) {
    if (event == "Tree1 1") selected = panel.view->SelectedNode("Tree1");
  };

  ShowPanel(Ticking());

  EXPECT_THAT(panel.events, ElementsAre("Tree1 1", "unloaded"));
  EXPECT_EQ(selected, 1);
}

TEST_F(AFullScreen, MarksWhatIsTicked) {
  tree.SetPicture(2, "product lwt no");
  tree.SetPicture(3, "part lwt yes");

  ShowPanel(Ticking());

  EXPECT_EQ(Line(2), "  ▾ ☐ axle");
  EXPECT_EQ(Line(3), "      ☑ nut");
  EXPECT_THAT(paper.lines, Contains("Space  ☐ ☑"));
}

TEST_F(AFullScreen, FindsTheCursorsNodeInAScrolledTreeWithClosedNodes) {
  tree = TestTree({"root"});
  for (int i = 0; i < 100; ++i) {
    tree.Add(1, "product " + std::to_string(i));
    tree.Add(tree.Count(), "part");
    tree.SetExpanded(tree.Count() - 1, false);
  }
  Type({"End", "Up", " "});

  ShowPanel();

  EXPECT_THAT(panel.events, Contains("down Tree1 2 at 198"));
  EXPECT_EQ(Line(6), "  ▸ ○ product 98");
  EXPECT_EQ(Line(7), "  ▸ ○ product 99");
}

TEST_F(AFullScreen, PagesThroughALongTree) {
  tree = TestTree({"root"});
  for (int i = 2; i <= 50; ++i) tree.Add(1, "part " + std::to_string(i));
  Type({"PgDn", "PgDn", "PgUp"});

  ShowPanel();

  EXPECT_THAT(panel.events, ElementsAre("Tree1 8", "Tree1 15", "Tree1 8", "unloaded"));
}

TEST_F(AFullScreen, ReadsOfALongTreeOnlyWhatIsShown) {
  tree = TestTree({"root"});
  for (int i = 0; i < 32'000; ++i) tree.Add(1, "part");
  Type({"End", "Up", "PgUp"});

  ShowPanel();

  EXPECT_EQ(paper.draws, 4);
  EXPECT_EQ(tree.TextsAsked(), 4 * 7);
}

TEST_F(AFullScreen, TellsTheDepthOfWhatStandsFarDown) {
  TestTree deep({"root"});
  for (int i = 1; i < 30'000; ++i) deep.Add(i, "level " + std::to_string(i));
  tree = deep;
  Type({"End"});

  ShowPanel();

  EXPECT_EQ(Line(7), ">29999   ○ level 29999");
}

TEST_F(AFullScreen, ClosesAndOpensNodes) {
  Type({"Down", "Left"});

  ShowPanel();

  EXPECT_EQ(Line(2), "  ▸ ○ axle");
  EXPECT_EQ(Line(3), "    ○ nut");
  EXPECT_FALSE(tree.IsExpanded(2));
}

TEST_F(AFullScreen, GoesUpFromAClosedNodeAndDownIntoAnOpenOne) {
  Type({"Down", "Down", "Left", "Right", "Left", "Left", "Left", "Left"});

  ShowPanel();

  EXPECT_THAT(panel.events, ElementsAre("Tree1 2", "Tree1 3", "Tree1 2", "Tree1 3", "Tree1 2", "Tree1 1", "unloaded"));
  EXPECT_FALSE(tree.IsExpanded(1));
}

TEST_F(AFullScreen, MovesTheCursorToTheClosedNodeThatHidesIt) {
  Type({"Down", "Down", "/"});
  panel.answer = [&](const std::string& event) {
    if (event != "click cmdFind") return;
    tree.SetExpanded(2, false);
    panel.view->TreeChanged("Tree1");
    EXPECT_EQ(panel.view->SelectedNode("Tree1"), 3);
  };

  ShowPanel();

  EXPECT_EQ(StyleOfRow(2), ScreenStyle::kCursor);
}

TEST_F(AFullScreen, PressesTheControlsThatKeysName) {
  Type({"/", "Enter", "Esc", "q"});

  ShowPanel();

  EXPECT_THAT(panel.events,
              ElementsAre("click cmdFind", "click cmdCreate", "click cmdCancel", "click cmdCancel", "unloaded"));
}

TEST_F(AFullScreen, MeansTheCursorsNodeWhenSomethingIsPressed) {
  Type({"/"});
  int selected = 0;
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdFind") selected = panel.view->SelectedNode("Tree1");
  };

  ShowPanel();

  EXPECT_EQ(selected, 1);
}

TEST_F(AFullScreen, PressesNoDisabledButton) {
  auto layout = PanelLayout();
  std::ranges::find(layout.controls, "cmdCreate", &dialog::Control::name)->isEnabled = false;
  Type({"Enter"});

  ShowPanel(layout);

  EXPECT_THAT(panel.events, ElementsAre("unloaded"));
  EXPECT_EQ(paper.styled.at(11).back().style, ScreenStyle::kFaint);
}

TEST_F(AFullScreen, IgnoresKeysThatMeanNothing) {
  Type({"x", "F1", "Tab", "Backspace", "Resize"});

  ShowPanel();

  EXPECT_THAT(panel.events, ElementsAre("unloaded"));
}

TEST_F(AFullScreen, ChoosesTheNextRadioButtonWithTheKeyOfAChosenOne) {
  Type({"a", "a"});
  std::vector<std::string> answers;
  panel.answer = [&](const std::string& event) {
    if (event.starts_with("click")) answers.push_back(panel.view->IsChecked("All(0)") ? "yes" : "no");
  };

  ShowPanel();

  EXPECT_THAT(panel.events, ElementsAre("click All(0)", "click All(1)", "unloaded"));
  EXPECT_THAT(answers, ElementsAre("yes", "no"));
}

TEST_F(AFullScreen, TypesIntoATextBox) {
  Type({"n", "T", "R", "Left", "ü", "/", "q", "Enter", "Down"});

  ShowPanel();

  EXPECT_EQ(Line(9), "n  Name: Tü/qR");
  EXPECT_THAT(panel.events, ElementsAre("Tree1 2", "unloaded"));
}

TEST_F(AFullScreen, PutsBackWhatWasInATextBoxOnEscape) {
  Type({"n", "a", "Enter", "n", "b", "Esc", "n", "c"});

  ShowPanel();

  EXPECT_EQ(Line(9), "n  Name: ac");
  EXPECT_EQ(paper.cursor, (ScreenPoint{9, 11}));
}

TEST_F(AFullScreen, ShowsADialogWithoutATreeBelowTheOtherOne) {
  TestDialog search;
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdFind") Make(SearchLayout(), search)->ShowModal();
  };
  Type({"/", "n", "u", "t", ">"});

  ShowPanel();

  EXPECT_THAT(paper.lines, ElementsAre(" Create", "▾ ○ gear", "  ▾ ○ axle", "      ○ nut", "      ○ bolt", "    ○ nut",
                                       "", "", "", " Search", "What: nut>", "Enter  Find  Esc  Close  <  >"));
  EXPECT_EQ(paper.cursor, (ScreenPoint{10, 10}));
}

TEST_F(AFullScreen, StepsFromMatchToMatchOnceSomethingWasFound) {
  TestDialog search;
  search.answer = [&](const std::string& event) {
    if (event == "click cmdFind") {
      search.view->SetText("lblStatus", "2 matches");
      search.view->SetEnabled("cmdNext", true);
      panel.view->SelectNode("Tree1", 3);
    }
    if (event == "click cmdNext") panel.view->SelectNode("Tree1", 5);
    if (event == "click cmdCancel") {
      panel.view->SelectNode("Tree1", 0);
      search.view->Unload();
    }
  };
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdFind") Make(SearchLayout(), search)->ShowModal();
  };
  Type({"/", "n", "Enter", ">", "Esc", " "});

  ShowPanel();

  EXPECT_THAT(search.events, ElementsAre("click cmdFind", "click cmdNext", "click cmdCancel", "unloaded"));
  EXPECT_THAT(panel.events, ElementsAre("click cmdFind", "down Tree1 2 at 5", "up Tree1 2", "unloaded"));
}

TEST_F(AFullScreen, TypesOnInASearchThatFoundNothing) {
  TestDialog search;
  search.answer = [&](const std::string& event) {
    if (event == "click cmdFind") search.view->SetText("lblStatus", "No match");
  };
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdFind") Make(SearchLayout(), search)->ShowModal();
  };
  Type({"/", "x", "Enter", "y", "Backspace", "Tab", "Tab", ">"});

  ShowPanel();

  EXPECT_THAT(paper.lines, Contains("What: x>"));
  EXPECT_THAT(paper.lines, Contains("No match"));
}

TEST_F(AFullScreen, EndsWhenTheDialogIsUnloadedByItsOwner) {
  Type({"Esc", "never"});
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdCancel") panel.view->Unload();
  };

  ShowPanel();

  EXPECT_EQ(ended, "");
  EXPECT_THAT(panel.events, ElementsAre("click cmdCancel", "unloaded"));
  EXPECT_THAT(paper.keys, ElementsAre("never"));
  EXPECT_FALSE(paper.isOpen);
}

TEST_F(AFullScreen, OutlivesAnOwnerThatLetsGoOfItWhileItIsShown) {
  Type({"Esc"});
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdCancel") panel.view->Unload();
    if (event == "unloaded") panel.view = nullptr;
  };
  Make(PanelLayout(), panel)->SetTree("Tree1", &tree);
  auto* view = panel.view.get();

  view->ShowModal();

  EXPECT_EQ(panel.view, nullptr);
}

TEST_F(AFullScreen, EndsWhenTheDialogIsHidden) {
  Type({"Esc"});
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdCancel") panel.view->Hide();
  };

  ShowPanel();

  EXPECT_THAT(panel.events, ElementsAre("click cmdCancel"));
  EXPECT_FALSE(paper.isOpen);
}

TEST_F(AFullScreen, EndsWithTheFailureOfAnEvent) {
  Type({"/"});
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdFind") throw Failure(failure::kObjectNotSet, "no object");
  };

  ShowPanel();

  EXPECT_EQ(ended, "no object");
  EXPECT_THAT(panel.events, ElementsAre("click cmdFind", "unloaded"));
  EXPECT_FALSE(paper.isOpen);
}

TEST_F(AFullScreen, EndsWhenItIsInterrupted) {
  checkFails = "interrupted";

  ShowPanel();

  EXPECT_EQ(ended, "interrupted");
  EXPECT_THAT(panel.events, ElementsAre("unloaded"));
  EXPECT_FALSE(paper.isOpen);
}

TEST_F(AFullScreen, UnloadsADialogForWhichTheTerminalCannotBeOpened) {
  screen = std::make_shared<FullScreen>(FullScreen::Surroundings{
      []() -> std::unique_ptr<Screen> { throw Failure(failure::kDeviceError, "no terminal"); }, true, {}});

  ShowPanel();

  EXPECT_EQ(ended, "no terminal");
  EXPECT_THAT(panel.events, ElementsAre("unloaded"));
  EXPECT_FALSE(screen->IsShown());
}

TEST_F(AFullScreen, TicksItsTimers) {
  auto layout = PanelLayout();
  std::ranges::find(layout.controls, "Timer1", &dialog::Control::name)->interval = 1;
  panel.answer = [&](const std::string& event) {
    if (event == "tick Timer1") panel.view->Unload();
  };
  Type(std::deque<std::string>(1'000'000, "wait"));

  ShowPanel(layout);

  EXPECT_THAT(panel.events, ElementsAre("tick Timer1", "unloaded"));
}

TEST_F(AFullScreen, TellsAMessageUntilAKeyIsPressed) {
  Type({"/", "wait", "Down"});
  std::vector<std::string> before;
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdFind") screen->Tell("The name is taken.\r\nChoose another.");
    if (event == "Tree1 2") before = paper.lines;
  };

  ShowPanel();

  EXPECT_THAT(before, Contains("The name is taken."));
  EXPECT_THAT(before, Contains("Choose another."));
  EXPECT_THAT(paper.lines, Not(Contains("The name is taken.")));
}

TEST_F(AFullScreen, BreaksALongMessageBetweenItsWords) {
  Type({"/"});
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdFind") screen->Tell("The file '/a/rather/long/path/of/a/file' exists already.");
  };

  ShowPanel();

  EXPECT_THAT(paper.lines, Contains("The file"));
  EXPECT_THAT(paper.lines, Contains("'/a/rather/long/path/of/a/file' exists"));
  EXPECT_THAT(paper.lines, Contains("already."));
}

TEST_F(AFullScreen, TellsNothingWhileNoDialogIsShown) {
  screen->Tell("Lost.");

  ShowPanel();

  EXPECT_THAT(paper.lines, Not(Contains("Lost.")));
}

TEST_F(AFullScreen, GivesTheTerminalBackForOtherText) {
  Type({"/"});
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdFind") screen->Suspend();
  };

  ShowPanel();

  EXPECT_EQ(paper.suspensions, 1);
  EXPECT_EQ(paper.draws, 2);
}

TEST_F(AFullScreen, KeepsTheTreeOnASmallScreen) {
  paper.size = {5, 12};

  ShowPanel();

  EXPECT_THAT(paper.lines, ElementsAre(" Create", "▾ ○ gear", "  ▾ ○ axle", "      ○ nut", "a  All insta"));
}

TEST_F(AFullScreen, StandsAScreenOfOneCharacter) {
  paper.size = {1, 1};
  Type({"Down", " ", "n", "x"});

  ShowPanel();

  EXPECT_THAT(paper.lines.size(), 1U);
  EXPECT_EQ(ended, "no more keys");
}

TEST_F(AFullScreen, KeepsTheCursorInSightWhenTheScreenGetsSmaller) {
  Type({"End", "Resize"});
  panel.answer = [&](const std::string& event) {
    if (event == "Tree1 5") paper.size = {5, 40};
  };

  ShowPanel();

  EXPECT_EQ(Line(3), "    ○ nut");
  EXPECT_EQ(StyleOfRow(3), ScreenStyle::kCursor);
}

TEST_F(AFullScreen, ShowsADialogWithoutATreeGiven) {
  Make(PanelLayout(), panel);
  Type({"Down", " ", "Left", "Right", "End"});

  Show();

  EXPECT_THAT(panel.events, ElementsAre("unloaded"));
}

}  // namespace
}  // namespace quintara::test
