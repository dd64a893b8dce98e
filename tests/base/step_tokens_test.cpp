#include "base/step_tokens.h"

#include <gmock/gmock.h>

#include <string>

namespace quintara {
namespace {

using std::string_view;
using testing::SizeIs;

string_view WithoutBlanks(string_view text) {
  SkipStepBlanks(text);
  return text;
}

StepStatement FirstOf(string_view bytes) {
  StepStatement statement;
  EXPECT_TRUE(StepStatements(bytes).Next(statement)) << bytes;
  return statement;
}

bool HasStatement(string_view bytes) {
  StepStatement statement;
  return StepStatements(bytes).Next(statement);
}

TEST(WithoutByteOrderMark, TakesOneAwayAndNothingElse) {
  EXPECT_EQ(WithoutByteOrderMark("\xEF\xBB\xBFISO"), "ISO");
  EXPECT_EQ(WithoutByteOrderMark("\xEF\xBBISO"), "\xEF\xBBISO");
  EXPECT_EQ(WithoutByteOrderMark(""), "");
}

TEST(SkipStepBlanks, TakesCommentsForBlanks) {
  EXPECT_EQ(WithoutBlanks(" \r\n\t/* ; ' */\v\f/**/#1"), "#1");
  EXPECT_EQ(WithoutBlanks("/x"), "/x");
}

TEST(SkipStepBlanks, TakesEverythingWhereACommentDoesNotEnd) {
  EXPECT_EQ(WithoutBlanks("/* #1=A();"), "");
  EXPECT_EQ(WithoutBlanks("/*/"), "");
}

TEST(TakeStepText, KeepsDoubledQuotes) {
  string_view rest = "'it''s',2";

  EXPECT_EQ(TakeStepText(rest), "it''s");
  EXPECT_EQ(rest, ",2");
}

TEST(TakeStepText, TakesEverythingWhereItDoesNotEnd) {
  for (const string_view bytes : {"'", "'abc", "'abc''"}) {
    auto rest = bytes;
    EXPECT_EQ(TakeStepText(rest), bytes.substr(1));
    EXPECT_EQ(rest, "");
  }
}

TEST(TakeStepReference, TakesTheNumberOfAnEntity) {
  string_view rest = "#12,#3";

  EXPECT_EQ(TakeStepReference(rest), 12U);
  EXPECT_EQ(rest, ",#3");
}

TEST(TakeStepReference, LeavesAnythingElse) {
  for (const string_view bytes : {"", "12", "#", "# 1", "#-1", "#x", "#99999999999999999999999"}) {
    auto rest = bytes;
    EXPECT_FALSE(TakeStepReference(rest)) << bytes;
    EXPECT_EQ(rest, bytes);
  }
}

TEST(StepStatements, HaveANumberAKeywordAndParameters) {
  const auto statement = FirstOf(" /* c */ #7 = PLANE('a;',/* ; */#8);#8=B();");

  EXPECT_EQ(statement.id, 7U);
  EXPECT_EQ(statement.keyword, "PLANE");
  EXPECT_EQ(statement.parameters, "('a;',/* ; */#8)");
}

TEST(StepStatements, MayHaveNoNumber) {
  EXPECT_EQ(FirstOf("ISO-10303-21;").keyword, kStepBegin);
  EXPECT_FALSE(FirstOf("ENDSEC;").id);
  EXPECT_FALSE(FirstOf("#1 PLANE();").id) << "it has no equals sign";
}

TEST(StepStatements, EndWhereOneBreaksOff) {
  for (const string_view bytes : {"", " ", "/* ;", "#1=A()", "#1=A(';", "#1=A(/*;"}) EXPECT_FALSE(HasStatement(bytes));
}

TEST(ParametersOfAStatement, AreTextsReferencesAndOthers) {
  const auto parameters = ParametersOf(FirstOf("#1=A( 'x''y' , #2,$,(#3,'no'), 1.5 );"));

  ASSERT_THAT(parameters, SizeIs(5));
  EXPECT_EQ(parameters[0].text, "x''y");
  EXPECT_EQ(parameters[1].reference, 2U);
  for (const auto i : {2U, 3U, 4U}) EXPECT_FALSE(parameters[i].text || parameters[i].reference) << i;
}

TEST(ParametersOfAStatement, AreNoneWithoutABracket) {
  EXPECT_THAT(ParametersOf(FirstOf("#1=A;")), SizeIs(0));
  EXPECT_THAT(ParametersOf(FirstOf("#1=A 'x';")), SizeIs(0));
}

TEST(ParametersOfAStatement, AreAsManyAsCanBeRead) {
  const auto parameters = ParametersOf(FirstOf("#1=A('x',(#2;"));

  ASSERT_THAT(parameters, SizeIs(2));
  EXPECT_EQ(parameters[0].text, "x");
}

}  // namespace
}  // namespace quintara
