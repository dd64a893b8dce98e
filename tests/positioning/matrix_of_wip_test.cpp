#include "positioning/wip_bench.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

// Where the two commands differ on the way to the matrix.
struct Positioning {
  const char* label;
  void (*run)();
  int styleOfReport;
  int styleWithoutDocument;
  const char* operation;  // of the XML matrix
};

const Positioning kRetrieve = {"Cls_RetrieveMatrix.Run", [] { Cls_RetrieveMatrix().Run(); }, kCriticalModal,
                               kCriticalModal, "ProcessXMLFile"};
const Positioning kAllInstances = {"Cls_AllInstances.Run", [] { Cls_AllInstances().Run(); }, kCritical,
                                   kInformationModal, "PositionAllInstances"};

class MatrixOfWip : public testing::TestWithParam<Positioning>, protected WipBench {
 protected:
  std::vector<Box> BoxesOfRun() { return BoxesOf(GetParam().run); }
  static Box ReportOfRun(const std::string& description) {
    return Report(GetParam().label, GetParam().styleOfReport, description);
  }
  static Box NoMatrix(int style) { return TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", style); }

  void GivenWorkbookAtFive() { GivenWorkbook({"PLANT", "PLANT", At(0), {{"BOLT", "BOLT.1", At(5), {}}}}); }
  // A failed run has moved nothing, hasn't drawn the view again and left no spreadsheet behind.
  void ExpectUntouched() {
    EXPECT_THAT(PositionsOf(root), Each(kIdentityPosition));
    EXPECT_EQ(host.Redraws(), 0);
    EXPECT_EQ(spreadsheet->running, 0);
  }
};

INSTANTIATE_TEST_SUITE_P(OfBoth, MatrixOfWip, testing::Values(kRetrieve, kAllInstances),
                         [](const auto& chosen) { return chosen.index == 0 ? "Retrieve" : "AllInstances"; });

TEST_P(MatrixOfWip, IsNotLookedForWhereNothingRuns) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Init();
  host.RegisterItem("HIXEngine", nullptr);
  const auto told = BoxesOfInit();

  EXPECT_EQ(BoxesOfRun(), told);

  ExpectUntouched();
}

TEST_P(MatrixOfWip, MustBeRemembered) {
  GivenWip({"BOLT"});

  EXPECT_THAT(BoxesOfRun(), ElementsAre(NoMatrix(kCriticalModal)));

  ExpectUntouched();
}

TEST_P(MatrixOfWip, HasTwoIds) {
  for (const auto* only : {"DocXMLCID", "DocXMLOID", "DocExcelCID", "DocExcelOID"}) {
    GivenWip({"BOLT"});
    Mark(only, "7");
    EXPECT_THAT(BoxesOfRun(), ElementsAre(NoMatrix(kCriticalModal))) << only;
  }
}

TEST_P(MatrixOfWip, IsTheXmlFileBeforeTheWorkbook) {
  GivenWip({"BOLT"});
  GivenWorkbookAtFive();
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRun(), IsEmpty());

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_P(MatrixOfWip, IsTheWorkbookWhereOneIdOfTheXmlFileIsMissing) {
  for (const auto& [classId, objectId] : {std::pair("-1", "3"), {"3", "-1"}}) {
    GivenWip({"BOLT"});
    GivenWorkbookAtFive();
    Mark("DocXMLCID", classId);
    Mark("DocXMLOID", objectId);
    EXPECT_THAT(BoxesOfRun(), IsEmpty());
    EXPECT_THAT(PositionsOf(root), ElementsAre(At(5)));
  }
}

