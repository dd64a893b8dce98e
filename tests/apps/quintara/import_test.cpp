#include "apps/quintara/cli_fixture.h"
#include "base/text.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Import : public CliWithAs1 {
 protected:
  std::string ImportedPart() const { return work.Path("bolt.stp"); }
};

TEST_F(Import, OfOnePartMakesOnePart) {
  const auto outcome = RunBare({"import", ImportedPart(), "--work", elsewhere.Path()});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, HasSubstr("holds no assembly: it is one part"));
  EXPECT_THAT(elsewhere.Names(), ElementsAre("bolt.lwt", "bolt.stp"));
}

TEST_F(Import, NeverReplacesTheFileThatIsImported) {
  const auto before = work.Read("bolt.stp");

  const auto outcome = Run({"import", ImportedPart(), "--replace"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("'bolt.stp' would replace the very file that is imported"));
  EXPECT_EQ(work.Read("bolt.stp"), before);
}

TEST_F(Import, RefusesToReplaceWhatIsThere) {
  work.Write("nut.stp", "mine");
  const auto names = work.Names();

  const auto outcome = Run({"import", Data("as1-oc-214.stp")});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("and 17 more files exist already"), HasSubstr("--replace")));
  EXPECT_EQ(work.Names(), names);
  EXPECT_EQ(work.Read("nut.stp"), "mine");
}

TEST_F(Import, ReplacesWhatIsThereWhenToldTo) {
  const auto before = work.Read("nut.stp");
  work.Write("nut.stp", "mine");
  const auto names = work.Names();

  const auto outcome = Run({"import", Data("as1-oc-214.stp"), "--replace"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(work.Names(), names);
  EXPECT_EQ(work.Read("nut.stp"), before);
}

TEST_F(Import, OfTheSameFileGivesTheSameFiles) {
  RunBare({"import", Data("as1-oc-214.stp"), "--work", elsewhere.Path()});

  for (const auto& name : elsewhere.Names()) EXPECT_TRUE(elsewhere.Read(name) == work.Read(name)) << name;
}

TEST_F(Import, WritesNothingInADryRun) {
  const auto outcome = RunBare({"import", Data("as1-oc-214.stp"), "--dry-run", "--work", elsewhere.Path()});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("l-bracket-assembly"), HasSubstr("nothing written, as asked: 18 files")));
  EXPECT_THAT(elsewhere.Names(), IsEmpty());
}

TEST_F(Import, ListsTheNamesThatItChanged) {
  const auto outcome = RunBare({"import", Data("as1_pe_203.stp"), "--dry-run", "--work", elsewhere.Path()});

  EXPECT_THAT(outcome.out, AllOf(HasSubstr("names that were changed:"), HasSubstr("because")));
}

TEST_F(Import, ListsNothingWhenNoNameWasChanged) {
  const auto outcome = RunBare({"import", ImportedPart(), "--dry-run", "--work", elsewhere.Path()});

  EXPECT_THAT(outcome.out, Not(HasSubstr("names that were changed")));
}

TEST_F(Import, TakesAnAssemblyOfSeveralFiles) {
  const auto outcome = RunBare({"import", Data("s1-c5-214/s1-c5-214.stp"), "--work", elsewhere.Path()});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_GT(elsewhere.Names().size(), 10U);
}

TEST_F(Import, ShowsItsProgressOnATerminalOnly) {
  terminal.errors = true;
  const auto shown = RunBare({"import", Data("as1-oc-214.stp"), "--work", elsewhere.Path()});
  terminal.errors = false;
  const auto silent = RunBare({"import", Data("as1-oc-214.stp"), "--replace", "--work", elsewhere.Path()});

  EXPECT_THAT(shown.errors, AllOf(HasSubstr("% Writing nut"), ::testing::EndsWith("\r\x1b[K")));
  EXPECT_THAT(silent.errors, IsEmpty());
}

}  // namespace
}  // namespace quintara::test
