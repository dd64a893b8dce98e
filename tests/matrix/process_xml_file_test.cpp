#include <gtest/gtest.h>

#include <string>

#include "matrix/matrix_fixture.h"
#include "matrix/position_arithmetic.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ProcessXMLFile : public MatrixTest {
 protected:
  // Three bolts: one at the top, two inside the sub-assembly "GROUP".
  Node Plant() {
    return {"PLANT",
            "PLANT",
            At(1000),
            {{"BOLT", "BOLT.1", At(1), {}},
             {"GROUP", "GROUP.1", At(0, 100), {{"BOLT", "BOLT.1", At(2), {}}, {"BOLT", "BOLT.2", At(3), {}}}},
             {"PLATE", "PLATE.1", At(0, 0, 5), {}}}};
  }
};

TEST_F(ProcessXMLFile, PlacesEachChildInTheFrameOfTheRoot) {
  GivenMatrix(Plant());
  GivenFlat({"PLATE", "BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(1000, 0, 5), At(1001)));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(ProcessXMLFile, HandsOutTheRecordsInDocumentOrder) {
  GivenMatrix(Plant());
  GivenFlat({"BOLT", "PLATE", "BOLT", "BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(1001), At(1000, 0, 5), At(1002, 100), At(1003, 100)));
}

TEST_F(ProcessXMLFile, LeavesNamesAndNumberOfTheChildrenAlone) {
  GivenMatrix(Plant());
  GivenFlat({"BOLT", "BOLT"});

  ASSERT_TRUE(Process());

  EXPECT_THAT(Names(), ElementsAre("child 1", "child 2"));
}

TEST_F(ProcessXMLFile, ASurplusChildRepeatsTheLastPosition) {
  GivenMatrix({"R", "R", At(0), {{"BOLT", "BOLT.1", At(10), {}}, {"BOLT", "BOLT.2", At(20), {}}}});
  GivenFlat({"BOLT", "BOLT", "BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(10), At(20), At(20)));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(ProcessXMLFile, ASurplusChildRepeatsThePositionOfAnotherPartToo) {
  GivenMatrix({"R", "R", At(0), {{"BOLT", "BOLT.1", At(10), {}}, {"NUT", "NUT.1", At(30), {}}}});
  GivenFlat({"BOLT", "NUT", "BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(10), At(30), At(30)));
}

TEST_F(ProcessXMLFile, PlacesASubAssemblyOnceAndNotWhatLiesInside) {
  GivenMatrix(Plant());
  GivenFlat({"GROUP", "BOLT", "BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(1000, 100), At(1001), At(1001)));
}

TEST_F(ProcessXMLFile, FailsForAPartThatTheMatrixDoesNotHold) {
  GivenMatrix(Plant());
  GivenFlat({"PLATE", "SPRING", "BOLT"});

  EXPECT_FALSE(Process());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("ProcessXMLFile", "Subscript out of range")));
  EXPECT_THAT(Positions(), ElementsAre(At(1000, 0, 5), kIdentityPosition, kIdentityPosition));
}

TEST_F(ProcessXMLFile, FailsForAPartThatLiesOnlyBelowAUsedOne) {
  GivenMatrix({"R", "R", At(0), {{"GROUP", "GROUP.1", At(1), {{"BOLT", "BOLT.1", At(2), {}}}}}});
  GivenFlat({"GROUP", "BOLT"});

  EXPECT_FALSE(Process());

  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("ProcessXMLFile", "Subscript out of range")));
  EXPECT_THAT(Positions(), ElementsAre(At(1), kIdentityPosition));
}

TEST_F(ProcessXMLFile, TakesTheRootOfTheMatrixAsAComponentToo) {
  GivenMatrix(Plant());
  GivenFlat({"PLANT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(1000)));
}

TEST_F(ProcessXMLFile, ComparesPartNumbersExactly) {
  GivenMatrix(Plant());
  GivenFlat({"bolt"});

  EXPECT_FALSE(Process());
}

TEST_F(ProcessXMLFile, ReadsNothingButTheFileForAProductWithoutChildren) {
  GivenMatrix(Plant());
  GivenFlat({});
  TheGate().StartRecording();

  EXPECT_TRUE(Process());

  EXPECT_THAT(TheGate().Record(),
              ElementsAre("Files.Read(" + MatrixPath() + ")", "Product.Products", "Products.Count"));
}

TEST_F(ProcessXMLFile, AsksTheHostInItsOrder) {
  GivenMatrix({"R", "R", At(0), {{"BOLT", "BOLT.1", At(10), {}}}});
  GivenFlat({"BOLT"});
  TheGate().StartRecording();

  ASSERT_TRUE(Process());

  EXPECT_THAT(TheGate().Record(),
              ElementsAre("Files.Read(" + MatrixPath() + ")", "Product.Products", "Products.Count",  //
                          "Products.Item(1)", "Product.PartNumber", "Product.PartNumber",            //
                          "Products.Item(1)", "Product.PartNumber", "Product.PartNumber", "Product.Position",
                          "Position.SetComponents"));
}

TEST_F(ProcessXMLFile, LeavesAChildWithoutPartNumberWhereItIs) {
  GivenMatrixText(
      "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1'><P PART_NUMBER='' FULL_INSTANCE_NAME='R\\x' XO='5'/></R>");
  GivenFlat({""});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(kIdentityPosition));
}

TEST_F(ProcessXMLFile, PlacesAComponentThatIsNotInDesignForm) {
  GivenMatrix(Plant());
  GivenFlat({"PLATE"});
  host.SetForm(Child(1), ComponentForm::kWithoutDesign);

  EXPECT_TRUE(Process());

  PositionMatrix position;
  Child(1)->Position()->GetComponents(position);
  EXPECT_EQ(position, At(1000, 0, 5));
}

TEST_F(ProcessXMLFile, ReadsMissingNumbersAsZero) {
  GivenMatrixText("<R PART_NUMBER='R' FULL_INSTANCE_NAME='R'/>");
  GivenFlat({"R"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(PositionMatrix{}));
}

TEST_F(ProcessXMLFile, GoesByAttributesAndNeverByElementNames) {
  GivenMatrixText(
      "<?xml version='1.0'?><!-- c --><ANY PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1'>"
      "text<x:o later='1' FULL_INSTANCE_NAME='R\\b' PART_NUMBER='BOLT' XX='1' YY='1' ZZ='1' XO='4'/></ANY>");
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(4)));
}

TEST_F(ProcessXMLFile, GoesOnFromTheLastElementWhenAFullNameIsNotFound) {
  // The record has no full name, so its chain is that of the document's last element.
  GivenMatrixText(
      "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1' XO='1'>"
      "<B PART_NUMBER='BOLT' XX='1' YY='1' ZZ='1' XO='10'/>"
      "<G PART_NUMBER='G' FULL_INSTANCE_NAME='R\\G' XX='1' YY='1' ZZ='1' XO='100'>"
      "<L PART_NUMBER='L' FULL_INSTANCE_NAME='R\\G\\L' XX='1' YY='1' ZZ='1' XO='1000'/></G></R>");
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(111)));
}

TEST_F(ProcessXMLFile, TakesTheChainOfTheFirstElementOfADoubledFullName) {
  GivenMatrixText(
      "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1'>"
      "<G PART_NUMBER='G' FULL_INSTANCE_NAME='g' XX='1' YY='1' ZZ='1' XO='100'>"
      "<A PART_NUMBER='A' FULL_INSTANCE_NAME='same' XX='1' YY='1' ZZ='1' XO='1'/></G>"
      "<B PART_NUMBER='BOLT' FULL_INSTANCE_NAME='same' XX='1' YY='1' ZZ='1' XO='10'/></R>");
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(110)));
}

TEST_F(ProcessXMLFile, SearchesTheLastFullNameOfTheRecordAmongTheFirstOnes) {
  GivenMatrixText(
      "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1' XO='1'>"
      "<B PART_NUMBER='BOLT' FULL_INSTANCE_NAME='here' p:FULL_INSTANCE_NAME='there' XX='1' YY='1' ZZ='1' XO='10'/>"
      "<G PART_NUMBER='G' FULL_INSTANCE_NAME='R\\G' XX='1' YY='1' ZZ='1' XO='100'>"
      "<A PART_NUMBER='A' FULL_INSTANCE_NAME='there' XX='1' YY='1' ZZ='1'/></G>"
      "<L PART_NUMBER='L' FULL_INSTANCE_NAME='R\\L'/></R>");
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(111)));
}

