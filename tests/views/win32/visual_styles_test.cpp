#include "views/win32/visual_styles.h"

// Behind the system's header, on which it depends.
#include <commctrl.h>
#include <gtest/gtest.h>

namespace quintara::win32 {
namespace {

// Only the controls of the newer library know their ideal size.
bool MakesStyledControls() {
  const auto button = CreateWindowExW(0, L"BUTTON", L"OK", WS_POPUP, 0, 0, 80, 24, nullptr, nullptr, nullptr, nullptr);
  SIZE size{};
  const bool isStyled = SendMessageW(button, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&size)) != 0;
  DestroyWindow(button);
  return isStyled;
}

TEST(VisualStyles, AreInForceWhileTheyLive) {
  ASSERT_FALSE(MakesStyledControls()) << "this program has them anyhow";
  {
    const VisualStyles styles;

    EXPECT_TRUE(styles.AreOn());
    EXPECT_TRUE(MakesStyledControls());
  }
  EXPECT_FALSE(MakesStyledControls());
}

TEST(VisualStyles, MayStandWithinEachOther) {
  const VisualStyles styles;
  { const VisualStyles inner; }

  EXPECT_TRUE(MakesStyledControls());
}

template <typename Function>
Function Optional(const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

TEST(OwnPixels, EndWithTheAwarenessThatWasThereBefore) {
  const auto set = Optional<HANDLE(WINAPI*)(HANDLE)>("SetThreadDpiAwarenessContext");
  const auto current = Optional<HANDLE(WINAPI*)()>("GetThreadDpiAwarenessContext");
  const auto awareness = Optional<int(WINAPI*)(HANDLE)>("GetAwarenessFromDpiAwarenessContext");
  if (set == nullptr || current == nullptr || awareness == nullptr) GTEST_SKIP() << "too old a system";
  const auto former = set(reinterpret_cast<HANDLE>(INT_PTR{-1}));
  {
    const OwnPixels pixels;

    EXPECT_EQ(awareness(current()), 2) << "not that of each monitor";
  }
  EXPECT_EQ(awareness(current()), 0) << "not unaware again";
  set(former);
}

TEST(HasDesktop, IsSoWhereWindowsCanBeSeen) {
  EXPECT_TRUE(HasDesktop());
}

}  // namespace
}  // namespace quintara::win32
