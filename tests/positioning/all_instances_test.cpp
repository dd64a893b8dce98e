#include "positioning/wip_bench.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class AllInstances : public WipTest {
 protected:
  void ExpectUntouched() { EXPECT_THAT(PositionsOf(root), Each(kIdentityPosition)); }
  static Box ReportOfRun(const std::string& description) {
    return Report("Cls_AllInstances.Run", kCritical, description);
  }
};

TEST_F(AllInstances, PlacesAndNamesTheFirstInstanceOfEachPart) {
  GivenWip({"BOLT", "PLATE"});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001), At(1000, 0, 5)));
  EXPECT_THAT(NamesOf(root), ElementsAre("PLANT\\BOLT.1", "PLANT\\PLATE.1"));
}

TEST_F(AllInstances, MakesEachInstanceWhereAllAreWanted) {
  GivenWip({"BOLT", "PLATE"});
  GivenXmlMatrix(Plant());
  Process().gAllInstancesRequested = true;

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001), At(1000, 0, 5), At(1002, 100), At(1003, 100)));
}

TEST_F(AllInstances, DoesNotDrawTheViewAgain) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());

  PlaceAll();

  EXPECT_EQ(host.Redraws(), 0);
}

TEST_F(AllInstances, DoesNothingWhereThereIsNothingToPlace) {
  GivenWip({"BOLT"});
  Process().gSkipPositioning = true;

  std::vector<Box> boxes;
  const auto calls = CallsOfHosts([&] { boxes = BoxesOfPlaceAll(); });

  EXPECT_THAT(boxes, IsEmpty());
  EXPECT_THAT(calls, ElementsAre("Application.ActiveDocument", "Document.AsProductDocument", "ProductDocument.Product",
                                 "Product.Products", "Document.Selection", "Products.Count"));
}

TEST_F(AllInstances, IsNotAskedToDoMoreInAFreshProcess) {
  Process().gAllInstancesRequested = true;
  Process().gSkipPositioning = true;

  ResetProcess();

  EXPECT_FALSE(Process().gAllInstancesRequested);
  EXPECT_FALSE(Process().gSkipPositioning);
}

TEST_F(AllInstances, EndsWithoutAWordOfItsOwnWhereNothingRuns) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Init();
  host.RegisterItem("HIXEngine", nullptr);
  const auto told = BoxesOfInit();

  EXPECT_EQ(BoxesOfPlaceAll(), told);

  ExpectUntouched();
}

TEST_F(AllInstances, ReportsThatNoDocumentIsOpen) {
  const auto boxes = BoxesOfPlaceAll();

  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_AllInstances.Run] ["));
  EXPECT_EQ(boxes[0].style, kCritical);
}

TEST_F(AllInstances, ReportsAnActiveDocumentOfAnotherKind) {
  folder.Write("work/PART.stp", TinyStep("PART"));
  host.Application()->Documents()->Open(WorkPath("PART.stp"));

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Object variable or With block variable not set")));
}

TEST_F(AllInstances, ReportsAWipThatCantBeTaken) {
  for (const auto* operation : {"Application.ActiveDocument", "Document.AsProductDocument", "ProductDocument.Product",
                                "Product.Products", "Document.Selection", "Products.Count"}) {
    GivenWip({"BOLT"});
    gate->FailOperation(operation);
    EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Injected failure"))) << operation;
    gate->Reset();
  }
}

TEST_F(AllInstances, ReportsMoreComponentsThanSixteenBitsCount) {
  GivenWip(std::vector<std::string>(32'768, "BOLT"));
  Process().gSkipPositioning = true;

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Overflow")));
}

TEST_F(AllInstances, TellsThatNoMatrixIsRemembered) {
  GivenWip({"BOLT"});

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kCriticalModal)));

  ExpectUntouched();
}

TEST_F(AllInstances, LooksForTheMatrixBeforeTheMark) {
  GivenProduct({"BOLT"});
  Mark("WIP", "FALSE");

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kCriticalModal)));
}

