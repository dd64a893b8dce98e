#include <algorithm>

#include "access/utils/Cls_Utils.h"
#include "commands/switching_bench.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

Box AlreadyLight(const std::string& name) {
  return TextBox("QD.SWITCH.ALREADY_IN_STATE", kInformationModal, {name, "LWT"});
}

Box Refused(const std::string& key, const std::string& name) {
  return TextBox("QD.SWITCH." + key, kCriticalModal, {name});
}

Box TryTheParent() {
  return {"ZORVA can not replace the component with a lwt. Try with the parent...", kInformationModal, "Quintara"};
}

Box Unexpected(const std::string& description) {
  return Report("Cls_SwitchToLWT.Run", kCriticalModal, description);
}

// Three documents stand in the work in progress, all of them selected.
class SwitchingToLwt : public testing::Test, protected SwitchingBench {
 protected:
  SwitchingToLwt() {
    for (const auto& part : {bolt, nut, plate}) AddDocumentOf(part);
    SelectAll();
  }

  // Where the first one was switched, the second one wasn't, and the third one wasn't looked at.
  std::vector<std::string> FirstAlone() { return {AsLight(bolt), AsDocument("NUT"), AsDocument("PLATE")}; }

  const Ref<VdObject> bolt = Add("BOLT");
  const Ref<VdObject> nut = Add("NUT");
  const Ref<VdObject> plate = Add("PLATE");
  const std::vector<std::string> untouched{AsDocument("BOLT"), AsDocument("NUT"), AsDocument("PLATE")};
};

TEST_F(SwitchingToLwt, ReplacesWhatIsSelectedWithoutAWord) {
  EXPECT_THAT(BoxesOfSwitchToLwt(), IsEmpty());

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsLight(nut), AsLight(plate)));
}

TEST_F(SwitchingToLwt, LeavesTheRestAlone) {
  Select({2});

  EXPECT_THAT(BoxesOfSwitchToLwt(), IsEmpty());

  EXPECT_THAT(Components(), ElementsAre(AsDocument("BOLT"), AsLight(nut), AsDocument("PLATE")));
  EXPECT_FALSE(WorkHas("BOLT.lwt"));
}

TEST_F(SwitchingToLwt, GoesInTheOrderOfTheSelection) {
  Select({3, 1});

  const auto calls = CallsOfSwitchToLwt();

  std::vector<std::string> replaced;
  std::ranges::copy_if(calls, std::back_inserter(replaced),
                       [](const auto& call) { return call.starts_with("Products.ReplaceWithFile"); });
  EXPECT_THAT(replaced, ElementsAre("Products.ReplaceWithFile(" + WorkPath("PLATE.lwt") + ")",
                                    "Products.ReplaceWithFile(" + WorkPath("BOLT.lwt") + ")"));
}

TEST_F(SwitchingToLwt, LeavesEachInItsPlace) {
  PositionMatrix before{};
  Child(2)->Position()->GetComponents(before);

  SwitchToLwt();

  PositionMatrix after{};
  Child(2)->Position()->GetComponents(after);
  EXPECT_EQ(after, before);
}

TEST_F(SwitchingToLwt, StampsTheReferenceAndNotTheComponent) {
  SwitchToLwt();

  EXPECT_EQ(Child(1)->UserProperties()->Count(), 0);
  EXPECT_EQ(Child(1)->Reference()->UserProperties()->Count(), 3);
}

TEST_F(SwitchingToLwt, LeadsFromAComponentBackToItsObject) {
  SwitchToLwt();

  const auto found = Utils().RetrieveVDObject_FromLWT(Process().gSession, Child(2));

  ASSERT_TRUE(found);
  EXPECT_EQ(IdOf(found), IdOf(nut));
}

TEST_F(SwitchingToLwt, SwitchesTwoInstancesOfOnePart) {
  AddDocumentOf(bolt);
  Select({1, 4});

  EXPECT_THAT(BoxesOfSwitchToLwt(), IsEmpty());

  EXPECT_EQ(FileOf(Child(1)), WorkPath("BOLT.lwt"));
  EXPECT_EQ(FileOf(Child(4)), WorkPath("BOLT.lwt"));
}

