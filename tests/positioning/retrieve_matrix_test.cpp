#include "positioning/wip_bench.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class RetrieveMatrix : public WipTest {
 protected:
  // A failed run has moved nothing and hasn't drawn the view again.
  void ExpectUntouched() {
    EXPECT_THAT(PositionsOf(root), Each(kIdentityPosition));
    EXPECT_EQ(host.Redraws(), 0);
  }
  Box ReportOfRun(const std::string& description) {
    return Report("Cls_RetrieveMatrix.Run", kCriticalModal, description);
  }
};

TEST_F(RetrieveMatrix, PutsTheComponentsBackToTheirPlaces) {
  GivenWip({"PLATE", "BOLT", "GROUP"});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1000, 0, 5), At(1001), At(1000, 100)));
  EXPECT_THAT(NamesOf(root), ElementsAre("child 1", "child 2", "child 3"));
  EXPECT_EQ(host.Redraws(), 1);
}

TEST_F(RetrieveMatrix, PutsMovedComponentsBackAsOftenAsItRuns) {
  GivenWip({"PLATE", "BOLT"});
  GivenXmlMatrix(Plant());
  Retrieve();
  Child(2)->Position()->SetComponents(At(7, 8, 9));

  Retrieve();

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1000, 0, 5), At(1001)));
}

TEST_F(RetrieveMatrix, CopiesTheMatrixAfreshFromTheVault) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  WriteWork("PLANT Matrix.xml", "an older one");

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_EQ(ReadWork("PLANT Matrix.xml"), MatrixText(Plant()));
}

TEST_F(RetrieveMatrix, EndsWithoutAWordOfItsOwnWhereNothingRuns) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Init();
  host.RegisterItem("HIXEngine", nullptr);
  const auto told = BoxesOfInit();

  EXPECT_EQ(BoxesOfRetrieve(), told);

  ExpectUntouched();
}

TEST_F(RetrieveMatrix, IsOnlyForAWorkInProgress) {
  GivenProduct({"BOLT"});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", kInformationModal)));

  ExpectUntouched();
}

TEST_F(RetrieveMatrix, KnowsAWorkInProgressByCapitals) {
  GivenProduct({"BOLT"});
  Mark("WIP", "True");

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", kInformationModal)));
}

TEST_F(RetrieveMatrix, IsOnlyForAWorkInProgressWithoutADocumentToo) {
  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", kInformationModal)));
}

TEST_F(RetrieveMatrix, IsNotForAPart) {
  folder.Write("work/PART.stp", TinyStep("PART"));
  host.Application()->Documents()->Open(WorkPath("PART.stp"));

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.ONLY_AVAILABLE_FOR_WIP", kInformationModal)));
}

TEST_F(RetrieveMatrix, TellsThatTheDocumentIsGoneInTheMeantime) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());

  for (const auto& [operation, n] : {std::pair("Application.ActiveDocument", 2),
                                     {"Document.AsProductDocument", 2},
                                     {"ProductDocument.Product", 2},
                                     {"Product.Products", 1}}) {
    gate->FailOperation(operation, n);
    EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.RETRIEVEMATRIX.NO_ZORVA_ACTIVEDOCUMENT", kInformationModal)))
        << operation;
    gate->Reset();
    ExpectUntouched();
  }
}

TEST_F(RetrieveMatrix, TellsThatNoMatrixIsRemembered) {
  GivenWip({"BOLT"});

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kCriticalModal)));

  ExpectUntouched();
}

TEST_F(RetrieveMatrix, NeedsBothIdsOfAMatrix) {
  for (const auto* only : {"DocXMLCID", "DocXMLOID", "DocExcelCID", "DocExcelOID"}) {
    GivenWip({"BOLT"});
    Mark(only, "7");
    EXPECT_THAT(BoxesOfRetrieve(),
                ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kCriticalModal)))
        << only;
  }
}

