#include "views/win32/sample_dialog.h"

namespace quintara::test {
namespace {

class ADialogOnTop : public OnDesktop {
 protected:
  SampleDialog bar{"Progress", [](dialog::Layout& layout) {
                     using enum dialog::Kind;
                     layout = {.name = "Progress", .text = layout.text, .box = {0, 0, 6000, 1500}};
                     layout.controls = {{.name = "lbl", .kind = kLabel, .box = {120, 120, 5640, 255}},
                                        {.name = "pb1", .kind = kProgressBar, .box = {120, 465, 5640, 375}}};
                   }};
  COLORREF ColourOfBar() const {
    const auto window = bar.Window("pb1");
    RECT area{};
    GetClientRect(window, &area);
    const auto context = GetDC(window);
    const auto colour = GetPixel(context, area.right / 2, area.bottom / 2);
    ReleaseDC(window, context);
    return colour;
  }
};

TEST_F(ADialogOnTop, StandsAboveAllOthersAtItsPlaceInPixelsOfAnOrdinaryScreen) {
  bar.view->ShowOnTop(40, 60, 400, 100);

  const auto edges = EdgesOf(bar.window);
  EXPECT_TRUE(IsWindowVisible(bar.window));
  EXPECT_NE(GetWindowLongPtrW(bar.window, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
  EXPECT_EQ(edges.left, bar.Place(40 * 15));
  EXPECT_EQ(edges.top, bar.Place(60 * 15));
  EXPECT_EQ(edges.right - edges.left, bar.Size(400 * 15));
  EXPECT_EQ(edges.bottom - edges.top, bar.Size(100 * 15));
  EXPECT_EQ(bar.view->BoxOf(""), (dialog::Box{600, 900, 6000, 1500}));
}

TEST_F(ADialogOnTop, TellsOfItsNewSize) {
  bar.view->ShowOnTop(40, 60, 400, 100);
  EXPECT_EQ(bar.events.resizes, 0);

  bar.view->ShowOnTop(40, 60, 420, 100);
  EXPECT_EQ(bar.events.resizes, 1);
}

TEST_F(ADialogOnTop, HasNoCloseBoxWhereNothingCanBeAnswered) {
  EXPECT_EQ(GetWindowLongPtrW(bar.window, GWL_STYLE) & WS_SYSMENU, 0);
}

TEST_F(ADialogOnTop, IsHiddenAgain) {
  bar.view->ShowOnTop(40, 60, 400, 100);

  bar.view->Hide();

  EXPECT_FALSE(IsWindowVisible(bar.window));
}

TEST_F(ADialogOnTop, IsDrawnWhileNoMessagesAreLetThrough) {
  bar.view->ShowOnTop(40, 60, 400, 100);
  bar.view->SetProgress("pb1", 0, 10);
  bar.view->Redraw("pb1");
  const auto empty = ColourOfBar();

  bar.view->SetProgress("pb1", 10, 10);
  bar.view->Redraw("pb1");

  EXPECT_NE(ColourOfBar(), empty);
  EXPECT_FALSE(GetUpdateRect(bar.window, nullptr, FALSE));
}

TEST_F(ADialogOnTop, LeavesOtherWindowsEnabled) {
  User user;
  user.Until("the dialog", [&] { return IsWindowVisible(sample.window) != 0; })
      .Do([&] { bar.view->ShowOnTop(40, 60, 400, 100); })
      .Do([&] { EXPECT_TRUE(IsWindowEnabled(sample.window)); })
      .Do([&] { bar.view->Unload(); })
      .Do([&] { SendMessageW(sample.window, WM_CLOSE, 0, 0); });

  View().ShowModal();

  EXPECT_TRUE(bar.IsGone());
}

TEST_F(ADialogOnTop, OutlivesTheDialogThatWasShownBefore) {
  User user;
  user.Until("the dialog", [&] { return IsWindowVisible(sample.window) != 0; })
      .Do([&] { bar.view->ShowOnTop(40, 60, 400, 100); })
      .Do([&] { SendMessageW(sample.window, WM_CLOSE, 0, 0); });

  View().ShowModal();

  EXPECT_TRUE(IsWindowVisible(bar.window));
}

TEST_F(ADialogOnTop, LeavesTheFailureOfAnEventWithWhoeverCatchesUp) {
  sample.events.tick = [] { throw Failure(failure::kOverflow); };
  View().ShowOnTop(0, 0, 400, 400);

  int number = 0;
  WaitFor([&] {
    number = NumberOf([] { win32::CatchUp(); });
    return number != 0;
  });

  EXPECT_EQ(number, 6);
  EXPECT_TRUE(sample.IsGone());
}

}  // namespace
}  // namespace quintara::test