TEST_F(SwitchingToLwt, CallsTheHostInThisOrder) {
  Select({1});
  const auto path = WorkPath("BOLT.lwt");
  const auto objectId = std::to_string(bolt->ObjectId());
  const auto classId = std::to_string(bolt->ClassId());

  EXPECT_THAT(OfZorva(CallsOfSwitchToLwt()),
              ElementsAre("Application.ActiveDocument", "ProductDocument.Product", "Product.Parameters",
                          "Parameters.Count", "Parameters.Item(WIP)", "Parameter.ValueAsString",
                          "Application.ActiveDocument", "ProductDocument.Product", "Product.Products",
                          "Document.Selection", "Selection.Count", "Selection.Item(1)", "SelectedElement.Value",
                          "Product.Parameters", "Parameters.Count", "Product.Reference", "Product.Parent",
                          "Document.FullName", "Product.Reference", "Product.Parent", "Document.FullName",
                          "Products.ReplaceWithFile(" + path + ")", "Product.Reference", "Product.Parameters",
                          "Parameters.Count", "Product.UserProperties", "Parameters.CreateString(TYPE, LWT)",
                          "Product.Parameters", "Parameters.Count", "Parameters.Item(OBJECT_ID)",
                          "Product.UserProperties", "Parameters.CreateString(OBJECT_ID, " + objectId + ")",
                          "Product.Parameters", "Parameters.Count", "Parameters.Item(CLASS_ID)",
                          "Product.UserProperties", "Parameters.CreateString(CLASS_ID, " + classId + ")"));
}

TEST_F(SwitchingToLwt, ReadsTheObjectAnewAndThenItsStateThreeTimes) {
  for (const int state : {0, 1, 2, 3, 4}) {
    SetState(bolt, state);
    Select({1});

    const auto calls = CallsOfSwitchToLwt();

    const auto isState = [](const auto& call) { return call == "VdRecord.ValueAsInteger(STATE)"; };
    EXPECT_EQ(std::ranges::count_if(calls, isState), 3) << state;
    const auto first = std::ranges::find_if(calls, isState);
    EXPECT_THAT(std::vector(first - 2, first), ElementsAre(StartsWith("VdObject.Retrieve"), "VdObject.Record"));
    if (FileOf(Child(1)) != WorkPath("BOLT.stp"))
      root->Products()->ReplaceWithFile(Child(1), WorkPath("BOLT.stp"), false);
  }
}

TEST_F(SwitchingToLwt, LeavesAnotherInstanceOfThePartAlone) {
  AddDocumentOf(bolt);
  Select({4});

  EXPECT_THAT(BoxesOfSwitchToLwt(), IsEmpty());

  EXPECT_THAT(Components(), ElementsAre(AsDocument("BOLT"), AsDocument("NUT"), AsDocument("PLATE"),
                                        "BOLT.2 BOLT.lwt LWT " + IdOf(bolt)));
}

TEST_F(SwitchingToLwt, EndsAtOneThatIsLightAlready) {
  Utils().WriteStringProperty(Child(2), "TYPE", "LWT");

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(AlreadyLight("NUT.1")));

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsDocument("NUT") + " LWT", AsDocument("PLATE")));
}

TEST_F(SwitchingToLwt, TakesALightFileForLightInAnyCase) {
  for (const std::string name : {"a.lwt", "b.LWT", "c.LwT"}) {
    WriteWork(name, TinyLight("CLIP"));
    root->Products()->AddComponentsFromFiles({WorkPath(name)}, "All");
    Select({Count()});
    Process().texts.QD_SWITCH_ALREADY_IN_STATE.text = "REP1 REP2";

    EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(Box{Child(Count())->Name() + " LWT", kInformationModal, "Quintara"}))
        << name;
  }
}

TEST_F(SwitchingToLwt, TakesOneThatWasNeverSavedForLight) {
  AssemblyStructure structure;
  structure.definitions = {{"CLIP", false, {}}, {"WIP~~NEW", true, {{"CLIP.1", 0, kIdentityPosition}}}};
  structure.root = 1;
  document = host.Build(structure);
  root = document->Product();
  Utils().WriteStringProperty(root, "WIP", "TRUE");
  Select({1});

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(AlreadyLight("CLIP.1")));
}

TEST_F(SwitchingToLwt, TakesOneWhoseFileCannotBeToldForLight) {
  gate->FailOperation("Document.FullName");

  const auto boxes = BoxesOfSwitchToLwt();

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(AlreadyLight("BOLT.1")));
  EXPECT_EQ(Components(), untouched);
}

