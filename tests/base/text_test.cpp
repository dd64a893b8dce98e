#include "base/text.h"
#include "base/trimmed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"

namespace quintara {
namespace {

using ::testing::ElementsAre;

TEST(IsUtf8, TakesEveryPlane) {
  EXPECT_TRUE(IsUtf8(""));
  EXPECT_TRUE(IsUtf8("plain text that is longer than a word"));
  EXPECT_TRUE(IsUtf8("\xC3\xA4 \xE9\x83\xA8 \xF0\x9F\x94\xA9"));
}

TEST(IsUtf8, RefusesWhatIsNotWellFormed) {
  for (const std::string bytes :
       {"\xE4", "abcdefgh\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xC3", "\x80"}) {
    EXPECT_FALSE(IsUtf8(bytes));
  }
}

TEST(TakeCharacter, TakesCharactersAndBrokenBytesOneByOne) {
  std::string_view rest = "a\xC3\xA4\xFF\xE9\x83";
  std::vector<std::int32_t> codes;

  while (!rest.empty()) codes.push_back(TakeCharacter(rest).code);

  EXPECT_EQ(codes, (std::vector<std::int32_t>{'a', 0xE4, -1, -1, -1}));
}

TEST(AppendCharacter, GivesBackWhatWasTaken) {
  const std::string text = "a\xC3\xA4\xE9\x83\xA8\xF0\x9F\x94\xA9";
  std::string copy;

  for (std::string_view rest = text; !rest.empty();) AppendCharacter(copy, TakeCharacter(rest).code);

  EXPECT_EQ(copy, text);
}

TEST(ScreenColumns, AreThoseOfATerminal) {
  EXPECT_EQ(ScreenColumns({"a", 'a'}), 1U);
  EXPECT_EQ(ScreenColumns({"\xE9\x83\xA8", 0x90E8}), 2U);
  EXPECT_EQ(ScreenColumns({"\xCC\x81", 0x301}), 0U);
  EXPECT_EQ(ScreenColumns({"\xFF", -1}), 1U);
}

TEST(IsControlCharacter, IsTrueForBothRangesAndBrokenBytes) {
  EXPECT_TRUE(IsControlCharacter({"\x1B", 0x1B}));
  EXPECT_TRUE(IsControlCharacter({"\xC2\x9B", 0x9B}));
  EXPECT_TRUE(IsControlCharacter({"\xFF", -1}));
  EXPECT_FALSE(IsControlCharacter({" ", ' '}));
  EXPECT_FALSE(IsControlCharacter({"\xC3\xA4", 0xE4}));
}

TEST(Capitals, FollowUnicodeAndNoLocale) {
  EXPECT_EQ(Capitals("bolt i"), "BOLT I");
  EXPECT_EQ(Capitals("geh\xC3\xA4use"), "GEH\xC3\x84USE");
  EXPECT_EQ(Capitals("\xC3\x9F"), "\xC3\x9F") << "sharp s stays";
  EXPECT_THROW(Capitals("\xFF"), Failure);
}

TEST(MatchesPattern, ComparesTheWholeTextWithoutCase) {
  EXPECT_TRUE(MatchesPattern("bolt", "BOLT"));
  EXPECT_TRUE(MatchesPattern("*", ""));
  EXPECT_TRUE(MatchesPattern("L-*T", "l-bracket"));
  EXPECT_TRUE(MatchesPattern("?\xC3\xA4*", "H\xC3\x84user"));
  EXPECT_TRUE(MatchesPattern("a*b*c", "aXbYbZc"));
  EXPECT_TRUE(MatchesPattern("", ""));
}

TEST(MatchesPattern, RefusesAPartOfTheText) {
  EXPECT_FALSE(MatchesPattern("bol", "bolt"));
  EXPECT_FALSE(MatchesPattern("?", ""));
  EXPECT_FALSE(MatchesPattern("a*b", "abc"));
  EXPECT_FALSE(MatchesPattern("", "x"));
}

TEST(MatchesPattern, StaysQuickWithManyStars) {
  const std::string text(20'000, 'a');

  EXPECT_FALSE(MatchesPattern("*a*a*a*a*a*a*a*a*b", text));
}

TEST(Split, GivesThePiecesBetweenTheSeparatorsAsTheyStand) {
  EXPECT_THAT(Split("a,b,c", ','), ElementsAre("a", "b", "c"));
  EXPECT_THAT(Split(" a , b;c", ','), ElementsAre(" a ", " b;c"));
  EXPECT_THAT(Split("no separator", ','), ElementsAre("no separator"));
  EXPECT_THAT(Split("\xC3\xA4|\xE9\x83\xA8", '|'), ElementsAre("\xC3\xA4", "\xE9\x83\xA8"));
}

TEST(Split, GivesEmptyPiecesToo) {
  EXPECT_THAT(Split("", ','), ElementsAre(""));
  EXPECT_THAT(Split(",", ','), ElementsAre("", ""));
  EXPECT_THAT(Split(",a,,b,", ','), ElementsAre("", "a", "", "b", ""));
}

TEST(CodePage1252, GivesOneByteForEachUtf16Unit) {
  EXPECT_EQ(ToCodePage1252("\xC3\xA4\xE2\x82\xAC"), "\xE4\x80");
  EXPECT_EQ(ToCodePage1252("\xE9\x83\xA8"), "?");
  EXPECT_EQ(ToCodePage1252("\xF0\x9F\x94\xA9"), "??") << "a pair of units";
}

TEST(CodePage1252, GivesEveryByteBack) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);

  EXPECT_TRUE(IsUtf8(FromCodePage1252(bytes)));
  EXPECT_EQ(ToCodePage1252(FromCodePage1252(bytes)), bytes);
}

TEST(Paths, KeepUtf8) {
  EXPECT_EQ(FromPath(ToPath("Geh\xC3\xA4use \xE9\x83\xA8.stp")), "Geh\xC3\xA4use \xE9\x83\xA8.stp");
}

TEST(Trimmed, LosesBlanksAtBothEndsOnly) {
  EXPECT_EQ(Trimmed(" \t a b \r\n"), "a b");
  EXPECT_EQ(Trimmed("a"), "a");
}

TEST(Trimmed, IsEmptyWhereThereAreBlanksOnly) {
  EXPECT_EQ(Trimmed(" \n"), "");
  EXPECT_EQ(Trimmed(""), "");
}

TEST(Trimmed, LosesOnlyWhatCountsAsBlank) {
  EXPECT_EQ(Trimmed(" \ta ", " "), "\ta");
}

}  // namespace
}  // namespace quintara
