#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "access/session/process.h"
#include "base/failure.h"
#include "services/frmWaiting.h"
#include "support/scripted_view.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TheWaitDialog : public testing::Test {
 protected:
  TheWaitDialog() {
    auto& texts = Process().texts;
    texts.QD_WAITING_CAPTION.text = "Refresh";
    texts.QD_WAITING_LBL.text = "Have patience";
  }

  ScriptedView& View() { return dialogs.Last("frmWaiting"); }

  TestPlatform platform;
  ScriptedDialogs dialogs{platform};
  std::shared_ptr<frmWaiting> dialog = std::make_shared<frmWaiting>();
};

TEST_F(TheWaitDialog, IsMadeWithTextsOfItsOwn) {
  dialog->Load();

  const auto& made = View().MadeFrom();
  EXPECT_EQ(made.text, "Please wait...");
  ASSERT_EQ(made.controls.size(), 1U);
  EXPECT_EQ(made.controls[0].name, "Label1");
  EXPECT_EQ(made.controls[0].kind, dialog::Kind::kLabel);
  EXPECT_EQ(made.controls[0].text, "Global Refresh processing...");
}

TEST_F(TheWaitDialog, TakesItsTextsFromTheCatalogue) {
  dialog->Load();

  EXPECT_EQ(View().Of("").text, "Refresh");
  EXPECT_EQ(View().Of("Label1").text, "Have patience");
}

TEST_F(TheWaitDialog, KeepsTheTextOfItsLabelWhereTheCatalogueHasNone) {
  Process().texts.QD_WAITING_LBL.text = "";

  dialog->Load();

  EXPECT_EQ(View().Of("Label1").text, "Global Refresh processing...");
  EXPECT_EQ(View().Of("").text, "Refresh");
}

TEST_F(TheWaitDialog, TakesAnEmptyTitleFromTheCatalogue) {
  Process().texts.QD_WAITING_CAPTION.text = "";

  dialog->Load();

  EXPECT_EQ(View().Of("").text, "");
  EXPECT_EQ(View().Of("Label1").text, "Have patience");
}

TEST_F(TheWaitDialog, AppliesTheFontsAtTheEndOfItsLoad) {
  Process().gFontName = "Verdana";

  dialog->Load();

  ASSERT_GE(dialogs.Record().size(), 3U);
  EXPECT_EQ(dialogs.Record()[0], "frmWaiting.SetText(, Refresh)");
  EXPECT_EQ(dialogs.Record()[1], "frmWaiting.SetText(Label1, Have patience)");
  EXPECT_EQ(View().Of("").font.name, "Verdana");
  EXPECT_EQ(View().Of("Label1").font.name, "Verdana");
}

TEST_F(TheWaitDialog, HasItsLabelInside) {
  dialog->Load();

  const auto& label = View().Of("Label1").box;
  const auto& box = View().Of("").box;
  EXPECT_LE(label.left + label.width, box.width);
  EXPECT_LE(label.top + label.height, box.height - 40 * 15);
}

TEST_F(TheWaitDialog, IsHiddenMeasuredAndShownOnTopInItsOwnSize) {
  dialogs.Desktop().screen = {0, 0, 29700, 50000};
  dialog->Load();
  View().SetBox("", {0, 0, 300 * 15, 80 * 15});
  platform.TheGate()->StartRecording();

  dialog->Initiate();

  EXPECT_THAT(platform.TheGate()->Record(),
              ElementsAre("View.Hide(frmWaiting)", "View.Screen(frmWaiting)", "View.BoxOf(frmWaiting)",
                          "View.ShowOnTop(frmWaiting, 850, 960, 300, 80)"));
  platform.TheGate()->Reset();
  EXPECT_TRUE(View().IsOnTop());
}

TEST_F(TheWaitDialog, RoundsItsSizeToWholePixelsHalvesToTheEvenNumber) {
  dialogs.Desktop().screen = {0, 0, 29700, 50000};
  dialog->Load();
  // Half of 300.8 is 150.4, half of 80.2 is 40.1.
  View().SetBox("", {0, 0, 300 * 15 + 12, 80 * 15 + 3});
  dialog->Initiate();
  EXPECT_EQ(dialogs.Record().back(), "frmWaiting.ShowOnTop(850, 960, 301, 80)");

  View().SetBox("", {0, 0, 300 * 15, 81 * 15});
  dialog->Initiate();
  EXPECT_EQ(dialogs.Record().back(), "frmWaiting.ShowOnTop(850, 960, 300, 81)");

  View().SetBox("", {0, 0, 300 * 15, 83 * 15});
  dialog->Initiate();
  EXPECT_EQ(dialogs.Record().back(), "frmWaiting.ShowOnTop(850, 958, 300, 83)");
}

TEST_F(TheWaitDialog, GoesWhenItIsUnloaded) {
  dialog->Initiate();

  dialog->Unload();

  EXPECT_FALSE(View().IsShown());
  EXPECT_THAT(Process().gLoadedDialogs, IsEmpty());
}

TEST_F(TheWaitDialog, TellsItsCallerEveryFailure) {
  const auto& gate = platform.TheGate();
  gate->StartRecording();
  dialog->Initiate();
  const int calls = gate->Calls();
  for (int n = 1; n <= calls; ++n) {
    dialog->Unload();
    gate->FailCall(n);
    EXPECT_THROW(dialog->Initiate(), Failure) << n;
  }
  gate->Reset();

  // The view, its two texts, and the four of showing it.
  EXPECT_EQ(calls, 7);
}

}  // namespace
}  // namespace quintara::test
