#include "views/console/message_boxes.h"

#include <sstream>

#include "access/contracts/platform.h"

namespace quintara {
namespace {

using Answers = MessageBoxes::Answers;
constexpr int kYesNo = box::kYesNo + box::kQuestion + box::kSystemModal;
constexpr int kOkCancel = box::kOkCancel;

struct AMessageBox : ::testing::Test {
  std::istringstream typed;
  std::ostringstream shown;

  int AnswerTo(int style, Answers answers) { return MessageBoxes(typed, shown, answers).Show("Go on?", style, "QNTR"); }
  bool IsFailure(int style, const std::string& text = "text") {
    MessageBoxes boxes(typed, shown, Answers::kNo, [](const std::string& shownText) { return shownText == "done"; });
    boxes.Show(text, style, "QNTR");
    return boxes.FailureShown();
  }
};

TEST_F(AMessageBox, WithoutAnyoneToAskIsAnsweredNo) {
  EXPECT_EQ(AnswerTo(kYesNo, Answers::kNo), answer::kNo);
  EXPECT_EQ(shown.str(), "QNTR (question): Go on? [Yes/No] No\n");
}

TEST_F(AMessageBox, WithoutAnyoneToAskIsCancelled) {
  EXPECT_EQ(AnswerTo(kOkCancel, Answers::kNo), answer::kCancel);
  EXPECT_EQ(shown.str(), "QNTR: Go on? [OK/Cancel] Cancel\n");
}

TEST_F(AMessageBox, IsAnsweredYesWhenAllIsToBeAgreedTo) {
  EXPECT_EQ(AnswerTo(kYesNo, Answers::kYes), answer::kYes);
}

TEST_F(AMessageBox, IsAnsweredOkWhenAllIsToBeAgreedTo) {
  EXPECT_EQ(AnswerTo(kOkCancel, Answers::kYes), answer::kOk);
}

TEST_F(AMessageBox, TakesTheAnswerThatIsTyped) {
  typed.str("yes\n");

  EXPECT_EQ(AnswerTo(kYesNo, Answers::kAsk), answer::kYes);
}

TEST_F(AMessageBox, TakesTheFirstLetterOfAButton) {
  typed.str("  C \r\n");

  EXPECT_EQ(AnswerTo(kOkCancel, Answers::kAsk), answer::kCancel);
}

TEST_F(AMessageBox, AsksAgainUntilAButtonIsMeant) {
  typed.str("perhaps\n\n\xFF\nNO\n");

  EXPECT_EQ(AnswerTo(kYesNo, Answers::kAsk), answer::kNo);
  EXPECT_EQ(shown.str(), "QNTR (question): Go on? [Yes/No]  [Yes/No]  [Yes/No]  [Yes/No] ");
}

TEST_F(AMessageBox, TakesTheEndOfTheInputForNo) {
  EXPECT_EQ(AnswerTo(kYesNo, Answers::kAsk), answer::kNo);
}

TEST_F(AMessageBox, WithOkAloneNeverWaits) {
  typed.str("unread\n");

  EXPECT_EQ(AnswerTo(box::kCritical, Answers::kAsk), answer::kOk);
  EXPECT_EQ(typed.tellg(), 0);
}

TEST_F(AMessageBox, ThatIsCriticalIsAFailure) {
  EXPECT_TRUE(IsFailure(box::kCritical));
  EXPECT_TRUE(IsFailure(box::kCritical + box::kSystemModal));
}

TEST_F(AMessageBox, ThatWarnsIsAFailure) {
  EXPECT_TRUE(IsFailure(box::kWarning));
}

TEST_F(AMessageBox, ThatInformsIsAFailureToo) {
  EXPECT_TRUE(IsFailure(box::kInformation));
  EXPECT_TRUE(IsFailure(box::kInformation + box::kSystemModal));
  EXPECT_TRUE(IsFailure(box::kOkOnly));
}

TEST_F(AMessageBox, ThatTellsOfSuccessIsNone) {
  EXPECT_FALSE(IsFailure(box::kInformation + box::kSystemModal, "done"));
}

TEST_F(AMessageBox, IsAFailureWhereNothingTellsOfSuccess) {
  MessageBoxes boxes(typed, shown, Answers::kNo);

  boxes.Show("done", box::kInformation, "QNTR");

  EXPECT_TRUE(boxes.FailureShown());
}

TEST_F(AMessageBox, KeepsAFailureInMindAfterASuccess) {
  MessageBoxes boxes(typed, shown, Answers::kNo, [](const std::string& text) { return text == "done"; });

  boxes.Show("broken", box::kInformation, "QNTR");
  boxes.Show("done", box::kInformation, "QNTR");

  EXPECT_TRUE(boxes.FailureShown());
}

TEST_F(AMessageBox, ShowsItsSign) {
  MessageBoxes boxes(typed, shown, Answers::kNo);

  for (const int style : {0, 16, 48, 64, 4112, 4160, 4132}) boxes.Show("text", style, "QNTR");

  EXPECT_EQ(shown.str(),
            "QNTR: text\nQNTR (error): text\nQNTR (warning): text\nQNTR (information): text\nQNTR (error): text\n"
            "QNTR (information): text\nQNTR (question): text [Yes/No] No\n");
}

TEST_F(AMessageBox, WithoutATextSaysSo) {
  MessageBoxes(typed, shown, Answers::kNo).Show("", box::kCritical, "QNTR");

  EXPECT_EQ(shown.str(), "QNTR (error): (no text)\n");
  EXPECT_TRUE(IsFailure(box::kCritical, ""));
}

TEST_F(AMessageBox, ThatAsksIsNone) {
  EXPECT_FALSE(IsFailure(kYesNo));
  EXPECT_FALSE(IsFailure(kOkCancel + box::kCritical));
}

TEST_F(AMessageBox, CannotSteerTheTerminal) {
  MessageBoxes(typed, shown, Answers::kNo).Show("a\x1b[2J\nb", box::kInformation, "QN\nTR");

  EXPECT_EQ(shown.str(), "QN?TR (information): a?[2J\nb\n");
}

}  // namespace
}  // namespace quintara
