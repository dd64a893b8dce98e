#include "automation/driver/steps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quintara::driver {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> WordsOf(const std::string& line, const Variables& variables = {}) {
  const auto steps = ReadSteps(line, variables);
  return steps.size() == 1 ? steps[0].words : std::vector<std::string>{};
}

std::string FailureOf(const std::string& text) {
  try {
    ReadSteps(text, {});
  } catch (const Failed& failed) {
    return failed.what();
  }
  return {};
}

TEST(Steps, StandALineEachWithItsNumber) {
  EXPECT_THAT(ReadSteps("wait A\r\n\n  press \tOK \n", {}),
              ElementsAre(Step{1, {"wait", "A"}}, Step{3, {"press", "OK"}}));
}

TEST(Steps, AreNotWhatStandsBehindAMark) {
  EXPECT_THAT(ReadSteps("# all\n#all\n   # more\n", {}), IsEmpty());
  EXPECT_THAT(WordsOf("press OK # twice"), ElementsAre("press", "OK"));
}

TEST(Steps, HaveMarksWithinWords) {
  EXPECT_THAT(WordsOf("say C#1 \"# one\""), ElementsAre("say", "C#1", "# one"));
}

TEST(Steps, HaveBlanksAndSignsInQuotes) {
  EXPECT_THAT(WordsOf(R"(say "a b" "" "x\n\"y\"\\\t")"), ElementsAre("say", "a b", "", "x\n\"y\"\\\t"));
}

TEST(Steps, KeepBackslashesOutsideOfQuotes) {
  EXPECT_THAT(WordsOf(R"(start C:\new\table.exe)"), ElementsAre("start", R"(C:\new\table.exe)"));
}

TEST(Steps, GetWhatStandsForANameAsOneWord) {
  const Variables variables = {{"TITLE", "Two words \"and\""}, {"N", "5"}};

  EXPECT_THAT(WordsOf("wait ${TITLE} a${N}b \"${N} ${N}\"", variables),
              ElementsAre("wait", "Two words \"and\"", "a5b", "5 5"));
}

TEST(Steps, AreRefusedWithTheLineOfTheMistake) {
  EXPECT_EQ(FailureOf("wait A\nsay \"open"), "line 2: a quote isn't closed");
  EXPECT_EQ(FailureOf("say \"a\"b"), "line 1: a blank is missing behind a quote");
  EXPECT_EQ(FailureOf("say \"\\q\""), "line 1: \\q means nothing");
  EXPECT_EQ(FailureOf("say ${A"), "line 1: a ${ isn't closed");
  EXPECT_EQ(FailureOf("say ${A}"), "line 1: nothing was given for ${A}");
}

TEST(Steps, AreRefusedWhereAQuoteEndsInABackslash) {
  EXPECT_THAT(FailureOf("say \"a\\"), HasSubstr("means nothing"));
}

TEST(Quoted, IsReadBackAsItWas) {
  const std::string text = "a \"b\"\n\tC:\\new";

  EXPECT_THAT(WordsOf("say " + Quoted(text)), ElementsAre("say", text));
}

}  // namespace
}  // namespace quintara::driver
