#include "views/console/screen_text.h"

namespace quintara {
namespace {

TEST(ScreenWidthOf, AnEmptyTextIsNothing) {
  EXPECT_EQ(ScreenWidth(""), 0U);
}

TEST(ScreenWidthOf, AnAccentedLetterIsOneColumn) {
  EXPECT_EQ(ScreenWidth("Gehäuse"), 7U);
}

TEST(ScreenWidthOf, ACombiningAccentTakesNoColumn) {
  EXPECT_EQ(ScreenWidth("e\u0301"), 1U);
}

TEST(ScreenWidthOf, AnIdeographTakesTwoColumns) {
  EXPECT_EQ(ScreenWidth("部品"), 4U);
}

TEST(ScreenWidthOf, ABrokenByteTakesOneColumn) {
  EXPECT_EQ(ScreenWidth("a\xFF"), 2U);
}

TEST(OneLineOf, KeepsPrintableText) {
  EXPECT_EQ(OneLine("Träger 部品"), "Träger 部品");
}

TEST(OneLineOf, AnEscapeSequenceLosesItsPower) {
  EXPECT_EQ(OneLine("\x1b[2Jx"), "?[2Jx");
}

TEST(OneLineOf, LineBreaksAndTabulatorsBecomeQuestionMarks) {
  EXPECT_EQ(OneLine("a\nb\tc"), "a?b?c");
}

TEST(OneLineOf, AControlCharacterOfTwoBytesBecomesAQuestionMark) {
  EXPECT_EQ(OneLine("a\u009Bb"), "a?b");
}

TEST(OneLineOf, WhatIsNoUtf8BecomesAQuestionMark) {
  EXPECT_EQ(OneLine("a\xC3"), "a?");
}

TEST(LinesOf, KeepLineBreaksOfBothKinds) {
  EXPECT_EQ(Lines("a\r\nb\nc\x07"), "a\nb\nc?");
}

TEST(CutToWidthOf, ATextThatFitsStays) {
  EXPECT_EQ(CutToWidth("Gehäuse", 7), "Gehäuse");
}

TEST(CutToWidthOf, NeverCutsACharacterInTwo) {
  EXPECT_EQ(CutToWidth("Gehäuse", 4), "Gehä");
}

TEST(CutToWidthOf, AWideCharacterThatFitsByHalfIsLeftOut) {
  EXPECT_EQ(CutToWidth("部品", 3), "部");
}

}  // namespace
}  // namespace quintara
