// Before the toolkit's.
#include "views/win32/sample_dialog.h"

#include <commctrl.h>

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ADialogOfTheDesktop : public OnDesktop {};

TEST_F(ADialogOfTheDesktop, IsMadeHidden) {
  EXPECT_NE(sample.Window(), nullptr);
  EXPECT_EQ(ShownDialog("Sample"), nullptr);
  EXPECT_THAT(Events().calls, IsEmpty());
}

TEST_F(ADialogOfTheDesktop, HasAControlOfTheToolkitForEachOfItsOwn) {
  const auto classOf = [&](const std::string& control) {
    wchar_t name[100] = {};
    GetClassNameW(sample.Window(control), name, 100);
    return std::wstring(name);
  };

  EXPECT_EQ(classOf("Frame1"), L"Button");
  EXPECT_EQ(classOf("lbl"), L"Static");
  EXPECT_EQ(classOf("txt"), L"Edit");
  EXPECT_EQ(classOf("cmdOK"), L"Button");
  EXPECT_EQ(classOf("Option(0)"), L"Button");
  EXPECT_EQ(classOf("img"), L"Static");
  EXPECT_EQ(classOf("Tree1"), L"SysTreeView32");
  EXPECT_EQ(classOf("pb1"), L"msctls_progress32");
}

TEST_F(ADialogOfTheDesktop, HasNoBoxesToMakeItSmallOrLargeButOneToCloseIt) {
  const auto style = GetWindowLongPtrW(sample.Window(), GWL_STYLE);

  EXPECT_EQ(style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX), 0);
  EXPECT_NE(style & WS_SYSMENU, 0);
  EXPECT_NE(style & WS_THICKFRAME, 0);
}

TEST_F(ADialogOfTheDesktop, KeepsItsSizeWhereItCantBeChanged) {
  SampleDialog fixed("Fixed", [](dialog::Layout& layout) { layout.isSizable = false; });

  EXPECT_EQ(GetWindowLongPtrW(fixed.Window(), GWL_STYLE) & WS_THICKFRAME, 0);
}

TEST_F(ADialogOfTheDesktop, RefusesTwoControlsOfOneName) {
  EXPECT_EQ(NumberOf([] { SampleDialog("Twins", [](auto& layout) { layout.controls[1].name = "Timer1"; }); }), 457);
}

TEST_F(ADialogOfTheDesktop, RefusesAFrameThatIsNotListedBefore) {
  EXPECT_EQ(NumberOf([] { SampleDialog("Lost", [](auto& layout) { layout.controls[0].container = "Frame1"; }); }),
            35601);
}

TEST_F(ADialogOfTheDesktop, LeavesNoWindowBehindWhenAPictureIsNotThere) {
  EXPECT_EQ(NumberOf([] { SampleDialog("Blank", [](auto& layout) { layout.pictures = {"no such"}; }); }), 35601);
  EXPECT_EQ(MadeDialog("Blank"), nullptr);
}

TEST_F(ADialogOfTheDesktop, GivesTheTextsOfItsLayout) {
  EXPECT_EQ(View().Text(""), "Sample");
  EXPECT_EQ(View().Text("lbl"), "Name & number:");
  EXPECT_EQ(View().Text("txt"), "typed");
  EXPECT_EQ(View().Text("cmdOther"), "Other & more");
}

TEST_F(ADialogOfTheDesktop, ShowsTextsOfAnyLanguage) {
  View().SetText("", "Größe – 尺寸");
  View().SetText("txt", "Größe – 尺寸");
  View().SetText("cmdCancel", "Größe");

  EXPECT_EQ(View().Text("txt"), "Größe – 尺寸");
  EXPECT_EQ(WindowText(sample.Window()), "Größe – 尺寸");
  EXPECT_EQ(WindowText(sample.Window("cmdCancel")), "Größe");
}

TEST_F(ADialogOfTheDesktop, GivesWhatTheUserHasTyped) {
  SetWindowTextW(sample.Window("txt"), L"bo & lt");

  EXPECT_EQ(View().Text("txt"), "bo & lt");
}

TEST_F(ADialogOfTheDesktop, ShowsTheSignOfAMnemonicWhereItIsPartOfAText) {
  EXPECT_EQ(WindowText(sample.Window("cmdOther")), "Other && &more");
  EXPECT_EQ(WindowText(sample.Window("lbl")), "&Name && number:");
}

