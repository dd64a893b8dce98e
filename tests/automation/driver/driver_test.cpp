#include "automation/driver/driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <sstream>

#include "base/text.h"
#include "base/text16_windows.h"

namespace quintara::driver {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr auto kTitle = "Driver's target";

std::filesystem::path OwnFolder() {
  std::array<wchar_t, 1024> name{};
  GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
  return std::filesystem::path(name.data()).parent_path();
}

std::string Content(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

class DriverOnTarget : public testing::Test {
 protected:
  ~DriverOnTarget() override { std::filesystem::remove_all(folder); }

  /// Does the steps of a script; gives what the first one that failed says.
  std::string Do(const std::string& script) {
    for (const auto& step : ReadSteps(script, {{"TARGET", target}, {"TITLE", kTitle}})) {
      try {
        driver.Do(step);
      } catch (const Failed& failed) {
        return step.words[0] + ": " + failed.what();
      }
    }
    return {};
  }

  void GivenTarget() { ASSERT_EQ(Do("start ${TARGET}\nwait ${TITLE}"), ""); }

  const std::string target = Narrow((OwnFolder() / "quintara_driver_target.exe").wstring());
  const std::filesystem::path folder = OwnFolder() / "driver_test_pictures";
  std::ostringstream log;
  Driver driver{log, folder};
};

TEST_F(DriverOnTarget, EndsAProgramByItsCloseBox) {
  GivenTarget();

  EXPECT_EQ(Do("close\ngone ${TITLE}\nends 0"), "");
}

TEST_F(DriverOnTarget, ScrollsToNodesAndClicksThemOneByOne) {
  GivenTarget();

  EXPECT_EQ(Do("right-click Mast \"Étai 33\"\n"
               "right-click Mast \"Étai 33\"\n"
               "right-click \"Étai 2\"\n"
               "expect-picture 2 \"Étai 33\"\n"
               "expect-picture 1 \"Étai 2\"\n"
               "expect-picture 0 \"Étai 3\"\n"
               "expect-text @16 3"),
            "");
}

TEST_F(DriverOnTarget, TellsNodesOfOneTextByTheirParents) {
  GivenTarget();

  EXPECT_EQ(Do("left-click \"Étai 2\" Bolzen\nexpect-selected Mast \"Étai 2\" Bolzen"), "");
  EXPECT_THAT(Do("timeout 1\nexpect-selected \"Étai 1\" Bolzen"), HasSubstr("waited in vain"));
  EXPECT_THAT(Do("left-click Bolzen"), HasSubstr("several nodes \"Bolzen\""));
}

TEST_F(DriverOnTarget, ShowsTheTree) {
  GivenTarget();

  EXPECT_EQ(Do("right-click \"Étai 1\"\nexpect-picture 1 \"Étai 1\"\nshow-tree"), "");

  EXPECT_THAT(log.str(), StartsWith("0 Mast\n  1 Étai 1\n    0 Bolzen\n  0 Étai 2\n"));
}

TEST_F(DriverOnTarget, TypesAndPressesKeysWhereTheKeyboardIs) {
  GivenTarget();

  EXPECT_EQ(Do("press edit:1\n"
               "expect-focus edit:1\n"
               "type \"Größe 部 5\"\n"
               "expect-text edit:1 \"Größe 部 5\"\n"
               "key Shift+Home\n"
               "key Delete\n"
               "type x\n"
               "expect-text edit:1 x\n"
               "key Tab\n"
               "expect-focus Ask\n"
               "key Shift+Tab\n"
               "expect-focus edit:1"),
            "");
}

TEST_F(DriverOnTarget, PressesControlsByCaptionNumberAndPlace) {
  GivenTarget();

  EXPECT_EQ(Do("expect-unchecked Tick\npress Tick\nexpect-checked Tick\npress @13\nexpect-unchecked @13\n"
               "press button:2\nexpect-checked Tick"),
            "");
}

TEST_F(DriverOnTarget, AnswersBoxesAndWritesThemDown) {
  GivenTarget();

  EXPECT_EQ(Do("press Ask\n"
               "expect-box Question 36 \"Go on?\\nRéponse:\"\n"
               "answer yes\n"
               "expect-box Notice 4160 \"As you like\"\n"
               "answer ok\n"
               "expect-box Choice 1 Plain\n"
               "answer ok\n"
               "expect-box Trouble 16 \"\\\"Stop\\\"\"\n"
               "answer ok\n"
               "expect-box Care 48 C:\\new\n"
               "answer ok\n"
               "expect-box Question 36 \"Go on?\\nRéponse:\"\n"
               "answer no\n"
               "ends 7"),
            "");

  EXPECT_EQ(log.str(),
            "box \"Question\" 36 \"Go on?\\nRéponse:\" yes\n"
            "box \"Notice\" 4160 \"As you like\" ok\n"
            "box \"Choice\" 1 \"Plain\" ok\n"
            "box \"Trouble\" 16 \"\\\"Stop\\\"\" ok\n"
            "box \"Care\" 48 \"C:\\\\new\" ok\n"
            "box \"Question\" 36 \"Go on?\\nRéponse:\" no\n");
}

TEST_F(DriverOnTarget, RefusesABoxWithAnotherTitleSignOrText) {
  GivenTarget();
  ASSERT_EQ(Do("timeout 6\npress Ask\nexpect-box Question 36 \"Go on?\\nRéponse:\""), "");

  EXPECT_THAT(Do("expect-box Questions 36 \"Go on?\\nRéponse:\""), HasSubstr("the message box is \"Question\" 36"));
  EXPECT_THAT(Do("expect-box Question 68 \"Go on?\\nRéponse:\""), HasSubstr("the message box is \"Question\" 36"));
  EXPECT_THAT(Do("expect-box Question 4132 \"Go on?\\nRéponse:\""), HasSubstr("the message box is \"Question\" 36"));
  EXPECT_THAT(Do("expect-box Question 36 \"Go on?\""), HasSubstr("the message box is \"Question\" 36"));
}

TEST_F(DriverOnTarget, RefusesAnAnswerThatABoxHasNoButtonFor) {
  GivenTarget();
  ASSERT_EQ(Do("press Ask\nexpect-box Question 36 \"Go on?\\nRéponse:\""), "");

  EXPECT_THAT(Do("answer cancel"), HasSubstr("has no button for cancel"));
  EXPECT_THAT(Do("answer perhaps"), HasSubstr("there is no answer \"perhaps\""));
}

TEST_F(DriverOnTarget, RefusesToAnswerWhatWasNotLookedAt) {
  GivenTarget();

  EXPECT_THAT(Do("press Ask\nanswer yes"), HasSubstr("no message box was expected before"));
}

TEST_F(DriverOnTarget, StopsAtABoxThatNobodyExpects) {
  GivenTarget();

  EXPECT_THAT(Do("press Ask\nwait \"Something else\""), HasSubstr("there is a message box: \"Question\""));
  EXPECT_THAT(Do("ends 0"), HasSubstr("there is a message box: \"Question\""));
}

TEST_F(DriverOnTarget, WaitsInVainForABox) {
  GivenTarget();

  EXPECT_THAT(Do("timeout 1\nexpect-box Question 36 x"), HasSubstr("waited in vain for a message box"));
}

TEST_F(DriverOnTarget, WaitsInVainForAWindow) {
  GivenTarget();

  EXPECT_THAT(Do("timeout 1\nwait Nothing"), HasSubstr("waited in vain for the window \"Nothing\""));
  EXPECT_THAT(Do("gone ${TITLE}"), HasSubstr("waited in vain"));
}

TEST_F(DriverOnTarget, WaitsForAWindowUntilItCanBeUsed) {
  GivenTarget();
  const auto window = FindWindowOf(kTitle);
  EnableWindow(window, FALSE);

  EXPECT_THAT(Do("timeout 1\nwait ${TITLE}"), HasSubstr("waited in vain for the window"));

  EnableWindow(window, TRUE);
  EXPECT_EQ(Do("wait ${TITLE}"), "");
}

TEST_F(DriverOnTarget, NoticesThatTheProgramHasEndedBeforeItsWindow) {
  GivenTarget();

  EXPECT_THAT(Do("close\ngone ${TITLE}\nwait Nothing"), HasSubstr("the program has ended before"));
}

TEST_F(DriverOnTarget, NamesAnotherExitCode) {
  GivenTarget();

  EXPECT_THAT(Do("close\nends 3"), HasSubstr("the program ended with 0"));
}

TEST_F(DriverOnTarget, ListsTheControlsWhereOneIsMissing) {
  GivenTarget();

  EXPECT_THAT(Do("press Nowhere"),
              testing::AllOf(HasSubstr("there is no control \"Nowhere\""), HasSubstr("Button @14 \"Never\" disabled")));
  EXPECT_THAT(Do("press edit:2"), HasSubstr("there is no control \"edit:2\""));
  EXPECT_THAT(Do("press @99"), HasSubstr("there is no control \"@99\""));
}

TEST_F(DriverOnTarget, RefusesACaptionThatSeveralControlsHave) {
  GivenTarget();

  EXPECT_THAT(Do("press Twin"), HasSubstr("there are several controls \"Twin\""));
}

TEST_F(DriverOnTarget, RefusesToPressWhatIsDisabled) {
  GivenTarget();

  EXPECT_EQ(Do("expect-disabled Never\nexpect-enabled Ask"), "");
  EXPECT_THAT(Do("timeout 1\npress Never"), HasSubstr("waited in vain for the control \"Never\""));
}

TEST_F(DriverOnTarget, RefusesToClickOnWhatIsCovered) {
  GivenTarget();
  const auto cover = CreateWindowExW(WS_EX_TOPMOST, L"BUTTON", L"Cover", WS_POPUP | WS_VISIBLE, 0, 0, 800, 600, nullptr,
                                     nullptr, nullptr, nullptr);

  EXPECT_THAT(Do("press Ask"), testing::AllOf(HasSubstr("should be clicked"), HasSubstr("\"Cover\" stands")));

  DestroyWindow(cover);
}

TEST_F(DriverOnTarget, NamesANodeThatIsMissing) {
  GivenTarget();

  EXPECT_THAT(Do("left-click \"Étai 41\""), HasSubstr("the tree has no node \"Étai 41\""));
  EXPECT_THAT(Do("left-click Bolzen \"Étai 1\""), HasSubstr("the tree has no node"));
}

TEST_F(DriverOnTarget, NamesTheTextThatIsThereInstead) {
  GivenTarget();

  EXPECT_THAT(Do("timeout 1\nexpect-text Ask Aks"), HasSubstr("it is \"&Ask\""));
  EXPECT_EQ(Do("expect-text \"\" ${TITLE}"), "");
}

TEST_F(DriverOnTarget, DragsWindowsAndTheirEdges) {
  GivenTarget();

  EXPECT_EQ(Do("expect-place 100 100 420 280\n"
               "drag-edge right 60 0\n"
               "expect-place 100 100 480 280\n"
               "drag-edge left -20 0\n"
               "expect-place 80 100 500 280\n"
               "drag-edge corner 10 20\n"
               "expect-place - - 510 300\n"
               "drag-edge title 15 25\n"
               "expect-place 95 125 - -"),
            "");
  EXPECT_THAT(Do("timeout 1\nexpect-place 0 - - -"), HasSubstr("the window's place is 95 125 510 300"));
}

TEST_F(DriverOnTarget, KeepsAPictureOfTheScreen) {
  std::filesystem::create_directories(folder);
  GivenTarget();

  EXPECT_EQ(Do("screenshot now"), "");

  const auto picture = Content(folder / "now.png");
  const auto number = [&](std::size_t at) {
    int value = 0;
    for (std::size_t i = at; i < at + 4; ++i) value = value * 256 + static_cast<unsigned char>(picture.at(i));
    return value;
  };
  EXPECT_THAT(picture, StartsWith("\x89PNG\r\n"));
  EXPECT_EQ(number(16), GetSystemMetrics(SM_CXVIRTUALSCREEN));
  EXPECT_EQ(number(20), GetSystemMetrics(SM_CYVIRTUALSCREEN));
}

TEST_F(DriverOnTarget, RefusesAPictureThatCannotBeWritten) {
  EXPECT_THAT(Do("screenshot now"), HasSubstr("can't be written"));
}

TEST_F(DriverOnTarget, RefusesStepsThatItDoesNotKnow) {
  EXPECT_EQ(Do("jump"), "jump: there is no step \"jump\"");
  EXPECT_THAT(Do("wait"), HasSubstr("wait TITLE"));
  EXPECT_THAT(Do("wait a b"), HasSubstr("wait TITLE"));
  EXPECT_EQ(Do("ends soon"), "ends: \"soon\" is no number");
}

TEST_F(DriverOnTarget, RefusesStepsWithoutAWindow) {
  EXPECT_EQ(Do("press OK"), "press: there is no window at hand");
  EXPECT_EQ(Do("close"), "close: there is no window at hand");
  EXPECT_EQ(Do("ends 0"), "ends: no program was started");
  EXPECT_THAT(Do("start nowhere.exe"), HasSubstr("the program can't be started"));
}

class DriverProgram : public testing::Test {
 protected:
  ~DriverProgram() override { std::filesystem::remove(script); }

  /// Runs the program on a script, with words behind it; gives its exit code.
  int Run(const std::string& steps, const std::vector<std::string>& words = {}) {
    std::ofstream(script) << steps;
    std::vector<std::string> line = {Narrow((OwnFolder() / "quintara_driver.exe").wstring()), Narrow(script.wstring())};
    line.insert(line.end(), words.begin(), words.end());
    Program program;
    program.Start(line);
    EXPECT_TRUE(Within(std::chrono::seconds(60), [&] { return program.HasEnded(); }));
    return program.ExitCode();
  }

  const std::filesystem::path script = OwnFolder() / "driver_test_steps.txt";
  const std::string target = Narrow((OwnFolder() / "quintara_driver_target.exe").wstring());
};

TEST_F(DriverProgram, EndsWellWhenAllStepsAreDone) {
  EXPECT_EQ(
      Run("start ${TARGET}\nwait ${TITLE}\nclose\nends 0\n", {"TARGET=" + target, std::string("TITLE=") + kTitle}), 0);
}

TEST_F(DriverProgram, TakesItsProgramWithItWhenAStepFails) {
  EXPECT_EQ(
      Run("start ${TARGET}\nwait ${TITLE}\npress Nowhere\n", {"TARGET=" + target, std::string("TITLE=") + kTitle}), 1);

  EXPECT_TRUE(Within(std::chrono::seconds(30), [] { return FindWindowOf(kTitle) == nullptr; }));
}

TEST_F(DriverProgram, TellsAScriptThatCannotBeReadFromAStepThatFails) {
  EXPECT_EQ(Run("say \"open"), 2);
  EXPECT_EQ(Run("say ${NAME}"), 2);
  EXPECT_EQ(Run("say one", {"NAME"}), 2);
  EXPECT_EQ(Run("say ${NAME}", {"NAME=one"}), 0);
}

}  // namespace
}  // namespace quintara::driver
