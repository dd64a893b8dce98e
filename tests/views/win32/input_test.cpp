#include <algorithm>

#include "views/win32/sample_dialog.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

// A user with a real pointer and keyboard.
class AUserOfADialog : public OnDesktop {
 protected:
  AUserOfADialog() {
    sample.nodes.Add(0, "PLANT");
    sample.nodes.Add(1, "BOLT");
    sample.nodes.Add(1, "PLATE");
    View().SetTree("Tree1", &sample.nodes);
    user.Until("the dialog", [&] { return GetForegroundWindow() == sample.window && GetFocus() != nullptr; });
  }

  User& Press(WORD key, WORD with = 0) {
    return user.Do([=] { PressKey(key, with); });
  }
  User& UntilFocus(const std::string& control) {
    return user.Until("the keyboard in " + control, [=, this] { return GetFocus() == sample.Window(control); });
  }
  User& Focus(const std::string& control) {
    return user.Do([=, this] { SetFocus(sample.Window(control)); });
  }
  User& UntilTold(const std::string& call) {
    return user.Until(call, [=, this] { return std::ranges::find(Events().calls, call) != Events().calls.end(); });
  }
  User& PointAt(const std::string& control, const std::function<POINT()>& place) {
    return user
        .Do([=, this] {
          auto point = place();
          ClientToScreen(sample.Window(control), &point);
          MovePointer(point);
        })
        .Until("the pointer", [=, this] {
          POINT is{};
          GetCursorPos(&is);
          return WindowFromPoint(is) == sample.Window(control);
        });
  }
  POINT RowInTree(const std::string& text) {
    const auto tree = sample.Window("Tree1");
    return MiddleOf(PlaceOfRow(tree, RowOf(tree, text)));
  }
  void Go() {
    user.Do([&] {
      if (!sample.IsGone()) SendMessageW(sample.window, WM_CLOSE, 0, 0);
    });
    View().ShowModal();
  }

  User user;
};

TEST_F(AUserOfADialog, StartsInItsFirstControl) {
  UntilFocus("Option(1)");

  Go();
}

TEST_F(AUserOfADialog, GoesThroughTheControlsInTheirOrder) {
  UntilFocus("Option(1)");
  for (const auto* next : {"txt", "cmdOther", "Tree1", "cmdOK", "cmdCancel", "Option(1)", "txt"}) {
    Press(VK_TAB);
    UntilFocus(next);
  }
  Press(VK_TAB, VK_SHIFT);
  UntilFocus("Option(1)");

  Go();

  EXPECT_THAT(Events().calls, Not(Contains("OnClick(Option(1))")));
}

TEST_F(AUserOfADialog, GoesRoundTheRadioButtonsByTheArrows) {
  UntilFocus("Option(1)");
  Press(VK_DOWN);
  UntilTold("OnClick(Option(0))");
  user.Do([&] { EXPECT_TRUE(View().IsChecked("Option(0)")); }).Do([&] { EXPECT_FALSE(View().IsChecked("Option(1)")); });

  Go();
}

TEST_F(AUserOfADialog, PressesTheFirstButtonByEnter) {
  Focus("txt");
  Press(VK_RETURN);
  UntilTold("OnClick(cmdOK)");

  Go();
}

TEST_F(AUserOfADialog, PressesTheFirstButtonByEnterInTheTreeToo) {
  Focus("Tree1");
  Press(VK_RETURN);
  UntilTold("OnClick(cmdOK)");

  Go();
}

TEST_F(AUserOfADialog, PressesTheButtonThatTheKeyboardIsAtByEnter) {
  UntilFocus("Option(1)");
  Press(VK_TAB);
  UntilFocus("txt");
  Press(VK_TAB);
  UntilFocus("cmdOther");
  Press(VK_RETURN);
  UntilTold("OnClick(cmdOther)");

  Go();
}

TEST_F(AUserOfADialog, PressesTheLastButtonByEsc) {
  Focus("Tree1");
  Press(VK_ESCAPE);
  UntilTold("OnClick(cmdCancel)");

  Go();
}

