#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/insertion_bench.h"
#include "commands/zorva_mocks.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr auto kNotSet = "Object variable or With block variable not set";

TEST_F(Insertion, OfALightRepresentationAddsItWithItsStamps) {
  EXPECT_THAT(BoxesOfRun(bolt, "LWT"), IsEmpty());

  ASSERT_EQ(Count(), 2);
  EXPECT_EQ(Last()->PartNumber(), "BOLT");
  EXPECT_TRUE(WorkHas("BOLT.lwt"));
  EXPECT_FALSE(WorkHas("BOLT.stp"));
  EXPECT_EQ(Property(Last(), "TYPE"), "LWT");
  EXPECT_EQ(Property(Last(), "OBJECT_ID"), std::to_string(bolt->ObjectId()));
  EXPECT_EQ(Property(Last(), "CLASS_ID"), std::to_string(bolt->ClassId()));
}

TEST_F(Insertion, OfALightRepresentationLeadsBackToItsObject) {
  Run(bolt, "LWT");

  const auto found = Utils().RetrieveVDObject_FromLWT(Process().gSession, Last());

  ASSERT_TRUE(found);
  EXPECT_EQ(found->ObjectId(), bolt->ObjectId());
}

TEST_F(Insertion, WritesTheStampsOnTheComponentAndNotOnItsReference) {
  Run(bolt, "LWT");

  EXPECT_EQ(Last()->UserProperties()->Count(), 3);
  EXPECT_EQ(Last()->Reference()->UserProperties()->Count(), 0);
}

TEST_F(Insertion, OfADocumentAddsItWithoutStamps) {
  EXPECT_THAT(BoxesOfRun(bolt, "PRODUCT"), IsEmpty());

  ASSERT_EQ(Count(), 2);
  EXPECT_EQ(Last()->PartNumber(), "BOLT");
  EXPECT_TRUE(WorkHas("BOLT.stp"));
  for (const auto* name : {"TYPE", "OBJECT_ID", "CLASS_ID"}) EXPECT_EQ(Property(Last(), name), "") << name;
}

TEST_F(Insertion, TakesAProductToo) {
  const auto frame = AddOfType("ZVAProduct", "FRAME", "ZORVA Product");

  EXPECT_THAT(BoxesOfRun(frame, "LWT"), IsEmpty());

  EXPECT_EQ(Last()->PartNumber(), "FRAME");
  EXPECT_EQ(Property(Last(), "CLASS_ID"), std::to_string(frame->ClassId()));
}

TEST_F(Insertion, CallsTheHostForALightRepresentationInThisOrder) {
  const auto path = WorkPath("BOLT.lwt");
  const auto objectId = std::to_string(bolt->ObjectId());
  const auto classId = std::to_string(bolt->ClassId());

  EXPECT_THAT(OfZorva(CallsOfRun(bolt, "LWT")),
              ElementsAre("Application.Documents", "Documents.Count", "Application.ActiveDocument",
                          "Application.ActiveDocument", "ProductDocument.Product", "Product.Parameters",
                          "Parameters.Count", "Parameters.Item(WIP)", "Parameter.ValueAsString", "Product.Products",
                          "Application.DisplayFileAlerts", "Application.DisplayFileAlerts=(False)",
                          "Products.Application", "Application.Documents", "Documents.Read(" + path + ")",
                          "Products.AddComponentsFromFiles(" + path + ")", "Application.DisplayFileAlerts=(True)",
                          "Application.ActiveDocument", "Document.GetItem(BOLT)", "Product.Parameters",
                          "Parameters.Count", "Product.UserProperties", "Parameters.CreateString(TYPE, LWT)",
                          "Product.Parameters", "Parameters.Count", "Parameters.Item(OBJECT_ID)",
                          "Product.UserProperties", "Parameters.CreateString(OBJECT_ID, " + objectId + ")",
                          "Product.Parameters", "Parameters.Count", "Parameters.Item(CLASS_ID)",
                          "Product.UserProperties", "Parameters.CreateString(CLASS_ID, " + classId + ")"));
}