TEST_F(RetrieveMatrix, TakesTheXmlMatrixBeforeTheWorkbook) {
  GivenWip({"BOLT"});
  GivenWorkbook({"PLANT", "PLANT", At(0), {{"BOLT", "BOLT.1", At(5), {}}}});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_F(RetrieveMatrix, TakesTheWorkbookWhereOneIdOfTheXmlMatrixIsMissing) {
  for (const auto& [classId, objectId] : {std::pair("-1", "3"), {"3", "-1"}}) {
    GivenWip({"BOLT"});
    GivenWorkbook({"PLANT", "PLANT", At(0), {{"BOLT", "BOLT.1", At(5), {}}}});
    Mark("DocXMLCID", classId);
    Mark("DocXMLOID", objectId);
    EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());
    EXPECT_THAT(PositionsOf(root), ElementsAre(At(5)));
  }
}

TEST_F(RetrieveMatrix, ReportsAnIdThatIsNoNumber) {
  GivenWip({"BOLT"});
  Mark("DocXMLCID", "seven");
  Mark("DocXMLOID", "3");

  const auto boxes = BoxesOfRetrieve();

  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_RetrieveMatrix.Run] ["));
  EXPECT_THAT(boxes[0].text, HasSubstr("seven"));
  EXPECT_EQ(boxes[0].style, kCriticalModal);
}

TEST_F(RetrieveMatrix, ReportsAClassIdBeyondSixteenBits) {
  GivenWip({"BOLT"});
  Mark("DocXMLCID", "32768");
  Mark("DocXMLOID", "3");

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfRun("Overflow")));
}

TEST_F(RetrieveMatrix, TellsThatTheWipWasMadeWithoutAMatrix) {
  GivenWip({"BOLT"});
  Mark("DocExcelCID", "0");
  Mark("DocExcelOID", "0");

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kCriticalModal)));

  ExpectUntouched();
}

TEST_F(RetrieveMatrix, ReportsADocumentThatCantBeRead) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Init();
  // Four readings on the way to the newest revision come before.
  gate->FailOperation("VdObject.Retrieve", 5);

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfRun("Injected failure")));

  gate->Reset();
  ExpectUntouched();
}

TEST_F(RetrieveMatrix, TellsThatTheMatrixCantBeCopied) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  gate->FailOperation("VdSessionUtil.CopyDocumentFile");

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.ALLINSTANCES.RETRIEVE_MATRIX_FAILED", kCriticalModal)));

  gate->Reset();
  ExpectUntouched();
}

TEST_F(RetrieveMatrix, NamesTheFileThatIsntThere) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Init();
  GivenBlindFileSystem();

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_FILE", kInformationModal,
                                                     {WorkPath("PLANT Matrix.xml")})));

  ExpectUntouched();
}

TEST_F(RetrieveMatrix, LeavesItToTheMatrixToReportABadFile) {
  GivenWip({"BOLT"});
  Remember("DocXML", AddMatrix(".xml", "no matrix"));

  const auto boxes = BoxesOfRetrieve();

  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_THAT(boxes[0].text, StartsWith("Error in loading XML file \"" + WorkPath("PLANT Matrix.xml") + "\" : "));
  EXPECT_EQ(boxes[0].title, "QNTR");
  ExpectUntouched();
}

TEST_F(RetrieveMatrix, LeavesTheComponentsBeforeAnUnknownOneInPlace) {
  GivenWip({"BOLT", "STRANGER", "PLATE"});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(UnexpectedError("ProcessXMLFile", "Subscript out of range")));

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001), kIdentityPosition, kIdentityPosition));
  EXPECT_EQ(host.Redraws(), 0);
}

TEST_F(RetrieveMatrix, PlacesNothingInAWipWithoutComponents) {
  GivenWip({});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRetrieve(), IsEmpty());

  EXPECT_EQ(host.Redraws(), 1);
}

TEST_F(RetrieveMatrix, ReportsAViewThatCantBeDrawn) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());

  for (const auto* operation : {"Application.ActiveWindow", "Window.ActiveViewer", "Viewer.RefreshView"}) {
    gate->FailOperation(operation);
    EXPECT_THAT(BoxesOfRetrieve(), ElementsAre(ReportOfRun("Injected failure"))) << operation;
    gate->Reset();
  }

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_F(RetrieveMatrix, SetsTheModesOfARootWithoutDesignForm) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  gate->FailOperation("Product.PartNumber");

  const auto calls = CallsOf(CallsOfHosts([&] { Retrieve(); }), "Product.SetWorkMode");

  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls.front(), "Product.SetWorkMode(0)");
}

}  // namespace
}  // namespace quintara::test
