// Before the system's headers.
#include "views/win32/dialogs_bench.h"

#include <algorithm>
#include <cctype>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "access/session/process.h"
#include "base/text16_windows.h"
#include "commands/formSelectLWT.h"
#include "services/frmProgressBar.h"
#include "services/frmWaiting.h"
#include "views/win32/desktop.h"
#include "views/win32/windows_of.h"
#include "wip/MainPanel.h"

// After the system's own.
#include <commctrl.h>

namespace quintara::test {
namespace {

// How much room a text takes in the font of its window, without the mark of a mnemonic.
SIZE SizeOfText(HWND window) {
  const auto text = Wide(WindowText(window));
  const auto context = GetDC(window);
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0));
  const auto before = SelectObject(context, font);
  RECT room{};
  DrawTextW(context, text.c_str(), -1, &room, DT_CALCRECT | DT_SINGLELINE);
  SelectObject(context, before);
  ReleaseDC(window, context);
  return {room.right, room.bottom};
}

// What a control draws beside its text, in twips.
int MarginOf(dialog::Kind kind) {
  switch (kind) {
    case dialog::Kind::kButton: return 180;
    case dialog::Kind::kRadioButton: return 270;
    case dialog::Kind::kFrame: return 300;
    default: return 0;
  }
}

// One line at least, with room for all of its text in as many as there are.
void ExpectRoomForTexts(HWND dialog, const dialog::Layout& layout, const std::string& language) {
  for (const auto& control : layout.controls) {
    using enum dialog::Kind;
    if (control.kind != kLabel && control.kind != kButton && control.kind != kRadioButton && control.kind != kFrame)
      continue;
    const auto window = WindowOf(dialog, layout, control.name);
    const auto text = SizeOfText(window);
    RECT room{};
    GetClientRect(window, &room);
    const auto lines = std::max(1L, room.bottom / std::max(text.cy, 1L));
    const auto margin = MarginOf(control.kind) * win32::PixelsOfInch(dialog) / 1440;
    EXPECT_LE(text.cx + margin, room.right * lines) << layout.name << "." << control.name << " in " << language;
    EXPECT_LE(text.cy, room.bottom) << layout.name << "." << control.name;
  }
}

// Every mnemonic once; a button without Enter and Esc has one.
void ExpectMnemonics(HWND dialog, const dialog::Layout& layout, const std::string& language) {
  std::set<char> taken;
  for (const auto& control : layout.controls) {
    const auto window = WindowOf(dialog, layout, control.name);
    if (window == nullptr || control.kind == dialog::Kind::kTextBox) continue;
    const auto text = WindowText(window);
    const auto at = text.find('&');
    const bool isMarked = at != std::string::npos;
    if (isMarked) {
      const char key = static_cast<char>(std::toupper(static_cast<unsigned char>(text.at(at + 1))));
      EXPECT_TRUE(taken.insert(key).second) << language << ": " << text;
    }
    if (control.kind != dialog::Kind::kButton) continue;
    EXPECT_EQ(isMarked, control.shortcut != "Enter" && control.shortcut != "Esc") << language << ": " << text;
  }
}

void ExpectRoomAndMnemonics(HWND dialog, const dialog::Layout& layout, const std::string& language) {
  ExpectRoomForTexts(dialog, layout, language);
  ExpectMnemonics(dialog, layout, language);
}

class InLanguage : public testing::TestWithParam<std::string>, protected DesktopHosts {
 protected:
  InLanguage() : DesktopHosts(GetParam()) {}

  // Shows a dialog and keeps a picture of it, then presses its Esc.
  void Picture(const std::string& dialog, const std::string& name) {
    user.Until(dialog, [=, this] { return Window(dialog) != nullptr; })
        .Do([=, this] { ExpectRoomAndMnemonics(Window(dialog), LayoutOf(dialog), GetParam()); })
        .Do([=, this] { RedrawWindow(Window(dialog), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); })
        .Do([=, this] { KeepPicture(Window(dialog), name + "_" + GetParam()); })
        .Do([=, this] { SendMessageW(Window(dialog), WM_COMMAND, IDCANCEL, 0); });
  }

  User user;
};

TEST_P(InLanguage, ThePanelIsShown) {
  auto panel = std::make_shared<MainPanel>();
  panel->SetData(Plant());
  Picture("MainPanel", "panel");

  panel->ShowModal();

  EXPECT_TRUE(Process().gWIPCancelled);
}