TEST_F(SwitchingToLwt, DoesNotLookAtTheFileOfOneThatTellsItsType) {
  for (const std::string type : {"3D", "PRODUCT", "lwt", "LWT "}) {
    WriteWork("CLIP.lwt", TinyLight("CLIP"));
    root->Products()->AddComponentsFromFiles({WorkPath("CLIP.lwt")}, "All");
    Utils().WriteStringProperty(Child(Count()), "TYPE", type);
    Select({Count()});

    // It isn't taken for light: the vault is asked for its object.
    EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(Refused("DOES_NOT_EXIST_IN_VELDORA", "CLIP.1"))) << type;
    Process().texts.QD_SWITCH_DOES_NOT_EXIST_IN_VELDORA.text = Says("QD.SWITCH.DOES_NOT_EXIST_IN_VELDORA", {"CLIP.1"});
  }
}

TEST_F(SwitchingToLwt, SwitchesAnyOtherType) {
  Utils().WriteStringProperty(Child(1), "TYPE", "3D");
  Utils().WriteStringProperty(Child(2), "TYPE", "PRODUCT");
  Utils().WriteStringProperty(Child(3), "TYPE", "lwt");

  EXPECT_THAT(BoxesOfSwitchToLwt(), IsEmpty());

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsLight(nut), AsLight(plate)));
}

TEST_F(SwitchingToLwt, EndsAtOneThatTheVaultDoesNotKnow) {
  WriteWork("CLIP.stp", TinyStep("CLIP"));
  root->Products()->AddComponentsFromFiles({WorkPath("CLIP.stp")}, "All");
  Select({1, 4, 2});

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(Refused("DOES_NOT_EXIST_IN_VELDORA", "CLIP.1")));

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsDocument("NUT"), AsDocument("PLATE"), AsDocument("CLIP")));
}

TEST_F(SwitchingToLwt, ShowsWhatKeepsItFromTheObject) {
  gate->FailOperation("HIXEngine.DocumentClassId", 2, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfSwitchToLwt();

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Report("Cls_Utils.RetrieveVDObject", kCritical, "cable"),
                                 Refused("DOES_NOT_EXIST_IN_VELDORA", "NUT.1")));
  EXPECT_EQ(Components(), FirstAlone());
}

TEST_F(SwitchingToLwt, EndsAtAnObjectThatIsNewOrCheckedOutOrObsolete) {
  const auto texts = Process().texts;
  for (const int state : {0, 2, 4}) {
    SetState(nut, state);
    Process().texts = texts;

    EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(Refused("NOT_IN_CORRECT_STATE", "NUT.1"))) << state;

    EXPECT_EQ(Components(), FirstAlone()) << state;
    root->Products()->ReplaceWithFile(Child(1), WorkPath("BOLT.stp"), false);
    SelectAll();
  }
  EXPECT_FALSE(WorkHas("NUT.lwt"));
}

TEST_F(SwitchingToLwt, TakesEveryOtherState) {
  SetState(bolt, 3);
  SetState(nut, 5);
  SetState(plate, -1);

  EXPECT_THAT(BoxesOfSwitchToLwt(), IsEmpty());

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsLight(nut), AsLight(plate)));
}

TEST_F(SwitchingToLwt, EndsWhereTheLightFileCannotBeBrought) {
  gate->FailOperation("VdSessionUtil.CopyVaultFile", 2);

  const auto boxes = BoxesOfSwitchToLwt();

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Refused("CANT_BE_COPIED_FROM_VAULT", "NUT.1")));
  EXPECT_EQ(Components(), FirstAlone());
}

TEST_F(SwitchingToLwt, FindsOutAtTheHostThatThereIsNoLightFile) {
  AddDocumentOf(Add("CLIP", false));
  Select({1, 4, 2});

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(TryTheParent()));

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsDocument("NUT"), AsDocument("PLATE"), AsDocument("CLIP")));
}

TEST_F(SwitchingToLwt, SendsTheUserToTheParentOfADeeperComponent) {
  const auto assembly = AddAssemblyWith(WorkPath("NUT.stp"));
  Selection()->Clear();
  Selection()->Add(Child(1));
  Selection()->Add(assembly->Products()->Item(1));
  Selection()->Add(Child(3));

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(TryTheParent()));

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsDocument("NUT"), AsDocument("PLATE"), HasSubstr("ASSEMBLY")));
  EXPECT_EQ(FileOf(assembly->Products()->Item(1)), WorkPath("NUT.stp"));
}

