#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/tiny_files.h"
#include "wip/creation_bench.h"
#include "wip/platform_in_front.h"

// The roads of a creation that don't end well, or not at once.
namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class DocumentWithoutProduct : public zorva::ProductDocument,
                               public std::enable_shared_from_this<DocumentWithoutProduct> {
 public:
  Ref<zorva::ProductDocument> AsProductDocument() override { return Ref<zorva::ProductDocument>(shared_from_this()); }
  Ref<zorva::Selection> Selection() override { return nullptr; }
  void Close() override {}
  std::string FullName() override { return {}; }
  Ref<zorva::Product> Product() override { return nullptr; }
};

class CreationEnds : public Creation {
 protected:
  /// Notes among what is done with the dialogs that a box came up, and does something more then.
  std::unique_ptr<PlatformInFront> NotingBoxes(const std::function<void()>& whenBoxShows = [] {}) {
    return std::make_unique<PlatformInFront>([this, whenBoxShows] {
      desk.Desktop().record.emplace_back("a box");
      whenBoxShows();
    });
  }
  /// Presses the button while an operation fails from its n-th call on.
  void CreateWithFailed(const std::string& operation, int n, const UserScript& user = {}) {
    desk.WhenShown("MainPanel", [&, user](ScriptedView& view) {
      if (user) user(view);
      gate->FailOperation(operation, n);
      view.Press("cmdCreateWIP");
      gate->Reset();
    });
    panel->ShowModal();
  }
};

TEST_F(CreationEnds, ThatWasCancelledSaysSo) {
  Process().gWIPCancelled = false;

  ShowPanel();

  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_FALSE(panel->IsLoaded());
  EXPECT_EQ(desk.Made("frmProgressBar"), 0);
}

TEST_F(CreationEnds, WithoutAStartEndsWithoutAWord) {
  host.RegisterItem("HIXEngine", nullptr);

  Create([](ScriptedView& view) { EXPECT_TRUE(view.Of("cmdCreateWIP").isEnabled); });

  EXPECT_THAT(NewBoxes(), SizeIs(1));
  EXPECT_EQ(desk.Made("frmProgressBar"), 0);
  EXPECT_TRUE(desk.Last("MainPanel").Of("cmdCreateWIP").isEnabled);
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_EQ(OpenDocuments(), 0);
}

TEST_F(CreationEnds, OfAnObjectThatIsGoneLeavesTheProgressOpen) {
  Process().gCurrentObjectId = 987654;
  const auto noted = NotingBoxes();

  Create();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.CANT_RETRIEVE_OBJECT", kCriticalModal)));
  EXPECT_FALSE(panel->IsLoaded());
  EXPECT_TRUE(desk.Last("frmProgressBar").IsOnTop());
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_EQ(OpenDocuments(), 0);
  EXPECT_THAT(LastDone(3), ElementsAre("a box", "MainPanel.Hide", "MainPanel.Unload"));
}

TEST_F(CreationEnds, LeavesTheProgressOpenWhenThePanelIsGone) {
  Process().gCurrentObjectId = 987654;
  Create();

  panel = nullptr;

  EXPECT_TRUE(IsProgressOpen());
}

TEST_F(CreationEnds, OfAnObjectThatCantBeHadIsToldTheSame) {
  CreateWithFailed("VdObjectStore.ObjectById", 1);

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.CANT_RETRIEVE_OBJECT", kCriticalModal)));
  EXPECT_TRUE(IsProgressOpen());
}