TEST_F(ADialogOfTheDesktop, GivesOtherMnemonicsToOtherTexts) {
  View().SetText("cmdOther", "Network");

  EXPECT_EQ(View().Text("cmdOther"), "Network");
  EXPECT_EQ(WindowText(sample.Window("lbl")), "&Name && number:");
  EXPECT_EQ(WindowText(sample.Window("cmdOther")), "N&etwork");
}

TEST_F(ADialogOfTheDesktop, RefusesAControlThatIsNotThere) {
  EXPECT_EQ(NumberOf([&] { View().SetText("nothing", "x"); }), 35601);
  EXPECT_EQ(NumberOf([&] { View().BoxOf("nothing"); }), 35601);
}

TEST_F(ADialogOfTheDesktop, RefusesWhatAControlCantDo) {
  EXPECT_EQ(NumberOf([&] { View().Text("Tree1"); }), 438);
  EXPECT_EQ(NumberOf([&] { View().FontOf("img"); }), 438);
  EXPECT_EQ(NumberOf([&] { View().BoxOf("Timer1"); }), 438);
  EXPECT_EQ(NumberOf([&] { View().IsChecked("cmdOK"); }), 438);
  EXPECT_EQ(NumberOf([&] { View().SetProgress("lbl", 1, 2); }), 438);
  EXPECT_EQ(NumberOf([&] { View().SelectedNode("txt"); }), 438);
}

TEST_F(ADialogOfTheDesktop, RefusesEverythingOnceItIsUnloaded) {
  View().Unload();

  EXPECT_EQ(NumberOf([&] { View().Text("lbl"); }), 364);
  EXPECT_EQ(NumberOf([&] { View().SetBox("", {}); }), 364);
  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 364);
  EXPECT_EQ(NumberOf([&] { View().Hide(); }), 364);
  EXPECT_EQ(NumberOf([&] { View().Screen(); }), 364);
}

TEST_F(ADialogOfTheDesktop, DisablesAControl) {
  EXPECT_FALSE(IsWindowEnabled(sample.Window("cmdOff")));
  EXPECT_FALSE(View().IsEnabled("cmdOff"));

  View().SetEnabled("cmdOff", true);
  View().SetEnabled("cmdOther", false);

  EXPECT_TRUE(IsWindowEnabled(sample.Window("cmdOff")));
  EXPECT_TRUE(View().IsEnabled("cmdOff"));
  EXPECT_FALSE(IsWindowEnabled(sample.Window("cmdOther")));
}

