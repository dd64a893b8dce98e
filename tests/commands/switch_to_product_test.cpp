#include <algorithm>

#include "access/utils/Cls_Utils.h"
#include "commands/switching_bench.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr int kWarning = 48;

Box AlreadyProduct(const std::string& name) {
  return TextBox("QD.SWITCH.ALREADY_IN_STATE", kInformationModal, {name, "product"});
}

Box Refused(const std::string& key, const std::string& name) {
  return TextBox("QD.SWITCH." + key, kCriticalModal, {name});
}

Box Unexpected(const std::string& description) {
  return Report("Cls_SwitchToProduct.Run", kCriticalModal, description);
}

// Three light components stand in the work in progress, all of them selected.
class SwitchingToProduct : public testing::Test, protected SwitchingBench {
 protected:
  SwitchingToProduct() {
    for (const auto& part : {bolt, nut, plate}) AddLight(part);
    SelectAll();
  }

  // Where the first one was switched and the others weren't.
  std::vector<std::string> FirstAlone() { return {AsDocument("BOLT"), AsLight(nut), AsLight(plate)}; }
  // Where all were but the second one.
  std::vector<std::string> AllButTheSecond() { return {AsDocument("BOLT"), AsLight(nut), AsDocument("PLATE")}; }

  const Ref<VdObject> bolt = Add("BOLT");
  const Ref<VdObject> nut = Add("NUT");
  const Ref<VdObject> plate = Add("PLATE");
  const std::vector<std::string> untouched{AsLight(bolt), AsLight(nut), AsLight(plate)};
  const std::vector<std::string> documents{AsDocument("BOLT"), AsDocument("NUT"), AsDocument("PLATE")};
};

TEST_F(SwitchingToProduct, ReplacesWhatIsSelectedWithoutAWord) {
  EXPECT_THAT(BoxesOfSwitchToProduct(), IsEmpty());

  EXPECT_EQ(Components(), documents);
}

TEST_F(SwitchingToProduct, LeavesTheRestAlone) {
  Select({2});

  EXPECT_THAT(BoxesOfSwitchToProduct(), IsEmpty());

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsDocument("NUT"), AsLight(plate)));
  EXPECT_FALSE(WorkHas("BOLT.stp"));
}

TEST_F(SwitchingToProduct, LeavesAnotherInstanceOfThePartAlone) {
  AddLight(bolt);
  Select({4});

  EXPECT_THAT(BoxesOfSwitchToProduct(), IsEmpty());

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsLight(nut), AsLight(plate), "BOLT.2 BOLT.stp"));
}

TEST_F(SwitchingToProduct, LeavesEachInItsPlace) {
  PositionMatrix before{};
  Child(2)->Position()->GetComponents(before);

  SwitchToProduct();

  PositionMatrix after{};
  Child(2)->Position()->GetComponents(after);
  EXPECT_EQ(after, before);
}

TEST_F(SwitchingToProduct, WritesNoStamps) {
  SwitchToProduct();

  EXPECT_EQ(Child(1)->Parameters()->Count(), 0);
}

TEST_F(SwitchingToProduct, TakesStampsOfTheComponentItselfAwayToo) {
  Stamp(Child(1), "LWT", bolt);

  SwitchToProduct();

  EXPECT_EQ(Child(1)->Parameters()->Count(), 0);
}

TEST_F(SwitchingToProduct, IsUndoneBySwitchingToLwt) {
  SwitchToProduct();
  SelectAll();

  EXPECT_THAT(BoxesOfSwitchToLwt(), IsEmpty());

  EXPECT_EQ(Components(), untouched);
}

TEST_F(SwitchingToProduct, FindsADocumentAfterwards) {
  SwitchToProduct();
  Select({1});

  EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(AlreadyProduct("BOLT.1")));
}

