#include "services/form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "access/session/process.h"
#include "services/sample_form.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;

int NumberOfFailure(const std::function<void()>& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

void FailWithOverflow() {
  throw Failure(failure::kOverflow);
}

class AForm : public testing::Test {
 protected:
  TestPlatform platform;
  ScriptedDialogs dialogs{platform};
};

TEST_F(AForm, IsNotLoadedWhenItIsMade) {
  const auto form = NewSample();

  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(dialogs.Made("Sample"), 0);
  EXPECT_TRUE(Process().gLoadedDialogs.empty());
}

TEST_F(AForm, IsLoadedBeforeItsLoopBegins) {
  const auto form = NewSample();
  form->onLoad = [](SampleForm& loaded) { loaded.View().SetText("", "Title"); };
  dialogs.WhenShown("Sample", [](ScriptedView& user) { user.Close(); });

  form->ShowModal();

  EXPECT_THAT(dialogs.Record(), ElementsAre("Sample.SetText(, Title)", "Sample.ShowModal"));
}

TEST_F(AForm, IsLoadedOnce) {
  const auto form = NewSample();

  form->Load();
  form->Load();
  form->View();

  EXPECT_EQ(form->loads, 1);
  EXPECT_EQ(dialogs.Made("Sample"), 1);
  EXPECT_EQ(Process().gLoadedDialogs.size(), 1U);
}

TEST_F(AForm, IsLoadedByTheFirstUseOfItsView) {
  const auto form = NewSample();

  form->View().SetText("lbl", "text");

  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(form->loads, 1);
}

TEST_F(AForm, FailsToLoadWithoutAUserInterface) {
  platform.Native().SetViewMaker({});
  const auto form = NewSample();

  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), failure::kCannotCreateObject);

  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(form->loads, 0);
  EXPECT_TRUE(Process().gLoadedDialogs.empty());
}

TEST_F(AForm, IsNamedWhereThereIsNoUserInterface) {
  platform.Native().SetViewMaker({});
  std::string description;
  try {
    NewSample()->Load();
  } catch (const Failure& failure) {
    description = failure.Description();
  }

  EXPECT_EQ(description, "No user interface to show \"Sample\"");
}

TEST_F(AForm, IsUnloadedByAFailureOfItsLoad) {
  const auto form = NewSample();
  form->onLoad = [](SampleForm&) { FailWithOverflow(); };

  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), failure::kOverflow);

  EXPECT_FALSE(form->IsLoaded());
  EXPECT_FALSE(dialogs.Last("Sample").IsLoaded());
  EXPECT_TRUE(Process().gLoadedDialogs.empty());
  EXPECT_THAT(dialogs.Record(), ElementsAre("Sample.Unload"));
}

TEST_F(AForm, TellsTheFailureOfItsLoadAlsoWhereItCantBeUnloaded) {
  const auto form = NewSample();
  form->onLoad = [](SampleForm&) { FailWithOverflow(); };
  platform.TheGate()->FailOperation("View.Unload");

  EXPECT_EQ(NumberOfFailure([&] { form->Load(); }), failure::kOverflow);

  platform.TheGate()->Reset();
}

TEST_F(AForm, CantBeShownWhenItsLoadHasUnloadedIt) {
  const auto form = NewSample();
  form->onLoad = [](SampleForm& loaded) { loaded.Unload(); };

  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), failure::kObjectUnloaded);
}

TEST_F(AForm, LivesUntilItIsUnloaded) {
  auto form = NewSample();
  const std::weak_ptr<SampleForm> watched = form;
  form->Load();

  form.reset();
  EXPECT_FALSE(watched.expired());

  watched.lock()->Unload();
  EXPECT_TRUE(watched.expired());
}

TEST_F(AForm, OutlivesItsOwnerInAnEvent) {
  auto form = NewSample();
  auto& held = *form;
  std::vector<std::string> seen;
  held.onClick = [&](const std::string& control) {
    form.reset();
    held.Unload();
    seen.push_back(control);
  };
  dialogs.WhenShown("Sample", [](ScriptedView& user) { user.Press("cmd"); });

  held.ShowModal();

  EXPECT_THAT(seen, ElementsAre("cmd"));
  EXPECT_TRUE(Process().gLoadedDialogs.empty());
}

TEST_F(AForm, StaysLoadedWhenItIsHidden) {
  const auto form = NewSample();
  form->onClick = [&](const std::string&) { form->Hide(); };
  dialogs.WhenShown("Sample", [](ScriptedView& user) { user.Press("cmd"); });

  form->ShowModal();

  EXPECT_TRUE(form->IsLoaded());
  EXPECT_FALSE(dialogs.Last("Sample").IsShown());
}

