#include <algorithm>
#include <functional>

#include "wip/creation_bench.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(Creation, MakesARootThatRemembersItsMatrix) {
  const auto matrix = GivenMatrix(plant, "PLANT");

  Create();

  EXPECT_EQ(Root()->PartNumber(), "WIP~~PLANT");
  EXPECT_EQ(Process().gWIPPartNumber, "WIP~~PLANT");
  EXPECT_EQ(Marks(), IdsOf("DocXML", matrix));
  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_FALSE(Process().gWIPCancelled);
  ExpectGone();
}

TEST_F(Creation, RemembersAWorkbookWhereThereIsNoXml) {
  const auto matrix = GivenMatrix(plant, "PLANT", MatrixType::Excel);

  Create();

  EXPECT_EQ(Marks(), IdsOf("DocExcel", matrix));
  EXPECT_EQ(Root()->PartNumber(), "WIP~~PLANT");
  EXPECT_THAT(NewBoxes(), IsEmpty());
}

TEST_F(Creation, PrefersXmlToAWorkbook) {
  GivenMatrix(plant, "PLANT", MatrixType::Excel);
  const auto matrix = GivenMatrix(plant, "PLANT");

  Create();

  EXPECT_EQ(Marks(), IdsOf("DocXML", matrix));
}

TEST_F(Creation, RemembersOfWhichTypeAnEmptyListOfMatricesIs) {
  Open("X");
  MainPanelInternals::MarkWithOneOf(Store()->NewObjects(), MatrixType::XML, Root());
  EXPECT_THAT(Marks(), ElementsAre("WIP=TRUE", "From=Quintara", "DocXMLCID=0", "DocXMLOID=0"));

  Open("Y");
  MainPanelInternals::MarkWithOneOf(Store()->NewObjects(), MatrixType::Excel, Root());
  EXPECT_THAT(Marks(), ElementsAre("WIP=TRUE", "From=Quintara", "DocExcelCID=0", "DocExcelOID=0"));
}

