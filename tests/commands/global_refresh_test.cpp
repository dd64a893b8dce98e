#include <algorithm>

#include "access/utils/Cls_Utils.h"
#include "commands/engine_in_front.h"
#include "commands/refresh_bench.h"
#include "support/tiny_files.h"
#include "wip/zorva_in_front.h"

namespace quintara::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// The whole command.

TEST_F(RefreshTest, PointsTheStructureAtTheNewestRevisions) {
  EXPECT_THAT(Refresh(), ElementsAre(Successful()));

  EXPECT_THAT(Holds("FRAME"), ElementsAre("BOLT B"));
  EXPECT_THAT(Holds("CAR"), ElementsAre("FRAME A", "NUT A"));
  EXPECT_EQ(ReadWork("BOLT.stp"), TinyStep("BOLT", "newer"));
}

TEST_F(RefreshTest, OfWhatIsCheckedInLeavesItCheckedInInItsRevision) {
  Refresh();

  for (const auto* partNumber : {"CAR", "FRAME", "NUT"}) EXPECT_EQ(RevisionAndState(partNumber), "A1") << partNumber;
  EXPECT_EQ(RevisionAndState("BOLT"), "B1");
  EXPECT_THAT(vault->Check(), IsEmpty());
}

TEST_F(RefreshTest, OfWhatIsReleasedMakesNewRevisionsAndLeavesTheOldOnesAsTheyWere) {
  for (const auto* partNumber : {"NUT", "FRAME", "CAR"}) Release(Of(partNumber));
  Release(newBolt);
  Release(matrix);

  EXPECT_THAT(Refresh(), ElementsAre(Successful()));

  for (const auto* partNumber : {"CAR", "FRAME"}) EXPECT_EQ(RevisionAndState(partNumber), "B1") << partNumber;
  EXPECT_EQ(RevisionAndState("NUT"), "A3");
  EXPECT_EQ(RevisionAndState("BOLT"), "B3");
  EXPECT_THAT(Holds("CAR"), ElementsAre("FRAME B", "NUT A"));
  EXPECT_EQ(StateOf(Of("CAR")), 3);
  EXPECT_EQ(vault->Structure(Of("FRAME"))[0].object->ObjectId(), Of("BOLT")->ObjectId());
}

TEST_F(RefreshTest, WritesTheMatrixAnewInTheDocumentThatIsThere) {
  const auto before = Matrices();

  Refresh();

  const auto after = Matrices();
  ASSERT_THAT(after, SizeIs(1));
  EXPECT_EQ(after[0]->ObjectId(), before[0]->ObjectId());
  EXPECT_EQ(StateOf(after[0]), 1);
  EXPECT_THAT(vault->FileOf(after[0]), AllOf(HasSubstr("CAR\\FRAME.1"), HasSubstr("BOLT.2"), HasSubstr("200")));
}

TEST_F(RefreshTest, WritesAReleasedMatrixAnewInItsNextRevision) {
  for (const auto* partNumber : {"NUT", "FRAME", "CAR"}) Release(Of(partNumber));
  Release(newBolt);
  Release(matrix);

  Refresh();

  EXPECT_THAT(Matrices(), SizeIs(1));
  EXPECT_EQ(vault->FileOf(matrix), "<old/>");
  EXPECT_EQ(TextOf(Latest(matrix), "REVISION") + std::to_string(StateOf(Latest(matrix))), "B1");
  EXPECT_THAT(vault->FileOf(Latest(matrix)), HasSubstr("FRAME.1"));
}

TEST_F(RefreshTest, AsksNothing) {
  Refresh();

  EXPECT_THAT(dialogs, IsEmpty());
  EXPECT_THAT(platform.Boxes(), Each(testing::Field(&Box::style, kInformationModal)));
}

TEST_F(RefreshTest, LeavesTheSettingsAsTheyWere) {
  Refresh();

  EXPECT_EQ(Settings(), OldValues());
  EXPECT_EQ(OtherKeys(), kNoKeys);
}

TEST_F(RefreshTest, ReadsAndWritesTheSettingsInTheirOrders) {
  Refresh();

  std::vector<std::string> expected;
  for (const auto& path : SettingPaths()) expected.push_back("VdConfig.Value(" + path + ")");
  for (const auto number : kOrderOfWriting) {
    const auto i = static_cast<std::size_t>(number - 1);
    expected.push_back(Write(SettingPaths()[i], NewValues()[i]));
  }
  for (const auto number : {2U, 1U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 10U, 11U}) expected.push_back(WriteOld(number));
  EXPECT_THAT(Calls("VdConfig."), ElementsAreArray(expected));
}

