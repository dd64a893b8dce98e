#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <thread>

#include "access/contracts/platform.h"
#include "automation/driver/boxes.h"
#include "automation/driver/steps.h"
#include "views/win32/views.h"
#include "views/win32/visual_styles.h"

namespace quintara::win32 {
namespace {

constexpr std::chrono::seconds kPatience(60);

// Someone on another thread who looks at one box and answers it.
class Someone {
 public:
  explicit Someone(std::string answer, std::function<void(HWND)> look = {})
      : thread_([answer = std::move(answer), look = std::move(look)] { Meet(answer, look); }) {}
  ~Someone() { thread_.join(); }
  Someone(const Someone&) = delete;
  Someone& operator=(const Someone&) = delete;

 private:
  static void Meet(const std::string& answer, const std::function<void(HWND)>& look) {
    if (!driver::Within(kPatience, [] { return driver::FindMessageBox() != nullptr; })) {
      ADD_FAILURE() << "no box has come";
      return;
    }
    const auto window = driver::FindMessageBox();
    try {
      if (look) look(window);
      SendMessageW(driver::AnswerButton(driver::ReadMessageBox(window), answer), BM_CLICK, 0, 0);
    } catch (const driver::Failed& failed) {
      ADD_FAILURE() << failed.what();
      EndDialog(window, 0);
    }
  }