TEST_P(MatrixOfWip, HasNumbersForIds) {
  GivenWip({"BOLT"});
  Mark("DocXMLCID", "-1");
  Mark("DocXMLOID", "-1");
  Mark("DocExcelCID", "3");
  Mark("DocExcelOID", "three");

  const auto boxes = BoxesOfRun();

  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [" + std::string(GetParam().label) + "] ["));
  EXPECT_THAT(boxes[0].text, HasSubstr("three"));
  EXPECT_EQ(boxes[0].style, GetParam().styleOfReport);
}

TEST_P(MatrixOfWip, HasAClassIdOfSixteenBits) {
  GivenWip({"BOLT"});
  Mark("DocXMLCID", "32768");
  Mark("DocXMLOID", "3");

  EXPECT_THAT(BoxesOfRun(), ElementsAre(ReportOfRun("Overflow")));
}

TEST_P(MatrixOfWip, HasAnObjectIdOfThirtyTwoBits) {
  GivenWip({"BOLT"});
  Mark("DocXMLCID", "3");
  Mark("DocXMLOID", "2147483648");

  EXPECT_THAT(BoxesOfRun(), ElementsAre(ReportOfRun("Overflow")));
}

TEST_P(MatrixOfWip, IsToldWhereItIsNotInTheVault) {
  for (const auto& [classId, objectId] :
       {std::pair<std::string, std::string>("0", "0"), {std::to_string(ClassId("Document")), "2147483647"}}) {
    GivenWip({"BOLT"});
    Mark("DocExcelCID", classId);
    Mark("DocExcelOID", objectId);
    EXPECT_THAT(BoxesOfRun(), ElementsAre(NoMatrix(GetParam().styleWithoutDocument)));
    ExpectUntouched();
  }
}

TEST_P(MatrixOfWip, MustBeReadable) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Init();
  // Four readings on the way to the newest revision come before.
  gate->FailOperation("VdObject.Retrieve", 5);

  EXPECT_THAT(BoxesOfRun(), ElementsAre(ReportOfRun("Injected failure")));

  gate->Reset();
  ExpectUntouched();
}

TEST_P(MatrixOfWip, IsToldWhereItCantBeCopied) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  gate->FailOperation("VdSessionUtil.CopyDocumentFile");

  EXPECT_THAT(BoxesOfRun(), ElementsAre(TextBox("QD.ALLINSTANCES.RETRIEVE_MATRIX_FAILED", kCriticalModal)));

  gate->Reset();
  ExpectUntouched();
}

TEST_P(MatrixOfWip, IsCopiedAfresh) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  WriteWork("PLANT Matrix.xml", "an older one");

  EXPECT_THAT(BoxesOfRun(), IsEmpty());

  EXPECT_EQ(ReadWork("PLANT Matrix.xml"), MatrixText(Plant()));
}

TEST_P(MatrixOfWip, IsTakenInItsNewestRevision) {
  GivenWip({"BOLT"});
  const auto first = AddMatrix(".xml", MatrixText(Plant()));
  Remember("DocXML", first);
  Release(first);
  const auto next = Util()->NewRelease(first, nullptr, false);
  next->Record()->ValuateFromString("CN_DESCRIPTION", "NEXT Matrix");
  next->Update(Behavior());

  EXPECT_THAT(BoxesOfRun(), IsEmpty());

  EXPECT_TRUE(WorkHas("NEXT Matrix.xml"));
  EXPECT_FALSE(WorkHas("PLANT Matrix.xml"));
  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_P(MatrixOfWip, IsNamedByTheAttributeThatTheSettingsName) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Init();
  Process().gAttrDescription = "REVISION";

  EXPECT_THAT(BoxesOfRun(), IsEmpty());

  EXPECT_TRUE(WorkHas("A.xml"));
  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001)));
}

TEST_P(MatrixOfWip, IsToldByItsPathWhereTheXmlFileIsNotThere) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Init();
  GivenBlindFileSystem();

  EXPECT_THAT(BoxesOfRun(), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_FILE", kInformationModal,
                                                {WorkPath("PLANT Matrix.xml")})));

  ExpectUntouched();
}

TEST_P(MatrixOfWip, IsToldByItsPathWhereTheWorkbookIsNotThere) {
  GivenWip({"BOLT"});
  GivenWorkbook(Plant());
  Init();
  GivenBlindFileSystem();

  EXPECT_THAT(BoxesOfRun(), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_FILE", kInformationModal,
                                                {WorkPath("PLANT Matrix.xls")})));

  ExpectUntouched();
}

TEST_P(MatrixOfWip, ReportsItselfThatItsFileIsBad) {
  GivenWip({"BOLT"});
  Remember("DocXML", AddMatrix(".xml", "no matrix"));

  const auto boxes = BoxesOfRun();

  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_THAT(boxes[0].text, StartsWith("Error in loading XML file \"" + WorkPath("PLANT Matrix.xml") + "\" : "));
  EXPECT_EQ(boxes[0].title, "QNTR");
  ExpectUntouched();
}

TEST_P(MatrixOfWip, ReportsItselfThatItDoesNotKnowAComponent) {
  GivenWip({"BOLT", "STRANGER", "PLATE"});
  GivenXmlMatrix(Plant());

  EXPECT_THAT(BoxesOfRun(), ElementsAre(UnexpectedError(GetParam().operation, "Subscript out of range")));

  EXPECT_THAT(PositionsOf(root), ElementsAre(At(1001), kIdentityPosition, kIdentityPosition));
  EXPECT_EQ(host.Redraws(), 0);
}

}  // namespace
}  // namespace quintara::test