TEST_F(CreationEnds, LetsTheUserPickOneOfSeveralMatrices) {
  const auto hall = AddProduct("HALL", {group});
  GivenMatrix(hall, "HALL");
  GivenMatrix(plant, "PLANT");
  Choose(group);
  dialogAnswer = 1;

  Create();

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.SEVERAL_MATRIX_FOUND", kInformationModal)));
  ASSERT_THAT(dialogs, SizeIs(1));
  EXPECT_THAT(dialogs[0].objects, SizeIs(2));
  const auto picked = dialogs[0].objects[1];
  EXPECT_EQ(Marks(), IdsOf("DocXML", picked));
  EXPECT_EQ(Root()->PartNumber(), "WIP~~HALL");
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(CreationEnds, ReadsAPickedMatrixAfreshBeforeItTakesWhatToRemember) {
  const auto hall = AddProduct("HALL", {group});
  GivenMatrix(hall, "HALL");
  GivenMatrix(plant, "PLANT");
  Choose(group);
  dialogAnswer = 1;
  gate->StartRecording();

  Create();

  gate->StopRecording();
  const auto& calls = gate->Record();
  const auto taken = std::ranges::find_if(calls, [](const auto& call) { return call.starts_with("VdDialogOutput"); });
  std::vector<std::string> names;
  for (auto call = taken; call != calls.end() && !call->starts_with("View."); ++call) {
    names.push_back(call->substr(0, call->find('(')));
  }
  EXPECT_THAT(names, ElementsAre("VdDialogOutput.Objects", "VdObjects.Item", "VdObject.Clone", "VdObject.Retrieve",
                                 "VdObject.Retrieve", "VdObject.Record", "VdRecord.ValueAsString", "VdObject.ClassId",
                                 "VdObject.ObjectId"));
}

TEST_F(CreationEnds, FailsWhereNoneOfSeveralMatricesIsPicked) {
  const auto hall = AddProduct("HALL", {group});
  GivenMatrix(hall, "HALL");
  GivenMatrix(plant, "PLANT");
  Choose(group);

  Create();

  ExpectAbandoned("Object variable or With block variable not set");
  EXPECT_EQ(OpenDocuments(), 0);
}

TEST_F(CreationEnds, TakesAnEmptyListOfMatricesForNone) {
  const auto none = MainPanelInternals::OneOf(Store()->NewObjects());

  EXPECT_FALSE(none);
  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.NO_MATRIX_FOUND", kInformationModal)));
}

TEST_F(CreationEnds, TakesTheOnlyMatrixWithoutAWord) {
  const auto list = Store()->NewObjects();
  list->Add(GivenMatrix(plant, "PLANT"));

  EXPECT_EQ(MainPanelInternals::OneOf(list)->ObjectId(), list->Item(0)->ObjectId());
  EXPECT_THAT(NewBoxes(), IsEmpty());
  EXPECT_THAT(dialogs, IsEmpty());
}

TEST_F(CreationEnds, RefusesATwinAndStaysOpen) {
  GivenMatrix(plant, "PLANT");
  Open("WIP~~PLANT");
  const auto noted = NotingBoxes();

  Create(Marking({kPlate}));

  EXPECT_THAT(NewBoxes(),
              ElementsAre(Box{"A WIP product with the same name already exists in ZORVA.", kCritical, "Quintara"}));
  EXPECT_TRUE(desk.Last("MainPanel").Of("cmdCreateWIP").isEnabled);
  EXPECT_THAT(LastDone(3), ElementsAre("a box", "frmProgressBar.Unload", "MainPanel.SetEnabled(cmdCreateWIP, True)"));
  EXPECT_THAT(Progress(), ElementsAre("Retrieving Position Matrix...", "Compiling WIP Name..."));
  EXPECT_EQ(Process().gWIPPartNumber, "WIP~~PLANT");
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_THAT(Marks(), IsEmpty());
  EXPECT_THAT(Components(), IsEmpty());
}

TEST_F(CreationEnds, SeesATwinOnlyInTheActiveDocument) {
  Open("WIP~~TRIAL");
  Open("SOMETHING ELSE");

  Create(Naming("TRIAL"));

  EXPECT_EQ(OpenDocuments(), 2);
  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(CreationEnds, TakesANewNameAfterATwin) {
  GivenMatrix(plant, "PLANT");
  Open("WIP~~PLANT");

  Create([](ScriptedView& view) {
    view.Click("Tree1", dialog::button::kRight, kPlate);
    view.Press("cmdCreateWIP");
    view.Type("txtWIPName", "SECOND");
  });

  EXPECT_EQ(Root()->PartNumber(), "WIP~~SECOND");
  EXPECT_THAT(PartNumbers(), ElementsAre("PLATE"));
  EXPECT_EQ(desk.Made("frmProgressBar"), 2);
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(CreationEnds, LeavesWhatWasCancelledBeforeAsItIsForATwin) {
  GivenMatrix(plant, "PLANT");
  Open("WIP~~PLANT");
  Process().gWIPCancelled = false;

  Create();

  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(CreationEnds, MakesTheOpenProductTheWip) {
  Open("SOMETHING ELSE");

  Create(Naming("TRIAL"));

  EXPECT_EQ(OpenDocuments(), 1);
  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
}

TEST_F(CreationEnds, ComparesATwinExactly) {
  Open("wip~~TRIAL");

  Create(Naming("TRIAL"));

  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
}

TEST_F(CreationEnds, MakesANewProductBesideAnotherDocument) {
  folder.Write("work/drawing.stp", TinyStep("DRAWING"));
  host.Application()->Documents()->Open(WorkPath("drawing.stp"));

  Create(Naming("TRIAL"));

  EXPECT_EQ(OpenDocuments(), 2);
  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
}

TEST_F(CreationEnds, WaitsForADocumentThatItsUserHasToName) {
  host.AddDuringSleep(3);
  platform.answers = {answer::kOk};

  Create(Naming("TRIAL"));

  EXPECT_THAT(platform.Sleeps(), ElementsAre(6000, 6000, 6000));
  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
  EXPECT_EQ(NewBoxes().back(), (Box{"Please enter a part number in ZORVA", 1, "QNTR"}));
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(CreationEnds, LooksForTheDocumentBeforeItSleeps) {
  host.AddDuringSleep(1);
  const auto named = NotingBoxes([&] { host.NoteSleep(); });

  Create(Naming("TRIAL"));

  EXPECT_EQ(NewBoxes().back(), (Box{"Please enter a part number in ZORVA", 1, "QNTR"}));
  EXPECT_THAT(platform.Sleeps(), IsEmpty());
  EXPECT_EQ(Root()->PartNumber(), "WIP~~TRIAL");
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(CreationEnds, IsCancelledWhereNobodyNamesTheDocument) {
  GivenMatrix(plant, "PLANT");
  host.AddDuringSleep(1);
  platform.answers = {answer::kCancel};
  Process().gWIPCancelled = false;
  gate->StartRecording();

  Create();

  gate->StopRecording();
  EXPECT_THAT(CallsOf(gate->Record(), "Documents.Add"), SizeIs(1));
  EXPECT_THAT(CallsOf(gate->Record(), "Product.PartNumber="), IsEmpty());
  EXPECT_THAT(NewBoxes(), ElementsAre(Box{"Please enter a part number in ZORVA", 1, "QNTR"}));
  EXPECT_THAT(platform.Sleeps(), IsEmpty());
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_EQ(OpenDocuments(), 0);
  ExpectGone();
  EXPECT_THAT(LastDone(3), ElementsAre("frmProgressBar.Unload", "MainPanel.Hide", "MainPanel.Unload"));
}

TEST_F(CreationEnds, AsksNobodyWhereTheDocumentIsThere) {
  Create();

  EXPECT_THAT(platform.Sleeps(), IsEmpty());
  for (const auto& box : NewBoxes()) EXPECT_NE(box.title, "QNTR");
}

TEST_F(CreationEnds, FailsForADocumentOfAnotherKind) {
  folder.Write("work/drawing.stp", TinyStep("DRAWING"));
  const auto front = GivenZorvaInFront();
  front->documents = [&] {
    return MakeRef<DocumentsInFront>(host.Application()->Documents(),
                                     [&] { return host.Application()->Documents()->Open(WorkPath("drawing.stp")); });
  };
  platform.answers = {answer::kOk, answer::kCancel};

  Create();

  ExpectAbandoned("Type mismatch");
}

// The document is there when it is asked for, and gone when it is taken.
TEST_F(CreationEnds, SaysThatItCouldntBeginWhereTheDocumentIsNothing) {
  Open("SOMETHING ELSE");
  const auto front = GivenZorvaInFront();
  int asked = 0;
  front->activeDocument = [&]() -> Ref<AnyObject> {
    return ++asked == 4 ? nullptr : host.Application()->ActiveDocument();
  };

  Create();

  const auto boxes = NewBoxes();
  EXPECT_THAT(
      std::vector<Box>(boxes.end() - 2, boxes.end()),
      ElementsAre(TextBox("QD.FRMMAINPANEL.ERROR_INIT", kCriticalModal), Report(kCreationLabel, kCriticalModal, "")));
  ExpectGone();
  EXPECT_TRUE(Process().gWIPCancelled);
  EXPECT_EQ(Root()->PartNumber(), "SOMETHING ELSE");
}

TEST_F(CreationEnds, FailsForADocumentWithoutAProductOnlyWhenItMarksIt) {
  Open("SOMETHING ELSE");
  GivenZorvaInFront()->activeDocument = [] { return MakeRef<DocumentWithoutProduct>(); };

  Create();

  ExpectAbandoned("Object variable or With block variable not set");
  EXPECT_EQ(Progress().back(), "Creating WIP Root...");
}

TEST_F(CreationEnds, LeavesWhatIsInsertedWhereTheWalkFails) {
  CreateWithFailed("VdObjectStore.ObjectById", 3, Marking({kBolt, kPlate}));

  ExpectAbandoned("Injected failure");
  EXPECT_EQ(Root()->PartNumber(), "WIP~~");
  EXPECT_THAT(PartNumbers(), ElementsAre("BOLT"));
}

TEST_F(CreationEnds, GoesOnAfterAComponentThatCouldntBeInserted) {
  CreateWithFailed("Documents.Read", 1, Marking({kBolt, kPlate}));

  EXPECT_THAT(NewBoxes(), ElementsAre(TextBox("QD.FRMMAINPANEL.NO_MATRIX_FOUND", kInformationModal),
                                      Report("Cls_InsertLWT.Run", kCriticalModal, "Injected failure"),
                                      Report("Cls_InsertLWT.Run", kCriticalModal, "Injected failure")));
  EXPECT_FALSE(Process().gWIPCancelled);
}

TEST_F(CreationEnds, PutsTheSkippingBackBeforeItTellsThatTheWalkFailed) {
  bool skipped = true;
  const auto noted = NotingBoxes([&] { skipped = Process().gSkipPositioning; });

  CreateWithFailed("VdObjectStore.ObjectById", 2, Marking({kPlant}));

  ExpectAbandoned("Injected failure");
  EXPECT_FALSE(skipped);
}

TEST_F(CreationEnds, TellsOfAFailureBetweenItsTwoDialogs) {
  const auto noted = NotingBoxes();

  CreateWithFailed("Product.PartNumber=", 1);

  ExpectAbandoned("Injected failure");
  EXPECT_THAT(LastDone(3), ElementsAre("frmProgressBar.Unload", "a box", "MainPanel.Unload"));
}

TEST_F(CreationEnds, LeavesTheAnswerAloneWhereTheWalkFails) {
  Process().gAllInstancesRequested = true;

  CreateWithFailed("VdObjectStore.ObjectById", 2, Marking({kBolt}));

  ExpectAbandoned("Injected failure");
  EXPECT_TRUE(Process().gAllInstancesRequested);
}

TEST_F(CreationEnds, TakesAnAnswerThatCantBeReadForNo) {
  Process().gAllInstancesRequested = true;

  CreateWithFailed("View.IsChecked", 1);

  ExpectAbandoned("Injected failure");
  EXPECT_FALSE(Process().gAllInstancesRequested);
}

TEST_F(CreationEnds, FailsForAMarkedObjectThatTheVaultDoesntKnow) {
  GivenPanel(MakeRef<PaperObject>(PaperOf(plant->ObjectId(), "PLANT", {PaperOf(987654, "GONE")})));

  Create(Marking({2}));

  ExpectAbandoned("Object variable or With block variable not set");
  EXPECT_EQ(Root()->PartNumber(), "WIP~~");
  EXPECT_EQ(Progress().back(), Says("QD.FRMMAINPANEL.PROCESSING_SKIP_COMPONENT", {"PLANT - A"}));
}

TEST_F(CreationEnds, FailsForATreeThatItsBarCantCount) {
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

TEST_F(CreationEnds, CountsToTheLastNodeThatItsBarHolds) {
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
