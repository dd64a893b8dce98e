#include <algorithm>

#include "support/tiny_files.h"
#include "wip/plant_in_vault.h"
#include "wip/zorva_in_front.h"

namespace quintara::test {
namespace {

using testing::Contains;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto kLabel = "MainPanel.cmdCreateWIP_Click";

// The panel alone, without the command around it.
class Creation : public PlantTest {
 protected:
  Creation() { Choose(plant); }

  void Choose(const Ref<veldora::VdObject>& object) {
    Process().gCurrentObjectId = object->ObjectId();
    Process().gCurrentClassId = object->ClassId();
    Process().gWIPCancelled = true;
    GivenPanel(object);
  }

  // Presses the button after the user has done something.
  void Create(const UserScript& user = {}) {
    desk.WhenShown("MainPanel", [user](ScriptedView& view) {
      if (user) user(view);
      view.Press("cmdCreateWIP");
      if (view.IsShown()) view.Close();
    });
    panel->ShowModal();
  }

  static UserScript Marking(const std::vector<int>& nodes) {
    return [nodes](ScriptedView& view) {
      for (const int node : nodes) view.Click("Tree1", dialog::button::kRight, node);
    };
  }
  static UserScript Naming(const std::string& name) {
    return [name](ScriptedView& view) { view.Type("txtWIPName", name); };
  }

  std::vector<std::string> IdsOf(const std::string& prefix, const Ref<veldora::VdObject>& document) {
    return {"WIP=TRUE", "From=Quintara", prefix + "CID=" + std::to_string(document->ClassId()),
            prefix + "OID=" + std::to_string(document->ObjectId())};
  }

  std::vector<std::string> PartNumbers() {
    std::vector<std::string> numbers;
    for (const auto& component : Components()) numbers.push_back(component.partNumber);
    return numbers;
  }

  std::vector<std::string> Types() {
    std::vector<std::string> types;
    for (int i = 1; i <= Root()->Products()->Count(); ++i) {
      types.push_back(Utils().ReadStringProperty(Root()->Products()->Item(i), "TYPE", "String"));
    }
    return types;
  }

  bool IsProgressOpen() { return desk.Made("frmProgressBar") > 0 && desk.Last("frmProgressBar").IsLoaded(); }

  void ExpectAbandoned(const std::string& description) {
    EXPECT_THAT(NewBoxes(), Contains(Report(kLabel, kCriticalModal, description)));
    ExpectGone();
    EXPECT_TRUE(Process().gWIPCancelled);
    EXPECT_FALSE(Process().gSkipPositioning);
  }
  void ExpectGone() {
    EXPECT_FALSE(panel->IsLoaded());
    EXPECT_FALSE(IsProgressOpen());
  }

  // The CAD host with something in front of it that a test answers.
  std::shared_ptr<ZorvaInFront> GivenZorvaInFront() {
    auto front = std::make_shared<ZorvaInFront>(host.Application());
    platform.Native().Register("ZORVA.Application", Ref<zorva::Application>(front));
    Process().gZorva = nullptr;
    return front;
  }
};

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