TEST_P(InLanguage, TheFindDialogIsShownOverThePanel) {
  auto panel = std::make_shared<MainPanel>();
  panel->SetData(Plant());
  user.Until("panel", [&] { return Window("MainPanel") != nullptr; })
      .Do([&] { SendMessageW(Window("MainPanel", "cmdFind"), BM_CLICK, 0, 0); })
      .Until("find", [&] { return Window("frmFind") != nullptr; })
      .Do([&] { SetWindowTextW(Window("frmFind", "txtInput"), L"bo"); })
      .Do([&] { SendMessageW(Window("frmFind", "cmdFind"), BM_CLICK, 0, 0); })
      .Do([&] { UpdateWindow(Window("MainPanel", "Tree1")); })
      .Do([&] {
        KeepPicture({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}, "both_" + GetParam());
      });
  Picture("frmFind", "find");
  Picture("MainPanel", "found");

  panel->ShowModal();
}

TEST_P(InLanguage, TheSelectionOfNewerRevisionsIsShown) {
  const auto dialog = std::make_shared<formSelectLWT>(Wip());
  Picture("formSelectLWT", "select");

  dialog->ShowModal();
}

TEST_P(InLanguage, TheProgressIsShownAtOnce) {
  const auto dialog = std::make_shared<frmProgressBar>();
  dialog->Initiate(10);
  dialog->IncrementBar("Retrieving BOLT");
  dialog->IncrementBar("Retrieving BOLT, which has a name too long for any line that a dialog of this width can hold");

  KeepPicture(Window("frmProgressBar"), "progress_" + GetParam());

  dialog->Unload();
}

TEST_P(InLanguage, TheWaitingDialogIsShownAtOnce) {
  const auto dialog = std::make_shared<frmWaiting>();
  dialog->Initiate();

  ExpectRoomForTexts(Window("frmWaiting"), LayoutOf("frmWaiting"), GetParam());
  KeepPicture(Window("frmWaiting"), "waiting_" + GetParam());

  dialog->Unload();
}

INSTANTIATE_TEST_SUITE_P(Of, InLanguage, testing::Values("EN", "FR", "DE"),
                         [](const auto& language) { return language.param; });

// The panel, on a desktop.

class ThePanelOnTheDesktop : public testing::Test, protected DesktopHosts {
 protected:
  ThePanelOnTheDesktop() {
    panel->SetData(Plant());
    user.Until("the panel", [&] { return Window("MainPanel") != nullptr; });
  }