// The calls that change something or decide what comes next, one line for each run of the same.
TEST_F(RefreshTest, GoesThroughItsStepsInThisOrder) {
  Refresh();

  std::vector<std::string> steps;
  for (const auto& call : gate->Record()) {
    for (const auto* telling :
         {"VdRecList.RecordCount", "VdRecList.GetRecord", "VdObjectStore.ObjectFromRecord", "VdObject.Clone(2:17)",
          "VdObject.LinkedVersion", "View.ShowOnTop", "View.Unload", "VdConfig.", "Application.DisplayFileAlerts",
          "Application.RefreshDisplay", "VdUserInfo.", "VdSession.User", "HIXEngine.", "Document.Close",
          "Documents.Open", "VdObject.Parents", "HIXDocument"}) {
      const auto step = call.substr(0, call.find('('));
      const bool isTelling = call.starts_with(telling);
      if (isTelling && (steps.empty() || steps.back() != step)) steps.push_back(step);
    }
  }
  const std::vector<std::string> reload = {"VdSession.UserMetaInfo", "VdUserInfo.Login",     "VdUserInfo.Password",
                                           "HIXEngine.Disconnect",   "VdSession.UserLogoff", "VdSession.UserLogin",
                                           "HIXEngine.Connect"};
  std::vector<std::string> expected = {"HIXEngine.IsConnected",
                                       "VdRecList.RecordCount",
                                       "VdRecList.GetRecord",
                                       "VdObjectStore.ObjectFromRecord",
                                       "VdObject.Clone",
                                       "View.ShowOnTop",
                                       "VdObject.LinkedVersion",
                                       "VdConfig.Value",
                                       "VdConfig.SetValue",
                                       "Application.DisplayFileAlerts",
                                       "Application.DisplayFileAlerts="};
  expected.insert(expected.end(), reload.begin(), reload.end());
  // The engine asks for the user itself.
  const std::vector<std::string> asked = {"VdSession.UserMetaInfo", "VdUserInfo.Login", "VdUserInfo.Password"};
  expected.insert(expected.end(), asked.begin(), asked.end());
  for (const auto* step :
       {"HIXEngine.DocumentHandle", "HIXEngine.CheckOutDocument", "Documents.Open", "VdConfig.SetValue",
        "HIXDocument.Document", "Document.Close", "Documents.Open", "HIXEngine.IsConnected", "VdObject.Parents",
        "VdRecList.GetRecord", "HIXEngine.DocumentHandleOf", "HIXEngine.CommitStep1", "HIXEngine.CommitStep2",
        "VdConfig.SetValue", "Application.DisplayFileAlerts="}) {
    expected.emplace_back(step);
  }
  expected.insert(expected.end(), reload.begin(), reload.end());
  expected.insert(expected.end(), asked.begin(), asked.end());
  for (const auto* step : {"View.Unload", "Application.RefreshDisplay="}) expected.emplace_back(step);
  EXPECT_THAT(steps, ElementsAreArray(expected));
}

TEST_F(RefreshTest, OpensTheFileOfTheProductAndGivesItsIdentityToTheEngine) {
  Refresh();

  const auto id = std::to_string(Of("CAR")->ClassId()) + ", " + std::to_string(Of("CAR")->ObjectId());
  EXPECT_THAT(Calls("HIXEngine.DocumentHandle("), ElementsAre("HIXEngine.DocumentHandle(" + id + ")"));
  EXPECT_EQ(Calls("Documents.Open").back(), "Documents.Open(" + WorkPath("CAR.ZVAProduct") + ")");
  EXPECT_THAT(Calls("VdObject.LinkedVersion"), ElementsAre("VdObject.LinkedVersion(2)"));
  EXPECT_THAT(Calls("VdObjects.SetAttributeNames"), Contains("VdObjects.SetAttributeNames(CAD_REF_FILE_NAME)"));
}

TEST_F(RefreshTest, TakesAnObjectOfItsOwnAndAnotherOneForTheMatrix) {
  Refresh();

  const auto between = [&](const std::string& first, const std::string& last) {
    const auto& calls = gate->Record();
    const auto begins = [](const std::string& with) {
      return [with](const auto& call) { return call.starts_with(with); };
    };
    const auto from = std::ranges::find_if(calls, begins(first));
    return std::vector<std::string>(from, std::find_if(from, calls.end(), begins(last)));
  };
  const auto car = std::to_string(Of("CAR")->ClassId()) + ", " + std::to_string(Of("CAR")->ObjectId());
  EXPECT_THAT(between("VdObject.Clone", "VdObject.Record"),
              ElementsAre(HasSubstr("Clone"), HasSubstr("Retrieve"), "VdObject.ObjectId", "VdObject.ClassId"));
  EXPECT_EQ(between("Document.Close", "Platform.Attach").back(), "VdObjectStore.ObjectById(" + car + ")");
}

