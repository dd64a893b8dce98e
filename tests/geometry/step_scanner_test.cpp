#include "geometry/step_scanner.h"

#include <gmock/gmock.h>

#include <string>

namespace quintara::test {
namespace {

using testing::HasSubstr;

std::string FaultIn(const std::string& data) {
  const auto text = "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n" + data + "\nENDSEC;\nEND-ISO-10303-21;\n";
  return StepScanner(text).Fault();
}

TEST(StepScanner, FindsNothingInAWholeFile) {
  EXPECT_EQ(FaultIn("#1=A('it''s; #9',(#2,.T.,*,$,-1.E-3));\n/* #8 ; */ #2 = (B()C('\\X2\\00E4\\X0\\'));"), "");
}

TEST(StepScanner, ReadsNoFurtherThanTheEndMark) {
  EXPECT_EQ(FaultIn("#1=A();\nENDSEC;\nEND-ISO-10303-21;\n((("), "");
}

TEST(StepScanner, TakesTextForTextWhateverItHolds) {
  EXPECT_EQ(FaultIn("#1=A('END-ISO-10303-21; ( \x01 \xE4 /*');"), "");
}

TEST(StepScanner, FindsAMissingEndMark) {
  EXPECT_EQ(StepScanner("ISO-10303-21;\nDATA;\n#1=A();\n").Fault(), "is cut off: its end mark is missing");
  EXPECT_EQ(StepScanner("ISO-10303-21;\nDATA;\n#1=A('").Fault(), "is cut off: its end mark is missing");
  EXPECT_EQ(StepScanner("ISO-10303-21;\n/*").Fault(), "is cut off: its end mark is missing");
}

TEST(StepScanner, TellsTheLineOfABrokenStatement) {
  EXPECT_EQ(FaultIn("#1=A();\n#2=A((;"), "is damaged in the statement that begins in line 6");
}

TEST(StepScanner, FindsParenthesesThatDontMatch) {
  EXPECT_THAT(FaultIn("#1=A());"), HasSubstr("is damaged in the statement"));
  EXPECT_THAT(FaultIn("#1=A(();"), HasSubstr("is damaged in the statement"));
}

TEST(StepScanner, FindsBytesThatStandInNoText) {
  EXPECT_THAT(FaultIn("#1=A(\x01);"), HasSubstr("is damaged in the statement"));
  EXPECT_THAT(FaultIn("#1=A(\xE4);"), HasSubstr("is damaged in the statement"));
}

TEST(StepScanner, FindsAnEntityWithoutContent) {
  EXPECT_THAT(FaultIn("#1;"), HasSubstr("is damaged in the statement"));
  EXPECT_THAT(FaultIn("#1 2=A();"), HasSubstr("is damaged in the statement"));
}

TEST(StepScanner, FindsAnEntityThatIsMissing) {
  EXPECT_EQ(FaultIn("#1=A(#1,#7,#7);"), "is damaged: it refers to #7, which it does not have");
}

TEST(StepScanner, FindsAnEntityThatIsThereTwice) {
  EXPECT_EQ(FaultIn("#1=A();\n#2=A();\n#1=B();"), "is damaged: it has two entities #1");
}

}  // namespace
}  // namespace quintara::test
