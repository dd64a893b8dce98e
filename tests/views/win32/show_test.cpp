#include "views/win32/sample_dialog.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class AShownDialog : public OnDesktop {
 protected:
  // What a user does once it is shown.
  User& WhenShown() {
    return user.Until("the dialog", [&] { return IsWindowVisible(sample.window) != 0; });
  }
  void Close() { SendMessageW(sample.window, WM_CLOSE, 0, 0); }
  void Press(const std::string& control) { SendMessageW(sample.Window(control), BM_CLICK, 0, 0); }
  static void Fail() { throw Failure(failure::kOverflow); }

  User user;
};

TEST_F(AShownDialog, IsSeenUntilItIsUnloaded) {
  WhenShown().Do([&] { View().Unload(); });

  View().ShowModal();

  EXPECT_TRUE(sample.IsGone());
  EXPECT_THAT(Events().calls, ElementsAre("OnUnloaded"));
}

TEST_F(AShownDialog, IsSeenUntilItIsHidden) {
  WhenShown().Do([&] { View().Hide(); });

  View().ShowModal();

  EXPECT_FALSE(sample.IsGone());
  EXPECT_FALSE(IsWindowVisible(sample.window));
  EXPECT_THAT(Events().calls, IsEmpty());
}

TEST_F(AShownDialog, CanBeShownAgain) {
  WhenShown().Do([&] { View().Hide(); });
  View().ShowModal();
  WhenShown().Do([&] { Close(); });

  View().ShowModal();

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(AShownDialog, CantBeShownTwiceAtOnce) {
  int number = 0;
  WhenShown().Do([&] { number = NumberOf([&] { View().ShowModal(); }); }).Do([&] { Close(); });

  View().ShowModal();

  EXPECT_EQ(number, 5);
}

TEST_F(AShownDialog, IsUnloadedByItsCloseBoxWithoutAClick) {
  WhenShown().Do([&] { PostMessageW(sample.window, WM_SYSCOMMAND, SC_CLOSE, 0); });

  View().ShowModal();

  EXPECT_THAT(Events().calls, ElementsAre("OnUnloaded"));
}

TEST_F(AShownDialog, IsUnloadedWithinAnEvent) {
  Events().click = [&](const std::string&) {
    View().Unload();
    EXPECT_EQ(NumberOf([&] { View().Text("lbl"); }), 364);
  };
  WhenShown().Do([&] { Press("cmdOther"); });

  View().ShowModal();

  EXPECT_THAT(Events().calls, Contains("OnUnloaded"));
  EXPECT_TRUE(sample.IsGone());
}

TEST_F(AShownDialog, MayBeLetGoOfByItsOwnerInAnEvent) {
  auto* view = sample.view.get();
  Events().click = [&](const std::string&) {
    sample.view->Unload();
    sample.view.reset();
  };
  WhenShown().Do([&] { Press("cmdOther"); });

  view->ShowModal();

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(AShownDialog, MayBeLetGoOfByItsOwnerWhenItIsUnloaded) {
  auto* view = sample.view.get();
  Events().unloaded = [&] { sample.view.reset(); };
  WhenShown().Do([&] { Close(); });

  view->ShowModal();

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(AShownDialog, TakesItsWindowWithItWhenNobodyHoldsIt) {
  sample.view.reset();

  EXPECT_TRUE(sample.IsGone());
  EXPECT_THAT(Events().calls, IsEmpty());
}

TEST_F(AShownDialog, IsUnloadedOnce) {
  View().Unload();
  View().Unload();

  EXPECT_THAT(Events().calls, ElementsAre("OnUnloaded"));
}

TEST_F(AShownDialog, TellsOfTicksOnlyWhileItIsShown) {
  WaitFor([waited = 0]() mutable { return ++waited > 20; });
  EXPECT_EQ(Events().ticks, 0);
  WhenShown().Until("ticks", [&] { return Events().ticks >= 3; }).Do([&] { View().Hide(); });

  View().ShowModal();
  const int ticks = Events().ticks;
  WaitFor([waited = 0]() mutable { return ++waited > 20; });

  EXPECT_EQ(Events().ticks, ticks);
}

TEST_F(AShownDialog, TellsOfNoTicksOfATimerThatIsDisabled) {
  View().SetEnabled("Timer1", false);
  WhenShown().Until("a while", [waited = 0]() mutable { return ++waited > 20; }).Do([&] { Close(); });

  View().ShowModal();

  EXPECT_EQ(Events().ticks, 0);
}

TEST_F(AShownDialog, PassesOverClicksWhileOneIsAtWork) {
  bool isOver = false;
  Events().click = [&](const std::string& control) {
    if (control != "cmdOK") return;
    PostMessageW(sample.Window("cmdOther"), BM_CLICK, 0, 0);
    PostMessageW(sample.window, WM_CLOSE, 0, 0);
    win32::CatchUp();
    isOver = true;
  };
  WhenShown()
      .Do([&] { Press("cmdOK"); })
      .Until("the end of the click", [&] { return isOver; })
      .Do([&] { Press("cmdOther"); })
      .Do([&] { Close(); });

  View().ShowModal();

  EXPECT_THAT(Events().calls, Contains("OnClick(cmdOther)").Times(1));
  EXPECT_THAT(Events().calls, Contains("OnUnloaded").Times(1));
}

// Failures.

TEST_F(AShownDialog, IsUnloadedByTheFailureOfAClickWhichComesOut) {
  Events().click = [](const std::string&) { Fail(); };
  WhenShown().Do([&] { Press("cmdOther"); });

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 6);

  EXPECT_TRUE(sample.IsGone());
  EXPECT_EQ(Events().calls.back(), "OnUnloaded");
}

TEST_F(AShownDialog, IsUnloadedByTheFailureOfATick) {
  Events().tick = Fail;

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 6);

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(AShownDialog, IsUnloadedByTheFailureOfAResize) {
  Events().resize = Fail;
  WhenShown().Do([&] { SetWindowPos(sample.window, nullptr, 0, 0, 500, 600, SWP_NOMOVE | SWP_NOZORDER); });

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 6);

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(AShownDialog, IsUnloadedByTheFailureOfANodeClick) {
  sample.nodes.Add(0, "ROOT");
  View().SetTree("Tree1", &sample.nodes);
  Events().nodeClick = Fail;
  WhenShown().Do([&] { ClickRow(sample.Window("Tree1"), "ROOT"); });

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 6);

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(AShownDialog, IsUnloadedByTheFailureOfAContentThatTheUserUnfolds) {
  class Stubborn : public SampleNodes {
   public:
    void SetExpanded(int /*node*/, bool /*expanded*/) override { throw Failure(failure::kSubscriptOutOfRange); }
  };
  Stubborn nodes;
  nodes.Add(0, "ROOT");
  nodes.Add(1, "BOLT");
  View().SetTree("Tree1", &nodes);
  View().SelectNode("Tree1", 1);
  WhenShown().Do([&] { SendMessageW(sample.Window("Tree1"), WM_KEYDOWN, VK_LEFT, 0); });

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 9);

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(AShownDialog, LetsTheFirstFailureCount) {
  Events().click = [](const std::string&) { Fail(); };
  Events().unloaded = [] { throw Failure(failure::kOutOfMemory); };
  WhenShown().Do([&] { Press("cmdOther"); });

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 6);
}

TEST_F(AShownDialog, LetsAFailureOfItsUnloadingComeOut) {
  Events().unloaded = [] { throw Failure(failure::kOutOfMemory); };
  WhenShown().Do([&] { Close(); });

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 7);
}