TEST_F(RefreshTest, LeavesTheProductOpenAndTheDisplayFresh) {
  Refresh();

  EXPECT_EQ(host.Application()->Documents()->Count(), 1);
  EXPECT_EQ(host.Application()->ActiveDocument()->AsDocument()->FullName(), WorkPath("CAR.ZVAProduct"));
  EXPECT_TRUE(Alerts());
  EXPECT_EQ(DisplaysRefreshed(), 1U);
}

TEST_F(RefreshTest, GivesTheCadHostBackItsQuestionsAsTheyWere) {
  host.Application()->SetDisplayFileAlerts(false);

  Refresh();

  EXPECT_FALSE(Alerts());
}

TEST_F(RefreshTest, KeepsTheUserWaitingUntilTheEnd) {
  Refresh();

  EXPECT_EQ(desk.Made("frmWaiting"), 1);
  EXPECT_FALSE(IsWaiting());
  EXPECT_EQ(yields, 2);
}

TEST_F(RefreshTest, ClosesWhatIsOpenOfTheProductBefore) {
  Refresh();
  const auto opened = host.Application()->ActiveDocument()->AsDocument();

  EXPECT_THAT(Refresh(), SizeIs(1));

  EXPECT_NE(FailureOf([&] { opened->FullName(); }).Number(), 0);
}

TEST_F(RefreshTest, LogsNothing) {
  Refresh();

  EXPECT_FALSE(WorkHas("ReloadSession.log"));
  EXPECT_THAT(Calls("Platform.LogEvent"), IsEmpty());
}

TEST_F(RefreshTest, OfAProductThatAnotherOneHoldsWritesNoMatrix) {
  AddProduct("HALL", {Of("CAR")});

  EXPECT_THAT(Refresh(), ElementsAre(Successful()));

  EXPECT_EQ(vault->FileOf(matrix), "<old/>");
  EXPECT_THAT(Holds("FRAME"), ElementsAre("BOLT B"));
}

TEST_F(RefreshTest, MakesAMatrixWhereThereIsNone) {
  CheckOut(Of("CAR"));
  Utils().RemoveLogicalLink(Session(), Of("CAR"), matrix, "Document Link");
  CheckIn(Of("CAR"));
  ASSERT_THAT(Matrices(), IsEmpty());

  EXPECT_THAT(Refresh(), ElementsAre(Successful()));

  ASSERT_THAT(Matrices(), SizeIs(1));
  EXPECT_NE(Matrices()[0]->ObjectId(), matrix->ObjectId());
}

// What a matrix says of itself doesn't keep the refresh from its end.
TEST_F(RefreshTest, GoesOnAfterAMatrixThatCannotBeWritten) {
  gate->FailOperation("Position.GetComponents");

  const auto boxes = Refresh();

  EXPECT_THAT(boxes, SizeIs(testing::Ge(2U)));
  EXPECT_EQ(boxes.back(), Successful());
  EXPECT_EQ(RevisionAndState("CAR"), "A1");
  EXPECT_EQ(Settings(), OldValues());
}

// The phases.

class PhasesOfARefresh : public RefreshTest {
 protected:
  struct Phase {
    std::string at;
    std::vector<std::string> settings;
    bool alerts;
    bool isWaiting;
  };

  PhasesOfARefresh() {
    host.RegisterItem("HIXEngine", MakeRef<EngineInFront>(Ref<veldora::HIXEngine>(engine),
                                                          [this](const std::string& operation) { Note(operation); }));
    Process().gHIX = nullptr;
    platform.Native().OnYield([this] { Note("Yield"); });
  }

  void Note(const std::string& at) { phases.push_back({at, Settings(), Alerts(), IsWaiting()}); }
  void Expect(std::size_t i, const std::string& at, const std::vector<std::string>& settings, bool alerts,
              bool isWaiting) {
    SCOPED_TRACE(std::to_string(i) + ", " + at);
    ASSERT_LT(i, phases.size());
    EXPECT_EQ(phases[i].at, at);
    EXPECT_EQ(phases[i].settings, settings);
    EXPECT_EQ(phases[i].alerts, alerts);
    EXPECT_EQ(phases[i].isWaiting, isWaiting);
  }

  std::vector<Phase> phases;
};