TEST_F(ProcessXMLFile, ReadsTheLastOfTwoNumbersOfOneName) {
  GivenMatrixText("<R PART_NUMBER='BOLT' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1' XO='3' p:XO='9'/>");
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(9)));
}

TEST_F(ProcessXMLFile, LeavesAChildWhoseRecordEndsWithAnEmptyPartNumber) {
  GivenMatrixText("<R PART_NUMBER='BOLT' p:PART_NUMBER='' FULL_INSTANCE_NAME='R' XO='3'/>");
  GivenFlat({"BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(kIdentityPosition));
}

TEST_F(ProcessXMLFile, ASurplusChildAfterARecordWithoutPartNumberStaysToo) {
  GivenMatrixText(
      "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1' YY='1' ZZ='1'>"
      "<B PART_NUMBER='BOLT' FULL_INSTANCE_NAME='b' XX='1' YY='1' ZZ='1' XO='10'/>"
      "<N PART_NUMBER='' FULL_INSTANCE_NAME='n' XX='1' YY='1' ZZ='1' XO='20'/></R>");
  GivenFlat({"BOLT", "", "BOLT"});

  EXPECT_TRUE(Process());

  EXPECT_THAT(Positions(), ElementsAre(At(10), kIdentityPosition, kIdentityPosition));
}

TEST_F(ProcessXMLFile, ShowsAPositionThatTheHostRefuses) {
  GivenMatrixText(
      "<R PART_NUMBER='R' FULL_INSTANCE_NAME='R' XX='1e308' YY='1' ZZ='1'>"
      "<A PART_NUMBER='A' FULL_INSTANCE_NAME='a' XX='0' YY='1' ZZ='1'/>"
      "<B PART_NUMBER='BOLT' FULL_INSTANCE_NAME='b' XX='1e308' YY='1' ZZ='1'/></R>");
  GivenFlat({"A", "BOLT"});

  EXPECT_FALSE(Process());

  ASSERT_EQ(platform.Boxes().size(), 1U);
  EXPECT_THAT(platform.Boxes()[0].text,
              ::testing::StartsWith("Unexpected error in function Cls_Matrice.ProcessXMLFile : "));
  EXPECT_THAT(Positions(), ElementsAre(PositionMatrix{0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}, kIdentityPosition));
}

TEST_F(ProcessXMLFile, IsFalseAlsoWhereNoBoxCanBeShown) {
  GivenFlat({"BOLT"});
  const auto before = InstallPlatform(nullptr);

  EXPECT_FALSE(Process());

  InstallPlatform(before);
}

TEST_F(ProcessXMLFile, ShowsAFailingPositionAndKeepsWhatWasPlaced) {
  GivenMatrix(Plant());
  GivenFlat({"PLATE", "BOLT"});
  TheGate().FailOperation("Position.SetComponents", 2, Failure(1000, "The host refuses"));

  EXPECT_FALSE(Process());

  TheGate().Reset();
  EXPECT_THAT(platform.Boxes(), ElementsAre(UnexpectedError("ProcessXMLFile", "The host refuses")));
  EXPECT_THAT(Positions(), ElementsAre(At(1000, 0, 5), kIdentityPosition));
}

TEST_F(ProcessXMLFile, ShowsARootThatIsNothing) {
  GivenMatrix(Plant());

  EXPECT_FALSE(matrice.ProcessXMLFile(nullptr, MatrixPath()));

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(UnexpectedError("ProcessXMLFile", "Object variable or With block variable not set")));
}

TEST_F(ProcessXMLFile, GivesTheSamePlacesASecondTime) {
  GivenMatrix(Plant());
  GivenFlat({"BOLT", "PLATE", "BOLT"});
  ASSERT_TRUE(Process());
  const auto first = Positions();
  Child(1)->Position()->SetComponents(At(-5, -5, -5));

  EXPECT_TRUE(Process());

  EXPECT_EQ(Positions(), first);
}

}  // namespace
}  // namespace quintara::test