  const auto& record = desk.Record();
  EXPECT_THAT(std::vector<std::string>(record.end() - 3, record.end()),
              ElementsAre("frmProgressBar.Unload", "MainPanel.Hide", "MainPanel.Unload"));
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

// The roads that don't end well.

TEST_F(Creation, ThatWasCancelledSaysSo) {
  Process().gWIPCancelled = false;

  ShowPanel();

  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_FALSE(panel->IsLoaded());
  EXPECT_EQ(desk.Made("frmProgressBar"), 0);
}

TEST_F(Creation, WithoutAStartEndsWithoutAWord) {
  host.RegisterItem("HIXEngine", nullptr);

  Create([](ScriptedView& view) { EXPECT_TRUE(view.Of("cmdCreateWIP").isEnabled); });

  EXPECT_THAT(NewBoxes(), SizeIs(1));
  EXPECT_EQ(desk.Made("frmProgressBar"), 0);
  EXPECT_TRUE(desk.Last("MainPanel").Of("cmdCreateWIP").isEnabled);
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_EQ(OpenDocuments(), 0);
}

TEST_F(Creation, OfAnObjectThatIsGoneLeavesTheProgressOpen) {
  Process().gCurrentObjectId = 987654;

  Create();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.CANT_RETRIEVE_OBJECT", kCriticalModal)));
  EXPECT_FALSE(panel->IsLoaded());
  EXPECT_TRUE(desk.Last("frmProgressBar").IsOnTop());
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_EQ(OpenDocuments(), 0);
  const auto& record = desk.Record();
  EXPECT_THAT(std::vector<std::string>(record.end() - 2, record.end()),
              ElementsAre("MainPanel.Hide", "MainPanel.Unload"));
}

TEST_F(Creation, LeavesTheProgressOpenWhenThePanelIsGone) {
  Process().gCurrentObjectId = 987654;
  Create();

  panel = nullptr;

  EXPECT_TRUE(IsProgressOpen());
}

TEST_F(Creation, OfAnObjectThatCantBeHadIsToldTheSame) {
  desk.WhenShown("MainPanel", [&](ScriptedView& view) {
    gate->FailOperation("VdObjectStore.ObjectById");
    view.Press("cmdCreateWIP");
    gate->Reset();
  });

  panel->ShowModal();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.CANT_RETRIEVE_OBJECT", kCriticalModal)));
  EXPECT_TRUE(IsProgressOpen());
}

TEST_F(Creation, LetsTheUserPickOneOfSeveralMatrices) {
  const auto hall = AddProduct("HALL", {group});
  GivenMatrix(hall, "HALL");
  const auto matrix = GivenMatrix(plant, "PLANT");
  Choose(group);
  dialogAnswer = 1;

  Create();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.SEVERAL_MATRIX_FOUND", kInformationModal)));
  ASSERT_THAT(dialogs, SizeIs(1));
  EXPECT_THAT(dialogs[0].objects, SizeIs(2));
  const auto picked = dialogs[0].objects[1];
  EXPECT_EQ(Marks(), IdsOf("DocXML", picked));
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(Creation, FailsWhereNoneOfSeveralMatricesIsPicked) {
  const auto hall = AddProduct("HALL", {group});
  GivenMatrix(hall, "HALL");
  GivenMatrix(plant, "PLANT");
  Choose(group);

  Create();

  ExpectAbandoned("Object variable or With block variable not set");
  EXPECT_EQ(OpenDocuments(), 0);
}

TEST_F(Creation, TakesAnEmptyListOfMatricesForNone) {
  const auto none = MainPanelInternals::MatrixAmong(Store()->NewObjects());

  EXPECT_FALSE(none);
  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.NO_MATRIX_FOUND", kInformationModal)));
}

TEST_F(Creation, TakesTheOnlyMatrixWithoutAWord) {
  const auto list = Store()->NewObjects();
  list->Add(GivenMatrix(plant, "PLANT"));

  EXPECT_EQ(MainPanelInternals::MatrixAmong(list)->ObjectId(), list->Item(0)->ObjectId());
  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_THAT(dialogs, IsEmpty());
}

TEST_F(Creation, RefusesATwinAndStaysOpen) {
  GivenMatrix(plant, "PLANT");
  Open("WIP~~PLANT");

  Create(Marking({kPlate}));

  EXPECT_THAT(NewBoxes(),
              ElementsAre(Box{"A WIP product with the same name already exists in ZORVA.", kCritical, "Quintara"}));
  EXPECT_TRUE(desk.Last("MainPanel").Of("cmdCreateWIP").isEnabled);
  EXPECT_FALSE(IsProgressOpen());
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_THAT(Marks(), IsEmpty());
  EXPECT_THAT(Components(), IsEmpty());
}

TEST_F(Creation, TakesANewNameAfterATwin) {
  GivenMatrix(plant, "PLANT");
  Open("WIP~~PLANT");

  Create([](ScriptedView& view) {
    view.Click("Tree1", dialog::button::kRight, kPlate);
    view.Press("cmdCreateWIP");
    view.Type("txtWIPName", "SECOND");
  });

  EXPECT_EQ(Root()->PartNumber(), "WIP~~SECOND");
  EXPECT_THAT(PartNumbers(), ElementsAre("PLATE"));
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(Creation, LeavesWhatWasCancelledBeforeAsItIsForATwin) {
  GivenMatrix(plant, "PLANT");
  Open("WIP~~PLANT");
  Process().gWIPCancelled = false;

  Create();

  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(Creation, MakesTheOpenProductTheWip) {
  Open("SOMETHING ELSE");

  Create(Naming("TRIAL"));

  EXPECT_EQ(OpenDocuments(), 1);
  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
}

TEST_F(Creation, ComparesATwinExactly) {
  Open("wip~~TRIAL");

  Create(Naming("TRIAL"));

  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
}

TEST_F(Creation, MakesANewProductBesideAnotherDocument) {
  folder.Write("work/drawing.stp", TinyStep("DRAWING"));
  host.Application()->Documents()->Open(WorkPath("drawing.stp"));

  Create(Naming("TRIAL"));

  EXPECT_EQ(OpenDocuments(), 2);
  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
}

TEST_F(Creation, WaitsForADocumentThatItsUserHasToName) {
  host.AddDuringSleep(3);
  platform.answers = {answer::kOk};

  Create(Naming("TRIAL"));

  EXPECT_THAT(platform.Sleeps(), ElementsAre(6000, 6000, 6000));
  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
  EXPECT_EQ(NewBoxes().back(), (Box{"Please enter a part number in ZORVA", 1, "QNTR"}));
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(Creation, IsCancelledWhereNobodyNamesTheDocument) {
  GivenMatrix(plant, "PLANT");
  host.AddDuringSleep(1);
  platform.answers = {answer::kCancel};
  Process().gWIPCancelled = false;

  Create();

  EXPECT_THAT(NewBoxes(), ElementsAre(Box{"Please enter a part number in ZORVA", 1, "QNTR"}));
  EXPECT_THAT(platform.Sleeps(), IsEmpty());
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_EQ(OpenDocuments(), 0);
  ExpectGone();
  const auto& record = desk.Record();
  EXPECT_THAT(std::vector<std::string>(record.end() - 3, record.end()),
              ElementsAre("frmProgressBar.Unload", "MainPanel.Hide", "MainPanel.Unload"));
}

TEST_F(Creation, AsksNobodyWhereTheDocumentIsThere) {
  Create();

  EXPECT_THAT(platform.Sleeps(), IsEmpty());
  for (const auto& box : NewBoxes()) EXPECT_NE(box.title, "QNTR");
}

TEST_F(Creation, FailsForADocumentOfAnotherKind) {
  folder.Write("work/drawing.stp", TinyStep("DRAWING"));
  const auto front = GivenZorvaInFront();
  front->documents = [&] {
    return MakeRef<DocumentsInFront>(host.Application()->Documents(),
                                     [&] { return host.Application()->Documents()->Open(WorkPath("drawing.stp")); });
  };

  Create();

  ExpectAbandoned("Type mismatch");
}

// The document is there when it is asked for, and gone when it is taken.
TEST_F(Creation, SaysThatItCouldntBeginWhereTheDocumentIsNothing) {
  Open("SOMETHING ELSE");
  const auto front = GivenZorvaInFront();
  int asked = 0;
  front->activeDocument = [&]() -> Ref<AnyObject> {
    return ++asked == 4 ? nullptr : host.Application()->ActiveDocument();
  };

  Create();

  const auto boxes = NewBoxes();
  EXPECT_THAT(std::vector<Box>(boxes.end() - 2, boxes.end()),
              ElementsAre(TextBox("QD.FRMMAINPANEL.ERROR_INIT", kCriticalModal), Report(kLabel, kCriticalModal, "")));
  ExpectGone();
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_EQ(Root()->PartNumber(), "SOMETHING ELSE");
}

TEST_F(Creation, LeavesWhatIsInsertedWhereTheWalkFails) {
  desk.WhenShown("MainPanel", [&](ScriptedView& view) {
    Marking({kBolt, kPlate})(view);
    gate->FailOperation("VdObjectStore.ObjectById", 3);
    view.Press("cmdCreateWIP");
    gate->Reset();
  });

  panel->ShowModal();

  ExpectAbandoned("Injected failure");
  EXPECT_EQ(Root()->PartNumber(), "WIP~~");
  EXPECT_THAT(PartNumbers(), ElementsAre("BOLT"));
}

TEST_F(Creation, GoesOnAfterAComponentThatCouldntBeInserted) {
  desk.WhenShown("MainPanel", [&](ScriptedView& view) {
    Marking({kBolt, kPlate})(view);
    gate->FailOperation("Documents.Read", 1);
    view.Press("cmdCreateWIP");
    gate->Reset();
  });

  panel->ShowModal();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.NO_MATRIX_FOUND", kInformationModal),
                                      Report("Cls_InsertLWT.Run", kCriticalModal, "Injected failure"),
                                      Report("Cls_InsertLWT.Run", kCriticalModal, "Injected failure")));
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(Creation, PutsTheSkippingBackWhereTheWalkFails) {
  desk.WhenShown("MainPanel", [&](ScriptedView& view) {
    Marking({kPlant})(view);
    gate->FailOperation("VdObjectStore.ObjectById", 2);
    view.Press("cmdCreateWIP");
    gate->Reset();
  });

  panel->ShowModal();

  ExpectAbandoned("Injected failure");
}

TEST_F(Creation, FailsForATreeThatItsBarCantCount) {
  auto root = PaperOf(plant->ObjectId(), "PLANT", std::vector<Paper>{});
  root.calls = nullptr;
  auto leaf = PaperOf(0, "LEAF");
  leaf.calls = nullptr;
  root.children = [&] {
    return MakeRef<PaperList>(32764, [&](int index) {
      leaf.objectId = index + 1000000;
      return MakeRef<PaperObject>(leaf);
    });
  };
  GivenPanel(MakeRef<PaperObject>(root));
  gate->StartRecording();

  Create();

  gate->StopRecording();
  EXPECT_EQ(Nodes().Count(), 32765);
  ExpectAbandoned("Overflow");
  EXPECT_THAT(CallsOf(gate->Record(), "Documents."), IsEmpty());
  EXPECT_THAT(CallsOf(gate->Record(), "VdObjectStore.ObjectById"), IsEmpty());
}

TEST_F(Creation, CountsToTheLastNodeThatItsBarHolds) {
  auto root = PaperOf(plant->ObjectId(), "PLANT", std::vector<Paper>{});
  root.calls = nullptr;
  auto leaf = PaperOf(0, "LEAF");
  leaf.calls = nullptr;
  root.children = [&] {
    return MakeRef<PaperList>(32763, [&](int index) {
      leaf.objectId = index + 1000000;
      return MakeRef<PaperObject>(leaf);
    });
  };
  GivenPanel(MakeRef<PaperObject>(root));

  Create();

  EXPECT_EQ(Nodes().Count(), 32764);
  EXPECT_FALSE(Process().gWIPCancelled);
  EXPECT_THAT(desk.Record(), Contains("frmProgressBar.SetProgress(pb1, 32767, 32767)"));
}

}  // namespace
}  // namespace quintara::test
