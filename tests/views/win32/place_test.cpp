#include "views/win32/desktop.h"
#include "views/win32/sample_dialog.h"
#include "views/win32/scale.h"

namespace quintara::test {
namespace {

using dialog::Box;
using win32::Scale;

class APlacedDialog : public OnDesktop {
 protected:
  // As one who moves it, or another program, does.
  void Move(int left, int top) {
    SetWindowPos(sample.window, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  void MakeSize(int width, int height) {
    SetWindowPos(sample.window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  RECT Drag(const RECT& proposed, WPARAM edge = WMSZ_BOTTOMRIGHT) {
    RECT edges = proposed;
    SendMessageW(sample.window, WM_SIZING, edge, reinterpret_cast<LPARAM>(&edges));
    return edges;
  }
  int Width() const {
    const auto edges = EdgesOf(sample.window);
    return edges.right - edges.left;
  }
  int Height() const {
    const auto edges = EdgesOf(sample.window);
    return edges.bottom - edges.top;
  }
  RECT InDialog(const std::string& control) const {
    auto edges = EdgesOf(sample.Window(control));
    MapWindowPoints(nullptr, sample.window, reinterpret_cast<POINT*>(&edges), 2);
    return edges;
  }
  // The rule of a dialog that isn't made for less.
  void KeepAtLeast(int width, int height) {
    Events().resize = [=, this] {
      auto box = View().BoxOf("");
      if (box.width >= width && box.height >= height) return;
      box.width = std::max(box.width, width);
      box.height = std::max(box.height, height);
      View().SetBox("", box);
    };
  }
};

TEST_F(APlacedDialog, HasTheSizeOfItsLayoutInWholePixels) {
  EXPECT_EQ(Width(), sample.Size(6000));
  EXPECT_EQ(Height(), sample.Size(6000));
}

TEST_F(APlacedDialog, OpensInTheMiddleOfTheWorkArea) {
  const win32::OwnPixels pixels;
  const auto work = win32::WorkAreaOf(nullptr);
  const auto edges = EdgesOf(sample.window);

  EXPECT_NEAR(MiddleOf(edges).x, MiddleOf(work).x, 1);
  EXPECT_NEAR(MiddleOf(edges).y, MiddleOf(work).y, 1);
}

TEST_F(APlacedDialog, GivesTheBoxesOfItsLayout) {
  EXPECT_EQ(View().BoxOf("Option(0)"), (Box{150, 300, 1500, 285}));
  EXPECT_EQ(View().BoxOf("").width, 6000);
  EXPECT_EQ(View().BoxOf("").height, 6000);
}

TEST_F(APlacedDialog, GivesBackToTheTwipWhatWasSet) {
  const Box odd{1234, 777, 6011, 6003};

  View().SetBox("", odd);
  View().SetBox("lbl", {3001, 451, 1499, 254});

  EXPECT_EQ(View().BoxOf(""), odd);
  EXPECT_EQ(View().BoxOf("lbl"), (Box{3001, 451, 1499, 254}));
}

TEST_F(APlacedDialog, PlacesAControlFromItsFrameInWholePixels) {
  const auto edges = InDialog("Option(0)");

  EXPECT_EQ(edges.left, sample.Place(105 + 150));
  EXPECT_EQ(edges.top, sample.Place(105 + 300));
  EXPECT_EQ(edges.right - edges.left, sample.Size(1500));
  EXPECT_EQ(edges.bottom - edges.top, sample.Size(285));
}

TEST_F(APlacedDialog, MovesWhatAFrameHoldsWithIt) {
  View().SetBox("Frame1", {1005, 605, 2505, 1005});

  EXPECT_EQ(InDialog("Option(0)").left, sample.Place(1005 + 150));
  EXPECT_EQ(InDialog("Option(0)").top, sample.Place(605 + 300));
  EXPECT_EQ(View().BoxOf("Option(0)"), (Box{150, 300, 1500, 285}));
}

TEST_F(APlacedDialog, TellsOfANewSizeOnceWhoeverSetIt) {
  auto box = View().BoxOf("");
  box.width += 600;
  View().SetBox("", box);
  EXPECT_EQ(Events().resizes, 1);

  MakeSize(Width() + 10, Height());
  EXPECT_EQ(Events().resizes, 2);
}

TEST_F(APlacedDialog, TellsOfASizeThatIsNoOtherOnTheScreen) {
  View().SetBox("", {0, 0, 6001, 6000});
  const int width = Width();

  View().SetBox("", {0, 0, 6002, 6000});

  EXPECT_EQ(Width(), width);
  EXPECT_EQ(Events().resizes, 2);
  EXPECT_EQ(View().BoxOf("").width, 6002);
}

TEST_F(APlacedDialog, TellsNothingOfTheSameSizeAtAnotherPlace) {
  auto box = View().BoxOf("");
  box.left += 300;

  View().SetBox("", box);
  Move(40, 50);

  EXPECT_EQ(Events().resizes, 0);
}

TEST_F(APlacedDialog, KeepsTheNumbersThatTheUserHasNotChanged) {
  View().SetBox("", {1234, 777, 6011, 6003});

  Move(100, EdgesOf(sample.window).top);

  const auto box = View().BoxOf("");
  EXPECT_EQ(sample.Place(box.left), 100);
  EXPECT_EQ(box.top, 777);
  EXPECT_EQ(box.width, 6011);
  EXPECT_EQ(box.height, 6003);
}

TEST_F(APlacedDialog, GivesASizeOfTheUserThatIsTheSamePixelsAgain) {
  const int width = Width() + 7;

  MakeSize(width, Height());

  EXPECT_EQ(sample.Size(View().BoxOf("").width), width);
  EXPECT_EQ(View().BoxOf("").height, 6000);
}

TEST_F(APlacedDialog, HasItsOwnersLastWordOnItsSize) {
  KeepAtLeast(6000, 6000);

  MakeSize(Width() - 50, Height());

  EXPECT_EQ(Width(), sample.Size(6000));
  EXPECT_EQ(View().BoxOf("").width, 6000);
  EXPECT_EQ(Events().resizes, 2);
}

TEST_F(APlacedDialog, IsNeverSeenSmallerThanItsOwnerLetsItBeDragged) {
  KeepAtLeast(6000, 6000);
  const auto before = EdgesOf(sample.window);

  const auto edges = Drag({before.left, before.top, before.right - 90, before.bottom});

  EXPECT_EQ(edges.right - edges.left, sample.Size(6000));
  EXPECT_EQ(edges.left, before.left);
  EXPECT_TRUE(EqualRect(&before, &edges));
}

TEST_F(APlacedDialog, HoldsItsRightEdgeWhereItsOwnerSaysSoWhileTheLeftOneIsDragged) {
  const auto before = View().BoxOf("");
  const auto seen = EdgesOf(sample.window);
  Events().resize = [&] {
    auto box = View().BoxOf("");
    if (box.width >= 6000) return;
    box.left = before.left + before.width - 6000;
    box.width = 6000;
    View().SetBox("", box);
  };

  const auto edges = Drag({seen.left + 120, seen.top, seen.right, seen.bottom});

  EXPECT_TRUE(EqualRect(&edges, &seen));
  EXPECT_EQ(View().BoxOf(""), before);
}

TEST_F(APlacedDialog, IsDraggedNoLargerThanTheNumbersThatItsOwnerKeeps) {
  const auto seen = EdgesOf(sample.window);

  const auto wide = Drag({seen.left, seen.top, seen.right + 12000, seen.bottom + 12000});
  EXPECT_EQ(wide.left, seen.left);
  EXPECT_EQ(wide.top, seen.top);
  EXPECT_LE(View().BoxOf("").width, 32767);
  EXPECT_LE(View().BoxOf("").height, 32767);

  const auto upward = Drag({seen.left - 12000, seen.top - 12000, seen.right, seen.bottom}, WMSZ_TOPLEFT);
  EXPECT_EQ(upward.right, seen.right);
  EXPECT_EQ(upward.bottom, seen.bottom);
  EXPECT_GE(View().BoxOf("").left, -32767);
  EXPECT_GE(View().BoxOf("").top, -32767);
  EXPECT_LE(View().BoxOf("").width, 32767);
}

TEST_F(APlacedDialog, MovesItsControlsWithItsSizeOnlyWhenAllArePlaced) {
  Events().resize = [&] {
    const auto panel = View().BoxOf("");
    auto box = View().BoxOf("cmdOK");
    box.left = panel.width - 2000;
    View().SetBox("cmdOK", box);
    EXPECT_EQ(View().BoxOf("cmdOK").left, panel.width - 2000);
    EXPECT_NE(InDialog("cmdOK").left, sample.Place(panel.width - 2000));
  };

  MakeSize(Width() + 100, Height());

  EXPECT_EQ(InDialog("cmdOK").left, sample.Place(View().BoxOf("").width - 2000));
}

TEST_F(APlacedDialog, PlacesItsControlsWhileItIsDragged) {
  Events().resize = [&] { View().SetBox("cmdOK", {View().BoxOf("").width - 2000, 4900, 1200, 375}); };
  const auto seen = EdgesOf(sample.window);

  const auto edges = Drag({seen.left, seen.top, seen.right + 60, seen.bottom});
  MakeSize(edges.right - edges.left, edges.bottom - edges.top);

  EXPECT_EQ(InDialog("cmdOK").left, sample.Place(View().BoxOf("").width - 2000));
  EXPECT_EQ(Events().resizes, 1);
}

TEST_F(APlacedDialog, StaysWithinTheNumbersThatItsOwnerKeeps) {
  Move(9000, -9000);

  EXPECT_LE(View().BoxOf("").left, 32767);
  EXPECT_GE(View().BoxOf("").left, 32000);
  EXPECT_GE(View().BoxOf("").top, -32768);
  EXPECT_LE(View().BoxOf("").top, -32000);
}

TEST_F(APlacedDialog, IsNoLargerThanTheNumbersThatItsOwnerKeeps) {
  MakeSize(12000, 12000);

  EXPECT_LE(View().BoxOf("").width, 32767);
  EXPECT_LE(View().BoxOf("").height, 32767);
}

TEST_F(APlacedDialog, TakesASmallerScaleOnAScreenThatIsTooLow) {
  const win32::OwnPixels pixels;
  const auto work = win32::WorkAreaOf(nullptr);
  SampleDialog high("High", [](dialog::Layout& layout) { layout.box.height = 60000; });

  const auto edges = EdgesOf(high.window);

  EXPECT_EQ(edges.bottom - edges.top, work.bottom - work.top);
  EXPECT_LT(edges.right - edges.left, Width());
  EXPECT_EQ(high.view->BoxOf("").height, 60000);
  EXPECT_EQ(high.view->BoxOf("").width, 6000);
}

TEST_F(APlacedDialog, TakesSmallerFontsWithASmallerScale) {
  SampleDialog high("High", [](dialog::Layout& layout) { layout.box.height = 60000; });
  const auto heightIn = [](HWND label) {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)), sizeof font, &font);
    return -font.lfHeight;
  };

  EXPECT_LT(heightIn(high.Window("lbl")), heightIn(sample.Window("lbl")));
  EXPECT_EQ(high.view->FontOf("lbl"), View().FontOf("lbl"));
}

TEST_F(APlacedDialog, GivesTheScreenInTwips) {
  const win32::OwnPixels pixels;
  const auto screen = View().Screen();

  EXPECT_EQ(sample.Size(screen.width), GetSystemMetrics(SM_CXSCREEN));
  EXPECT_EQ(sample.Size(screen.height), GetSystemMetrics(SM_CYSCREEN));
  EXPECT_EQ(screen.left, 0);
  EXPECT_EQ(screen.top, 0);
}

TEST_F(APlacedDialog, KeepsItsNumbersWhenTheScreenHasOtherPixels) {
  const auto before = View().BoxOf("");
  RECT suggested = EdgesOf(sample.window);
  OffsetRect(&suggested, 30, 0);

  SendMessageW(sample.window, 0x02E0, MAKEWPARAM(96, 96), reinterpret_cast<LPARAM>(&suggested));

  EXPECT_EQ(View().BoxOf("").width, before.width);
  EXPECT_EQ(View().BoxOf("").height, before.height);
  EXPECT_EQ(EdgesOf(sample.window).left, suggested.left);
  EXPECT_EQ(Events().resizes, 0);
}

// Twips and pixels, at every number of pixels of an inch that screens have, and with a smaller scale.

class AScale : public testing::TestWithParam<std::tuple<int, double>> {
 protected:
  Scale scale{std::get<0>(GetParam()), std::get<1>(GetParam())};
};

TEST_P(AScale, MakesTheSamePixelsOfWhatCameFromPixels) {
  for (int pixels = 0; pixels < 3000; ++pixels) {
    ASSERT_EQ(scale.SizeInPixels(scale.SizeInTwips(pixels)), pixels);
    ASSERT_EQ(scale.PlaceInPixels(scale.PlaceInTwips(pixels)), pixels);
    ASSERT_EQ(scale.PlaceInPixels(scale.PlaceInTwips(-pixels)), -pixels);
  }
}

TEST_P(AScale, NeverMakesASizeSmaller) {
  for (int twips = 0; twips < 20000; twips += 7) ASSERT_GE(scale.SizeInTwips(scale.SizeInPixels(twips)), twips);
}

INSTANTIATE_TEST_SUITE_P(Of, AScale,
                         testing::Combine(testing::Values(96, 120, 144, 168, 192, 240, 288),
                                          testing::Values(1.0, 728.0 / 729, 0.61)));

TEST(TheOrdinaryScale, HasFifteenTwipsToAPixelOfAnOrdinaryScreen) {
  const Scale scale(96);

  EXPECT_EQ(scale.SizeInPixels(9525), 635);
  EXPECT_EQ(scale.SizeInPixels(9526), 636);
  EXPECT_EQ(scale.PlaceInPixels(22), 1);
  EXPECT_EQ(scale.PlaceInPixels(23), 2);
  EXPECT_EQ(scale.PointsInPixels(9), 12);
  EXPECT_EQ(Scale(144).SizeInPixels(9525), 953);
}

}  // namespace
}  // namespace quintara::test