TEST_F(SwitchingToProduct, CallsTheHostInThisOrder) {
  Select({1});
  const auto path = WorkPath("BOLT.stp");

  EXPECT_THAT(
      OfZorva(CallsOfSwitchToProduct()),
      ElementsAre("Application.ActiveDocument", "ProductDocument.Product", "Product.Parameters", "Parameters.Count",
                  "Parameters.Item(WIP)", "Parameter.ValueAsString", "Application.ActiveDocument",
                  "ProductDocument.Product", "Document.Selection", "Selection.Count", "Selection.Item(1)",
                  "SelectedElement.Value", "Product.Parameters", "Parameters.Count", "Parameters.Item(TYPE)",
                  "Parameter.ValueAsString", "Product.Parameters", "Parameters.Count", "Parameters.Item(CLASS_ID)",
                  "Parameter.ValueAsString", "Product.Parameters", "Parameters.Count", "Parameters.Item(OBJECT_ID)",
                  "Parameter.ValueAsString", "Product.Products", "Products.Application", "Application.Documents",
                  "Documents.Read(" + path + ")", "Products.ReplaceWithFile(" + path + ")"));
}

TEST_F(SwitchingToProduct, ReadsTheObjectAnewAndThenItsStateOnce) {
  Select({1});

  const auto calls = CallsOfSwitchToProduct();

  const auto state = std::ranges::find(calls, "VdRecord.ValueAsInteger(STATE)");
  ASSERT_NE(state, calls.end());
  EXPECT_EQ(std::ranges::count(calls, *state), 1);
  EXPECT_THAT(std::vector(state - 2, state), ElementsAre(StartsWith("VdObject.Retrieve"), "VdObject.Record"));
}

TEST_F(SwitchingToProduct, AsksForTheNameOfTheFileAgainAfterTheCopy) {
  Select({1});

  const auto calls = CallsOfSwitchToProduct();

  const auto copy = std::ranges::find(calls, "VdSessionUtil.RunOperation(CopyFile)");
  const auto components = std::find(copy, calls.end(), "Product.Products");
  ASSERT_NE(components, calls.end());
  EXPECT_THAT(std::vector(components + 1, components + 4),
              ElementsAre("VdObject.Record", "VdRecord.ValueAsString(CAD_REF_FILE_NAME)", "Products.Application"));
}

TEST_F(SwitchingToProduct, EndsAtOneThatIsADocumentAlready) {
  AddDocumentOf(Add("CLIP"));
  Select({1, 4, 2});

  EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(AlreadyProduct("CLIP.1")));

  EXPECT_THAT(Components(), ElementsAre(AsDocument("BOLT"), AsLight(nut), AsLight(plate), AsDocument("CLIP")));
}

TEST_F(SwitchingToProduct, TakesTheTypeOfADocumentForOne) {
  Utils().WriteStringProperty(Child(2), "TYPE", "3D");

  EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(AlreadyProduct("NUT.1")));
}

// Whatever its file, unlike the way back.
TEST_F(SwitchingToProduct, TakesALightFileWithoutATypeForADocument) {
  WriteWork("CLIP.lwt", TinyLight("CLIP"));
  root->Products()->AddComponentsFromFiles({WorkPath("CLIP.lwt")}, "All");
  Select({4});

  EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(AlreadyProduct("CLIP.1")));
}

TEST_F(SwitchingToProduct, TakesAnyOtherTypeForLight) {
  Utils().WriteStringProperty(Child(1), "TYPE", "lwt");
  Utils().WriteStringProperty(Child(2), "TYPE", "PRODUCT");
  Utils().WriteStringProperty(Child(3), "TYPE", "3d");

  EXPECT_THAT(BoxesOfSwitchToProduct(), IsEmpty());

  EXPECT_EQ(Components(), documents);
}

