#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "access/session/process.h"
#include "base/failure.h"
#include "services/frmProgressBar.h"
#include "support/scripted_view.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

int NumberOfFailure(const std::function<void()>& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

class TheProgressDialog : public testing::Test {
 protected:
  TheProgressDialog() { Process().texts.QD_PROGRESSBAR_CAPTION.text = "Making"; }

  ScriptedView& View() { return dialogs.Last("frmProgressBar"); }
  // Loads the dialog and gives it another size.
  void GivenSize(int width, int height) {
    dialog->Load();
    View().SetBox("", {0, 0, width, height});
    dialogs.ForgetRecord();
  }

  TestPlatform platform;
  ScriptedDialogs dialogs{platform};
  std::shared_ptr<frmProgressBar> dialog = std::make_shared<frmProgressBar>();
};

TEST_F(TheProgressDialog, IsNotMadeBeforeItsFirstUse) {
  EXPECT_EQ(dialogs.Made("frmProgressBar"), 0);
}

TEST_F(TheProgressDialog, TakesItsTitleFromTheCatalogueAndKeepsTheTextOfItsLabel) {
  dialog->Load();

  EXPECT_EQ(View().Of("").text, "Making");
  EXPECT_EQ(View().Of("lbl").text, "Retrieving Root Component...");
}

TEST_F(TheProgressDialog, HasItsLabelBeforeItsBar) {
  dialog->Load();

  const auto& controls = View().MadeFrom().controls;
  ASSERT_EQ(controls.size(), 2U);
  EXPECT_EQ(controls[0].name, "lbl");
  EXPECT_EQ(controls[0].kind, dialog::Kind::kLabel);
  EXPECT_EQ(controls[1].name, "pb1");
  EXPECT_EQ(controls[1].kind, dialog::Kind::kProgressBar);
}

TEST_F(TheProgressDialog, HasItsControlsInsideAndApart) {
  dialog->Load();

  const auto& label = View().Of("lbl").box;
  const auto& bar = View().Of("pb1").box;
  EXPECT_LE(label.top + label.height, bar.top);
  EXPECT_LE(bar.left + bar.width, 400 * 15);
  // A title and borders take up to 40 pixels.
  EXPECT_LE(bar.top + bar.height, (100 - 40) * 15);
}

TEST_F(TheProgressDialog, AppliesTheFontsAtTheEndOfItsLoad) {
  Process().gFontName = "Verdana";

  dialog->Load();

  EXPECT_EQ(dialogs.Record().front(), "frmProgressBar.SetText(, Making)");
  EXPECT_EQ(View().Of("").font.name, "Verdana");
  EXPECT_EQ(View().Of("lbl").font.name, "Verdana");
}

TEST_F(TheProgressDialog, IsHiddenMeasuredAndShownOnTop) {
  dialog->Load();
  platform.TheGate()->StartRecording();

  dialog->Initiate(10);

  EXPECT_THAT(platform.TheGate()->Record(),
              ElementsAre("View.SetProgress(frmProgressBar, pb1, 0, 10)", "View.Hide(frmProgressBar)",
                          "View.Screen(frmProgressBar)", "View.BoxOf(frmProgressBar)",
                          "View.ShowOnTop(frmProgressBar, 317, 180, 400, 100)"));
  platform.TheGate()->Reset();
}

TEST_F(TheProgressDialog, IsShownAboveAllOthersAndNotModal) {
  dialog->Initiate(10);

  EXPECT_TRUE(View().IsShown());
  EXPECT_TRUE(View().IsOnTop());
  EXPECT_EQ(View().Of("pb1").mostProgress, 10);
  EXPECT_EQ(View().Of("pb1").progress, 0);
}

TEST_F(TheProgressDialog, Is400By100WhateverItsOwnSize) {
  dialogs.Desktop().screen = {0, 0, 29700, 50000};
  GivenSize(3000, 4500);

  dialog->Initiate(10);

  EXPECT_EQ(dialogs.Record().back(), "frmProgressBar.ShowOnTop(900, 850, 400, 100)");
}

TEST_F(TheProgressDialog, RoundsHalvesToTheEvenNumber) {
  dialogs.Desktop().screen = {0, 0, 29700, 50000};
  // 1000 - 100.5 and 1000 - 50.5
  GivenSize(201 * 15, 101 * 15);
  dialog->Initiate(10);
  EXPECT_EQ(dialogs.Record().back(), "frmProgressBar.ShowOnTop(900, 950, 400, 100)");

  // 1000 - 101.5 and 1000 - 51.5
  View().SetBox("", {0, 0, 203 * 15, 103 * 15});
  dialog->Initiate(10);
  EXPECT_EQ(dialogs.Record().back(), "frmProgressBar.ShowOnTop(898, 948, 400, 100)");
}

TEST_F(TheProgressDialog, MayStandLeftOfASmallScreen) {
  dialogs.Desktop().screen = {0, 0, 2970, 500};

  dialog->Initiate(10);

  EXPECT_EQ(dialogs.Record().back(), "frmProgressBar.ShowOnTop(-100, -40, 400, 100)");
}

TEST_F(TheProgressDialog, ShowsATextAndMakesAStep) {
  dialog->Initiate(10);
  dialogs.ForgetRecord();

  dialog->IncrementBar("Inserting BOLT");

  EXPECT_THAT(dialogs.Record(), ElementsAre("frmProgressBar.SetText(lbl, Inserting BOLT)", "frmProgressBar.Redraw(lbl)",
                                            "frmProgressBar.SetProgress(pb1, 1, 10)", "frmProgressBar.Redraw(pb1)"));
}

TEST_F(TheProgressDialog, MakesAsManyStepsAsItHas) {
  dialog->Initiate(10);

  for (int i = 0; i < 10; ++i) dialog->IncrementBar("step");

  EXPECT_EQ(View().Of("pb1").progress, 10);
  EXPECT_EQ(View().Of("pb1").redraws, 10);
  EXPECT_EQ(View().Of("lbl").redraws, 10);
}

TEST_F(TheProgressDialog, FailsAtAStepPastTheLastOne) {
  dialog->Initiate(10);
  for (int i = 0; i < 10; ++i) dialog->IncrementBar("step");
  dialogs.ForgetRecord();
  std::string description;

  try {
    dialog->IncrementBar("eleventh");
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), failure::kInvalidPropertyValue);
    description = failure.Description();
  }

  EXPECT_EQ(description, "Invalid property value");
  EXPECT_THAT(dialogs.Record(), ElementsAre("frmProgressBar.SetText(lbl, eleventh)", "frmProgressBar.Redraw(lbl)"));
  EXPECT_EQ(NumberOfFailure([&] { dialog->IncrementBar("twelfth"); }), failure::kInvalidPropertyValue);
  EXPECT_TRUE(View().IsShown());
}

