#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "apps/quintara/vault_with_as1.h"
#include "base/attempt.h"
#include "support/pseudo_terminal.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr auto kFile = "WIP~~TRIAL.ZVAProduct";

// A work in progress on the vault's only assembly, in which the nut has a newer revision than the one that it was made
// of.
class ReplaceVerb : public VaultWithAs1 {
 protected:
  // Placed, with these options.
  void GivenWip(std::vector<std::string> options) {
    options.insert(options.begin(), {"wip", "as1", "--name", "TRIAL"});
    RunWell(options);
    RunWell({"release", "nut", "--yes"});
    RunWell({"new-release", "nut"});
    auto changed = ReadWork("nut.stp");
    const auto at = changed.find("DATA;");
    ASSERT_NE(at, changed.npos);
    changed.insert(at, "/* of another day */\n");
    WriteWork("nut.stp", changed);
    RunWell({"checkin", "nut", "--yes"});
    ASSERT_EQ(RevisionAndState("nut"), "B1");
    before = ReadWork(kFile);
  }
  void GivenAllInstances() { GivenWip({"--light", "part:*", "--all-instances"}); }

  Outcome Replace(std::vector<std::string> options) {
    options.insert(options.begin(), {"replace-by-latest", "TRIAL", "--lang", "EN"});
    return Run(options);
  }
  bool IsUntouched() const { return ReadWork(kFile) == before; }
  // "B" for each nut in the order in which they stand in the work in progress, "-" for one without stamps.
  std::vector<std::string> Nuts() const {
    const auto own = std::make_shared<Gate>();
    CadHost host({own, std::make_shared<NativeContents>(own), {}});
    const auto children =
        host.Application()->Documents()->Open(AdminPath(kFile))->AsProductDocument()->Product()->Products();
    const auto vault = Open();
    std::vector<std::string> revisions;
    for (int i = 1; i <= children->Count(); ++i) {
      const auto child = children->Item(i);
      if (child->PartNumber() != "nut") continue;
      revisions.push_back(OrElse(std::string("-"), [&] {
        const auto number = [&](const char* name) {
          return std::stoi(child->Parameters()->Item(name)->ValueAsString());
        };
        const auto object = ObjectIn(*vault, {static_cast<std::int16_t>(number("CLASS_ID")), number("OBJECT_ID")});
        return object->Record()->ValueAsString("REVISION");
      }));
    }
    return revisions;
  }
  std::string Compared() { return Run({"compare", "TRIAL", "--with", Data("as1-oc-214.stp")}).out; }

  std::string before;
};

