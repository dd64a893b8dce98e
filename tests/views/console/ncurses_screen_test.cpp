#include "views/console/ncurses_screen.h"

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <fstream>

#include "base/failure.h"
#include "support/pseudo_terminal.h"
#include "views/console/test_dialog.h"

namespace quintara::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

constexpr int kCreated = 10;
constexpr int kCancelled = 11;
constexpr int kFailed = 12;

volatile std::sig_atomic_t interrupted = 0;

// What runs behind the terminal: a panel, whose events are printed once the terminal is given back.
int RunPanel(const char* locale, const char* terminal) {
  setenv("TERM", terminal, 1);
  setenv("LC_ALL", locale, 1);
  std::setlocale(LC_CTYPE, "");
  std::signal(SIGTERM, [](int /*signal*/) { interrupted = 1; });
  std::signal(SIGHUP, SIG_IGN);
  std::signal(SIGUSR1, [](int signal) {
    GiveTerminalBackAtOnce();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
  });
  TestTree tree({"gear", " axle", "  nüt", "  bolt", " nut"});
  TestDialog panel;
  int result = kFailed;
  const auto screen =
      std::make_shared<FullScreen>(FullScreen::Surroundings{OpenTerminal, std::string(locale) != "C", [] {
                                                              if (interrupted != 0)
                                                                throw Failure(failure::kInternal, "interrupted");
                                                            }});
  panel.view = std::make_shared<FullScreenView>(PanelLayout(), panel, screen);
  panel.view->SetTree("Tree1", &tree);
  panel.answer = [&](const std::string& event) {
    if (event == "click cmdCreate") result = kCreated;
    if (event == "click cmdCancel") result = kCancelled;
    if (event == "click cmdFind") throw Failure(failure::kObjectNotSet, "nothing found");
    if (event.starts_with("click cmd")) panel.view->Unload();
    if (event == "down Tree1 2 at 3") tree.SetPicture(3, "part doc");
  };
  try {
    panel.view->ShowModal();
  } catch (const Failure& failure) {
    std::fprintf(stderr, "failed: %s\n", failure.what());
  }
  for (const auto& event : panel.events) std::fprintf(stderr, "[%s]\n", event.c_str());
  return result;
}

class ATerminal : public ::testing::Test {
 protected:
  std::unique_ptr<PseudoTerminal> Start(const char* locale = "C.UTF-8", const char* terminal = "xterm-256color") {
    return std::make_unique<PseudoTerminal>(12, 60, [=] { return RunPanel(locale, terminal); });
  }
};

TEST_F(ATerminal, ShowsADialogAndTakesItsKeys) {
  const auto terminal = Start();
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->Type("\x1b[B\x1bOB ");
  ASSERT_TRUE(terminal->WaitFor("●"));
  terminal->Type("\r");

  EXPECT_EQ(terminal->WaitForEnd(), kCreated);
  EXPECT_THAT(terminal->Written(), HasSubstr("nüt"));
  EXPECT_THAT(terminal->Written(), HasSubstr("[down Tree1 2 at 3]"));
  EXPECT_TRUE(terminal->IsAsBefore());
}

TEST_F(ATerminal, TakesACharacterOfSeveralBytes) {
  const auto terminal = Start();
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->Type("nTräger\x7f\x7f");
  ASSERT_TRUE(terminal->WaitFor("ä"));
  terminal->Type("\r\r");

  EXPECT_EQ(terminal->WaitForEnd(), kCreated);
}

TEST_F(ATerminal, TakesALoneEscapeForEsc) {
  const auto terminal = Start();
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->Type("\x1b");

  EXPECT_EQ(terminal->WaitForEnd(), kCancelled);
  EXPECT_TRUE(terminal->IsAsBefore());
}

TEST_F(ATerminal, TakesNoUnknownKeyForEsc) {
  const auto terminal = Start();
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->Type("\x1b[999~");
  terminal->Type("nx");
  ASSERT_TRUE(terminal->WaitFor("x"));
  terminal->Type("\r\r");

  EXPECT_EQ(terminal->WaitForEnd(), kCreated);
}

TEST_F(ATerminal, WithoutUnicodeIsDrawnWithAscii) {
  const auto terminal = Start("C");
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->Type("q");

  EXPECT_EQ(terminal->WaitForEnd(), kCancelled);
  EXPECT_THAT(terminal->Written(), HasSubstr("n?t"));
}

TEST_F(ATerminal, IsDrawnAnewInAnotherSize) {
  const auto terminal = Start();
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->Resize(20, 30);
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));
  terminal->Type("q");

  EXPECT_EQ(terminal->WaitForEnd(), kCancelled);
}

TEST_F(ATerminal, IsGivenBackAfterAFailure) {
  const auto terminal = Start();
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->Type("/");

  EXPECT_EQ(terminal->WaitForEnd(), kFailed);
  EXPECT_THAT(terminal->Written(), HasSubstr("failed: nothing found"));
  EXPECT_TRUE(terminal->IsAsBefore());
}

TEST_F(ATerminal, IsGivenBackAfterAnInterruption) {
  const auto terminal = Start();
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->Send(SIGTERM);

  EXPECT_EQ(terminal->WaitForEnd(), kFailed);
  EXPECT_THAT(terminal->Written(), HasSubstr("failed: interrupted"));
  EXPECT_TRUE(terminal->IsAsBefore());
}

TEST_F(ATerminal, IsGivenBackByAProcessThatEndsAtOnce) {
  const auto terminal = Start();
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->Send(SIGUSR1);

  EXPECT_EQ(terminal->WaitForEnd(), -1);
  EXPECT_EQ(terminal->EndedBy(), SIGUSR1);
  EXPECT_THAT(terminal->Written(), HasSubstr("\x1b[?1049l"));
  EXPECT_TRUE(terminal->IsAsBefore());
}

TEST_F(ATerminal, ThatGoesAwayEndsTheDialog) {
  const auto terminal = Start();
  ASSERT_TRUE(terminal->WaitFor("Enter  Go"));

  terminal->HangUp();

  EXPECT_EQ(terminal->WaitForEnd(), kFailed);
}

TEST_F(ATerminal, ThatCannotMoveItsCursorIsRefused) {
  for (const auto* name : {"dumb", "no-such-terminal", ""}) {
    const auto terminal = Start("C.UTF-8", name);

    EXPECT_EQ(terminal->WaitForEnd(), kFailed);
    EXPECT_THAT(terminal->Written(), HasSubstr("failed: the terminal '" + std::string(name) + "' can't show a dialog"));
    EXPECT_TRUE(terminal->IsAsBefore());
  }
}

}  // namespace
}  // namespace quintara::test
