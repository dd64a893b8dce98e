#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "access/session/process.h"
#include "services/sample_form.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const dialog::Font kBefore = {"MS Sans Serif", 8.25, 0, false, false};

class ApplyFonts : public testing::Test {
 protected:
  ApplyFonts() {
    form->Load();
    Process().gFontName = "Verdana";
  }

  const dialog::Font& FontOf(const std::string& control) { return dialogs.Last("Sample").Of(control).font; }
  void ExpectNothingChanged() {
    for (const auto* control : {"", "Frame1", "Option1(0)", "Option1(1)", "lbl", "txt", "cmd", "Tree1"}) {
      EXPECT_EQ(FontOf(control), kBefore) << control;
    }
  }

  TestPlatform platform;
  ScriptedDialogs dialogs{platform};
  std::shared_ptr<SampleForm> form = NewSample();
};

TEST_F(ApplyFonts, ChangesNothingWithoutAName) {
  Process().gFontName = "";
  Process().gFontSize = 12;

  form->ApplyFonts();

  EXPECT_THAT(dialogs.Record(), IsEmpty());
}

TEST_F(ApplyFonts, GivesTheNameToTheDialogAndEachControlWithAText) {
  form->ApplyFonts();

  for (const auto* control : {"", "Frame1", "Option1(0)", "Option1(1)", "lbl", "txt", "cmd", "Tree1"}) {
    EXPECT_EQ(FontOf(control), (dialog::Font{"Verdana", 8.25, 0, false, false})) << control;
  }
}

TEST_F(ApplyFonts, PassesOverPicturesTimersAndBars) {
  form->ApplyFonts();

  for (const auto* control : {"Timer1", "img", "pb1"}) {
    EXPECT_THAT(dialogs.Record(), Not(Contains(HasSubstr(std::string("(") + control)))) << control;
  }
}

TEST_F(ApplyFonts, GivesEachSettingThatIsThere) {
  Process().gFontSize = 12;
  Process().gFontCharset = 238;
  Process().gFontBold = 1;
  Process().gFontItalic = 1;

  form->ApplyFonts();

  for (const auto* control : {"", "lbl", "Tree1"}) {
    EXPECT_EQ(FontOf(control), (dialog::Font{"Verdana", 12, 238, true, true})) << control;
  }
}

TEST_F(ApplyFonts, GivesEachSettingByItself) {
  Process().gFontItalic = 1;
  form->ApplyFonts();
  EXPECT_EQ(FontOf("lbl"), (dialog::Font{"Verdana", 8.25, 0, false, true}));

  Process().gFontItalic = -1;
  Process().gFontBold = 1;
  form->ApplyFonts();
  EXPECT_EQ(FontOf("lbl"), (dialog::Font{"Verdana", 8.25, 0, true, true}));

  Process().gFontBold = -1;
  Process().gFontCharset = 2;
  form->ApplyFonts();
  EXPECT_EQ(FontOf("lbl"), (dialog::Font{"Verdana", 8.25, 2, true, true}));
}

TEST_F(ApplyFonts, TakesZeroForASettingThatIsThere) {
  auto font = kBefore;
  font.charset = 2;
  font.bold = font.italic = true;
  form->View().SetFont("lbl", font);
  Process().gFontCharset = 0;
  Process().gFontBold = 0;
  Process().gFontItalic = 0;

  form->ApplyFonts();

  EXPECT_EQ(FontOf("lbl"), (dialog::Font{"Verdana", 8.25, 0, false, false}));
}

TEST_F(ApplyFonts, TakesAnyNumberAboveZeroForBoldAndItalic) {
  Process().gFontBold = 2;
  Process().gFontItalic = 700;

  form->ApplyFonts();

  EXPECT_TRUE(FontOf("lbl").bold);
  EXPECT_TRUE(FontOf("lbl").italic);
}

TEST_F(ApplyFonts, PutsTheOldFontBackWhereTheNewOneIsNotThere) {
  Process().gFontName = "Nowhere";
  Process().gFontSize = 12;

  form->ApplyFonts();

  ExpectNothingChanged();
  EXPECT_EQ(dialogs.Record().size(), 2U);
}

TEST_F(ApplyFonts, TakesANameInOtherCapitalsForAnotherFont) {
  Process().gFontName = "VERDANA";

  form->ApplyFonts();

  ExpectNothingChanged();
}

TEST_F(ApplyFonts, EndsInSilenceOnAFailure) {
  Process().gFontSize = 0;

  form->ApplyFonts();

  EXPECT_THAT(platform.Boxes(), IsEmpty());
  EXPECT_EQ(FontOf("").name, "Verdana");
  EXPECT_EQ(FontOf("lbl"), kBefore);
}

TEST_F(ApplyFonts, EndsAtTheFirstFailureWhicheverItIs) {
  int calls = 0;
  platform.TheGate()->StartRecording();
  form->ApplyFonts();
  calls = platform.TheGate()->Calls();
  for (int n = 1; n <= calls; ++n) {
    platform.TheGate()->StartRecording();
    platform.TheGate()->FailCall(n);

    form->ApplyFonts();

    EXPECT_EQ(platform.TheGate()->Record().size(), static_cast<std::size_t>(n));
  }
  platform.TheGate()->Reset();

  EXPECT_EQ(calls, 32);
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

}  // namespace
}  // namespace quintara::test