TEST_F(ADialogOfTheDesktop, LetsGoOfTheOtherRadioButtonsWithoutAnEvent) {
  View().SetChecked("Option(0)", true);

  EXPECT_TRUE(View().IsChecked("Option(0)"));
  EXPECT_FALSE(View().IsChecked("Option(1)"));
  EXPECT_EQ(SendMessageW(sample.Window("Option(0)"), BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_EQ(SendMessageW(sample.Window("Option(1)"), BM_GETCHECK, 0, 0), BST_UNCHECKED);
  EXPECT_THAT(Events().calls, IsEmpty());
}

TEST_F(ADialogOfTheDesktop, LeavesNoRadioButtonChosen) {
  View().SetChecked("Option(1)", false);

  EXPECT_FALSE(View().IsChecked("Option(0)"));
  EXPECT_FALSE(View().IsChecked("Option(1)"));
}

TEST_F(ADialogOfTheDesktop, TellsOfARadioButtonOnlyWhenItIsChosenAnew) {
  SendMessageW(sample.Window("Option(0)"), BM_CLICK, 0, 0);
  SendMessageW(sample.Window("Option(0)"), BM_CLICK, 0, 0);

  EXPECT_TRUE(View().IsChecked("Option(0)"));
  EXPECT_FALSE(View().IsChecked("Option(1)"));
  EXPECT_THAT(Events().calls,
              ElementsAre("OnMouseDown(Option(0), 1, 0)", "OnMouseUp(Option(0), 1)", "OnClick(Option(0))",
                          "OnMouseDown(Option(0), 1, 0)", "OnMouseUp(Option(0), 1)"));
}

TEST_F(ADialogOfTheDesktop, FillsItsBarAtOnce) {
  View().SetProgress("pb1", 7, 10);

  EXPECT_EQ(SendMessageW(sample.Window("pb1"), PBM_GETPOS, 0, 0), 7);
  EXPECT_EQ(SendMessageW(sample.Window("pb1"), PBM_GETRANGE, FALSE, 0), 10);
}

TEST_F(ADialogOfTheDesktop, FillsItsBarToTheEnd) {
  View().SetProgress("pb1", 32767, 32767);

  EXPECT_EQ(SendMessageW(sample.Window("pb1"), PBM_GETPOS, 0, 0), 32767);
}

TEST_F(ADialogOfTheDesktop, RefusesMoreThanAFullBar) {
  EXPECT_EQ(NumberOf([&] { View().SetProgress("pb1", 11, 10); }), 380);
  EXPECT_EQ(NumberOf([&] { View().SetProgress("pb1", -1, 10); }), 380);
}

TEST_F(ADialogOfTheDesktop, HasALabelRightBeforeTheBoxThatItNames) {
  EXPECT_EQ(GetWindow(sample.Window("txt"), GW_HWNDPREV), sample.Window("lbl"));
  EXPECT_EQ(GetWindow(sample.Window("Tree1"), GW_HWNDPREV), sample.Window("Frame2"));
}

// Fonts.

HFONT FontOf(HWND window) {
  return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

LOGFONTW Shown(HWND window) {
  LOGFONTW font{};
  GetObjectW(FontOf(window), sizeof font, &font);
  return font;
}

TEST_F(ADialogOfTheDesktop, HasAFontOfTheDesktopInEveryControlWithText) {
  for (const auto* control : {"lbl", "txt", "cmdOK", "Frame1", "Option(0)", "Tree1"}) {
    EXPECT_FALSE(View().FontOf(control).name.empty()) << control;
    EXPECT_GT(View().FontOf(control).size, 7) << control;
    EXPECT_LE(View().FontOf(control).size, 9) << control;
    EXPECT_NE(FontOf(sample.Window(control)), nullptr) << control;
  }
}

TEST_F(ADialogOfTheDesktop, SetsAFontInPoints) {
  auto font = View().FontOf("lbl");
  font.size = 18;
  font.bold = true;
  font.italic = true;

  View().SetFont("lbl", font);

  EXPECT_EQ(View().FontOf("lbl"), font);
  const auto shown = Shown(sample.Window("lbl"));
  EXPECT_EQ(-shown.lfHeight, sample.Place(18 * 20));
  EXPECT_EQ(shown.lfWeight, FW_BOLD);
  EXPECT_NE(shown.lfItalic, 0);
}

TEST_F(ADialogOfTheDesktop, ReadsBackTheNameOfTheFontThatTakesTheOthersPlace) {
  const auto before = View().FontOf("lbl");

  View().SetFont("lbl", {"No Such Font Anywhere", 11, before.charset, false, false});

  const auto font = View().FontOf("lbl");
  EXPECT_NE(font.name, "No Such Font Anywhere");
  EXPECT_FALSE(font.name.empty());
  EXPECT_EQ(font.size, 11);
}

TEST_F(ADialogOfTheDesktop, KeepsTheNameOfAFontThatIsThere) {
  auto font = View().FontOf("lbl");
  View().SetFont("lbl", {"No Such Font Anywhere", 9, font.charset, false, false});
  font.name = View().FontOf("lbl").name;

  View().SetFont("cmdOK", font);

  EXPECT_EQ(View().FontOf("cmdOK").name, font.name);
}

TEST_F(ADialogOfTheDesktop, RefusesAFontOfNoSize) {
  EXPECT_EQ(NumberOf([&] { View().SetFont("lbl", {"Arial", 0, 0, false, false}); }), 380);
}

TEST_F(ADialogOfTheDesktop, KeepsTheFontsOfControlsWhenItsOwnChanges) {
  const auto before = View().FontOf("lbl");
  auto font = before;
  font.size = 20;

  View().SetFont("", font);

  EXPECT_EQ(View().FontOf("").size, 20);
  EXPECT_EQ(View().FontOf("lbl"), before);
}

}  // namespace
}  // namespace quintara::test
