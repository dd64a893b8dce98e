#include "wip/plant_in_vault.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class WipStory : public PlantTest {};

TEST_F(WipStory, OfOneInstanceOfEachComponent) {
  GivenMatrix(plant, "PLANT");

  CreateWith([](ScriptedView& view) {
    view.Click("Tree1", dialog::button::kRight, kBolt);
    view.RightClick("Tree1", "PLATE - A");
    view.RightClick("Tree1", "PLATE - A");
  });

  EXPECT_EQ(Root()->PartNumber(), "WIP~~PLANT");
  EXPECT_THAT(Components(), ElementsAre(Component{"BOLT", "PLANT\\BOLT.1", At(1)},
                                        Component{"PLATE", "PLANT\\PLATE.1", At(0, 0, 5)}));
  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.APPLICATION.WIP_CREATION_SUCCESSFUL", kInformationModal)));
}

TEST_F(WipStory, OfAllInstancesOfAPart) {
  GivenMatrix(plant, "PLANT");

  CreateWith([](ScriptedView& view) {
    view.Press("GetAllInstances(0)");
    view.Click("Tree1", dialog::button::kRight, kBolt);
    view.Click("Tree1", dialog::button::kRight, kPlate);
  });

  EXPECT_THAT(Components(),
              ElementsAre(Component{"BOLT", "PLANT\\BOLT.1", At(1)}, Component{"PLATE", "PLANT\\PLATE.1", At(0, 0, 5)},
                          Component{"BOLT", "PLANT\\GROUP.1\\BOLT.1", At(2, 100)},
                          Component{"BOLT", "PLANT\\GROUP.1\\BOLT.2", At(3, 100)}));
}

// What lies inside of a component that is loaded is in its place with it.
TEST_F(WipStory, OfASubAssemblyAndAPartThatAlsoStandsElsewhere) {
  GivenMatrix(plant, "PLANT");

  CreateWith([](ScriptedView& view) {
    view.Press("GetAllInstances(0)");
    view.Click("Tree1", dialog::button::kRight, kBolt);
    view.Click("Tree1", dialog::button::kRight, kGroup);
  });

  EXPECT_THAT(Components(),
              ElementsAre(Component{"BOLT", "PLANT\\BOLT.1", At(1)}, Component{"GROUP", "PLANT\\GROUP.1", At(0, 100)}));
}

TEST_F(WipStory, OfNothingMarkedIsPlacedWithoutAWord) {
  const auto matrix = GivenMatrix(plant, "PLANT");

  CreateWith();

  EXPECT_THAT(Components(), IsEmpty());
  EXPECT_THAT(Marks(), Contains("DocXMLOID=" + std::to_string(matrix->ObjectId())));
  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.APPLICATION.WIP_CREATION_SUCCESSFUL", kInformationModal)));
  EXPECT_EQ(host.Redraws(), 1);
}

TEST_F(WipStory, OfAProductThatIsGoneEndsWithItsProgressOpen) {
  CreateWith([](ScriptedView&) { Process().gCurrentObjectId = 987654; });

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.CANT_RETRIEVE_OBJECT", kCriticalModal)));
  EXPECT_TRUE(desk.Last("frmProgressBar").IsOnTop());
  EXPECT_FALSE(desk.Last("MainPanel").IsLoaded());
  EXPECT_EQ(host.Redraws(), 0);
  EXPECT_EQ(OpenDocuments(), 0);
}

TEST_F(WipStory, OfAFailureInTheMiddleLeavesWhatIsThereWhereItIs) {
  GivenMatrix(plant, "PLANT");

  CreateWith([&](ScriptedView& view) {
    view.Click("Tree1", dialog::button::kRight, kBolt);
    view.Click("Tree1", dialog::button::kRight, kPlate);
    gate->FailOperation("VdObjectStore.ObjectById", 4);
  });
  gate->Reset();

  EXPECT_THAT(Components(), ElementsAre(Component{"BOLT", "BOLT.1", At(0)}));
  EXPECT_THAT(NewBoxes(), ElementsAre(Report("MainPanel.cmdCreateWIP_Click", kCriticalModal, "Injected failure")));
  EXPECT_EQ(host.Redraws(), 0);
}

TEST_F(WipStory, LooksForWhatItMarks) {
  GivenMatrix(plant, "PLANT");
  desk.WhenShown("frmFind", [](ScriptedView& find) {
    find.Type("txtInput", "bolt");
    find.Press("cmdFind");
    find.Press("cmdNext");
    find.Close();
  });

  CreateWith([](ScriptedView& view) {
    view.Press("cmdFind");
    EXPECT_EQ(view.Of("Tree1").selectedNode, kBoltInGroup);
    view.Click("Tree1", dialog::button::kRight, view.Of("Tree1").selectedNode);
  });

  EXPECT_THAT(Components(), ElementsAre(Component{"BOLT", "PLANT\\BOLT.1", At(1)}));
}

// The calls of the CAD host while the button is at work, one light component and one document.
TEST_F(WipStory, AsksTheCadHostInThisOrder) {
  const auto matrix = GivenMatrix(plant, "PLANT");
  RunWith([&](ScriptedView& view) {
    view.Click("Tree1", dialog::button::kRight, kBolt);
    for (int i = 0; i < 2; ++i) view.Click("Tree1", dialog::button::kRight, kPlate);
    gate->StartRecording();
    view.Press("cmdCreateWIP");
    gate->StopRecording();
  });

  std::vector<std::string> changes;
  for (const auto& call : gate->Record()) {
    for (const auto* change :
         {"Application.DisplayFileAlerts", "Documents.Add", "Documents.Read", "Document.GetItem",
          "Product.PartNumber=", "Products.AddComponentsFromFiles", "Parameters.CreateString", "View.SetProgress"}) {
      if (call.starts_with(change)) changes.push_back(call);
    }
  }
  const auto id = [](const std::string& name, std::int32_t value) {
    return "Parameters.CreateString(" + name + ", " + std::to_string(value) + ")";
  };
  const auto step = [](int value) { return "View.SetProgress(frmProgressBar, pb1, " + std::to_string(value) + ", 8)"; };
  EXPECT_THAT(changes,
              ElementsAre(step(0), step(1), step(2), "Documents.Add(ZVAProduct)", step(3),
                          "Product.PartNumber=(WIP~~PLANT)", "Parameters.CreateString(WIP, TRUE)",
                          "Parameters.CreateString(From, Quintara)", id("DocXMLCID", matrix->ClassId()),
                          id("DocXMLOID", matrix->ObjectId()), step(4), step(5), "Application.DisplayFileAlerts",
                          "Application.DisplayFileAlerts=(False)", "Documents.Read(" + WorkPath("BOLT.lwt") + ")",
                          "Products.AddComponentsFromFiles(" + WorkPath("BOLT.lwt") + ")",
                          "Application.DisplayFileAlerts=(True)", "Document.GetItem(BOLT)",
                          "Parameters.CreateString(TYPE, LWT)", id("OBJECT_ID", bolt->ObjectId()),
                          id("CLASS_ID", bolt->ClassId()), step(6), step(7), step(8), "Application.DisplayFileAlerts",
                          "Application.DisplayFileAlerts=(False)", "Documents.Read(" + WorkPath("PLATE.stp") + ")",
                          "Products.AddComponentsFromFiles(" + WorkPath("PLATE.stp") + ")",
                          "Application.DisplayFileAlerts=(True)"));
}

}  // namespace
}  // namespace quintara::test
