#include "views/console/plain_view.h"

#include "base/failure.h"
#include "views/console/bar_view.h"
#include "views/console/test_dialog.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class APlainView : public ::testing::Test {
 protected:
  int NumberOf(const std::function<void()>& operation) {
    try {
      operation();
    } catch (const Failure& failure) {
      return failure.Number();
    }
    return 0;
  }

  TestDialog owner;
  std::shared_ptr<PlainView> view = std::make_shared<PlainView>(PanelLayout(), owner);
};

TEST_F(APlainView, KeepsWhatItIsGiven) {
  view->SetText("txtName", "trial");
  view->SetText("", "title");
  view->SetEnabled("cmdFind", false);
  view->SetBox("cmdFind", {1, 2, 3, 4});

  EXPECT_EQ(view->Text("txtName"), "trial");
  EXPECT_EQ(view->Text(""), "title");
  EXPECT_FALSE(view->IsEnabled("cmdFind"));
  EXPECT_EQ(view->BoxOf("cmdFind"), (dialog::Box{1, 2, 3, 4}));
  EXPECT_THAT(owner.events, IsEmpty());
}

TEST_F(APlainView, FailsForAControlThatIsNotThere) {
  EXPECT_EQ(NumberOf([&] { view->SetText("txtNone", ""); }), failure::kNoSuchMember);
}

TEST_F(APlainView, FailsForAControlOfAnotherKind) {
  EXPECT_EQ(NumberOf([&] { view->SetChecked("cmdFind", true); }), failure::kNoSuchMember);
  EXPECT_EQ(NumberOf([&] { view->SelectedNode("cmdFind"); }), failure::kNoSuchMember);
}

TEST_F(APlainView, FailsOnceItIsUnloaded) {
  view->Unload();
  view->Unload();

  EXPECT_EQ(NumberOf([&] { view->Text("txtName"); }), failure::kObjectUnloaded);
  EXPECT_EQ(NumberOf([&] { view->ShowModal(); }), failure::kObjectUnloaded);
  EXPECT_THAT(owner.events, ElementsAre("unloaded"));
}

TEST_F(APlainView, LetsGoOfTheOtherRadioButtons) {
  view->SetChecked("All(0)", true);

  EXPECT_TRUE(view->IsChecked("All(0)"));
  EXPECT_FALSE(view->IsChecked("All(1)"));
}

TEST_F(APlainView, TellsOfANewSizeButNotOfANewPlace) {
  view->SetBox("", {5, 5, 9000, 9000});
  view->SetBox("", {5, 5, 9000, 8000});

  EXPECT_THAT(owner.events, ElementsAre("resize"));
}

TEST_F(APlainView, HasOneFontOnly) {
  auto font = view->FontOf("Tree1");
  font.name = "Fancy";
  font.size = 20;
  view->SetFont("Tree1", font);

  EXPECT_NE(view->FontOf("Tree1").name, "Fancy");
  EXPECT_EQ(view->FontOf("Tree1").size, 20);
}

TEST_F(APlainView, FindsEachNodeInARowOfItsOwn) {
  TestTree tree({"gear", " axle"});
  view->SetTree("Tree1", &tree);

  EXPECT_EQ(view->NodeAt("Tree1", 0, 0), 1);
  EXPECT_EQ(view->NodeAt("Tree1", 0, 479), 2);
  EXPECT_EQ(view->NodeAt("Tree1", 0, 480), 0);
  EXPECT_EQ(view->NodeAt("Tree1", 0, -1), 0);
}

TEST_F(APlainView, OpensWhatIsAboveANode) {
  TestTree tree({"gear", " axle", "  nut"});
  for (const int node : {1, 2, 3}) tree.SetExpanded(node, false);
  view->SetTree("Tree1", &tree);

  view->EnsureVisible("Tree1", 3);

  EXPECT_TRUE(tree.IsExpanded(1));
  EXPECT_TRUE(tree.IsExpanded(2));
  EXPECT_FALSE(tree.IsExpanded(3));
}

class ABarView : public ::testing::Test {
 protected:
  std::shared_ptr<BarView> Make(const dialog::Layout& layout) {
    return std::make_shared<BarView>(layout, owner,
                                     BarView::Line{[this](std::optional<double> fraction, const std::string& what) {
                                                     if (!interruption.empty())
                                                       throw Failure(failure::kInternal, interruption);
                                                     const auto known = fraction ? std::to_string(*fraction) : "-";
                                                     shown.push_back(known + " " + what);
                                                   },
                                                   [this] { shown.emplace_back("clear"); }});
  }
  static dialog::Layout Bar() {
    dialog::Layout layout{.name = "frmBar", .text = "Bar"};
    layout.controls = {dialog::Control{.name = "lbl", .text = "Root..."},
                       dialog::Control{.name = "pb1", .kind = dialog::Kind::kProgressBar}};
    return layout;
  }

  TestDialog owner;
  std::vector<std::string> shown;
  std::string interruption;
};

TEST_F(ABarView, ShowsItsTextAndHowFullItIs) {
  const auto view = Make(Bar());

  view->SetProgress("pb1", 0, 4);
  view->ShowOnTop(0, 0, 400, 100);
  view->SetText("lbl", "Half...");
  view->SetProgress("pb1", 2, 4);
  view->Redraw("pb1");
  view->Unload();

  EXPECT_THAT(shown, ElementsAre("0.000000 Root...", "0.500000 Half...", "clear"));
}

TEST_F(ABarView, ShowsNothingBeforeItIsShown) {
  const auto view = Make(Bar());

  view->Redraw("pb1");
  view->Unload();

  EXPECT_THAT(shown, IsEmpty());
}

TEST_F(ABarView, WithoutStepsIsEmpty) {
  const auto view = Make(Bar());

  view->ShowOnTop(0, 0, 400, 100);

  EXPECT_THAT(shown, ElementsAre("0.000000 Root..."));
}

TEST_F(ABarView, WithoutABarIsItsTextAlone) {
  auto layout = Bar();
  layout.controls.pop_back();
  const auto view = Make(layout);

  view->ShowOnTop(0, 0, 400, 100);

  EXPECT_THAT(shown, ElementsAre("- Root..."));
}

TEST_F(ABarView, EndsTheWorkWhereItsLineFails) {
  const auto view = Make(Bar());
  view->ShowOnTop(0, 0, 400, 100);
  interruption = "interrupted";

  EXPECT_THROW(view->Redraw("lbl"), Failure);
}

}  // namespace
}  // namespace quintara::test
