#include <algorithm>

#include "hosts/vault/database.h"
#include "wip/plant_in_vault.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr auto kLabel = "Cls_Application.Run";

class Application : public PlantTest {
 protected:
  void SetState(const Ref<veldora::VdObject>& object, int state) {
    switch (state) {
      case veldora::state::kCheckedIn: break;
      case veldora::state::kCheckedOut: CheckOut(object); break;
      case veldora::state::kObsolete:
        Release(object);
        Util()->Obsolete(object, nullptr, false);
        break;
      default: Release(object); break;
    }
    ASSERT_EQ(StateOf(object), state);
  }

  static void Cancel(ScriptedView& view) { view.Press("cmdCancel"); }

  // Start-up leaves no trace of a command that ended before its panel; after it, the next one starts afresh.
  void ExpectGlobalsKept() { EXPECT_TRUE(Process().gClsInit && Process().gClsUtils && Process().gClsAdminSettings); }
  void ExpectGlobalsLetGo() {
    EXPECT_FALSE(Process().gClsInit);
    EXPECT_FALSE(Process().gClsUtils);
    EXPECT_FALSE(Process().gClsAdminSettings);
    EXPECT_FALSE(Process().gSession);
  }
};

TEST_F(Application, FailsForAnEmptySelection) {
  Process().gSkipPositioning = true;

  RunOn({});

  const auto boxes = NewBoxes();
  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_Application.Run] ["));
  EXPECT_EQ(boxes[0].style, 16);
  EXPECT_EQ(desk.Made("MainPanel"), 0);
  EXPECT_FALSE(Process().gSkipPositioning);
  ExpectGlobalsKept();
}

TEST_F(Application, FailsWithoutASelection) {
  Cls_Application().Run(nullptr);

  EXPECT_THAT(NewBoxes(), ElementsAre(Report(kLabel, 16, "Object variable or With block variable not set")));
  ExpectGlobalsKept();
}

TEST_F(Application, RefusesSeveralObjects) {
  Process().gSkipPositioning = true;

  RunOn({plant, bolt});

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.APPLICATION.SELECTION_IS_EMPTY", kInformationModal)));
  EXPECT_EQ(desk.Made("MainPanel"), 0);
  EXPECT_FALSE(Process().gSkipPositioning);
  ExpectGlobalsKept();
}

TEST_F(Application, RefusesAnObjectInAStateThatMayChange) {
  Process().gWIPCancelled = false;
  for (const int state : {veldora::state::kCheckedOut, veldora::state::kObsolete}) {
    const auto object = AddProduct("P" + std::to_string(state));
    CheckIn(object);
    SetState(object, state);

    RunOn({object});

    const auto text = Says("QD.APPLICATION.MUST_BE_CHECKIN_OR_RELEASED", {"P2"});
    EXPECT_THAT(NewBoxes(), ElementsAre(Box{text, kInformation, "Quintara"}));
  }
  EXPECT_EQ(desk.Made("MainPanel"), 0);
  EXPECT_FALSE(Process().gWIPCancelled);
  ExpectGlobalsKept();
}

TEST_F(Application, RefusesAnObjectInAStateThatNobodyKnows) {
  for (const auto* state : {"5", "-1"}) {
    vault::Database(vault->Folder().connection)
        .ExecuteOnce(std::string("UPDATE \"ZORVA_PRODUCT\" SET \"STATE\" = ") + state);

    RunOn({plant});

    EXPECT_THAT(NewBoxes(),
                ElementsAre(TextBox("QD.APPLICATION.MUST_BE_CHECKIN_OR_RELEASED", kInformation, {"PLANT"})));
  }
  EXPECT_EQ(desk.Made("MainPanel"), 0);
}

TEST_F(Application, RefusesANewObject) {
  Process().gSkipPositioning = true;

  RunOn({AddProduct("NEW")});

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.APPLICATION.MUST_BE_CHECKIN_OR_RELEASED", kInformation, {"NEW"})));
  EXPECT_EQ(desk.Made("MainPanel"), 0);
  EXPECT_FALSE(Process().gSkipPositioning);
}

TEST_F(Application, TakesAReleasedObject) {
  Release(plant);
  desk.WhenShown("MainPanel", Cancel);

  RunOn({plant});

  EXPECT_THAT(NewBoxes(), IsEmpty());
}

TEST_F(Application, RemembersTheChosenObject) {
  desk.WhenShown("MainPanel", Cancel);

  RunOn({plant});

  EXPECT_EQ(Process().gCurrentObjectId, plant->ObjectId());
  EXPECT_EQ(Process().gCurrentClassId, plant->ClassId());
}

