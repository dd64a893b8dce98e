#include <algorithm>
#include <string>
#include <utility>

#include "matrix/merge_xml_bench.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

TEST_F(MergeXMLMatrix, GraftsTheMatricesOfTheSubAssemblies) {
  GivenMatrices();

  EXPECT_TRUE(Merge());

  EXPECT_THAT(ElementsOf(Merged()),
              ElementsAre("PRODUCT CAR CAR CAR 0",                  //
                          "PRODUCT CAR\\F own FRAME F own 7",       //
                          "PART CAR\\F own\\BOLT.1 BOLT BOLT.1 1",  //
                          "PART CAR\\F own\\BOLT.2 BOLT BOLT.2 2",  //
                          "PART CAR\\NUT.7 NUT NUT.7 200",          //
                          "PRODUCT CAR\\AXLE.1 AXLE AXLE.1 8",      //
                          "PART CAR\\AXLE.1\\NUT.1 NUT NUT.1 5"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(MergeXMLMatrix, WritesTheInstructionAndTheRootAndNothingElse) {
  GivenMatrices();

  ASSERT_TRUE(Merge());

  EXPECT_THAT(Merged(), StartsWith(std::string(kInstruction) + "<PRODUCT PART_NUMBER=\"CAR\""));
  EXPECT_THAT(Merged(), EndsWith("</PRODUCT></PRODUCT>"));
}

TEST_F(MergeXMLMatrix, WritesFifteenAttributesInTheirOrder) {
  GivenMatrices();
  root->Products()->Item(2)->Position()->SetComponents(PositionMatrix{1, 2, 3, 4, 5, 6, 7, 8, 9, 10.5, -11, 1e-7});
  root->Position()->SetComponents(At(3));

  ASSERT_TRUE(Merge());

  EXPECT_THAT(
      Merged(),
      HasSubstr("<PRODUCT PART_NUMBER=\"CAR\" INSTANCE_NAME=\"CAR\" FULL_INSTANCE_NAME=\"CAR\" XX=\"1\" XY=\"0\" "
                "XZ=\"0\" YX=\"0\" YY=\"1\" YZ=\"0\" ZX=\"0\" ZY=\"0\" ZZ=\"1\" XO=\"3\" YO=\"0\" ZO=\"0\">"));
  EXPECT_THAT(Merged(), HasSubstr("<PART PART_NUMBER=\"NUT\" INSTANCE_NAME=\"NUT.7\" FULL_INSTANCE_NAME=\"CAR\\NUT.7\" "
                                  "XX=\"1\" XY=\"2\" XZ=\"3\" YX=\"4\" YY=\"5\" YZ=\"6\" ZX=\"7\" ZY=\"8\" ZZ=\"9\" "
                                  "XO=\"10.5\" YO=\"-11\" ZO=\"1e-07\"/>"));
}

TEST_F(MergeXMLMatrix, DoesNotNeedWhatLiesBelowTheSubAssemblies) {
  GivenMatrices();
  ASSERT_TRUE(Merge());
  const auto ofTheWholeTree = Merged();
  OpenCarInPart();

  EXPECT_TRUE(Merge());

  EXPECT_EQ(Merged(), ofTheWholeTree);
}

TEST_F(MergeXMLMatrix, WritesTheSameAsTheWalkWhereEachMatrixIsThatOfItsInstance) {
  for (const auto* partNumber : {"FRAME", "AXLE"}) {
    OpenAlone(partNumber);
    ASSERT_TRUE(matrice.CreateXMLFile(root, WorkPath("alone.xml")));
    GivenMatrix(partNumber, ReadWork("alone.xml"));
  }
  OpenCar([](const std::string&) { return ComponentForm::kDesign; });
  ASSERT_TRUE(Merge());
  const auto merged = ElementsOf(Merged());

  ASSERT_TRUE(matrice.CreateXMLFile(root, MatrixPath()));

  // The root of a matrix bears the name and the position that it has alone.
  auto walked = ElementsOf(Merged());
  for (auto& line : walked) {
    for (const auto& [instance, alone] : {std::pair("FRAME.1", "FRAME"), std::pair("AXLE.1", "AXLE")}) {
      for (auto at = line.find(instance); at != line.npos; at = line.find(instance)) {
        line.replace(at, std::string(instance).size(), alone);
      }
    }
    if (line.ends_with(" 100") || line.ends_with(" 300")) line.replace(line.size() - 3, 3, "0");
  }
  EXPECT_EQ(merged, walked);
}

TEST_F(MergeXMLMatrix, WritesARootWithoutChildrenAsASinglePart) {
  while (root->Products()->Count() > 0) root->Products()->Remove(1);

  EXPECT_TRUE(Merge());

  EXPECT_THAT(ElementsOf(Merged()), ElementsAre("PART CAR CAR CAR 0"));
}

// A part of the vault whose file has children in the session.
TEST_F(MergeXMLMatrix, WritesAPartOfTheVaultWithoutTheChildrenThatItHasInTheSession) {
  const auto rigid =
      vault->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", "RIGID"}}, folder.Path("source/FRAME.ZVAProduct"));
  rigid->CopyFileTo("FRAME.ZVAProduct", folder.Path("work"));
  GivenMatrix("AXLE", AxleMatrix());

  ASSERT_TRUE(Merge());

  EXPECT_THAT(ElementsOf(Merged()), ElementsAre("PRODUCT CAR CAR CAR 0", "PART CAR\\FRAME.1 FRAME FRAME.1 100",
                                                "PART CAR\\NUT.7 NUT NUT.7 200", "PRODUCT CAR\\AXLE.1 AXLE AXLE.1 8",
                                                "PART CAR\\AXLE.1\\NUT.1 NUT NUT.1 5"));
}

TEST_F(MergeXMLMatrix, GraftsTheMatrixOnceForEachInstance) {
  GivenMatrices();
  root->Products()->AddComponentsFromFiles({WorkPath("AXLE.ZVAProduct")}, "All");

  ASSERT_TRUE(Merge());

  const auto elements = ElementsOf(Merged());
  EXPECT_EQ(std::ranges::count(elements, "PRODUCT CAR\\AXLE.1 AXLE AXLE.1 8"), 2);
  EXPECT_EQ(std::ranges::count(elements, "PART CAR\\AXLE.1\\NUT.1 NUT NUT.1 5"), 2);
}

TEST_F(MergeXMLMatrix, ChangesNothingButTheFullNamesOfWhatItGrafts) {
  GivenMatrix("FRAME", AxleMatrix());
  GivenMatrix("AXLE",
              std::string(kInstruction) +
                  "<anything other=\"FULL_INSTANCE_NAME\" FULL_INSTANCE_NAME=\"a&amp;b\" PART_NUMBER=\"AXLE\">"
                  "text<![CDATA[c]]><!--FULL_INSTANCE_NAME--><PART/><PART FULL_INSTANCE_NAME=\"\"/></anything>");

  ASSERT_TRUE(Merge());

  EXPECT_THAT(
      Merged(),
      HasSubstr("<anything other=\"FULL_INSTANCE_NAME\" FULL_INSTANCE_NAME=\"CAR\\a&amp;b\" PART_NUMBER=\"AXLE\">"
                "text<![CDATA[c]]><!--FULL_INSTANCE_NAME--><PART/><PART FULL_INSTANCE_NAME=\"CAR\\\"/></anything>"));
}

TEST_F(MergeXMLMatrix, KnowsTheFullNameWhateverItsPrefixAndTakesTheFirst) {
  GivenMatrix("FRAME", FrameMatrix());
  GivenMatrix("AXLE", std::string(kInstruction) +
                          "<A full_instance_name=\"x\" p:FULL_INSTANCE_NAME=\"y\" FULL_INSTANCE_NAME=\"z\"/>");

  ASSERT_TRUE(Merge());

  EXPECT_THAT(Merged(),
              HasSubstr("<A full_instance_name=\"x\" p:FULL_INSTANCE_NAME=\"CAR\\y\" FULL_INSTANCE_NAME=\"z\"/>"));
}

TEST_F(MergeXMLMatrix, KeepsANameThatNeedsEscaping) {
  GivenMatrices();
  root->SetName("C<A>&\"R\"");

  ASSERT_TRUE(Merge());

  EXPECT_THAT(ElementsOf(Merged()), ::testing::Contains("PART C<A>&\"R\"\\F own\\BOLT.2 BOLT BOLT.2 2"));
}

TEST_F(MergeXMLMatrix, TakesTheMatrixInItsNewestRevision) {
  GivenMatrix("AXLE", AxleMatrix());
  const auto first = GivenMatrix("FRAME", FrameMatrix());
  Release(first);
  const auto next = Util()->NewRelease(first, nullptr, false);
  folder.Write("source/next.xml", AxleMatrix());
  vault->StoreFile(next, folder.Path("source/next.xml"));

  ASSERT_TRUE(Merge());

  const auto elements = ElementsOf(Merged());
  EXPECT_EQ(std::ranges::count(elements, "PRODUCT CAR\\AXLE.1 AXLE AXLE.1 8"), 2);
}

TEST_F(MergeXMLMatrix, TakesAMatrixWhoeverItsDescriptionNames) {
  GivenMatrix("AXLE", AxleMatrix());
  const auto matrix = GivenMatrix("FRAME", FrameMatrix());
  matrix->Record()->ValuateFromString("CN_DESCRIPTION", "SLEDGE Matrix");
  matrix->Update(Behavior());

  EXPECT_TRUE(Merge());
}

TEST_F(MergeXMLMatrix, AsksTheHostsInItsOrder) {
  GivenMatrix("AXLE", AxleMatrix());
  root->Products()->Remove(1);
  gate->StartRecording();

  ASSERT_TRUE(Merge());

  EXPECT_THAT(StepsOf(gate->Record(), folder),
              ElementsAre("Position.GetComponents",  // the root
                          "HIXEngine.DocumentInfo(work/NUT.stp)", "VdObject.Retrieve(3:15)",
                          "Position.GetComponents",  // a part
                          "HIXEngine.DocumentInfo(work/AXLE.ZVAProduct)", "VdObject.Retrieve(2:17)",
                          "VdObjectStore.DefaultBehavior", "VdBehavior.Clone", "VdBehavior.OptionB=(0)",
                          "VdBehavior.OptionA=(0)", "VdBehavior.OptionC=(2)", "VdQuery.RunClassQuery",
                          "VdQuery.RunWithBehavior", "VdObject.Retrieve(4:19)", "VdObject.Retrieve(4:19)",
                          "VdObject.GetVersion(3)", "VdObject.Retrieve(4:19)", "VdObject.Retrieve(4:19)",
                          "VdMetaInfo.OperationByName(CopyFile)", "VdRecord.ValueAsString(CAD_REF_FILE_NAME)",
                          "FileSystem.FileExists(work/AXLE Matrix.xml)", "VdSessionUtil.RunOperation(CopyFile)",
                          "Files.Write(work/AXLE Matrix.xml.new)",
                          "Files.Rename(work/AXLE Matrix.xml.new, work/AXLE Matrix.xml)",
                          "Files.Write(work/CAR Matrix.xml.new)", "FileSystem.FileExists(work/CAR Matrix.xml)",
                          "Files.Rename(work/CAR Matrix.xml.new, work/CAR Matrix.xml)"));
}

TEST_F(MergeXMLMatrix, AsksEachProductInItsOrder) {
  root->Products()->Remove(3);
  root->Products()->Remove(1);
  gate->StartRecording();

  ASSERT_TRUE(Merge());

  auto calls = gate->Record();
  std::erase_if(calls, [](const auto& call) { return !call.starts_with("Pro") && !call.starts_with("Position."); });
  EXPECT_THAT(calls, ElementsAre("Product.PartNumber", "Product.PartNumber", "Product.Name", "Product.Products",
                                 "Products.Count", "Product.Position", "Position.GetComponents", "Products.Item(1)",
                                 "Product.Reference", "Product.Parent", "Product.PartNumber", "Product.PartNumber",
                                 "Product.Name", "Product.Position", "Position.GetComponents"));
}

TEST_F(MergeXMLMatrix, AsksTheProductOfAPartForItsPlaceAndNotForItsChildren) {
  GivenMatrices();
  root->Products()->Remove(1);
  root->Products()->Remove(2);
  gate->StartRecording();

  ASSERT_TRUE(Merge());

  EXPECT_THAT(CallsOf(gate->Record(), "Product.Products"), SizeIs(1));
  EXPECT_THAT(CallsOf(gate->Record(), "Position.GetComponents"), SizeIs(2));
}

TEST_F(MergeXMLMatrix, AsksNothingOfTheProductOfAnAssemblyButItsFile) {
  GivenMatrices();
  root->Products()->Remove(1);
  root->Products()->Remove(1);
  gate->StartRecording();

  ASSERT_TRUE(Merge());

  EXPECT_THAT(CallsOf(gate->Record(), "Product.Products"), SizeIs(1));
  EXPECT_THAT(CallsOf(gate->Record(), "Product.Name"), SizeIs(1));
  EXPECT_THAT(CallsOf(gate->Record(), "Position.GetComponents"), SizeIs(1));
}

// The walk of a loaded tree refuses a product without part number; this one takes what it is given.
TEST_F(MergeXMLMatrix, WritesProductsWhosePartNumberCannotBeRead) {
  GivenMatrix("AXLE", AxleMatrix());
  root->Products()->Remove(1);
  gate->FailOperation("Product.PartNumber");

  EXPECT_TRUE(Merge());

  EXPECT_THAT(ElementsOf(Merged()),
              ElementsAre("PRODUCT CAR  CAR 0", "PART CAR\\NUT.7  NUT.7 200", "PRODUCT CAR\\AXLE.1 AXLE AXLE.1 8",
                          "PART CAR\\AXLE.1\\NUT.1 NUT NUT.1 5"));
}

}  // namespace
}  // namespace quintara::test