TEST_F(Insertion, CallsTheHostForADocumentInThisOrder) {
  const auto path = WorkPath("BOLT.stp");
  const auto calls = OfZorva(CallsOfRun(bolt, "PRODUCT"));

  ASSERT_GE(calls.size(), 7U);
  EXPECT_THAT(std::vector(calls.end() - 7, calls.end()),
              ElementsAre("Application.DisplayFileAlerts", "Application.DisplayFileAlerts=(False)",
                          "Products.Application", "Application.Documents", "Documents.Read(" + path + ")",
                          "Products.AddComponentsFromFiles(" + path + ")", "Application.DisplayFileAlerts=(True)"));
}

TEST_F(Insertion, ReadsTheObjectAnewBeforeItLooksAtItsFileType) {
  const auto calls = CallsOfRun(bolt, "LWT");

  const auto retrieve =
      std::ranges::find_if(calls, [](const auto& call) { return call.starts_with("VdObject.Retrieve"); });
  const auto fileType = std::ranges::find(calls, "VdRecord.ValueAsInteger(FILE_TYPE)");
  const auto components = std::ranges::find(calls, "Product.Products");
  ASSERT_NE(fileType, calls.end());
  EXPECT_LT(components, retrieve);
  EXPECT_LT(retrieve, fileType);
}

TEST_F(Insertion, EndsWithoutAWordWhenTheStartFails) {
  gate->FailOperation("Application.GetItem");

  const auto boxes = BoxesOfRun(bolt, "LWT");

  gate->Reset();
  // The start's own.
  EXPECT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, testing::HasSubstr("Cls_Init.Init"));
  EXPECT_EQ(Count(), 1);
}

TEST_F(Insertion, NeedsAnActiveDocument) {
  GivenNoDocument();

  EXPECT_THAT(BoxesOfRun(bolt, "LWT"), ElementsAre(NoDocument()));
}

TEST_F(Insertion, NeedsAProductDocument) {
  folder.Write("work/NUT.stp", TinyStep("NUT"));
  host.Application()->Documents()->Open(WorkPath("NUT.stp"));

  EXPECT_THAT(BoxesOfRun(bolt, "LWT"), ElementsAre(NoDocument()));
}

TEST_F(Insertion, TellsWhyTheActiveDocumentCantBeTaken) {
  // Whether there is one is asked first.
  gate->FailOperation("Application.ActiveDocument", 2, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfRun(bolt, "LWT");

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(NoDocument("cable")));
  EXPECT_EQ(Count(), 1);
}

TEST_F(Insertion, SaysNothingOfAFailureInAskingForTheActiveDocument) {
  gate->FailOperation("Application.ActiveDocument", 1, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfRun(bolt, "LWT");

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(NoDocument()));
}

TEST_F(Insertion, NeedsAnActiveDocumentThatIsStillThere) {
  const auto zorva = std::make_shared<testing::NiceMock<OddZorva>>(host.Application());
  EXPECT_CALL(*zorva, ActiveDocument)
      .WillOnce(testing::Return(host.Application()->ActiveDocument()))
      .WillOnce(testing::Return(Ref<AnyObject>()));
  Process().gZorva = Ref<zorva::Application>(zorva);

  EXPECT_THAT(BoxesOfRun(bolt, "LWT"), ElementsAre(NoDocument()));
}

TEST_F(Insertion, NeedsAWip) {
  GivenProduct();

  EXPECT_THAT(BoxesOfRun(bolt, "LWT"), ElementsAre(NoWip()));
  EXPECT_EQ(Count(), 1);
}

TEST_F(Insertion, NeedsTheMarkOfAWipAsItIsSpelt) {
  Mark("True");

  EXPECT_THAT(BoxesOfRun(bolt, "LWT"), ElementsAre(NoWip()));
}

TEST_F(Insertion, LooksAtTheObjectOnlyInAWip) {
  GivenProduct();

  EXPECT_THAT(CallsOfRun(bolt, "LWT"), Not(Contains(StartsWith("Vd"))));
}

TEST_F(Insertion, LeavesOutAnotherFileTypeWithoutAWord) {
  for (const auto* type : {"xml", "Microsoft Excel"}) {
    const auto other = AddOfType(type, std::string("OF ") + type, "ZORVA Part");

    EXPECT_THAT(BoxesOfRun(other, "LWT"), IsEmpty()) << type;
    EXPECT_THAT(BoxesOfRun(other, "PRODUCT"), IsEmpty()) << type;
  }
  EXPECT_EQ(Count(), 1);
  EXPECT_FALSE(WorkHas("OF xml.lwt"));
}