  std::thread thread_;
};

// It is seen a little before it has come to its place.
bool IsSoSoon(const std::function<bool()>& isSo) {
  return driver::Within(std::chrono::seconds(10), isSo);
}

bool CanBeReached(HWND window) {
  const auto there = WindowFromPoint(driver::MiddleOf(driver::BoxOf(window)));
  return there == window || IsChild(window, there) != 0;
}

// The sign of a box is drawn some time after the box is there.
void ExpectStyle(HWND window, int style) {
  int seen = 0;
  IsSoSoon([&] {
    seen = driver::ReadMessageBox(window).style;
    return seen == style;
  });
  EXPECT_EQ(seen, style);
}

struct Case {
  int style;
  const char* answer;
  int code;
};

class BoxOfStyle : public testing::TestWithParam<Case> {};

TEST_P(BoxOfStyle, LooksAndAnswersAsItSays) {
  const auto look = [](HWND window) {
    const auto box = driver::ReadMessageBox(window);
    EXPECT_EQ(box.title, "Quintara");
    EXPECT_EQ(box.text, "One\nÉtai – 部品");
    ExpectStyle(window, GetParam().style);
  };
  const Someone someone(GetParam().answer, look);

  EXPECT_EQ(ShowBox("One\r\nÉtai – 部品", GetParam().style, "Quintara"), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(Styles, BoxOfStyle,
                         testing::Values(Case{0, "ok", 1}, Case{1, "ok", 1}, Case{1, "cancel", 2}, Case{4, "yes", 6},
                                         Case{16, "ok", 1}, Case{48, "ok", 1}, Case{64, "ok", 1}, Case{4112, "ok", 1},
                                         Case{4132, "yes", 6}, Case{4132, "no", 7}, Case{4160, "ok", 1}));

// A window of this thread, as a dialog is one.
class Window {
 public:
  explicit Window(DWORD exStyle)
      : handle_(CreateWindowExW(exStyle, L"STATIC", L"Below", WS_POPUP | WS_VISIBLE, 50, 50, 900, 600, nullptr, nullptr,
                                nullptr, nullptr)) {
    SetForegroundWindow(handle_);
    SetActiveWindow(handle_);
  }
  ~Window() { DestroyWindow(handle_); }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  HWND Handle() const { return handle_; }

 private:
  HWND handle_;
};

TEST(Box, StandsAboveAWindowThatIsOnTopOfAll) {
  const Window below(WS_EX_TOPMOST);
  const Someone someone("ok", [&](HWND window) {
    EXPECT_TRUE(IsSoSoon([&] { return driver::IsTopmost(window); }));
    EXPECT_TRUE(IsSoSoon([&] { return CanBeReached(window); }));
  });

  ShowBox("Text", box::kCritical, "Quintara");
}

TEST(Box, IsOnTopOfNothingElseWhereItIsNotAskedFor) {
  const Window below(0);
  const Someone someone("ok", [](HWND window) { ExpectStyle(window, box::kCritical); });

  ShowBox("Text", box::kCritical, "Quintara");
}

TEST(Box, IsModalToTheWindowInFront) {
  const Window below(0);
  {
    const Someone someone("ok", [&](HWND window) {
      EXPECT_EQ(GetWindow(window, GW_OWNER), below.Handle());
      EXPECT_TRUE(IsSoSoon([&] { return IsWindowEnabled(below.Handle()) == FALSE; }));
    });
    ShowBox("Text", box::kInformationModal, "Quintara");
  }

  EXPECT_NE(IsWindowEnabled(below.Handle()), FALSE);
}

std::shared_ptr<dialog::View> MakeView(const std::string& name, dialog::Kind kind, dialog::Events& events) {
  dialog::Layout layout;
  layout.name = layout.text = name;
  layout.box = {0, 0, 3000, 1500};
  layout.controls = {{.name = "only", .kind = kind, .box = {300, 300, 1200, 375}, .text = "Only"}};
  return NewView(layout, events);
}

// A dialog whose one button asks something below another dialog that is on top of all.
class Asking : public dialog::Events {
 public:
  int Answer() {
    view_ = MakeView("Asking", dialog::Kind::kButton, *this);
    view_->ShowModal();
    return answer_;
  }

  void OnClick(const std::string& /*control*/) override {
    const auto progress = MakeView("Progress", dialog::Kind::kLabel, progressEvents_);
    progress->ShowOnTop(0, 0, 900, 700);
    answer_ = ShowBox("Sure?", box::kYesNo, "Quintara");
    progress->Unload();
    view_->Hide();
  }

 private:
  dialog::Events progressEvents_;
  std::shared_ptr<dialog::View> view_;
  int answer_ = 0;
};

TEST(Box, IsModalToTheDialogThatIsShownAndAboveAll) {
  Asking dialog;
  std::thread user([] {
    if (!driver::Within(kPatience, [] { return driver::FindWindowOf("Asking") != nullptr; })) return;
    PostMessageW(driver::FindControl(driver::FindWindowOf("Asking"), "Only"), BM_CLICK, 0, 0);
  });
  {
    const Someone someone("no", [](HWND window) {
      const auto shown = driver::FindWindowOf("Asking");
      EXPECT_EQ(GetWindow(window, GW_OWNER), shown);
      EXPECT_TRUE(IsSoSoon([&] { return IsWindowEnabled(shown) == FALSE; }));
      EXPECT_TRUE(IsSoSoon([&] { return CanBeReached(window); }));
    });

    EXPECT_EQ(dialog.Answer(), answer::kNo);
  }
  user.join();
}

TEST(Box, AnswersOkToEscWhereThatIsAllThereIs) {
  std::thread someone([] {
    if (!driver::Within(kPatience, [] { return driver::FindMessageBox() != nullptr; })) return;
    PostMessageW(driver::FindMessageBox(), WM_COMMAND, IDCANCEL, 0);
  });

  EXPECT_EQ(ShowBox("Text", box::kOkOnly, "Quintara"), answer::kOk);
  someone.join();
}

// A station of windows that no screen shows, as services have.
class NoDesktop {
 public:
  NoDesktop() : former_(GetProcessWindowStation()), station_(CreateWindowStationW(nullptr, 0, GENERIC_ALL, nullptr)) {
    SetProcessWindowStation(station_);
  }
  ~NoDesktop() {
    SetProcessWindowStation(former_);
    CloseWindowStation(station_);
  }
  NoDesktop(const NoDesktop&) = delete;
  NoDesktop& operator=(const NoDesktop&) = delete;

 private:
  HWINSTA former_;
  HWINSTA station_;
};

TEST(BoxWithoutDesktop, AgreesToNothing) {
  const NoDesktop none;
  ASSERT_FALSE(HasDesktop());

  EXPECT_EQ(ShowBox("Text", box::kYesNo + box::kQuestion + box::kSystemModal, "Quintara"), answer::kNo);
  EXPECT_EQ(ShowBox("Text", box::kOkCancel, "Quintara"), answer::kCancel);
  EXPECT_EQ(ShowBox("Text", box::kCriticalModal, "Quintara"), answer::kOk);
}

}  // namespace
}  // namespace quintara::win32