TEST_F(AShownDialog, TellsAFailureOfAResizeToWhoeverSetTheSize) {
  Events().resize = Fail;

  EXPECT_EQ(NumberOf([&] { View().SetBox("", {0, 0, 7000, 7000}); }), 6);
  EXPECT_FALSE(sample.IsGone());
}

TEST_F(AShownDialog, EndsWithItsThread) {
  WhenShown().Do([] { PostQuitMessage(3); });

  View().ShowModal();

  EXPECT_TRUE(sample.IsGone());
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 3U);
}

TEST_F(AShownDialog, IsUnloadedWhenTheDesktopTakesItsWindow) {
  WhenShown().Do([&] { DestroyWindow(sample.window); });

  View().ShowModal();

  EXPECT_THAT(Events().calls, ElementsAre("OnUnloaded"));
}

TEST_F(AShownDialog, MayEndWithTheWindowThatTheDesktopTakes) {
  const auto window = sample.window;
  std::weak_ptr<dialog::View> last = sample.view;
  Events().unloaded = [&] { sample.view.reset(); };
  View().ShowOnTop(10, 10, 300, 200);

  DestroyWindow(window);

  EXPECT_TRUE(last.expired());
}

TEST_F(AShownDialog, LeavesItsControlsToTheirOwnEnd) {
  const auto tree = sample.Window("Tree1");
  const auto ofClass = reinterpret_cast<WNDPROC>(GetClassLongPtrW(tree, GCLP_WNDPROC));
  static WNDPROC atTheEnd;
  static HWND watched;
  atTheEnd = nullptr;
  watched = tree;
  const auto hook = SetWindowsHookExW(
      WH_CALLWNDPROC,
      [](int code, WPARAM first, LPARAM second) -> LRESULT {
        const auto& message = *reinterpret_cast<const CWPSTRUCT*>(second);
        if (message.hwnd == watched && message.message == WM_NCDESTROY) {
          atTheEnd = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(watched, GWLP_WNDPROC));
        }
        return CallNextHookEx(nullptr, code, first, second);
      },
      nullptr, GetCurrentThreadId());

  View().Unload();
  UnhookWindowsHookEx(hook);

  EXPECT_EQ(atTheEnd, ofClass);
}

// One dialog over another.

