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

TEST_F(AllInstances, LeavesWhatItIsAskedForAsItStands) {
  GivenWip({"BOLT"});
  GivenXmlMatrix(Plant());
  Process().gAllInstancesRequested = true;
  PlaceAll();
  EXPECT_TRUE(Process().gAllInstancesRequested);

  Process().gSkipPositioning = true;
  PlaceAll();
  EXPECT_TRUE(Process().gSkipPositioning);
}

TEST_F(AllInstances, LooksForTheMarkBeforeTheMatrixInTheVault) {
  GivenProduct({"BOLT"});
  Mark("WIP", "FALSE");
  Mark("DocXMLCID", "0");
  Mark("DocXMLOID", "0");

  EXPECT_THAT(BoxesOfPlaceAll(),
              ElementsAre(TextBox("QD.ALLINSTANCES.RETRIEVE_MATRIX_ONLY_AVAILABLE_FOR_WIP", kInformationModal)));
}

TEST_F(AllInstances, LooksForTheMatrixBeforeTheMark) {
  GivenProduct({"BOLT"});
  Mark("WIP", "FALSE");

  EXPECT_THAT(BoxesOfPlaceAll(), ElementsAre(TextBox("QD.ALLINSTANCES.NO_MATRIX_FOR_ROOT_IN_VELDORA", kCriticalModal)));
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
    EndInit();  // the texts are filled in for good, and read again by the next start
    const auto boxes = BoxesOfPlaceAll();
    ASSERT_EQ(boxes.size(), 1U) << neither;
    EXPECT_THAT(boxes[0].text, StartsWith("EN COMMON.UNEXPECTED_ERROR [Cls_AllInstances.Run] ["));
    EXPECT_EQ(boxes[0].style, kCritical);
    EXPECT_THAT(boxes[0].text, HasSubstr("\"" + std::string(neither) + "\""));
    ExpectUntouched();
  }
}

}  // namespace
}  // namespace quintara::test