TEST_F(Creation, WithoutAMatrixSaysSoAndGoesOn) {
  Create();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.NO_MATRIX_FOUND", kInformationModal)));
  EXPECT_THAT(Marks(), ElementsAre("WIP=TRUE", "From=Quintara", "DocExcelCID=0", "DocExcelOID=0"));
  EXPECT_EQ(Root()->PartNumber(), "WIP~~");
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(Creation, NamesTheWipAfterTheMatrixNotAfterTheTree) {
  GivenMatrix(plant, "OTHER");

  Create();

  EXPECT_EQ(Root()->PartNumber(), "WIP~~OTHER");
}

TEST_F(Creation, NamesTheWipAsItsUserDoes) {
  GivenMatrix(plant, "PLANT");

  Create(Naming(" Trial é "));

  EXPECT_EQ(Root()->PartNumber(), "WIP~~ Trial é ");
}

TEST_F(Creation, WritesItsMarksInThisOrder) {
  GivenMatrix(plant, "PLANT");
  gate->StartRecording();

  Create();

  gate->StopRecording();
  std::vector<std::string> written;
  for (const auto& call : gate->Record()) {
    if (call.starts_with("Product.PartNumber=") || call.starts_with("Parameters.CreateString"))
      written.push_back(call.substr(0, call.find(',')));
  }
  ASSERT_THAT(written, SizeIs(5));
  EXPECT_THAT(written[0], testing::HasSubstr("WIP~~PLANT"));
  EXPECT_THAT(written[1], testing::HasSubstr("(WIP"));
  EXPECT_THAT(written[2], testing::HasSubstr("(From"));
  EXPECT_THAT(written[3], testing::HasSubstr("(DocXMLCID"));
  EXPECT_THAT(written[4], testing::HasSubstr("(DocXMLOID"));
}

TEST_F(Creation, OfNothingMarkedInsertsNothing) {
  GivenMatrix(plant, "PLANT");

  Create();

  EXPECT_THAT(Components(), IsEmpty());
  EXPECT_FALSE(Process().gSkipPositioning);
}

TEST_F(Creation, InsertsWhatIsMarkedInTheOrderOfTheTree) {
  Create(Marking({kPlate, kBoltInGroup, kPlate}));

  EXPECT_THAT(PartNumbers(), ElementsAre("BOLT", "PLATE"));
  EXPECT_THAT(Types(), ElementsAre("LWT", ""));
}

TEST_F(Creation, InsertsAProductWithoutWhatIsBelowIt) {
  Create(Marking({kGroup, kBolt}));

  EXPECT_THAT(PartNumbers(), ElementsAre("BOLT", "GROUP"));
}

TEST_F(Creation, InsertsAPartTwiceThatIsMarkedInTwoPlaces) {
  Create(Marking({kBolt, kBoltInGroup}));

  EXPECT_THAT(PartNumbers(), ElementsAre("BOLT", "BOLT"));
}

TEST_F(Creation, StampsALightComponentWithItsObject) {
  Create(Marking({kPlate}));

  const auto component = Root()->Products()->Item(1);
  EXPECT_EQ(Utils().ReadStringProperty(component, "OBJECT_ID"), std::to_string(plate->ObjectId()));
  EXPECT_EQ(Utils().ReadStringProperty(component, "CLASS_ID"), std::to_string(plate->ClassId()));
}

TEST_F(Creation, OfTheWholeProductLeavesNothingToPlace) {
  Create(Marking({kPlant}));

  EXPECT_THAT(PartNumbers(), ElementsAre("PLANT"));
  EXPECT_TRUE(Process().gSkipPositioning);
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(Creation, LeavesNothingToPlaceOfTheWholeDocumentEither) {
  Create(Marking({kPlant, kPlant}));

  EXPECT_THAT(PartNumbers(), ElementsAre("PLANT"));
  EXPECT_THAT(Types(), ElementsAre(""));
  EXPECT_TRUE(Process().gSkipPositioning);
}

TEST_F(Creation, TellsWhetherAllInstancesAreWanted) {
  Process().gAllInstancesRequested = true;
  Create();
  EXPECT_FALSE(Process().gAllInstancesRequested);

  Choose(plant);
  Create([](ScriptedView& view) {
    view.Type("txtWIPName", "ANOTHER");
    view.Press("GetAllInstances(0)");
  });
  EXPECT_TRUE(Process().gAllInstancesRequested);
}

TEST_F(Creation, ShowsItsProgress) {
  GivenMatrix(plant, "PLANT");

  Create(Marking({kGroup, kPlate, kPlate}));

  EXPECT_THAT(Progress(), ElementsAre("Retrieving Position Matrix...", "Compiling WIP Name...", "Creating WIP Root...",
                                      Says("QD.FRMMAINPANEL.PROCESSING_SKIP_COMPONENT", {"PLANT - A"}),
                                      Says("QD.FRMMAINPANEL.PROCESSING_SKIP_COMPONENT", {"BOLT - A"}),
                                      Says("QD.FRMMAINPANEL.PROCESSING_INSERT_LWT", {"GROUP - A"}),
                                      Says("QD.FRMMAINPANEL.PROCESSING_INSERT_DOCUMENT", {"PLATE - A"})));
  EXPECT_THAT(desk.Record(), Contains("frmProgressBar.SetProgress(pb1, 0, 8)"));
  EXPECT_THAT(desk.Record(), Contains("frmProgressBar.SetProgress(pb1, 7, 8)"));
}

TEST_F(Creation, FillsItsBarWhereNothingIsMarked) {
  Create();

  EXPECT_THAT(desk.Record(), Contains("frmProgressBar.SetProgress(pb1, 8, 8)"));
}

TEST_F(Creation, ClosesItsDialogsInThisOrder) {
  Create();

  EXPECT_THAT(LastDone(3), ElementsAre("frmProgressBar.Unload", "MainPanel.Hide", "MainPanel.Unload"));
}

TEST_F(Creation, DisablesItsButtonBeforeItAsksTheVault) {
  desk.WhenShown("MainPanel", [&](ScriptedView& view) {
    gate->StartRecording();
    view.Press("cmdCreateWIP");
    gate->StopRecording();
  });
  panel->ShowModal();

  const auto& calls = gate->Record();
  const auto at = [&](const std::string& call) {
    return std::ranges::find_if(calls, [&](const auto& made) { return made.starts_with(call); }) - calls.begin();
  };
  const auto disabledAt = at("View.SetEnabled(MainPanel, cmdCreateWIP, False");
  EXPECT_LT(at("VdSession.GetService"), disabledAt);
  EXPECT_LT(disabledAt, at("View.SetProgress"));
  EXPECT_LT(at("View.SetProgress"), at("VdObjectStore.ObjectById"));
}

TEST_F(Creation, ReadsTheObjectAgainAndRefreshesIt) {
  gate->StartRecording();

  Create();

  gate->StopRecording();
  const auto calls = CallsOf(gate->Record(), "Vd");
  const auto again =
      std::ranges::find_if(calls, [](const auto& call) { return call.starts_with("VdObjectStore.ObjectById"); });
  ASSERT_GE(calls.end() - again, 3);
  EXPECT_TRUE(again[1].starts_with("VdObject.Retrieve")) << again[1];
  EXPECT_TRUE(again[2].starts_with("VdObject.Refresh")) << again[2];
}

TEST_F(Creation, FetchesAMarkedObjectBeforeItSaysSo) {
  desk.WhenShown("MainPanel", [&](ScriptedView& view) {
    view.Click("Tree1", dialog::button::kRight, kBolt);
    gate->StartRecording();
    view.Press("cmdCreateWIP");
    gate->StopRecording();
  });

  panel->ShowModal();

  const auto& calls = gate->Record();
  const auto says = std::ranges::find_if(calls, [](const auto& call) {
    return call.starts_with("View.SetText(frmProgressBar, lbl, EN QD.FRMMAINPANEL.PROCESSING_INSERT_LWT");
  });
  ASSERT_GE(says - calls.begin(), 2);
  EXPECT_EQ(says[-2], "VdObjectStore.ObjectById(" + std::to_string(bolt->ClassId()) + ", " +
                          std::to_string(bolt->ObjectId()) + ")");
  EXPECT_TRUE(says[-1].starts_with("VdObject.Retrieve")) << says[-1];
}

TEST_F(Creation, WalksATreeOfAnyDepth) {
  constexpr int kDepth = 20000;
  std::function<Paper(int)> at = [&](int depth) {
    auto paper = PaperOf(1000000 + depth, "P", std::vector<Paper>{});
    paper.calls = nullptr;
    paper.children = [&at, depth] { return depth < kDepth ? ListOf({at(depth + 1)}) : nullptr; };
    return paper;
  };
  GivenPanel(MakeRef<PaperObject>(at(1)));

  Create();

  EXPECT_EQ(Nodes().Count(), kDepth);
  EXPECT_FALSE(Process().gWIPCancelled);
  EXPECT_THAT(desk.Record(), Contains("frmProgressBar.SetProgress(pb1, 20003, 20003)"));
}

}  // namespace
}  // namespace quintara::test