class ADialogOverAnother : public AShownDialog {
 protected:
  ADialogOverAnother() {
    Events().click = [&](const std::string& control) {
      if (control != "cmdOther") return;
      inner = std::make_unique<SampleDialog>("Inner");
      if (prepare) prepare();
      inner->view->ShowModal();
    };
    WhenShown().Do([&] { PostMessageW(sample.Window("cmdOther"), BM_CLICK, 0, 0); }).Until("the inner dialog", [&] {
      return ShownDialog("Inner") != nullptr;
    });
  }

  std::unique_ptr<SampleDialog> inner;
  std::function<void()> prepare;
};

TEST_F(ADialogOverAnother, DisablesTheOtherUntilItIsClosed) {
  bool before = true;
  bool after = false;
  user.Do([&] { before = IsWindowEnabled(sample.window) != 0; })
      .Do([&] { SendMessageW(inner->window, WM_CLOSE, 0, 0); })
      .Until("the inner one's end", [&] { return ShownDialog("Inner") == nullptr; })
      .Do([&] { after = IsWindowEnabled(sample.window) != 0; })
      .Do([&] { Close(); });

  View().ShowModal();

  EXPECT_FALSE(before);
  EXPECT_TRUE(after);
}

TEST_F(ADialogOverAnother, IsOwnedByTheOther) {
  HWND owner = nullptr;
  user.Do([&] { owner = GetWindow(inner->window, GW_OWNER); }).Do([&] { inner->view->Unload(); }).Do([&] { Close(); });

  View().ShowModal();

  EXPECT_EQ(owner, sample.window);
}

TEST_F(ADialogOverAnother, LeavesTheMiddleOfTheOtherToSee) {
  RECT outside{};
  RECT inside{};
  user.Do([&] { outside = EdgesOf(sample.window); })
      .Do([&] { inside = EdgesOf(inner->window); })
      .Do([&] { inner->view->Unload(); })
      .Do([&] { Close(); });

  View().ShowModal();

  EXPECT_TRUE(inside.left >= outside.right || inside.right <= outside.left || inside.bottom == outside.bottom);
}

TEST_F(ADialogOverAnother, GivesTheOtherBackWhenItFails) {
  prepare = [&] { inner->events.click = [](const std::string&) { Fail(); }; };
  bool isEnabled = false;
  Events().unloaded = [&] { isEnabled = IsWindowEnabled(sample.window) != 0; };
  user.Do([&] { SendMessageW(inner->Window("cmdOther"), BM_CLICK, 0, 0); });

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 6);

  EXPECT_TRUE(isEnabled);
  EXPECT_TRUE(inner->IsGone());
  EXPECT_TRUE(sample.IsGone());
}

TEST_F(ADialogOverAnother, EndsWithAFailureOfTheOther) {
  user.Do([&] { Events().tick = Fail; });

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 6);

  EXPECT_TRUE(inner->IsGone());
  EXPECT_TRUE(sample.IsGone());
}

TEST_F(ADialogOverAnother, EndsTheOtherByThatOnesFailureWhoeverHandlesItsOwn) {
  const auto click = Events().click;
  Events().click = [&, click](const std::string& control) { EXPECT_EQ(NumberOf([&] { click(control); }), 6); };
  int failures = 0;
  user.Do([&] {
    Events().tick = [&] {
      if (++failures == 1) Fail();
    };
  });

  EXPECT_EQ(NumberOf([&] { View().ShowModal(); }), 6);

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(ADialogOverAnother, StaysOpenInTheOtherThatHandlesItsFailure) {
  const auto click = Events().click;
  Events().click = [&, click](const std::string& control) { EXPECT_EQ(NumberOf([&] { click(control); }), 6); };
  prepare = [&] { inner->events.click = [](const std::string&) { Fail(); }; };
  user.Do([&] { SendMessageW(inner->Window("cmdOther"), BM_CLICK, 0, 0); })
      .Until("the inner one's end", [&] { return ShownDialog("Inner") == nullptr; })
      .Do([&] { Close(); });

  View().ShowModal();

  EXPECT_TRUE(sample.IsGone());
}

TEST_F(ADialogOverAnother, ChangesTheOthersTree) {
  sample.nodes.Add(0, "ROOT");
  View().SetTree("Tree1", &sample.nodes);
  user.Do([&] { View().SelectNode("Tree1", 1); })
      .Do([&] { EXPECT_EQ(View().SelectedNode("Tree1"), 1); })
      .Do([&] { inner->view->Unload(); })
      .Do([&] { Close(); });

  View().ShowModal();
}

TEST_F(ADialogOverAnother, GivesBackWindowsOfTheProgramToo) {
  const auto program = CreateWindowExW(0, L"Static", L"Program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 200,
                                       nullptr, nullptr, nullptr, nullptr);
  bool isEnabled = true;
  user.Do([&] { isEnabled = IsWindowEnabled(program) != 0; }).Do([&] { inner->view->Unload(); }).Do([&] { Close(); });

  View().ShowModal();

  EXPECT_FALSE(isEnabled);
  EXPECT_TRUE(IsWindowEnabled(program));
  DestroyWindow(program);
}

}  // namespace
}  // namespace quintara::test