TEST_F(SwitchingToLwt, NeverShowsTheTextOfTheCatalogueForThat) {
  const auto loaded = Process().texts.QD_SWITCH_CANT_REPLACE_WITH_LWT.text;
  gate->FailOperation("Products.ReplaceWithFile");

  const auto boxes = BoxesOfSwitchToLwt();

  gate->Reset();
  EXPECT_EQ(loaded, Says("QD.SWITCH.CANT_REPLACE_WITH_LWT"));
  EXPECT_THAT(boxes, ElementsAre(TryTheParent()));
  EXPECT_EQ(Process().texts.QD_SWITCH_CANT_REPLACE_WITH_LWT.text, loaded);
}

// A text of the catalogue keeps what it was filled with.
TEST_F(SwitchingToLwt, ShowsTheNameOfTheFirstOneAgainAtTheNext) {
  for (const int child : {1, 2}) Utils().WriteStringProperty(Child(child), "TYPE", "LWT");
  Select({1});
  SwitchToLwt();
  Select({2});

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(AlreadyLight("BOLT.1")));
}

TEST_F(SwitchingToLwt, GoesOnWhenStampsCannotBeWritten) {
  gate->FailOperation("Parameters.CreateString");

  const auto boxes = BoxesOfSwitchToLwt();

  gate->Reset();
  EXPECT_THAT(boxes, IsEmpty());
  EXPECT_THAT(Components(), ElementsAre("BOLT.1 BOLT.lwt", "NUT.1 NUT.lwt", "PLATE.1 PLATE.lwt"));
}

TEST_F(SwitchingToLwt, ReportsAFailureBehindTheReplacement) {
  gate->FailOperation("VdObject.ClassId", 2, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfSwitchToLwt();

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Unexpected("cable")));
  EXPECT_THAT(Components(),
              ElementsAre(AsLight(bolt), "NUT.1 NUT.lwt LWT :" + std::to_string(nut->ObjectId()), AsDocument("PLATE")));
}

TEST_F(SwitchingToLwt, ReportsAnyOtherFailure) {
  gate->FailOperation("SelectedElement.Value", 2, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfSwitchToLwt();

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Unexpected("cable")));
  EXPECT_EQ(Components(), FirstAlone());
}

TEST_F(SwitchingToLwt, ReportsOneThatIsSelectedTwice) {
  Select({1, 1, 2});

  const auto boxes = BoxesOfSwitchToLwt();

  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, StartsWith(Says("COMMON.UNEXPECTED_ERROR") + " [Cls_SwitchToLWT.Run]"));
  EXPECT_EQ(Components(), FirstAlone());
}

TEST_F(SwitchingToLwt, ReportsASelectedCollection) {
  Selection()->Clear();
  Selection()->Add(root->Products());

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(Unexpected("Object variable or With block variable not set")));
}

TEST_F(SwitchingToLwt, ReportsASelectionPastTheCounter) {
  Selection()->Clear();
  for (int i = 0; i < 32768; ++i) Selection()->Add(Child(1));

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(Unexpected("Overflow")));
  EXPECT_EQ(Components(), untouched);
}

TEST_F(SwitchingToLwt, NeedsAWip) {
  const auto only = TextBox("QD.SWITCH.ONLY_AVAILABLE_FOR_WIP", kInformationModal);
  Utils().WriteStringProperty(root, "WIP", "True");
  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(only));
  GivenWip(false);
  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(only));
  while (host.Application()->Documents()->Count() > 0) {
    host.Application()->ActiveDocument()->AsDocument()->Close();
  }
  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(only));
}

TEST_F(SwitchingToLwt, NeedsASelection) {
  Selection()->Clear();

  EXPECT_THAT(BoxesOfSwitchToLwt(), ElementsAre(TextBox("QD.SWITCH.SELECT_AT_LEAST_ONE_OBJECT", kInformationModal)));
}

TEST_F(SwitchingToLwt, EndsWithoutAWordWhenTheStartFails) {
  gate->FailOperation("Application.GetItem");

  const auto boxes = BoxesOfSwitchToLwt();

  gate->Reset();
  // The start's own.
  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, HasSubstr("Cls_Init.Init"));
  EXPECT_EQ(Components(), untouched);
}

TEST_F(SwitchingToLwt, ReplacesALightFileThatIsInTheWayInTheWorkDirectory) {
  WriteWork("BOLT.lwt", TinyLight("ANOTHER"));

  EXPECT_THAT(BoxesOfSwitchToLwt(), IsEmpty());

  EXPECT_EQ(Child(1)->PartNumber(), "BOLT");
}

}  // namespace
}  // namespace quintara::test
