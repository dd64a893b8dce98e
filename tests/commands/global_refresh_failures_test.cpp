#include <set>
#include <utility>

#include "commands/engine_in_front.h"
#include "commands/refresh_bench.h"
#include "services/substitutes.h"

namespace quintara::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

// What comes of failures.

class FailedRefresh : public KnownRefreshTest {
 protected:
  void ExpectTold() {
    EXPECT_FALSE(IsWaiting());
    EXPECT_EQ(DisplaysRefreshed(), 1U);
    EXPECT_EQ(yields, 2);
  }
  // The session of the vault under another name.
  void RunUnder(const std::string& name) {
    class Named : public HandingOn {
     public:
      Named(Ref<veldora::VdSession> session, std::string name)
          : HandingOn(std::move(session)), name_(std::move(name)) {}
      std::string ApplicationName() override { return name_; }

     private:
      std::string name_;
    };
    RunVault(MakeRef<ClientWithSession>(vault->Application(), MakeRef<Named>(Session(), name)));
  }
};

TEST_F(FailedRefresh, PutsTheSettingsBackInTheOrderOfFailures) {
  gate->FailOperation("HIXEngine.CheckOutDocument");

  Refresh();

  const auto writes = Calls("VdConfig.SetValue");
  ASSERT_EQ(writes.size(), 22U);
  EXPECT_THAT(std::vector<std::string>(writes.begin() + 11, writes.end()),
              ElementsAre(Write(R"($User\LIFE CYCLE\SwitchToLatestForceCheckOut)", "old 2"),
                          Write(R"($User\LifeCycleSetup\ReplacingObjectsReportOnCheckOut)", "old 3"),
                          Write(R"($User\LifeCycleSetup\UseLightLifeCycleScreen)", "old 4"), WriteOld(5), WriteOld(1),
                          WriteOld(6), WriteOld(7), WriteOld(8), WriteOld(9), WriteOld(10), WriteOld(11)));
}

TEST_F(FailedRefresh, BeforeTheCheckOutLeavesThreeSettingsAtTheirNewValues) {
  gate->FailOperation("HIXEngine.CheckOutDocument");

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));

  EXPECT_EQ(Settings(), NewOnly({2, 3, 4}));
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  EXPECT_FALSE(Alerts());
  ExpectTold();
}

TEST_F(FailedRefresh, AfterTheFirstSettingsAreBackLeavesOneAtItsNewValue) {
  gate->FailOperation("HIXEngine.CommitStep1");

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));

  EXPECT_EQ(Settings(), NewOnly({4}));
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  EXPECT_FALSE(Alerts());
  ExpectTold();
}

TEST_F(FailedRefresh, OnceTheFourthIsBackLeavesNone) {
  failing = PlaceOf("VdConfig.SetValue", 16);

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));

  EXPECT_EQ(RevisionAndState("CAR"), "A1");
  EXPECT_EQ(Settings(), OldValues());
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  EXPECT_FALSE(Alerts());
  ExpectTold();
}

TEST_F(FailedRefresh, LeavesWhatWasCheckedOutAsItIs) {
  gate->FailOperation("HIXEngine.CommitStep1");

  Refresh();

  EXPECT_EQ(RevisionAndState("CAR"), "A2");
  EXPECT_EQ(RevisionAndState("FRAME"), "A2");
  EXPECT_THAT(Holds("FRAME"), ElementsAre("BOLT B"));
}

TEST_F(FailedRefresh, ReloadsTheSessionOnceMore) {
  gate->FailOperation("HIXEngine.CheckOutDocument");

  Refresh();

  EXPECT_THAT(Calls("VdSession.UserLogin"), SizeIs(2));
  EXPECT_TRUE(engine->IsConnected());
  EXPECT_EQ(vault->Integration().ConfigInForce(SettingPaths()[0]), "old 1");
}

TEST_F(FailedRefresh, TakesAFreshConfigurationToPutTheSettingsBack) {
  gate->FailOperation("HIXEngine.CheckOutDocument");

  Refresh();

  EXPECT_THAT(Calls("VdSession.Config"), SizeIs(2));
}

// Unread texts are empty, and so they are put back.
TEST_F(FailedRefresh, InReadingTheSettingsLosesThoseThatWereNotRead) {
  gate->FailOperation("VdConfig.Value", 5);

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));
  gate->Reset();

  EXPECT_THAT(Settings(), ElementsAre("old 1", "old 2", "old 3", "old 4", "", "", "", "", "", "", ""));
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  EXPECT_TRUE(Alerts());
}

TEST_F(FailedRefresh, InWritingTheSettingsPutsThemBackAllTheSame) {
  failing = PlaceOf("VdConfig.SetValue", 7);

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));

  EXPECT_EQ(Settings(), NewOnly({2, 3, 4}));
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  EXPECT_TRUE(Alerts());
  ExpectTold();
}