TEST_F(Application, RemembersTheObjectThatItRefuses) {
  const auto object = AddProduct("NEW");

  RunOn({object});

  EXPECT_EQ(Process().gCurrentObjectId, object->ObjectId());
  EXPECT_EQ(Process().gCurrentClassId, object->ClassId());
}

TEST_F(Application, ReadsTheObjectAfreshBeforeItOpensThePanel) {
  desk.WhenShown("MainPanel", Cancel);
  const auto objects = Store()->NewObjects();
  objects->Add(plant);
  const auto records = objects->Records();
  gate->StartRecording();

  Cls_Application().Run(records);

  gate->StopRecording();
  // The start has counted rows of its own before.
  const auto& made = gate->Record();
  const auto counts = [](const auto& call) { return call.starts_with("VdRecList.RecordCount"); };
  const auto from = std::find_if(made.rbegin(), made.rend(), counts).base() - 1;
  const auto to = std::ranges::find_if(made, [](const auto& call) { return call.starts_with("Platform.NewView"); });
  std::vector<std::string> names;
  for (auto call = from; call <= to; ++call) names.push_back(call->substr(0, call->find('(')));
  EXPECT_THAT(names, ElementsAre("VdRecList.RecordCount", "VdRecList.GetRecord", "VdSession.ObjectStore",
                                 "VdObjectStore.ObjectFromRecord", "VdObject.Clone", "VdObject.Retrieve",
                                 "VdObject.ObjectId", "VdObject.ClassId", "VdObject.Record", "VdRecord.ValueAsInteger",
                                 "VdObject.Record", "VdRecord.ValueAsString", "Platform.NewView"));
}

TEST_F(Application, LooksAtTheFileNameOfTheChosenObject) {
  gate->FailOperation("VdRecord.ValueAsString");

  RunOn({plant});

  gate->Reset();
  EXPECT_THAT(NewBoxes(), SizeIs(1));
  EXPECT_EQ(desk.Made("MainPanel"), 0);
}

TEST_F(Application, CancelledLeavesEverythingOut) {
  RunWith([&](ScriptedView& view) {
    gate->StartRecording();
    view.Press("cmdCancel");
  });
  gate->StopRecording();

  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_THAT(CallsOf(gate->Record(), "Application."), IsEmpty());
  EXPECT_THAT(CallsOf(gate->Record(), "ScriptService."), IsEmpty());
  EXPECT_EQ(host.Redraws(), 0);
  ExpectGlobalsLetGo();
}

// Whatever has become of an earlier creation in this panel.
TEST_F(Application, CancelledSaysSo) {
  RunWith([](ScriptedView& view) {
    EXPECT_TRUE(Process().gWIPCancelled);
    Process().gWIPCancelled = false;
    view.Press("cmdCancel");
    EXPECT_FALSE(view.IsLoaded());
  });

  EXPECT_TRUE(Process().gWIPCancelled);
}

TEST_F(Application, ClosedByItsCloseBoxLeavesEverythingOut) {
  RunWith([](ScriptedView& view) { view.Close(); });

  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_EQ(host.Redraws(), 0);
  ExpectGlobalsLetGo();
}

TEST_F(Application, LeavesEverythingOutAfterAFailedCreation) {
  CreateWith([&](ScriptedView&) { gate->FailOperation("Product.PartNumber="); });
  gate->Reset();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.NO_MATRIX_FOUND", kInformationModal),
                                      Report("MainPanel.cmdCreateWIP_Click", kCriticalModal, "Injected failure")));
  EXPECT_EQ(host.Redraws(), 0);
  ExpectGlobalsLetGo();
}

TEST_F(Application, LeavesEverythingOutAfterACancelledWait) {
  host.AddDuringSleep(1);
  platform.answers = {answer::kOk, answer::kCancel};

  CreateWith();

  EXPECT_THAT(NewBoxes(), SizeIs(2));
  EXPECT_EQ(host.Redraws(), 0);
  ExpectGlobalsLetGo();
}

