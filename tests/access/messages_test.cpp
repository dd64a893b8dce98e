#include "access/utils/messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>

#include "access/access_fixture.h"
#include "base/failure.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Messages : public ::testing::Test, protected AccessBench {
 protected:
  Variant Show(const std::string& text, const std::vector<Variant>& parameters = {}) {
    message = text;
    return utils.ShowMessage(message, 64, parameters);
  }

  std::string message;
  Cls_Utils utils;
};

TEST_F(Messages, AreShownInTheirStyleUnderTheTitle) {
  message = "Done";

  utils.ShowMessage(message, 4160, {});

  EXPECT_THAT(Boxes(), ElementsAre(Box{"Done", 4160, "Quintara"}));
}

TEST_F(Messages, GiveTheButtonAsA32BitInteger) {
  platform.answers = {answer::kYes};

  EXPECT_EQ(Show("Go on?"), Variant(std::int32_t{6}));
}

TEST_F(Messages, AreFilledInTheCallersText) {
  Show("REP2 of REP1", {"a", "b"});

  EXPECT_EQ(message, "b of a");
  EXPECT_THAT(Boxes(), ElementsAre(Told("b of a", 64)));
}

TEST_F(Messages, RepeatTheFirstValuesWhenShownAgain) {
  auto& text = Process().texts.QD_UTILS_UNABLE_TO_GET_NEXT_ID_SEQUENCE;

  quintara::Show(text, 64, "first");
  quintara::Show(text, 64, "second");

  EXPECT_THAT(Boxes(), ElementsAre(Told("no next value of first", 64), Told("no next value of first", 64)));
}

TEST_F(Messages, ReplaceATokenWhereverItStands) {
  Show("REP1REP1, XREP1X, REP1", {"a"});

  EXPECT_EQ(message, "aa, XaX, a");
}

TEST_F(Messages, TellTokensFromTheSameLettersInAnotherCase) {
  Show("rep1 Rep1 ent Ent", {"a"});

  EXPECT_EQ(message, "rep1 Rep1 ent Ent");
}

TEST_F(Messages, ReplaceTheFirstTokenInTheTenthToo) {
  Show("REP10", {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"});

  EXPECT_EQ(message, "a0");
}

TEST_F(Messages, ReplaceATokenThatAValueBringsIfItsTurnIsStillToCome) {
  Show("REP1 REP2 REP3", {"REP2", "REP1", "REP3"});

  EXPECT_EQ(message, "REP1 REP1 REP3");
}

TEST_F(Messages, KeepTheTokensThatHaveNoValue) {
  Show("REP1 REP2 REP0", {"a"});

  EXPECT_EQ(message, "a REP2 REP0");
}

TEST_F(Messages, LeaveValuesOutThatHaveNoToken) {
  Show("REP2", {"a", "b", "c"});

  EXPECT_EQ(message, "b");
}

TEST_F(Messages, BreakTheLineAtItsTokenInsideOfWordsToo) {
  Show("oneENTtwo PARENT ENTRY");

  EXPECT_EQ(message, "one\r\ntwo PAR\r\n \r\nRY");
}

TEST_F(Messages, BreakTheLineInValuesAndAcrossTheirEdges) {
  Show("REP1, EREP2T", {"xENTy", "N"});

  EXPECT_EQ(message, "x\r\ny, \r\n");
}

TEST_F(Messages, TakeValuesOfEachKindThatHasAText) {
  Show("REP1|REP2|REP3|REP4|REP5", {std::int16_t{-7}, std::int32_t{70000}, 2.5, true, Variant()});

  EXPECT_EQ(message, "-7|70000|2.5|True|");
}

TEST_F(Messages, FailWithAValueThatIsNoTextAndShowNothing) {
  try {
    Show("REP1 REP2", {"a", Variant(Ref<AnyObject>()), "c"});
    FAIL() << "an object has no text";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), failure::kTypeMismatch);
  }

  EXPECT_EQ(message, "a REP2");
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Messages, FailWithAValueThatIsNoTextAlsoWhereNoTokenAsksForIt) {
  EXPECT_THROW(Show("plain", {Variant(Ref<AnyObject>())}), Failure);
}

TEST_F(Messages, ThatAreEmptyShowTheTextForThatInItsOwnStyle) {
  const auto answer = Show("", {"a"});

  EXPECT_TRUE(answer.IsEmpty());
  EXPECT_THAT(Boxes(), ElementsAre(Told("Nothing to say", kCritical)));
}

TEST_F(Messages, ThatAreEmptyShowTheTextForThatAsItStands) {
  Process().texts.COMMON_UTILS_MESSAGE_IS_EMPTY.text = "REP1 ENT";

  Show("", {"a"});

  EXPECT_THAT(Boxes(), ElementsAre(Told("REP1 ENT", kCritical)));
  EXPECT_EQ(Process().texts.COMMON_UTILS_MESSAGE_IS_EMPTY.text, "REP1 ENT");
}

TEST_F(Messages, ThatAreEmptyShowAnEmptyBoxWithoutATextForThat) {
  Process().texts.COMMON_UTILS_MESSAGE_IS_EMPTY.text.clear();

  Show("");

  EXPECT_THAT(Boxes(), ElementsAre(Told("", kCritical)));
}

TEST_F(Messages, CanBecomeEmptyByTheirValuesAndAreShownAsTheyAre) {
  Show("REP1", {""});

  EXPECT_THAT(Boxes(), ElementsAre(Told("", 64)));
}

