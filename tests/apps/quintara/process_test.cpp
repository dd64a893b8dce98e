#include <sys/wait.h>

#include <cstdlib>

#include "apps/quintara/cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

// The built program as a process of its own, on the shell's road.
class TheProgram : public CliWithAs1 {
 protected:
  Outcome RunInShell(const std::string& rest) {
    const auto command = "cd '" + work.Path() + "' && '" QUINTARA_PROGRAM "' " + rest + " >'" + elsewhere.Path("out") +
                         "' 2>'" + elsewhere.Path("errors") + "' </dev/null";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, elsewhere.Read("out"), elsewhere.Read("errors")};
  }
};

TEST_F(TheProgram, WorksInTheCurrentDirectory) {
  const auto outcome = RunInShell("position as1 --matrix 'as1 Matrix.xml' --all-instances");

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.out, HasSubstr("placed 18 components"));
  EXPECT_THAT(outcome.errors, IsEmpty());
}

TEST_F(TheProgram, TellsItsVersion) {
  EXPECT_THAT(RunInShell("--version").out, ::testing::MatchesRegex("quintara [0-9.]+\n"));
}

TEST_F(TheProgram, EndsWithTwoOnWrongUse) {
  const auto outcome = RunInShell("explode");

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.out, IsEmpty());
}

TEST_F(TheProgram, EndsWithOneOnAFailure) {
  EXPECT_EQ(RunInShell("flatten as1").exitCode, kFailed);
}

TEST_F(TheProgram, TakesNamesBeyondAscii) {
  const auto outcome = RunInShell("flatten as1 --name 'Träger 部品'");

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_TRUE(work.Has("WIP~~Träger 部品.ZVAProduct"));
}

TEST_F(TheProgram, FailsWhenItsResultCannotBeWritten) {
  const auto command =
      "'" QUINTARA_PROGRAM "' tree as1 --work '" + work.Path() + "' >/dev/full 2>'" + elsewhere.Path("errors") + "'";

  const int status = std::system(command.c_str());

  EXPECT_EQ(WEXITSTATUS(status), kFailed);
  EXPECT_THAT(elsewhere.Read("errors"), HasSubstr("the result can't be written"));
}

TEST_F(TheProgram, SaysThatThereIsNoFolderForTemporaryFiles) {
  const auto command = "TMPDIR='" + work.Path("nowhere") + "' '" QUINTARA_PROGRAM "' import '" +
                       Data("as1-oc-214.stp") + "' --work '" + elsewhere.Path() + "' 2>'" + work.Path("errors") + "'";

  const int status = std::system(command.c_str());

  EXPECT_EQ(WEXITSTATUS(status), kFailed);
  EXPECT_THAT(work.Read("errors"), HasSubstr("There is no folder for temporary files"));
}

// As a timeout does: to the process, and again to its group.
TEST_F(TheProgram, CleansUpAfterAnInterruptionThatComesTwice) {
  const auto staging = "'" + elsewhere.Path(".quintara-import-1") + "'";
  const auto command = "'" QUINTARA_PROGRAM "' import '" + Data("as1-oc-214.stp") + "' --work '" + elsewhere.Path() +
                       "' 2>'" + work.Path("errors") + "' & running=$!; while [ ! -e " + staging +
                       " ] && kill -0 $running; do :; done; kill -TERM $running; sleep 0.01; kill -TERM $running; "
                       "wait $running";

  const int status = std::system(command.c_str());

  EXPECT_EQ(WEXITSTATUS(status), kFailed);
  EXPECT_THAT(work.Read("errors"), HasSubstr("interrupted"));
  EXPECT_FALSE(elsewhere.Has(".quintara-import-1"));
  EXPECT_FALSE(elsewhere.Has("as1.ZVAProduct"));
}

}  // namespace
}  // namespace quintara::test