TEST_F(AForm, IsShownAgainWithWhatItHeld) {
  const auto form = NewSample();
  form->onClick = [&](const std::string&) { form->Hide(); };
  dialogs.WhenShown("Sample", [](ScriptedView& user) {
    user.Type("txt", "bolt");
    user.Press("cmd");
  });
  std::string second;
  dialogs.WhenShown("Sample", [&](ScriptedView& user) {
    second = user.Of("txt").text;
    user.Close();
  });

  form->ShowModal();
  form->ShowModal();

  EXPECT_EQ(second, "bolt");
  EXPECT_EQ(form->loads, 1);
}

TEST_F(AForm, IsUnloadedByItsCloseBox) {
  const auto form = NewSample();
  int told = 0;
  form->onUnloaded = [&] { ++told; };
  dialogs.WhenShown("Sample", [](ScriptedView& user) { user.Close(); });

  form->ShowModal();

  EXPECT_FALSE(form->IsLoaded());
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(Process().gLoadedDialogs.empty());
}

TEST_F(AForm, IsLoadedAfreshAfterItWasUnloaded) {
  const auto form = NewSample();
  form->View().SetText("txt", "bolt");
  form->Unload();

  EXPECT_EQ(form->View().Text("txt"), "");
  EXPECT_EQ(form->loads, 2);
  EXPECT_EQ(dialogs.Made("Sample"), 2);
}

TEST_F(AForm, MayBeLoadedAnewInItsOwnLoop) {
  const auto form = NewSample();
  form->onClick = [&](const std::string&) {
    form->Unload();
    form->Load();
  };
  dialogs.WhenShown("Sample", [](ScriptedView& user) { user.Press("cmd"); });

  form->ShowModal();

  EXPECT_TRUE(form->IsLoaded());
  EXPECT_EQ(Process().gLoadedDialogs.size(), 1U);
}

TEST_F(AForm, DoesNothingToHideOrUnloadWhenItIsNotLoaded) {
  const auto form = NewSample();

  form->Hide();
  form->Unload();

  EXPECT_EQ(dialogs.Made("Sample"), 0);
}

TEST_F(AForm, TellsTheFailureOfAnEventAfterItWasUnloaded) {
  const auto form = NewSample();
  form->onClick = [](const std::string&) { FailWithOverflow(); };
  dialogs.WhenShown("Sample", [](ScriptedView& user) {
    user.Press("cmd");
    ADD_FAILURE() << "the loop goes on";
  });

  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), failure::kOverflow);

  EXPECT_FALSE(form->IsLoaded());
  EXPECT_FALSE(dialogs.Last("Sample").IsLoaded());
}

TEST_F(AForm, IsUnloadedWhenItCantBeShown) {
  const auto form = NewSample();
  platform.TheGate()->FailOperation("View.ShowModal");

  EXPECT_EQ(NumberOfFailure([&] { form->ShowModal(); }), failure::kDeviceError);

  EXPECT_FALSE(form->IsLoaded());
  EXPECT_FALSE(dialogs.Last("Sample").IsLoaded());
}

TEST_F(AForm, TakesTheOneBelowDownWithItsFailure) {
  const auto below = NewSample("Below");
  const auto above = NewSample("Above");
  below->onClick = [&](const std::string&) { above->ShowModal(); };
  above->onClick = [](const std::string&) { FailWithOverflow(); };
  dialogs.WhenShown("Below", [](ScriptedView& user) { user.Press("cmd"); });
  dialogs.WhenShown("Above", [](ScriptedView& user) { user.Press("cmd"); });

  EXPECT_EQ(NumberOfFailure([&] { below->ShowModal(); }), failure::kOverflow);

  EXPECT_THAT(dialogs.Record(), ElementsAre("Below.ShowModal", "Above.ShowModal", "Above.Unload", "Below.Unload"));
  EXPECT_TRUE(Process().gLoadedDialogs.empty());
}

TEST_F(AForm, KeepsTheOthersWhenItIsUnloaded) {
  const auto first = NewSample("First");
  const auto second = NewSample("Second");
  first->Load();
  second->Load();

  first->Unload();

  ASSERT_EQ(Process().gLoadedDialogs.size(), 1U);
  EXPECT_EQ(Process().gLoadedDialogs[0].owner, second);
  EXPECT_TRUE(second->IsLoaded());
}

TEST_F(AForm, IsUnloadedByAResetTheLatestFirst) {
  const auto first = NewSample("First");
  const auto second = NewSample("Second");
  first->Load();
  second->Load();

  ResetProcess();

  EXPECT_FALSE(first->IsLoaded());
  EXPECT_FALSE(second->IsLoaded());
  EXPECT_THAT(dialogs.Record(), ElementsAre("Second.Unload", "First.Unload"));
}

TEST_F(AForm, IsLetGoByAResetThatCantUnloadIt) {
  auto form = NewSample();
  const std::weak_ptr<SampleForm> watched = form;
  form->Load();
  form.reset();
  platform.TheGate()->FailOperation("View.Unload");

  ResetProcess();

  EXPECT_TRUE(watched.expired());
  EXPECT_TRUE(Process().gLoadedDialogs.empty());
  platform.TheGate()->Reset();
}

}  // namespace
}  // namespace quintara::test