TEST_F(Messages, AsValuesLeaveTheirTextAlone) {
  const auto& text = Process().texts.COMMON_UNEXPECTED_ERROR;

  EXPECT_EQ(Filled(text, "A", "one"), "Failure in A: one");
  EXPECT_EQ(Filled(text, "B", "two"), "Failure in B: two");

  EXPECT_EQ(text.text, "Failure in REP1: REP2");
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Messages, AsValuesRepeatWhatWasShown) {
  auto& text = Process().texts.COMMON_UNEXPECTED_ERROR;
  quintara::Show(text, 16, "A", "one");

  EXPECT_EQ(Filled(text, "B", "two"), "Failure in A: one");
}

TEST_F(Messages, AsValuesBreakLinesToo) {
  EXPECT_EQ(utils.GetMessage("REP1ENT", {"ENT"}), "\r\n\r\n");
}

TEST_F(Messages, AsValuesAreEmptyForAnEmptyTextWithoutABoxOrALookAtTheValues) {
  EXPECT_EQ(utils.GetMessage("", {Variant(Ref<AnyObject>())}), "");

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Messages, AsValuesFailWithAValueThatIsNoText) {
  EXPECT_THROW(utils.GetMessage("REP1", {Variant(Ref<AnyObject>())}), Failure);
}

// A desktop that can't show a box.
class BadDesktop : public NativePlatform {
 public:
  BadDesktop() : NativePlatform(std::make_shared<Gate>(), &Refuse) {}

 private:
  static int Refuse(const std::string& /*text*/, int /*style*/, const std::string& /*title*/) {
    throw Failure(failure::kDeviceError, "no screen");
  }
};

class WithoutADesktop : public Messages {
 protected:
  WithoutADesktop() : before_(InstallPlatform(std::make_shared<BadDesktop>())) {}
  ~WithoutADesktop() override { InstallPlatform(before_); }

 private:
  std::shared_ptr<Platform> before_;
};

TEST_F(WithoutADesktop, AMessageFailsAtItsCallerAndIsFilledAllTheSame) {
  EXPECT_THROW(Show("REP1", {"a"}), Failure);

  EXPECT_EQ(message, "a");
}

TEST_F(WithoutADesktop, AReportFailsAtTheCallerOfWhatWasReported) {
  const auto body = []() -> bool { throw Failure(failure::kOverflow); };

  try {
    Reported("Cls_X.Y", 16, false, body);
    FAIL() << "the report can't be shown";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Description(), "no screen");
  }
}

TEST_F(Messages, OfFailuresNameTheMethodAndTheErrorAndGiveTheNeutralResult) {
  const auto body = []() -> int { throw Failure(failure::kDeviceError, "cable"); };

  EXPECT_EQ(Reported("Cls_X.Y", 4112, -1, body), -1);

  EXPECT_THAT(Boxes(), ElementsAre(Told("Failure in Cls_X.Y: cable", 4112)));
}

TEST_F(Messages, OfFailuresRepeatTheFirstOneToo) {
  const auto body = []() -> bool { throw Failure(failure::kOverflow); };
  const auto other = []() -> bool { throw std::bad_alloc(); };

  Reported("Cls_X.Y", 16, false, body);
  Reported("Cls_X.Z", 16, false, other);

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_X.Y", "Overflow"), Report("Cls_X.Y", "Overflow")));
}

TEST_F(Messages, OfFailuresAreNotShownWithoutOne) {
  EXPECT_EQ(Reported("Cls_X.Y", 16, -1, [] { return 7; }), 7);

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(Messages, OfTheirOwnGetTheStateOfTheFailure) {
  ErrorState seen;
  const auto report = [&](const ErrorState& failure) { seen = failure; };

  const auto result = OrReport(std::string("none"), report, []() -> std::string { throw std::bad_alloc(); });

  EXPECT_EQ(result, "none");
  EXPECT_EQ(seen.number, failure::kOutOfMemory);
  EXPECT_EQ(seen.description, "Out of memory");
}

// With an environment of its own.
class DebugPlatform : public NativePlatform {
 public:
  explicit DebugPlatform(std::string value)
      : NativePlatform(std::make_shared<Gate>(), nullptr), value_(std::move(value)) {}

  std::string Environment(const std::string& name) override { return name == "DEBUG" ? value_ : ""; }
  int ShowBox(const std::string& text, int style, const std::string& title) override {
    boxes.push_back({text, style, title});
    return answer::kOk;
  }

  std::vector<Box> boxes;

 private:
  std::string value_;
};

std::vector<Box> BoxesOfAnError(const std::string& debug) {
  const auto platform = std::make_shared<DebugPlatform>(debug);
  const auto before = InstallPlatform(platform);
  Cls_Utils().GetError("REP1.Run", {1004, "wrong ENT"});
  InstallPlatform(before);
  return platform->boxes;
}

TEST(DebugReport, TellsFunctionNumberAndDescriptionAsTheyAre) {
  EXPECT_THAT(
      BoxesOfAnError("true"),
      ElementsAre(
          Told("Following Error has occured in ''REP1.Run''\rNumber      : 1004\rDescription : wrong ENT", kCritical)));
}

TEST(DebugReport, IsShownForTheWordInAnyCase) {
  for (const auto* value : {"TRUE", "True", "tRuE"}) EXPECT_EQ(BoxesOfAnError(value).size(), 1U) << value;
}

TEST(DebugReport, IsNotShownForAnythingElse) {
  for (const auto* value : {"", "1", "yes", "true ", " true", "truetrue", "tru", "*", "????", "\xFFrue"}) {
    EXPECT_THAT(BoxesOfAnError(value), IsEmpty()) << value;
  }
}

}  // namespace
}  // namespace quintara::test