TEST_F(Insertion, AsksTheHostForNothingWithAnotherFileType) {
  const auto other = AddOfType("xml", "LIST", "ZORVA Part");

  EXPECT_EQ(OfZorva(CallsOfRun(other, "LWT")).back(), "Product.Products");
}

TEST_F(Insertion, TakesAnObjectWithoutAFileTypeForAPartWhereTheVaultKnowsNoFileTypes) {
  const auto bare = AddPart("BARE", TinyStep("BARE"), TinyLight("BARE"));
  gate->FailOperation("VdMetaInfo.ClassByName");

  const auto boxes = BoxesOfRun(bare, "LWT");

  gate->Reset();
  EXPECT_THAT(boxes, IsEmpty());
  EXPECT_EQ(Last()->PartNumber(), "BARE");
}

TEST_F(Insertion, ComparesTheModeExactly) {
  for (const auto* mode : {"lwt", "Lwt", "LWT ", "product", "PRODUCTS", ""}) {
    gate->StartRecording();
    const auto boxes = BoxesOfRun(bolt, mode);
    gate->StopRecording();

    EXPECT_THAT(boxes, SizeIs(1)) << mode;
    EXPECT_THAT(gate->Record(), Contains("Documents.Read")) << mode;
    EXPECT_THAT(gate->Record(), Not(Contains(StartsWith("VdSessionUtil.Copy")))) << mode;
    EXPECT_THAT(gate->Record(), Not(Contains(StartsWith("VdSessionUtil.RunOperation")))) << mode;
    EXPECT_THAT(gate->Record(), Not(Contains(StartsWith("Document.GetItem")))) << mode;
    SetAlerts(true);
  }
  EXPECT_EQ(Count(), 1);
}

TEST_F(Insertion, ReportsAModeThatBringsNoFile) {
  const auto boxes = BoxesOfRun(bolt, "lwt");

  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_InsertLWT.Run] ["));
  EXPECT_EQ(boxes[0].style, kCriticalModal);
}

TEST_F(Insertion, PutsTheAlertsBackToWhatTheyWere) {
  for (const bool alerts : {true, false}) {
    SetAlerts(alerts);

    Run(bolt, "LWT");

    EXPECT_EQ(Alerts(), alerts);
  }
}

TEST_F(Insertion, LeavesTheAlertsOffAfterAFailureBetween) {
  for (const auto* call : {"Products.Application", "Documents.Read", "Products.AddComponentsFromFiles"}) {
    SetAlerts(true);
    gate->FailOperation(call, 1, Failure(failure::kDeviceError, "cable"));

    const auto boxes = BoxesOfRun(bolt, "LWT");

    gate->Reset();
    ASSERT_THAT(boxes, SizeIs(1));
    EXPECT_EQ(boxes[0].style, kCriticalModal);
    EXPECT_FALSE(Alerts()) << call;
    EXPECT_EQ(Count(), 1) << call;
  }
}

TEST_F(Insertion, LeavesTheAlertsAloneAfterAFailureBefore) {
  gate->FailOperation("VdObject.Retrieve", 1, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfRun(bolt, "LWT");

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Report("cable")));
  EXPECT_TRUE(Alerts());
}

TEST_F(Insertion, HasTheAlertsBackWhenTheStampsFail) {
  gate->FailOperation("Document.GetItem", 1, Failure(failure::kDeviceError, "cable"));

  const auto boxes = BoxesOfRun(bolt, "LWT");

  gate->Reset();
  EXPECT_THAT(boxes, ElementsAre(Report("cable")));
  EXPECT_TRUE(Alerts());
  ASSERT_EQ(Count(), 2);
  EXPECT_EQ(Property(Last(), "TYPE"), "");
}

TEST_F(Insertion, ReportsAComponentOfAnotherNameThanThePartNumberAfterItWasAdded) {
  folder.Write("source/CLIP.stp", TinyStep("CLIP"));
  folder.Write("source/CLIP.stp.lwt", TinyLight("ANOTHER"));
  const auto clip = vault->AddObject(
      "ZORVA Part", {{"NM_CN_PART_NUMBER", "CLIP"}, {"FILE_TYPE", std::to_string(vault->FileTypeId("ZVAPart"))}},
      folder.Path("source/CLIP.stp"));

  const auto boxes = BoxesOfRun(clip, "LWT");

  ASSERT_THAT(boxes, SizeIs(1));
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_InsertLWT.Run] ["));
  ASSERT_EQ(Count(), 2);
  EXPECT_EQ(Last()->PartNumber(), "ANOTHER");
  EXPECT_EQ(Property(Last(), "TYPE"), "");
}