TEST_F(TheProgressDialog, HasNoStepToMakeWithNoSteps) {
  dialog->Initiate(0);

  EXPECT_EQ(NumberOfFailure([&] { dialog->IncrementBar("step"); }), failure::kInvalidPropertyValue);
}

TEST_F(TheProgressDialog, RefusesFewerStepsThanNone) {
  EXPECT_EQ(NumberOfFailure([&] { dialog->Initiate(-1); }), failure::kInvalidPropertyValue);

  EXPECT_FALSE(View().IsShown());
}

TEST_F(TheProgressDialog, MakesTheMostStepsThatANumberTakes) {
  dialog->Initiate(32767);
  for (int i = 0; i < 32767; ++i) dialog->IncrementBar("");

  EXPECT_EQ(View().Of("pb1").progress, 32767);
  EXPECT_EQ(NumberOfFailure([&] { dialog->IncrementBar(""); }), failure::kInvalidPropertyValue);
}

TEST_F(TheProgressDialog, KeepsItsStepsWhenItIsInitiatedAgain) {
  dialog->Initiate(10);
  dialog->IncrementBar("step");

  dialog->Initiate(5);

  EXPECT_EQ(View().Of("pb1").progress, 1);
  EXPECT_EQ(View().Of("pb1").mostProgress, 5);
}

TEST_F(TheProgressDialog, BeginsAnewWhenItIsLoadedAnew) {
  dialog->Initiate(10);
  dialog->IncrementBar("step");
  dialog->Unload();

  dialog->Initiate(10);

  EXPECT_EQ(View().Of("pb1").progress, 0);
  EXPECT_EQ(View().Of("lbl").text, "Retrieving Root Component...");
}

TEST_F(TheProgressDialog, StaysShownWhenItsMakerLetsItGo) {
  dialog->Initiate(10);

  dialog.reset();

  EXPECT_TRUE(View().IsShown());
  ASSERT_EQ(Process().gLoadedDialogs.size(), 1U);
  Process().gLoadedDialogs.back().view->Unload();
  EXPECT_THAT(Process().gLoadedDialogs, IsEmpty());
}

TEST_F(TheProgressDialog, TellsItsCallerEveryFailure) {
  const auto& gate = platform.TheGate();
  dialog->Load();
  const auto use = [&] {
    dialog->Initiate(3);
    dialog->IncrementBar("step");
  };
  gate->StartRecording();
  use();
  const int calls = gate->Calls();
  for (int n = 1; n <= calls; ++n) {
    dialog->Unload();
    dialog->Load();
    gate->FailCall(n);
    EXPECT_EQ(NumberOfFailure(use), failure::kDeviceError) << n;
  }
  gate->Reset();

  EXPECT_EQ(calls, 9);
}

TEST_F(TheProgressDialog, IsNotShownWithoutAUserInterface) {
  platform.Native().SetViewMaker({});

  EXPECT_EQ(NumberOfFailure([&] { dialog->Initiate(10); }), failure::kCannotCreateObject);
}

}  // namespace
}  // namespace quintara::test