TEST_F(FailedRefresh, UnderAnUnknownNameHasNoDescription) {
  RunUnder("another");

  EXPECT_THAT(Refresh(), ElementsAre(RunReport("")));

  EXPECT_EQ(Settings(), NewOnly({2, 3, 4}));
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  EXPECT_FALSE(Alerts());
  EXPECT_THAT(Calls("HIXEngine.CheckOutDocument"), IsEmpty());
  ExpectTold();
}

TEST_F(FailedRefresh, IsNotOneUnderAKnownNameInOtherLetters) {
  for (const auto* name : {"VELDORA", "veldora"}) {
    RunUnder(name);
    EXPECT_THAT(Refresh(), ElementsAre(Successful())) << name;
    EXPECT_THAT(Calls("VdSession.UserLogoff"), SizeIs(2)) << name;
  }
  RunUnder("zorva");
  Process().gSession = nullptr;
  Refresh();
  EXPECT_THAT(Calls("VdSession.UserLogoff"), IsEmpty());
}

// A text is filled once: where the reload has shown its report, that of the command reads the same.
TEST_F(FailedRefresh, WhoseReloadFailsShowsTheReportOfThatTwice) {
  gate->FailOperation("VdSession.UserLogoff");

  const auto boxes = Refresh();
  gate->Reset();

  // The reload after the failure fails too.
  EXPECT_THAT(boxes, ElementsAre(ReloadReport(kInjected), ReloadReport(kInjected), ReloadReport(kInjected)));
  EXPECT_EQ(Settings(), NewOnly({2, 3, 4}));
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  EXPECT_FALSE(Alerts());
  ExpectTold();
}

TEST_F(FailedRefresh, WhoseUserCannotLogOnAgainCannotPutTheSettingsBack) {
  gate->FailOperation("VdSession.UserLogin");

  const auto boxes = Refresh();
  gate->Reset();

  EXPECT_THAT(boxes, ElementsAre(ReloadReport(kInjected), ReloadReport(kInjected)));
  ExpectTold();
  Session()->UserLogin("admin", "secret");
  EXPECT_EQ(Settings(), NewValues());
  EXPECT_EQ(OtherKeys(), kNoKeys);
  EXPECT_FALSE(Alerts());
}

TEST_F(FailedRefresh, WhoseEngineCannotConnectAgainPutsTheSettingsBack) {
  failing = PlaceOf("HIXEngine.Connect");

  EXPECT_THAT(Refresh(), ElementsAre(ReloadReport(kInjected), ReloadReport(kInjected)));

  EXPECT_TRUE(engine->IsConnected());
  EXPECT_EQ(Settings(), NewOnly({2, 3, 4}));
}

// A product without a file isn't refused: it fails where its file is wanted.

class RefreshWithoutAFile : public FailedRefresh {
 protected:
  RefreshWithoutAFile() : idea_(vault->AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", "IDEA"}}, {})) {
    CheckIn(idea_);
  }
  std::vector<Box> RefreshIdea() { return Refresh(SelectionOf({idea_})); }

 private:
  Ref<VdObject> idea_;
};

TEST_F(RefreshWithoutAFile, FailsInItsCheckOut) {
  const auto boxes = RefreshIdea();

  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text,
              AllOf(StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_GlobalRefreshVD.Run] ["), HasSubstr("has no file")));
  EXPECT_EQ(boxes[0].style, kCritical);
  EXPECT_EQ(Settings(), NewOnly({2, 3, 4}));
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  EXPECT_EQ(RevisionAndState("IDEA"), "A1");
  EXPECT_FALSE(Alerts());
  ExpectTold();
}

TEST_F(RefreshWithoutAFile, OpensTheFolderWhereTheCheckOutGoesWell) {
  class EmptyDocument : public veldora::HIXDocument {
   public:
    explicit EmptyDocument(const Ref<zorva::Application>& application) : application_(application) {}
    Ref<zorva::Document> Document() override { return application_->Documents()->Add("ZVAProduct"); }

   private:
    Ref<zorva::Application> application_;
  };
  // Checks nothing out, and has an empty document for each object.
  class Careless : public EngineInFront {
   public:
    Careless(const Ref<veldora::HIXEngine>& engine, Ref<veldora::HIXDocument> handle)
        : EngineInFront(engine, [](const std::string&) {}), handle_(std::move(handle)) {}
    Ref<veldora::HIXDocument> DocumentHandle(std::int16_t, std::int32_t) override { return handle_; }
    void CheckOutDocument(const Ref<veldora::HIXDocument>&) override {}

   private:
    Ref<veldora::HIXDocument> handle_;
  };
  host.RegisterItem("HIXEngine",
                    MakeRef<Careless>(Ref<veldora::HIXEngine>(engine), MakeRef<EmptyDocument>(host.Application())));
  Process().gHIX = nullptr;

  EXPECT_THAT(RefreshIdea(), SizeIs(1));

  EXPECT_THAT(Calls("Documents.Open"), ElementsAre("Documents.Open(" + WorkPath("") + ")"));
  EXPECT_EQ(Settings(), NewOnly({4}));
  EXPECT_FALSE(Alerts());
  ExpectTold();
}

// The last reload.
TEST_F(FailedRefresh, IsNotOneWhoseLastReloadFails) {
  gate->FailOperation("HIXEngine.Disconnect", 2);

  EXPECT_THAT(Refresh(), ElementsAre(ReloadReport(kInjected), Successful()));
  gate->Reset();

  EXPECT_EQ(Settings(), OldValues());
  EXPECT_EQ(OtherKeys(), kNoKeys);
  EXPECT_TRUE(Alerts());
  ExpectTold();
}

TEST_F(FailedRefresh, AtItsVeryEndPutsTheSettingsBackTwice) {
  failing = PlaceOf("View.Unload");

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));

  EXPECT_EQ(Settings(), OldValues());
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  EXPECT_TRUE(Alerts());
  EXPECT_FALSE(IsWaiting());
  EXPECT_EQ(DisplaysRefreshed(), 1U);
}