TEST_F(PhasesOfARefresh, HaveTheirSettingsAlertsAndDialog) {
  Refresh();

  const auto afterTheFirst = NewOnly({4, 5, 6, 7, 8, 9, 10, 11});
  ASSERT_THAT(phases, SizeIs(9));
  Expect(0, "Yield", OldValues(), true, true);
  Expect(1, "Disconnect", NewValues(), false, true);
  Expect(2, "Connect", NewValues(), false, true);
  Expect(3, "CheckOutDocument", NewValues(), false, true);
  Expect(4, "CommitStep1", afterTheFirst, false, true);
  Expect(5, "CommitStep2", afterTheFirst, false, true);
  Expect(6, "Disconnect", OldValues(), true, true);
  Expect(7, "Connect", OldValues(), true, true);
  Expect(8, "Yield", OldValues(), true, false);
}

// What the user sees, in which order.

class SightsOfARefresh : public RefreshTest {
 protected:
  SightsOfARefresh() {
    class Watched : public ZorvaInFront {
     public:
      Watched(const Ref<zorva::Application>& application, std::function<void()> refreshing)
          : ZorvaInFront(application), refreshing_(std::move(refreshing)) {}
      void SetRefreshDisplay(bool refresh) override {
        refreshing_();
        ZorvaInFront::SetRefreshDisplay(refresh);
      }

     private:
      std::function<void()> refreshing_;
    };
    platform.Native().Register("ZORVA.Application",
                               MakeRef<Watched>(host.Application(), [this] { Note("display refreshed"); }));
    Process().gZorva = nullptr;
    platform.Native().OnYield([this] { Note("caught up"); });
  }

  void Note(const std::string& what) {
    sights.push_back(what + (IsWaiting() ? ", waiting" : "") + ", boxes: " + std::to_string(platform.Boxes().size()));
  }

  std::vector<std::string> sights;
};

TEST_F(SightsOfARefresh, EndWithABoxOnceAllElseIsDone) {
  Refresh();

  EXPECT_THAT(sights,
              ElementsAre("caught up, waiting, boxes: 0", "caught up, boxes: 0", "display refreshed, boxes: 0"));
}

TEST_F(SightsOfARefresh, AreABoxWithoutTheDialogThenAFreshDisplayAfterAFailure) {
  gate->FailOperation("HIXEngine.CheckOutDocument");

  Refresh();

  EXPECT_THAT(sights,
              ElementsAre("caught up, waiting, boxes: 0", "caught up, boxes: 0", "display refreshed, boxes: 1"));
}

TEST_F(SightsOfARefresh, AreABoxThenAFreshDisplayWhereItIsRefused) {
  Refresh(SelectionOf({}));

  EXPECT_THAT(sights, ElementsAre("display refreshed, boxes: 1"));
}

TEST_F(SightsOfARefresh, KeepTheDialogWhileTheSettingsAreBeingPutBack) {
  bool isWaiting = false;
  host.RegisterItem("HIXEngine", MakeRef<EngineInFront>(Ref<veldora::HIXEngine>(engine),
                                                        [&](const std::string&) { isWaiting = IsWaiting(); }));
  Process().gHIX = nullptr;
  gate->FailOperation("HIXEngine.CommitStep2");

  Refresh();

  // By the last of them, the engine's connection in the reload after the failure.
  EXPECT_TRUE(isWaiting);
}

// Where the CAD host was started first.

class RefreshUnderTheCadHost : public RefreshTest {
 protected:
  RefreshUnderTheCadHost() : RefreshTest(First::kZorva) {}
};

TEST_F(RefreshUnderTheCadHost, NeedsNoReload) {
  EXPECT_THAT(Refresh(), ElementsAre(Successful()));

  EXPECT_THAT(Calls("VdSession.User"), IsEmpty());
  EXPECT_THAT(Calls("HIXEngine.Disconnect"), IsEmpty());
  EXPECT_THAT(Calls("VdSession.ApplicationName"), SizeIs(2));
}

TEST_F(RefreshUnderTheCadHost, DoesTheSame) {
  Refresh();

  EXPECT_THAT(Holds("FRAME"), ElementsAre("BOLT B"));
  EXPECT_EQ(RevisionAndState("CAR"), "A1");
  EXPECT_THAT(Matrices(), SizeIs(1));
  EXPECT_THAT(vault->FileOf(matrix), HasSubstr("FRAME.1"));
  EXPECT_EQ(Settings(), OldValues());
  EXPECT_TRUE(Alerts());
}

TEST_F(RefreshUnderTheCadHost, PutsTheSettingsBackAfterAFailureTheSameWay) {
  gate->FailOperation("HIXEngine.CheckOutDocument");

  EXPECT_THAT(Refresh(), ElementsAre(RunReport(kInjected)));

  EXPECT_EQ(Settings(), NewOnly({2, 3, 4}));
  EXPECT_EQ(OtherKeys(), kKeysWritten);
}

}  // namespace
}  // namespace quintara::test