TEST_F(Insertion, StampsTheItemOfTheDocumentThatIsActiveInTheEnd) {
  const auto first = host.Application()->ActiveDocument();
  const auto firstRoot = root;
  GivenProduct();
  Mark("TRUE");
  const auto zorva = std::make_shared<testing::NiceMock<OddZorva>>(host.Application());
  const auto second = host.Application()->ActiveDocument();
  root->Products()->Item(1)->Reference()->SetPartNumber("BOLT");
  EXPECT_CALL(*zorva, ActiveDocument)
      .WillOnce(testing::Return(first))
      .WillOnce(testing::Return(first))
      .WillOnce(testing::Return(second));
  Process().gZorva = Ref<zorva::Application>(zorva);

  EXPECT_THAT(BoxesOfRun(bolt, "LWT"), IsEmpty());

  EXPECT_EQ(firstRoot->Products()->Count(), 2);
  EXPECT_EQ(Property(firstRoot->Products()->Item(2), "TYPE"), "");
  EXPECT_EQ(Property(root->Products()->Item(1), "TYPE"), "LWT");
}

TEST_F(Insertion, StampsTheOneAddedLastWhereThereAreSeveral) {
  Run(bolt, "LWT");
  auto other = AddOfType("ZVAPart", "BOLT", "ZORVA Product");

  Run(other, "LWT");

  ASSERT_EQ(Count(), 3);
  EXPECT_EQ(Property(root->Products()->Item(2), "OBJECT_ID"), std::to_string(bolt->ObjectId()));
  EXPECT_EQ(Property(Last(), "OBJECT_ID"), std::to_string(other->ObjectId()));
}

TEST_F(Insertion, AddsOneFileOfAnyTypeAndReadsItThroughTheHostOfTheComponents) {
  const auto zorva = std::make_shared<testing::NiceMock<OddZorva>>(host.Application());
  const auto document = std::make_shared<testing::NiceMock<MockDocument>>();
  const auto product = std::make_shared<testing::NiceMock<MockProduct>>();
  const auto components = std::make_shared<testing::NiceMock<MockProducts>>();
  ON_CALL(*zorva, ActiveDocument).WillByDefault(testing::Return(Ref<AnyObject>(document)));
  ON_CALL(*document, Product).WillByDefault(testing::Return(Ref<zorva::Product>(product)));
  ON_CALL(*product, Parameters).WillByDefault(testing::Return(root->Parameters()));
  ON_CALL(*product, Products).WillByDefault(testing::Return(Ref<zorva::Products>(components)));
  EXPECT_CALL(*components, Application).WillOnce(testing::Return(host.Application()));
  EXPECT_CALL(*components, AddComponentsFromFiles(std::vector{WorkPath("BOLT.stp")}, "All"));
  Process().gZorva = Ref<zorva::Application>(zorva);

  EXPECT_THAT(BoxesOfRun(bolt, "PRODUCT"), IsEmpty());
}

TEST_F(Insertion, ReportsNoObject) {
  EXPECT_THAT(BoxesOfRun(nullptr, "LWT"), ElementsAre(Report(kNotSet)));
}

TEST_F(Insertion, GoesOnAfterADocumentThatCouldntBeBrought) {
  gate->FailOperation("VdSessionUtil.RunOperation", 1, Failure(failure::kDeviceError, "cable"));

  gate->StartRecording();
  const auto boxes = BoxesOfRun(bolt, "PRODUCT");
  gate->Reset();

  ASSERT_THAT(boxes, SizeIs(2));
  EXPECT_EQ(boxes[0], (Box{"EN COMMON.UNEXPECTED_ERROR [Cls_Utils.CopyVeldoraObjectToWork] [cable]", 16, "Quintara"}));
  EXPECT_EQ(boxes[1].style, kCriticalModal);
  EXPECT_THAT(gate->Record(), Contains("Documents.Read"));
}

}  // namespace
}  // namespace quintara::test