TEST_F(FailedRefresh, ThatCannotRefreshTheDisplayIsReportedAndTriesAgain) {
  gate->FailOperation("Application.RefreshDisplay=");

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));

  EXPECT_EQ(DisplaysRefreshed(), 2U);
  EXPECT_EQ(OtherKeys(), kKeysWritten);
}

TEST_F(FailedRefresh, WhoseDialogCannotBeClosedIsReportedAllTheSame) {
  gate->FailOperation("View.Unload");

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));
  gate->Reset();
}

// Failures on the road that puts the settings back.

class FailedRestoring : public FailedRefresh {
 protected:
  FailedRestoring() {
    gate->FailOperation("HIXEngine.CheckOutDocument", 1, Failure(failure::kDeviceError, "the first failure"));
  }
};

TEST_F(FailedRestoring, TellsOfTheFirstFailure) {
  gate->FailOperation("VdSession.Config", 2);

  EXPECT_THAT(Refresh(), ElementsAre(RunReport("the first failure")));
  gate->Reset();

  EXPECT_EQ(Settings(), NewValues());
  EXPECT_EQ(OtherKeys(), kNoKeys);
  EXPECT_FALSE(Alerts());
  ExpectTold();
}

TEST_F(FailedRestoring, LeavesTheRestAsItIsFromTheFailedSettingOn) {
  const std::vector<std::size_t> order = {0, 0, 0, 5, 1, 6, 7, 8, 9, 10, 11};
  for (std::size_t written = 0; written < order.size(); ++written) {
    SCOPED_TRACE("write " + std::to_string(written + 1));
    for (std::size_t i = 0; i < 11; ++i) Session()->Config()->SetValue(SettingPaths()[i], OldValues()[i]);
    for (const auto& key : KeysOfFailure()) Session()->Config()->SetValue(key, "");
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "REP1: REP2";
    gate->Reset();
    gate->FailOperation("HIXEngine.CheckOutDocument", 1, Failure(failure::kDeviceError, "the first failure"));
    gate->FailOperation("VdConfig.SetValue", static_cast<int>(12 + written));

    const auto boxes = Refresh();
    gate->Reset();

    EXPECT_THAT(boxes, ElementsAre(Box{"Cls_GlobalRefreshVD.Run: the first failure", kCritical, "Quintara"}));
    std::set<std::size_t> stillNew = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    auto keys = kNoKeys;
    for (std::size_t done = 0; done < written; ++done) {
      if (done < 3) keys[done] = kKeysWritten[done];
      stillNew.erase(order[done]);
    }
    EXPECT_EQ(Settings(), NewOnly(stillNew));
    EXPECT_EQ(OtherKeys(), keys);
    EXPECT_THAT(Calls("VdSession.UserLogin"), SizeIs(1));
    EXPECT_EQ(Settings()[1], "TRUE");
    EXPECT_FALSE(IsWaiting());
    EXPECT_EQ(DisplaysRefreshed(), 1U);
  }
}

TEST_F(FailedRestoring, InItsReloadIsToldAndGoesOn) {
  gate->FailOperation("HIXEngine.Connect", 2, Failure(failure::kDeviceError, "the second one"));

  EXPECT_THAT(Refresh(), ElementsAre(ReloadReport("the second one"), ReloadReport("the second one")));
  gate->Reset();

  EXPECT_EQ(Settings(), NewOnly({2, 3, 4}));
  EXPECT_EQ(OtherKeys(), kKeysWritten);
  ExpectTold();
}

TEST_F(FailedRestoring, AfterAReloadThatDidNotFailItselfHasNoDescriptionEither) {
  RunUnder("another");
  gate->FailOperation("VdSession.Config", 2);

  EXPECT_THAT(Refresh(), ElementsAre(RunReport("")));
  gate->Reset();

  EXPECT_EQ(Settings(), NewValues());
}

}  // namespace
}  // namespace quintara::test