TEST_F(SwitchingToProduct, PassesOverOneWhoseObjectIsNotToBeFound) {
  const struct {
    std::string property, value, warning;
  } cases[] = {{"OBJECT_ID", "", "UNABLE_TO_RETRIEVE_OBJECT_EMPTY"},
               {"CLASS_ID", "twelve", "UNABLE_TO_RETRIEVE_OBJECT_NON_NUMERIC"},
               {"OBJECT_ID", "4711", "UNABLE_TO_RETRIEVE_OBJECT_NOT_EXIST"}};
  const auto texts = Process().texts;
  for (const auto& [property, value, warning] : cases) {
    GivenWip();
    for (const auto& part : {bolt, nut, plate}) AddLight(part);
    SelectAll();
    Utils().WriteStringProperty(Child(2)->Reference(), property, value);
    Process().texts = texts;

    EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(TextBox("QD.UTILS." + warning, kWarning, {"NUT.1"}),
                                                      Refused("DOES_NOT_EXIST_IN_VELDORA", "NUT.1")));

    EXPECT_EQ(Components()[0], AsDocument("BOLT"));
    EXPECT_THAT(Components()[1], StartsWith("NUT.1 NUT.lwt"));
    EXPECT_EQ(Components()[2], AsDocument("PLATE"));
  }
}

TEST_F(SwitchingToProduct, PassesOverAnObjectThatIsNewOrCheckedOutOrObsolete) {
  const auto texts = Process().texts;
  for (const int state : {0, 2, 4}) {
    GivenWip();
    for (const auto& part : {bolt, nut, plate}) AddLight(part);
    SelectAll();
    SetState(nut, state);
    Process().texts = texts;

    EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(Refused("NOT_IN_CORRECT_STATE", "NUT.1"))) << state;

    EXPECT_EQ(Components(), AllButTheSecond()) << state;
  }
}

TEST_F(SwitchingToProduct, GoesOnBehindARefusedFirst) {
  SetState(bolt, 2);

  EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(Refused("NOT_IN_CORRECT_STATE", "BOLT.1")));

  EXPECT_THAT(Components(), ElementsAre(AsLight(bolt), AsDocument("NUT"), AsDocument("PLATE")));
}

// A text of the catalogue keeps what it was filled with.
TEST_F(SwitchingToProduct, NamesTheFirstRefusedOneAgainAtTheSecond) {
  SetState(bolt, 0);
  SetState(plate, 4);

  EXPECT_THAT(BoxesOfSwitchToProduct(),
              ElementsAre(Refused("NOT_IN_CORRECT_STATE", "BOLT.1"), Refused("NOT_IN_CORRECT_STATE", "BOLT.1")));
}

TEST_F(SwitchingToProduct, TakesEveryOtherState) {
  SetState(bolt, 3);
  SetState(nut, 5);
  SetState(plate, -1);

  EXPECT_THAT(BoxesOfSwitchToProduct(), IsEmpty());

  EXPECT_EQ(Components(), documents);
}

TEST_F(SwitchingToProduct, EndsWhereTheFileCannotBeBrought) {
  gate->FailOperation("VdSessionUtil.RunOperation", 2, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfSwitchToProduct();

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Report("Cls_Utils.CopyVeldoraObjectToWork", kCritical, "cable"),
                                 Refused("CANT_BE_COPIED_FROM_VAULT", "NUT.1")));
  EXPECT_EQ(Components(), FirstAlone());
}

TEST_F(SwitchingToProduct, ReportsAFileThatCannotBeOpened) {
  gate->FailOperation("Documents.Read", 2, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfSwitchToProduct();

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Unexpected("cable")));
  EXPECT_EQ(Components(), FirstAlone());
}

TEST_F(SwitchingToProduct, ReportsARefusedReplacement) {
  gate->FailOperation("Products.ReplaceWithFile", 2, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfSwitchToProduct();

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Unexpected("cable")));
  EXPECT_EQ(Components(), FirstAlone());
}