TEST_F(Application, PositionsThenDrawsThenTells) {
  GivenMatrix(plant, "PLANT");
  std::vector<std::string> order;
  CreateWith([&](ScriptedView& view) {
    view.Click("Tree1", dialog::button::kRight, kBolt);
    gate->StartRecording();
  });
  gate->StopRecording();

  for (const auto& call : gate->Record()) {
    const auto name = call.substr(0, call.find('('));
    if (name == "View.Unload" || name == "Position.SetComponents" || name == "ScriptService.ExecuteScript")
      order.push_back(name);
  }
  EXPECT_THAT(order,
              ElementsAre("View.Unload", "View.Unload", "Position.SetComponents", "ScriptService.ExecuteScript"));
  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.APPLICATION.WIP_CREATION_SUCCESSFUL", kInformationModal)));
  EXPECT_EQ(host.Redraws(), 1);
  ExpectGlobalsLetGo();
}

TEST_F(Application, TellsOfSuccessWhateverThePositioningSaid) {
  CreateWith();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.NO_MATRIX_FOUND", kInformationModal),
                                      TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kInformationModal),
                                      TextBox("QD.APPLICATION.WIP_CREATION_SUCCESSFUL", kInformationModal)));
}

TEST_F(Application, TellsOfSuccessWhateverTheMacroDid) {
  gate->FailOperation("ScriptService.ExecuteScript");

  CreateWith([](ScriptedView& view) { view.Click("Tree1", dialog::button::kRight, kPlant); });

  gate->Reset();
  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.NO_MATRIX_FOUND", kInformationModal),
                                      Report("Cls_Utils.ExecuteZorvaScript", 16, "Injected failure"),
                                      TextBox("QD.APPLICATION.WIP_CREATION_SUCCESSFUL", kInformationModal)));
}

TEST_F(Application, PlacesNothingOfAWholeProduct) {
  GivenMatrix(plant, "PLANT");

  CreateWith([](ScriptedView& view) { view.Click("Tree1", dialog::button::kRight, kPlant); });

  EXPECT_THAT(Components(), ElementsAre(Component{"PLANT", "PLANT.1", At(0)}));
  EXPECT_FALSE(Process().gSkipPositioning);
  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.APPLICATION.WIP_CREATION_SUCCESSFUL", kInformationModal)));
}

TEST_F(Application, TellsWhatKeptThePanelShut) {
  desk.Desktop().gate->FailOperation("VdObject.ObjectId", 3);

  RunOn({plant});

  gate->Reset();
  EXPECT_THAT(NewBoxes(), ElementsAre(Report(kLabel, 16, "Injected failure")));
  EXPECT_EQ(desk.Made("MainPanel"), 1);
  EXPECT_FALSE(desk.Last("MainPanel").IsLoaded());
  EXPECT_TRUE(Process().gWIPCancelled);
  ExpectGlobalsKept();
}

TEST_F(Application, TellsAFailureInThePanel) {
  RunWith([](ScriptedView& view) {
    Process().gSkipPositioning = true;
    view.Press("cmdShow");
  });

  EXPECT_FALSE(Process().gSkipPositioning);
  EXPECT_THAT(NewBoxes(), ElementsAre(Report(kLabel, 16, "Object variable or With block variable not set")));
  EXPECT_FALSE(desk.Last("MainPanel").IsLoaded());
  ExpectGlobalsKept();
}

TEST_F(Application, EndsWithoutAWordWhereStartUpHasTold) {
  host.RegisterItem("HIXEngine", nullptr);
  Process().gSkipPositioning = true;

  RunOn({plant});

  EXPECT_THAT(NewBoxes(), SizeIs(1));
  EXPECT_EQ(desk.Made("MainPanel"), 0);
  EXPECT_TRUE(Process().gSkipPositioning);
}

TEST_F(Application, StartsTheNextCommandAfresh) {
  desk.WhenShown("MainPanel", Cancel);
  RunOn({plant});
  WriteTexts("EN", {"QD.WIP_CMDSHOW"});
  desk.WhenShown("MainPanel", Cancel);

  RunOn({plant});

  EXPECT_EQ(desk.Last("MainPanel").Of("cmdShow").text, "");
}

TEST_F(Application, ReviewsTheSameProductTwiceInASession) {
  GivenMatrix(plant, "PLANT");
  CreateWith([](ScriptedView& view) { view.Click("Tree1", dialog::button::kRight, kPlate); });
  NewBoxes();

  RunWith([](ScriptedView& view) {
    view.Press("cmdCreateWIP");
    EXPECT_TRUE(view.Of("cmdCreateWIP").isEnabled);
    view.Press("cmdCancel");
  });

  EXPECT_THAT(NewBoxes(),
              ElementsAre(Box{"A WIP product with the same name already exists in ZORVA.", 16, "Quintara"}));
}

}  // namespace
}  // namespace quintara::test