TEST_F(AUserOfADialog, PressesNothingByEnterWhereTheButtonIsDisabled) {
  View().SetEnabled("cmdOK", false);
  Focus("txt");
  Press(VK_RETURN);
  Press(VK_ESCAPE);
  UntilTold("OnClick(cmdCancel)");

  Go();

  EXPECT_THAT(Events().calls, Not(Contains("OnClick(cmdOK)")));
}

TEST_F(AUserOfADialog, PressesAButtonByItsMnemonic) {
  Focus("Tree1");
  Press('M', VK_MENU);
  UntilTold("OnClick(cmdOther)");

  Go();
}

TEST_F(AUserOfADialog, GoesToATextBoxByTheMnemonicOfItsLabel) {
  Focus("Tree1");
  Press('N', VK_MENU);
  UntilFocus("txt");

  Go();
}

TEST_F(AUserOfADialog, GoesToTheTreeByTheMnemonicOfItsFrame) {
  Focus("txt");
  Press('R', VK_MENU);
  UntilFocus("Tree1");

  Go();
}

TEST_F(AUserOfADialog, TypesInATextBox) {
  Focus("txt");
  user.Do([&] { SendMessageW(sample.Window("txt"), EM_SETSEL, 0, -1); });
  Press('A');
  Press('B', VK_SHIFT);
  user.Until("the text", [&] { return View().Text("txt") == "aB"; });

  Go();
}

TEST_F(AUserOfADialog, ClosesItByAltAndF4) {
  Focus("txt");
  Press(VK_F4, VK_MENU);
  UntilTold("OnUnloaded");

  View().ShowModal();

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(AUserOfADialog, LeavesAButtonThatIsDisabledUnderTheKeyboard) {
  Focus("cmdOther");
  UntilFocus("cmdOther");
  user.Do([&] { View().SetEnabled("cmdOther", false); });
  user.Until("the keyboard elsewhere", [&] {
    return GetFocus() != nullptr && GetFocus() != sample.Window("cmdOther") && IsWindowEnabled(GetFocus());
  });

  Go();
}

TEST_F(AUserOfADialog, ClicksAButton) {
  PointAt("cmdOther", [] { return POINT{10, 10}; }).Do([] { PressPointer(false); }).Do([] { ReleasePointer(false); });
  UntilTold("OnClick(cmdOther)");

  Go();
}

TEST_F(AUserOfADialog, ClicksANodeWithTheRightButton) {
  int node = 0;
  Events().mouseDown = [&] { node = View().NodeAt("Tree1", Events().pressedAt.x, Events().pressedAt.y); };
  PointAt("Tree1", [&] { return RowInTree("PLATE"); }).Do([] { PressPointer(true); }).Do([] { ReleasePointer(true); });
  UntilTold("OnMouseUp(Tree1, 2)");

  Go();

  EXPECT_EQ(node, 3);
  EXPECT_THAT(Events().calls, Contains("OnMouseDown(Tree1, 2, 0)"));
}

TEST_F(AUserOfADialog, ClicksANodeWithTheLeftButton) {
  PointAt("Tree1", [&] { return RowInTree("PLATE"); }).Do([] { PressPointer(false); }).Do([] {
    ReleasePointer(false);
  });
  UntilTold("OnMouseUp(Tree1, 1)");

  Go();

  EXPECT_THAT(Events().calls,
              ElementsAre("OnMouseDown(Tree1, 1, 0)", "OnNodeClick(Tree1, 3)", "OnMouseUp(Tree1, 1)", "OnUnloaded"));
}

TEST_F(AUserOfADialog, LetsGoOfTheButtonOnTheDialogItself) {
  user.Do([&] {
        POINT free{sample.Size(5900), sample.Size(4950)};
        ClientToScreen(sample.window, &free);
        free.x -= 300;
        MovePointer(free);
      })
      .Until("the pointer",
             [&] {
               POINT is{};
               GetCursorPos(&is);
               return WindowFromPoint(is) == sample.window;
             })
      .Do([] { PressPointer(false); })
      .Do([] { ReleasePointer(false); });
  UntilTold("OnMouseUp(, 1)");

  Go();
}

}  // namespace
}  // namespace quintara::test