TEST_F(ReplaceVerb, BringsTickedComponentsUpToTheNewestRevision) {
  GivenAllInstances();
  ASSERT_THAT(Nuts(), ::testing::AllOf(::testing::SizeIs(8), Each("A")));

  const auto outcome = Replace({"--tick", "nut"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, HasSubstr("saved '" + AdminPath(kFile)));
  EXPECT_THAT(Nuts(), ::testing::AllOf(::testing::SizeIs(8), Each("B")));
  EXPECT_THAT(Compared(), HasSubstr("18 of 18 in place"));
  EXPECT_TRUE(HasWork("nut.stp.lwt"));
}

TEST_F(ReplaceVerb, TellsWhatWasReplaced) {
  GivenWip({"--light", "nut", "--light", "plate"});

  const auto outcome = Replace({"--tick", "nut"});

  EXPECT_THAT(outcome.out, ::testing::ContainsRegex("nut[^ ]* +A +B"));
  EXPECT_THAT(outcome.out, Not(HasSubstr("plate")));
}

TEST_F(ReplaceVerb, OffersThemOnceOnly) {
  GivenWip({"--light", "nut", "--light", "plate"});
  ASSERT_EQ(Replace({"--tick", "nut"}).exitCode, kDone);
  before = ReadWork(kFile);

  const auto outcome = Replace({"--tick", "nut"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("the pattern 'nut' matches no light component with a newer revision"));
  EXPECT_TRUE(IsUntouched());
}

TEST_F(ReplaceVerb, TakesPartNumbersNamesAndPaths) {
  GivenWip({"--light", "nut", "--light", "plate"});
  for (const auto* pattern : {"NUT", "n?t", "*", "part:nut", "wip~~trial/nut", "nut_?", "AS1\\*\\nut_1"}) {
    WriteWork(kFile, before);

    const auto outcome = Replace({"--tick", pattern});

    EXPECT_EQ(outcome.exitCode, kDone) << pattern << outcome.errors;
    EXPECT_THAT(Nuts(), ElementsAre("B")) << pattern;
  }
}

TEST_F(ReplaceVerb, RefusesAPatternThatCantTickAnythingBeforeItChangesAnything) {
  GivenWip({"--light", "nut", "--light", "plate"});
  WriteWork("nut.stp.lwt", "as it was");

  for (const auto* pattern : {"plate", "product:*", "product:nut", "nuts", "nut/nut"}) {
    for (const bool isFirst : {true, false}) {
      const auto outcome =
          isFirst ? Replace({"--tick", pattern, "--tick", "nut"}) : Replace({"--tick", "nut", "--tick", pattern});

      EXPECT_EQ(outcome.exitCode, kWrongUse) << pattern;
      EXPECT_THAT(outcome.errors, HasSubstr(std::string("the pattern '") + pattern + "'"));
      EXPECT_TRUE(IsUntouched()) << pattern;
      EXPECT_EQ(ReadWork("nut.stp.lwt"), "as it was") << pattern;
    }
  }
}

TEST_F(ReplaceVerb, TellsAssembliesFromParts) {
  GivenWip({"--light", "rod-assembly"});
  RunWell({"release", "rod-assembly", "--yes"});
  RunWell({"new-release", "rod-assembly"});

  EXPECT_EQ(Replace({"--tick", "part:rod-assembly"}).exitCode, kWrongUse);
  EXPECT_TRUE(IsUntouched());
  const auto outcome = Replace({"--tick", "product:rod-assembly"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, ::testing::ContainsRegex("rod-assembly[^ ]* +A +B"));
}

TEST_F(ReplaceVerb, TicksWhatTwoPatternsMeanOnce) {
  GivenWip({"--light", "nut", "--light", "plate"});

  EXPECT_EQ(Replace({"--tick", "nut", "--tick", "n*"}).exitCode, kDone);

  EXPECT_THAT(Nuts(), ElementsAre("B"));
}

TEST_F(ReplaceVerb, OffersNoDocuments) {
  GivenWip({"--document", "nut", "--light", "plate"});

  EXPECT_EQ(Replace({"--tick", "nut"}).exitCode, kWrongUse);
  EXPECT_TRUE(IsUntouched());
}

TEST_F(ReplaceVerb, NeedsATerminalOrPatterns) {
  GivenWip({"--light", "nut"});

  const auto outcome = Replace({});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors,
              HasSubstr("without a terminal nobody can be asked for the components; name them with --tick"));
  EXPECT_EQ(Replace({"--tick", ""}).exitCode, kWrongUse);
  EXPECT_TRUE(IsUntouched());
}

TEST_F(ReplaceVerb, SavesNothingWhenItOnlyTells) {
  GivenWip({"--light", "nut", "--light", "plate"});

  const auto outcome = Replace({"--tick", "nut", "--dry-run"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, ::testing::ContainsRegex("nut[^ ]* +A +B"));
  EXPECT_TRUE(IsUntouched());
}

TEST_F(ReplaceVerb, SavesWhatWasReplacedBeforeAFailure) {
  GivenAllInstances();
  gate->FailOperation("Products.ReplaceWithFile", 3, Failure(failure::kRefused, "cable"));

  const auto outcome = Replace({"--tick", "nut"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("quintara: cable"));
  EXPECT_THAT(outcome.out, HasSubstr("saved '"));
  EXPECT_THAT(Nuts(), ElementsAre("B", "B", "A", "A", "A", "A", "A", "A"));
}

TEST_F(ReplaceVerb, GoesOnAfterAComponentWhoseFileCantBeBrought) {
  GivenWip({"--light", "part:*"});
  RunWell({"release", "rod", "--yes"});
  RunWell({"new-release", "rod"});
  std::filesystem::remove(ToPath(AdminPath("nut.stp")));
  std::filesystem::create_directories(ToPath(AdminPath("nut.stp")));  // which no file can replace

  const auto outcome = Replace({"--tick", "nut", "--tick", "rod"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("nut_1\" can't be copied from Veldora to the work directory"));
  EXPECT_THAT(outcome.out, ::testing::ContainsRegex("rod[^ ]* +A +B"));
  EXPECT_THAT(outcome.out, Not(HasSubstr("nut")));
  EXPECT_THAT(outcome.out, HasSubstr("saved '"));
  EXPECT_THAT(Nuts(), ElementsAre("A"));
}

TEST_F(ReplaceVerb, LeavesTheFileAloneWhenNothingWasReplaced) {
  GivenWip({"--light", "nut"});
  gate->FailOperation("VdObject.CopyFileTo");

  const auto outcome = Replace({"--tick", "nut"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("nothing was replaced in 'WIP~~TRIAL'"));
  EXPECT_THAT(outcome.out, Not(HasSubstr("saved")));
  EXPECT_TRUE(IsUntouched());
}

TEST_F(ReplaceVerb, RefusesWhatIsNoWip) {
  EXPECT_EQ(Run({"replace-by-latest", "nowhere", "--tick", "*"}).exitCode, kWrongUse);
  RunWell({"checkout", "as1"});
  EXPECT_EQ(Run({"replace-by-latest", AdminPath("as1.ZVAProduct"), "--tick", "*"}).exitCode, kWrongUse);
}

// The program on a terminal, with the keys that a user presses.
class ReplaceOnATerminal : public ReplaceVerb {
 protected:
  ReplaceOnATerminal() { GivenWip({"--light", "plate", "--light", "nut", "--light", "rod"}); }

  std::unique_ptr<PseudoTerminal> Start(const std::string& kind = "xterm", const std::string& locale = "C.UTF-8") {
    return std::make_unique<PseudoTerminal>(24, 80, [=, this] {
      setenv("TERM", kind.c_str(), 1);
      setenv("LC_ALL", locale.c_str(), 1);
      unsetenv("QUINTARA_VAULT");
      execl(QUINTARA_PROGRAM, QUINTARA_PROGRAM, "replace-by-latest", "TRIAL", "--lang", "EN", "--vault",
            Folder().c_str(), nullptr);
      return 120;
    });
  }
  // Once the keys are told at the bottom all is drawn.
  static constexpr auto kDrawn = "Cancel";
  static constexpr auto kDown = "\x1bOB";
  static constexpr auto kRight = "\x1bOC";
};

TEST_F(ReplaceOnATerminal, ShowsNewerRevisionsAndTicksBySpace) {
  const auto screen = Start();
  ASSERT_TRUE(screen->WaitFor(kDrawn));
  EXPECT_THAT(screen->Written(), HasSubstr("☐ as1\\rod-assembly_1\\nut_1"));

  screen->Type(std::string(kDown) + kRight);  // to the nut
  ASSERT_TRUE(screen->WaitFor("-->Revision: B"));
  screen->Type(" ");
  ASSERT_TRUE(screen->WaitFor("☑"));
  screen->Type("\r");

  EXPECT_EQ(screen->WaitForEnd(), kDone) << screen->Written();
  EXPECT_TRUE(screen->IsAsBefore());
  EXPECT_THAT(Nuts(), ElementsAre("B"));
  EXPECT_THAT(Compared(), HasSubstr("3 of 10 in place"));
}

TEST_F(ReplaceOnATerminal, TicksNothingOnTheWay) {
  const auto screen = Start();
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type(std::string(kDown) + kDown + kDown + "\r");

  EXPECT_EQ(screen->WaitForEnd(), kFailed);
  EXPECT_THAT(screen->Written(), HasSubstr("nothing was replaced in 'WIP~~TRIAL'"));
  EXPECT_TRUE(IsUntouched());
}

TEST_F(ReplaceOnATerminal, ReplacesNothingWhenItIsCancelled) {
  for (const auto* key : {"\x1b", "q"}) {
    const auto screen = Start();
    ASSERT_TRUE(screen->WaitFor(kDrawn));
    screen->Type(std::string(kDown) + " ");
    ASSERT_TRUE(screen->WaitFor("☑"));

    screen->Type(key);

    EXPECT_EQ(screen->WaitForEnd(), kFailed);
    EXPECT_TRUE(IsUntouched());
    EXPECT_TRUE(screen->IsAsBefore());
  }
}

TEST_F(ReplaceOnATerminal, EndsWhenItIsInterrupted) {
  const auto screen = Start();
  ASSERT_TRUE(screen->WaitFor(kDrawn));

  screen->Type("\x03");

  EXPECT_EQ(screen->WaitForEnd(), kFailed);
  EXPECT_THAT(screen->Written(), HasSubstr("interrupted"));
  EXPECT_TRUE(IsUntouched());
  EXPECT_TRUE(screen->IsAsBefore());
}

TEST_F(ReplaceOnATerminal, ShowsTicksWithoutUnicode) {
  const auto screen = Start("xterm", "C");
  ASSERT_TRUE(screen->WaitFor(kDrawn));
  EXPECT_THAT(screen->Written(), HasSubstr("_ as1\\rod-assembly_1\\nut_1"));

  screen->Type(std::string(kDown) + " ");

  EXPECT_TRUE(screen->WaitFor("X"));
  screen->Type("q");
  screen->WaitForEnd();
}

TEST_F(ReplaceOnATerminal, SaysThatATerminalCannotShowTheTree) {
  const auto screen = Start("dumb");

  EXPECT_EQ(screen->WaitForEnd(), kFailed);
  EXPECT_THAT(screen->Written(), HasSubstr("the terminal 'dumb' can't show a dialog"));
}

}  // namespace
}  // namespace quintara::test