  HWND Tree() { return Window("MainPanel", "Tree1"); }
  int PictureOf(const std::string& text) {
    TVITEMW item{};
    item.mask = TVIF_HANDLE | TVIF_IMAGE;
    item.hItem = RowOf(Tree(), text);
    SendMessageW(Tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return item.iImage;
  }
  void Show() {
    user.Do([&] { SendMessageW(Window("MainPanel"), WM_CLOSE, 0, 0); });
    panel->ShowModal();
  }
  void MakeSize(int width, int height) {
    SetWindowPos(Window("MainPanel"), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
  }

  std::shared_ptr<MainPanel> panel = std::make_shared<MainPanel>();
  User user;
};

TEST_F(ThePanelOnTheDesktop, ChangesTheStateOfANodeByTheRightButton) {
  std::vector<int> pictures;
  for (int i = 0; i < 3; ++i) {
    user.Do([&] { ClickRow(Tree(), "GROUP - A", true); }).Do([&] { pictures.push_back(PictureOf("GROUP - A")); });
  }

  Show();

  EXPECT_THAT(pictures, testing::ElementsAre(4, 5, 3));
}

TEST_F(ThePanelOnTheDesktop, ChangesNoStateByTheLeftButtonOrTheKeyboard) {
  user.Do([&] { ClickRow(Tree(), "GROUP - A"); })
      .Do([&] { SendMessageW(Tree(), WM_KEYDOWN, VK_SPACE, 0); })
      .Do([&] { SendMessageW(Tree(), WM_KEYDOWN, VK_DOWN, 0); })
      .Do([&] { EXPECT_EQ(PictureOf("GROUP - A"), 3); })
      .Do([&] { EXPECT_EQ(PictureOf("PLATE - A"), 0); });

  Show();
}

TEST_F(ThePanelOnTheDesktop, CollapsesAndExpandsItsTree) {
  std::size_t closed = 0;
  std::size_t open = 0;
  user.Do([&] { SendMessageW(Window("MainPanel", "cmdCollapse"), BM_CLICK, 0, 0); })
      .Until("rows that go", [&] { return !IsOpen(Tree(), RowOf(Tree(), "GROUP - A")); })
      .Do([&] { closed = static_cast<std::size_t>(RowOf(Tree(), "PLATE - A") != nullptr); })
      .Do([&] { SendMessageW(Window("MainPanel", "cmdExpand"), BM_CLICK, 0, 0); })
      .Until("rows that come", [&] { return IsOpen(Tree(), RowOf(Tree(), "GROUP - A")); })
      .Do([&] { open = static_cast<std::size_t>(RowOf(Tree(), "PLATE - A") != nullptr); });

  Show();

  EXPECT_EQ(closed, 1U);
  EXPECT_EQ(open, 1U);
}

TEST_F(ThePanelOnTheDesktop, IsNeverSmallerThanItsRulesAllow) {
  RECT before{};
  RECT after{};
  user.Do([&] { before = EdgesOf(Window("MainPanel")); }).Do([&] { MakeSize(300, 300); }).Do([&] {
    after = EdgesOf(Window("MainPanel"));
  });

  Show();

  EXPECT_TRUE(EqualRect(&before, &after));
}

TEST_F(ThePanelOnTheDesktop, GivesItsTreeTheRoomThatItGains) {
  RECT before{};
  RECT after{};
  user.Do([&] { before = EdgesOf(Tree()); })
      .Do([&] {
        const auto edges = EdgesOf(Window("MainPanel"));
        MakeSize(edges.right - edges.left + 60, edges.bottom - edges.top + 40);
      })
      .Do([&] { after = EdgesOf(Tree()); });

  Show();

  EXPECT_NEAR(after.right - after.left, before.right - before.left + 60, 1);
  EXPECT_NEAR(after.bottom - after.top, before.bottom - before.top + 40, 1);
}

TEST_F(ThePanelOnTheDesktop, HasAllItsControlsWithinIt) {
  user.Do([&] {
    RECT inside{};
    GetClientRect(Window("MainPanel"), &inside);
    for (const auto& control : LayoutOf("MainPanel").controls) {
      const auto window = Window("MainPanel", control.name);
      if (window == nullptr) continue;
      auto edges = EdgesOf(window);
      MapWindowPoints(nullptr, Window("MainPanel"), reinterpret_cast<POINT*>(&edges), 2);
      EXPECT_GE(edges.left, 0) << control.name;
      EXPECT_GE(edges.top, 0) << control.name;
      EXPECT_LE(edges.right, inside.right) << control.name;
      EXPECT_LE(edges.bottom, inside.bottom) << control.name;
    }
  });

  Show();
}

TEST_F(ThePanelOnTheDesktop, ShowsWhatTheFindDialogFinds) {
  std::string found;
  user.Do([&] { PostMessageW(Window("MainPanel", "cmdFind"), BM_CLICK, 0, 0); })
      .Until("the find dialog", [&] { return Window("frmFind") != nullptr; })
      .Do([&] { SetWindowTextW(Window("frmFind", "txtInput"), L"plate"); })
      .Do([&] { SendMessageW(Window("frmFind", "cmdFind"), BM_CLICK, 0, 0); })
      .Do([&] { found = TextOfRow(Tree(), TreeView_GetSelection(Tree())); })
      .Do([&] { SendMessageW(Window("frmFind"), WM_COMMAND, IDCANCEL, 0); })
      .Until("its end", [&] { return Window("frmFind") == nullptr; });

  Show();

  EXPECT_EQ(found, "PLATE - A");
}

// The dialog of newer revisions.

class TheSelectionOnTheDesktop : public testing::Test, protected DesktopHosts {
 protected:
  TheSelectionOnTheDesktop() {
    user.Until("the dialog", [&] { return Window("formSelectLWT") != nullptr; });
  }

  HWND Tree() { return Window("formSelectLWT", "Tree1"); }
  void Show() {
    user.Do([&] { SendMessageW(Window("formSelectLWT"), WM_COMMAND, IDOK, 0); });
    std::make_shared<formSelectLWT>(Wip())->ShowModal();
  }
  static std::vector<bool> Ticked() {
    std::vector<bool> ticked;
    for (const auto& candidate : Process().ReplaceCandidates) ticked.push_back(candidate.Replace);
    return ticked;
  }

  User user;
};

TEST_F(TheSelectionOnTheDesktop, TicksAComponentByAClick) {
  user.Do([&] { ClickRow(Tree(), "BOLT.1"); });

  Show();

  EXPECT_THAT(Ticked(), testing::ElementsAre(false, true, false));
}

TEST_F(TheSelectionOnTheDesktop, TicksNothingByTwoClicks) {
  user.Do([&] { ClickRow(Tree(), "BOLT.1"); }).Do([&] { ClickRow(Tree(), "BOLT.1"); });

  Show();

  EXPECT_THAT(Ticked(), testing::ElementsAre(false, false, false));
}

TEST_F(TheSelectionOnTheDesktop, TicksAComponentByTheSpaceBarAlone) {
  user.Do([&] { SendMessageW(Tree(), WM_KEYDOWN, VK_HOME, 0); })
      .Do([&] { SendMessageW(Tree(), WM_KEYDOWN, VK_DOWN, 0); })
      .Do([&] { SendMessageW(Tree(), WM_KEYDOWN, VK_SPACE, 0); });

  Show();

  EXPECT_THAT(Ticked(), testing::ElementsAre(false, true, false));
}

}  // namespace
}  // namespace quintara::test
