#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "apps/quintara/vault_with_two_roots.h"
#include "support/pseudo_terminal.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr auto kDownKey = "\x1bOB";

// The program on a terminal, with the keys that a user presses.
class WipOnATerminal : public VaultWithTwoRoots {
 protected:
  std::unique_ptr<PseudoTerminal> Start(const std::string& product = "as1", const std::string& kind = "xterm") {
    return std::make_unique<PseudoTerminal>(24, 80, [=, this] {
      setenv("TERM", kind.c_str(), 1);
      setenv("LC_ALL", "C.UTF-8", 1);
      unsetenv("QUINTARA_VAULT");
      execl(QUINTARA_PROGRAM, QUINTARA_PROGRAM, "wip", product.c_str(), "--name", "TYPED", "--lang", "EN", "--vault",
            Folder().c_str(), nullptr);
      return 120;
    });
  }
  // Once the keys are told at the bottom all is drawn.
  static constexpr auto kDrawn = "Create WIP";
};

TEST_F(WipOnATerminal, MarksFindsAndCreates) {
  const auto screen = Start();
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type(std::string(kDownKey) + " ");  // rod-assembly, light
  ASSERT_TRUE(screen->WaitFor("◐"));
  screen->Type("/nut\r");
  ASSERT_TRUE(screen->WaitFor("Matches for \"nut\": 3"));
  screen->Type(">");  // from the first one, in rod-assembly, to nut-bolt-assembly
  screen->Type(">\x1b");
  ASSERT_TRUE(screen->WaitFor(kDrawn));
  screen->Type("  ");  // the nut in it, as a document
  ASSERT_TRUE(screen->WaitFor("●"));
  screen->Type("a\r");

  EXPECT_EQ(screen->WaitForEnd(), kDone) << screen->Written();
  EXPECT_TRUE(screen->IsAsBefore());
  EXPECT_THAT(screen->Written(), HasSubstr("made 'WIP~~TYPED' with 7 components"));
  EXPECT_THAT(Run({"compare", "TYPED", "--with", Data("as1-oc-214.stp")}).out, HasSubstr("7 of 7 in place"));
}

TEST_F(WipOnATerminal, CollapsesExpandsAndStepsBack) {
  const auto screen = Start();
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type("c");
  ASSERT_TRUE(screen->WaitFor("▸"));
  screen->Type("e");
  ASSERT_TRUE(screen->WaitFor("▾"));
  screen->Type("/nut\r");
  ASSERT_TRUE(screen->WaitFor("Matches for \"nut\": 3"));
  screen->Type("<\x1b");  // from the first one back to the last, in nut-bolt-assembly
  ASSERT_TRUE(screen->WaitFor(kDrawn));
  screen->Type(" \r");

  EXPECT_EQ(screen->WaitForEnd(), kDone) << screen->Written();
  EXPECT_THAT(Run({"compare", "TYPED", "--with", Data("as1-oc-214.stp")}).out,
              AllOf(HasSubstr("nut-bolt-assembly_1\\nut_"), HasSubstr("1 of ")));
}

TEST_F(WipOnATerminal, ShowsAnObjectAndGoesOn) {
  const auto screen = Start();
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type(std::string(kDownKey) + "i");
  ASSERT_TRUE(screen->WaitFor("rod-assembly.ZVAProduct"));
  ASSERT_TRUE(screen->WaitFor("Enter goes on"));
  screen->Type("\n");
  ASSERT_TRUE(screen->WaitFor(kDrawn));
  screen->Type("q");

  EXPECT_EQ(screen->WaitForEnd(), kFailed);
}

TEST_F(WipOnATerminal, MakesNothingWhenItIsCancelled) {
  const auto screen = Start();
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type(" \x1b");

  EXPECT_EQ(screen->WaitForEnd(), kFailed);
  EXPECT_THAT(screen->Written(), HasSubstr("nothing was made of 'as1'"));
  EXPECT_FALSE(HasWork("WIP~~TYPED.ZVAProduct"));
  EXPECT_TRUE(screen->IsAsBefore());
}

TEST_F(WipOnATerminal, EndsWhenItIsInterrupted) {
  const auto screen = Start();
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type("\x03");

  EXPECT_EQ(screen->WaitForEnd(), kFailed);
  EXPECT_THAT(screen->Written(), HasSubstr("interrupted"));
  EXPECT_TRUE(screen->IsAsBefore());
}

TEST_F(WipOnATerminal, WantsAnotherNameForAFileThatIsInTheWay) {
  std::filesystem::create_directories(ToPath(AdminPath()));
  WriteWork("WIP~~TYPED.ZVAProduct", "in the way");
  const auto screen = Start();
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type("\r");
  ASSERT_TRUE(screen->WaitFor("exists already"));
  screen->Type("n/\r\r");
  ASSERT_TRUE(screen->WaitFor("can't be used in a file name"));
  screen->Type(
      "n\x7f"
      "2\r" +
      std::string(kDownKey) + " \r");

  EXPECT_EQ(screen->WaitForEnd(), kDone) << screen->Written();
  EXPECT_TRUE(HasWork("WIP~~TYPED2.ZVAProduct"));
  EXPECT_EQ(ReadWork("WIP~~TYPED.ZVAProduct"), "in the way");
}

TEST_F(WipOnATerminal, AsksWhichOfSeveralMatricesIsMeant) {
  AddHall();
  const auto screen = Start("rod-assembly");
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type(std::string(kDownKey) + " \r");
  ASSERT_TRUE(screen->WaitFor("Number, or nothing for none [1-2]"));
  EXPECT_TRUE(screen->IsAsBefore());
  screen->Type("1\n");

  EXPECT_EQ(screen->WaitForEnd(), kDone) << screen->Written();
  EXPECT_THAT(screen->Written(), HasSubstr("made 'WIP~~TYPED' with 1 component,"));
  EXPECT_TRUE(HasWork("WIP~~TYPED.ZVAProduct"));
}

TEST_F(WipOnATerminal, MakesNothingWhenItIsInterruptedWhileItAsks) {
  AddHall();
  const auto screen = Start("rod-assembly");
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type(std::string(kDownKey) + " \r");
  ASSERT_TRUE(screen->WaitFor("Number, or nothing for none [1-2]"));
  ASSERT_TRUE(screen->WaitForWait());
  screen->Type("\x03");

  EXPECT_EQ(screen->WaitForEnd(), kFailed) << screen->Written();
  EXPECT_FALSE(HasWork("WIP~~TYPED.ZVAProduct"));
  EXPECT_TRUE(screen->IsAsBefore());
}

TEST_F(WipOnATerminal, SaysThatATerminalCannotShowTheTree) {
  const auto screen = Start("as1", "dumb");

  EXPECT_EQ(screen->WaitForEnd(), kFailed);
  EXPECT_THAT(screen->Written(), HasSubstr("the terminal 'dumb' can't show a dialog"));
}

}  // namespace
}  // namespace quintara::test