TEST_F(SwitchingToProduct, ReportsADeeperComponent) {
  const auto assembly = AddAssemblyWith(WorkPath("NUT.lwt"));
  const auto deep = assembly->Products()->Item(1);
  Stamp(deep, "LWT", nut);
  Selection()->Clear();
  Selection()->Add(Child(1));
  Selection()->Add(deep);
  Selection()->Add(Child(3));

  const auto boxes = BoxesOfSwitchToProduct();

  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, StartsWith(Says("COMMON.UNEXPECTED_ERROR") + " [Cls_SwitchToProduct.Run] ["));
  EXPECT_EQ(boxes[0].style, kCriticalModal);
  EXPECT_EQ(FileOf(Child(1)), WorkPath("BOLT.stp"));
  EXPECT_EQ(FileOf(deep), WorkPath("NUT.lwt"));
  EXPECT_EQ(FileOf(Child(3)), WorkPath("PLATE.lwt"));
}

TEST_F(SwitchingToProduct, EndsAtAnObjectWithoutAFile) {
  const auto bare = AddPart("BARE");
  CheckIn(bare);
  Stamp(Child(2), "LWT", bare);

  const auto boxes = BoxesOfSwitchToProduct();

  ASSERT_THAT(boxes, SizeIs(2));
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_Utils.CopyVeldoraObjectToWork] ["));
  EXPECT_EQ(boxes[1], Refused("CANT_BE_COPIED_FROM_VAULT", "NUT.1"));
  EXPECT_EQ(FileOf(Child(1)), WorkPath("BOLT.stp"));
  EXPECT_EQ(FileOf(Child(2)), WorkPath("NUT.lwt"));
  EXPECT_EQ(FileOf(Child(3)), WorkPath("PLATE.lwt"));
}

TEST_F(SwitchingToProduct, ReportsAnyOtherFailure) {
  gate->FailOperation("VdObject.Retrieve", 2, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfSwitchToProduct();

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Unexpected("cable")));
  EXPECT_EQ(Components(), FirstAlone());
}

// What it held of the first one fails, and so it has no name for the message.
TEST_F(SwitchingToProduct, ReportsOneThatIsSelectedTwice) {
  Select({1, 1, 2});

  const auto boxes = BoxesOfSwitchToProduct();

  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, StartsWith(Says("COMMON.UNEXPECTED_ERROR") + " [Cls_SwitchToProduct.Run]"));
  EXPECT_EQ(Components(), FirstAlone());
}

TEST_F(SwitchingToProduct, ReportsASelectedCollection) {
  Selection()->Clear();
  Selection()->Add(root->Products());

  EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(Unexpected("Object variable or With block variable not set")));
}

TEST_F(SwitchingToProduct, ReportsASelectionPastTheCounter) {
  Selection()->Clear();
  for (int i = 0; i < 32768; ++i) Selection()->Add(Child(1));

  EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(Unexpected("Overflow")));
  EXPECT_EQ(Components(), untouched);
}

TEST_F(SwitchingToProduct, NeedsAWip) {
  const auto only = TextBox("QD.SWITCH.ONLY_AVAILABLE_FOR_WIP", kInformationModal);
  Utils().WriteStringProperty(root, "WIP", "FALSE");
  EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(only));
  GivenWip(false);
  EXPECT_THAT(BoxesOfSwitchToProduct(), ElementsAre(only));
}

TEST_F(SwitchingToProduct, NeedsASelection) {
  Selection()->Clear();

  EXPECT_THAT(BoxesOfSwitchToProduct(),
              ElementsAre(TextBox("QD.SWITCH.SELECT_AT_LEAST_ONE_OBJECT", kInformationModal)));
}

TEST_F(SwitchingToProduct, EndsWithoutAWordWhenTheStartFails) {
  gate->FailOperation("Application.GetItem");

  const auto boxes = BoxesOfSwitchToProduct();

  gate->Reset();
  // The start's own.
  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, testing::HasSubstr("Cls_Init.Init"));
  EXPECT_EQ(Components(), untouched);
}

}  // namespace
}  // namespace quintara::test