TEST_F(AllInstances, TakesTheXmlMatrixBeforeTheWorkbook) {
  GivenWip({"BOLT"});
  GivenWorkbook({"PLANT", "PLANT", At(0), {{"BOLT", "BOLT.1", At(5), {}}}});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_F(AllInstances, ReportsAnIdThatIsNoNumber) {
  GivenWip({"BOLT"});
  Mark("DocXMLCID", "-1");
  Mark("DocXMLOID", "-1");
  Mark("DocExcelCID", "3");
  Mark("DocExcelOID", "three");

  const auto boxes = BoxesOfPlaceAll();

  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_AllInstances.Run] ["));
  EXPECT_THAT(boxes[0].text, HasSubstr("three"));
}

TEST_F(AllInstances, IsOnlyForAWorkInProgress) {
  for (const auto* no : {"FALSE", "false", "0"}) {
    GivenProduct({"BOLT"});
    Mark("WIP", no);
    GivenXmlMatrix(Plant());
    EXPECT_THAT(BoxesOfPlaceAll(),
                ElementsAre(TextBox("QD.ALLINSTANCES.RETRIEVE_MATRIX_ONLY_AVAILABLE_FOR_WIP", kInformationModal)))
        << no;
    ExpectUntouched();
  }
}

TEST_F(AllInstances, TakesWhateverMeansYesForTheMark) {
  for (const auto* yes : {"True", "true", "-1", "2"}) {
    GivenProduct({"BOLT"});
    Mark("WIP", yes);
    GivenXmlMatrix(Plant());
    EXPECT_THAT(BoxesOfPlaceAll(), IsEmpty()) << yes;
    EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
  }
}

TEST_F(AllInstances, ReportsAMarkThatMeansNothing) {
  for (const auto* neither : {"", "yes"}) {
    GivenProduct({"BOLT"});
    if (*neither != '\0') Mark("WIP", neither);
    GivenXmlMatrix(Plant());
    const auto boxes = BoxesOfPlaceAll();
    ASSERT_EQ(boxes.size(), 1U) << neither;
    EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_AllInstances.Run] ["));
    EXPECT_EQ(boxes[0].style, kCritical);
    ExpectUntouched();
  }
}

TEST_F(AllInstances, TellsAWipMadeWithoutMatrixInAnotherStyle) {
  GivenWip({"BOLT"});
  Mark("DocExcelCID", "0");
  Mark("DocExcelOID", "0");

  EXPECT_THAT(BoxesOfPlaceAll(),
              ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kInformationModal)));

  ExpectUntouched();
}

TEST_F(AllInstances, ReportsADocumentThatCantBeRead) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Init();
  // Four readings on the way to the newest revision come before.
  gate->FailOperation("VdObject.Retrieve", 5);

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(ReportOfRun("Injected failure")));
}

TEST_F(AllInstances, TellsThatTheMatrixCantBeCopied) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  gate->FailOperation("VdSessionUtil.CopyDocumentFile");

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(TextBox("QD.ALLINSTANCES.RETRIEVE_MATRIX_FAILED", kCriticalModal)));

  gate->Reset();
  ExpectUntouched();
}

TEST_F(AllInstances, NamesTheFileThatIsntThere) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  Init();
  GivenBlindFileSystem();

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_FILE", kInformationModal,
                                                     {WorkPath("PLANT Matrix.xls")})));

  ExpectUntouched();
}

TEST_F(AllInstances, LeavesItToTheMatrixToReportABadFile) {
  GivenWip({"BOLT"});
  Remember("DocXML", AddMatrix(".xml", "no matrix"));

  const auto boxes = BoxesOfPlaceAll();

  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_THAT(boxes[0].text, StartsWith("Error in loading XML file \"" + WorkPath("PLANT Matrix.xml") + "\" : "));
}

TEST_F(AllInstances, LeavesItToTheMatrixToReportAnUnknownComponent) {
  GivenWip({"BOLT", "STRANGER"});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(UnexpectedError("PositionAllInstances", "Subscript out of range")));

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001), kIdentityPosition));
}

}  // namespace
}  // namespace quintara::test
