#include "views/win32/mnemonics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text16_windows.h"

namespace quintara::win32 {
namespace {

using testing::ElementsAre;

std::vector<std::string> Marked(const std::vector<std::string>& captions) {
  std::vector<std::wstring> wide;
  for (const auto& caption : captions) wide.push_back(Wide(caption));
  std::vector<std::string> marked;
  for (const auto& caption : WithMnemonics(wide)) marked.push_back(Narrow(caption));
  return marked;
}

TEST(Mnemonics, AreTheFirstLettersOfCaptionsWhereTheseDiffer) {
  EXPECT_THAT(Marked({"Find...", "Show..."}), ElementsAre("&Find...", "&Show..."));
}

TEST(Mnemonics, AreTheFirstLetterOfAnotherWordWhereTheFirstIsTaken) {
  EXPECT_THAT(Marked({"Expand All", "Expand None"}), ElementsAre("&Expand All", "Expand &None"));
}

TEST(Mnemonics, TakeALetterWithinAWordOnlyWhenNoWordIsLeft) {
  EXPECT_THAT(Marked({"Find", "Form", "Old"}), ElementsAre("&Find", "Fo&rm", "&Old"));
}

TEST(Mnemonics, AreTheSameForCapitalsAndSmallLetters) {
  EXPECT_THAT(Marked({"find", "Fix"}), ElementsAre("&find", "F&ix"));
}

TEST(Mnemonics, AreNoLettersWithAccents) {
  EXPECT_THAT(Marked({"Écran"}), ElementsAre("É&cran"));
}

TEST(Mnemonics, AreTheOnlySignOfACaption) {
  EXPECT_THAT(Marked({"<", ">"}), ElementsAre("&<", "&>"));
}

TEST(Mnemonics, AreLeftOutWhereEveryLetterIsTaken) {
  EXPECT_THAT(Marked({"a", "b", "ab"}), ElementsAre("&a", "&b", "ab"));
}

TEST(Mnemonics, AreNoneInAnEmptyCaption) {
  EXPECT_THAT(Marked({"", "..."}), ElementsAre("", "..."));
}

TEST(Mnemonics, LeaveTheirSignInACaptionAsItIs) {
  EXPECT_THAT(Marked({"A & B", "&", "R&D"}), ElementsAre("&A && B", "&&", "&R&&D"));
  EXPECT_EQ(Narrow(Escaped(Wide("R&D & more"))), "R&&D && more");
}

TEST(Mnemonics, BeginAWordBehindASpaceThatHoldsTogether) {
  EXPECT_THAT(Marked({"Nom", "Nom WIP"}), ElementsAre("&Nom", "Nom &WIP"));
}

}  // namespace
}  // namespace quintara::win32
