#include <filesystem>

#include "apps/quintara/cli_fixture.h"
#include "base/text.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

class Boxes : public CliWithAs1 {
 protected:
  // A product is asked about before it is loaded without one of its files.
  Outcome TreeWithoutABolt(std::vector<std::string> options = {}) {
    std::filesystem::remove(ToPath(work.Path("bolt.stp")));
    options.insert(options.begin(), {"tree", "nut-bolt-assembly"});
    return Run(options);
  }
};

TEST_F(Boxes, AQuestionThatNobodyCanAnswerIsAnsweredNo) {
  const auto outcome = TreeWithoutABolt();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("bolt.stp"), HasSubstr("Load it all the same? [Yes/No] No\n")));
}

TEST_F(Boxes, AQuestionIsAnsweredYesWhenToldTo) {
  const auto outcome = TreeWithoutABolt({"--yes"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.out, HasSubstr("not loaded"));
  EXPECT_THAT(outcome.errors, HasSubstr("[Yes/No] Yes\n"));
}

TEST_F(Boxes, AQuestionIsAskedOnATerminal) {
  terminal.input = terminal.errors = true;
  typed = "y\n";

  const auto outcome = TreeWithoutABolt();

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.errors, ::testing::EndsWith("[Yes/No] "));
}

TEST_F(Boxes, AQuestionIsNotAskedWhenToldNo) {
  terminal.input = terminal.errors = true;
  typed = "y\n";

  EXPECT_EQ(TreeWithoutABolt({"--no"}).exitCode, kFailed);
}

TEST_F(Boxes, AQuestionIsNotAskedWhenItCannotBeSeen) {
  terminal.input = true;
  typed = "y\n";

  EXPECT_EQ(TreeWithoutABolt().exitCode, kFailed);
}

TEST_F(Boxes, AFailureIsShownOnStandardErrorWithItsTitle) {
  work.Write("broken.xml", "<PART");

  const auto outcome = Run({"position", "as1", "--matrix", "broken.xml"});

  EXPECT_THAT(outcome.errors,
              ::testing::StartsWith("QNTR (error): Error in loading XML file \"" + work.Path("broken.xml")));
}

TEST_F(Boxes, AFailureThatWasShownIsExitCodeOneEvenWithYes) {
  work.Write("broken.xml", "<PART");

  EXPECT_EQ(Run({"position", "as1", "--matrix", "broken.xml", "--yes"}).exitCode, kFailed);
}

TEST_F(Boxes, AFailureDoesNotWaitForAnyone) {
  work.Write("broken.xml", "<PART");
  terminal = {true, true, true, true, 80};

  const auto outcome = Run({"position", "as1", "--matrix", "broken.xml"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("stays as it was"));
}

}  // namespace
}  // namespace quintara::test
