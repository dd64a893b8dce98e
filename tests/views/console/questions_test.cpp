#include "views/console/questions.h"

#include <sstream>

namespace quintara {
namespace {

using ::testing::EndsWith;

struct AQuestion : ::testing::Test {
  std::istringstream typed;
  std::ostringstream shown;

  std::optional<std::size_t> Choose() { return AskChoice(typed, shown, "Which one?", {"first", "second"}); }
};

TEST_F(AQuestion, ForASecretGivesTheLineAsItStands) {
  typed.str(" two words \r\nnext\n");

  EXPECT_EQ(AskSecret(typed, shown, "Password: "), " two words ");
  EXPECT_EQ(shown.str(), "Password: \n");
}

TEST_F(AQuestion, ForASecretGivesNothingAtTheEndOfTheInput) {
  EXPECT_EQ(AskSecret(typed, shown, "Password: "), std::nullopt);
}

TEST_F(AQuestion, ForAChoiceShowsANumberedList) {
  typed.str("2\n");

  EXPECT_EQ(Choose(), 1U);
  EXPECT_EQ(shown.str(), "Which one?\n  1  first\n  2  second\nNumber, or nothing for none [1-2] ");
}

TEST_F(AQuestion, ForAChoiceIsAskedAgainUntilANumberIsMeant) {
  typed.str("0\n3\nx\n1x\n-1\n99999999999999999999999\n 1 \n");

  EXPECT_EQ(Choose(), 0U);
}

TEST_F(AQuestion, ForAChoiceIsDismissedByNothing) {
  typed.str("\n1\n");

  EXPECT_EQ(Choose(), std::nullopt);
}

TEST_F(AQuestion, ForAChoiceIsDismissedByTheEndOfTheInput) {
  EXPECT_EQ(Choose(), std::nullopt);
  EXPECT_THAT(shown.str(), EndsWith("\n"));
}

TEST_F(AQuestion, CannotSteerTheTerminal) {
  AskChoice(typed, shown, "a\x1b[2J", {"b\nc"});

  EXPECT_THAT(shown.str(), ::testing::StartsWith("a?[2J\n  1  b?c\n"));
}

TEST_F(AQuestion, ThatWaitsForAReaderTakesOneLine) {
  typed.str("x\nnext\n");

  AwaitEnter(typed, shown);

  std::string rest;
  std::getline(typed, rest);
  EXPECT_EQ(rest, "next");
  EXPECT_EQ(shown.str(), "Enter goes on ");
}

TEST_F(AQuestion, ThatWaitsForAReaderGoesOnAtTheEndOfTheInput) {
  AwaitEnter(typed, shown);

  EXPECT_EQ(shown.str(), "Enter goes on \n");
}

}  // namespace
}  // namespace quintara
