#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "access/session/process.h"
#include "base/attempt.h"
#include "matrix/vault_stage.h"
#include "matrix/workbook_bench.h"

/// The merging of matrix workbooks, on whatever spreadsheet application: `Spreadsheets` starts one by
/// `Start()`, to be used until its end, and gives in `kNoWorkbook` a word of its failure to open anything else.
namespace quintara::test {

/// The cells in use in the first rows and thirty columns of a worksheet.
Page PageOf(const Ref<excel::Worksheet>& sheet, int rows = 12);

/// Writes cells by their addresses.
void Put(const Ref<excel::Worksheet>& sheet, const Page& cells);

/// The rows of the sub-assembly FRAME, as its own matrix has them.
Page FrameTree();
Page FrameList();

/// CAR with the rows of FRAME and of AXLE.
Page MergedTree();
Page MergedList(const std::string& rootName);

/// A matrix command on CAR in the vault, its spreadsheet application started.
class ExcelMergeBench : public CarInVault {
 protected:
  void Use(const Ref<excel::Application>& application);
  ~ExcelMergeBench() override;

  bool Merge() { return command.MergeExcelMatrix(root); }
  ErrorState FailureOfMerge();
  std::string Target() const { return WorkPath("CAR Matrix.xls"); }

  /// Links a matrix document of this sub-assembly, a workbook with these cells.
  void GivenWorkbook(const std::string& partNumber, const Page& tree, const Page& list,
                     const std::string& fileType = "xml");
  void GivenFrame() { GivenWorkbook("FRAME", FrameTree(), FrameList()); }
  void GivenAxle();

  Page Tree() const { return PageOf(app->ActiveWorkbook()->Worksheets()->Item(1)); }
  Page List() const { return PageOf(app->ActiveWorkbook()->Worksheets()->Item(2)); }

  Ref<excel::Application> app;
  GetMatrixInternals command;
};

template <class Spreadsheets>
class ExcelMerge : public ExcelMergeBench {
 protected:
  ExcelMerge() { Use(Spreadsheets::Start()); }
};

TYPED_TEST_SUITE_P(ExcelMerge);

TYPED_TEST_P(ExcelMerge, PutsTheRootAtTheIdentityWhereverItIs) {
  this->GivenFrame();
  this->GivenAxle();
  this->root->Position()->SetComponents(At(9, 8, 7));

  EXPECT_TRUE(this->Merge());

  auto first = this->Tree();
  std::erase_if(first, [](const auto& cell) { return cell.first.substr(1) != "1"; });
  EXPECT_EQ(first, TreeRow(1, "A", "CAR", kIdentityPosition));
  EXPECT_EQ(this->List().at("B1"), Variant(1.0));
  EXPECT_EQ(this->List().at("C1"), Variant(1.0));
  EXPECT_EQ(this->List().at("D1"), Variant(this->root->Name()));
}

TYPED_TEST_P(ExcelMerge, GraftsTheRowsOfSubAssembliesOneLevelDeeperWithTheirPositionsARowTooHigh) {
  this->GivenFrame();
  this->GivenAxle();

  EXPECT_TRUE(this->Merge());

  EXPECT_EQ(this->Tree(), MergedTree());
}

TYPED_TEST_P(ExcelMerge, TakesTheRowsOfASubAssemblyForEachOfItsInstances) {
  this->GivenFrame();
  this->GivenAxle();
  this->root->Products()->AddComponentsFromFiles({this->WorkPath("FRAME.ZVAProduct")}, "All");

  EXPECT_TRUE(this->Merge());

  const Page lastRow{{"C10", "BOLT"}};
  EXPECT_EQ(this->Tree(), MergedTree() + TreeRow(8, "B", "FRAME", At(0)) + TreeRow(9, "C", "BOLT", At(2)) + lastRow);
  EXPECT_EQ(this->List(), MergedList(this->root->Name()) + ListRow(8, "FRAME", 2, "F own") +
                              ListRow(9, "BOLT", 3, "BOLT.1") + ListRow(10, "BOLT", 3, "BOLT.2"));
}

TYPED_TEST_P(ExcelMerge, CountsRowsAndLevelsOnInTheList) {
  this->GivenFrame();
  this->GivenAxle();

  EXPECT_TRUE(this->Merge());

  EXPECT_EQ(this->List(), MergedList(this->root->Name()));
}

TYPED_TEST_P(ExcelMerge, TakesTwoColumnsBesideThePositionsAlongAndNoMore) {
  const Page beside{{"AA2", "two"}, {"AA3", "three"}, {"AB3", "b"}, {"AC3", "c"}};
  this->GivenWorkbook("FRAME", FrameTree() + beside, FrameList());
  this->GivenAxle();

  EXPECT_TRUE(this->Merge());

  const auto tree = this->Tree();
  EXPECT_EQ(tree.at("AA2"), Variant("two"));
  EXPECT_EQ(tree.at("AA3"), Variant("three"));
  EXPECT_EQ(tree.at("AB3"), Variant("b"));
  EXPECT_EQ(tree.count("AC3"), 0U);
  EXPECT_EQ(tree.count("AA4"), 0U);
}

TYPED_TEST_P(ExcelMerge, TakesFourteenColumnsOfTheTree) {
  this->GivenWorkbook("FRAME", FrameTree() + Page{{"N2", "over"}, {"N3", "last"}}, FrameList());
  this->GivenAxle();

  EXPECT_TRUE(this->Merge());

  EXPECT_EQ(this->Tree().at("O3"), Variant(1.0)) << "the position stands over the tree";
  EXPECT_EQ(this->Tree().at("O4"), Variant("last")) << "where the last row has no position";
}

TYPED_TEST_P(ExcelMerge, OfASubAssemblyWithoutChildrenLeavesNothingBelowIt) {
  this->GivenFrame();
  this->GivenWorkbook("AXLE", TreeRow(1, "A", "AXLE", At(8)), ListRow(1, "AXLE", 1, "A own"));

  EXPECT_TRUE(this->Merge());

  EXPECT_EQ(this->Tree().at("X6"), Variant(300.0));
  EXPECT_EQ(this->List().at("D6"), Variant("A own"));
  for (const auto& [address, value] : this->Tree()) EXPECT_FALSE(address.ends_with("7")) << address;
  EXPECT_EQ(this->List().count("A7"), 0U);
}

TYPED_TEST_P(ExcelMerge, TakesWorksheetsEnoughWhereOneIsUsual) {
  this->GivenFrame();
  this->GivenAxle();
  this->app->SetSheetsInNewWorkbook(1);

  EXPECT_TRUE(this->Merge());

  EXPECT_EQ(this->app->SheetsInNewWorkbook(), 1);
}

TYPED_TEST_P(ExcelMerge, LeavesNoSourceOpenAndNoCopyBehind) {
  this->GivenFrame();
  this->GivenAxle();
  const int before = this->app->Workbooks()->Count();

  EXPECT_TRUE(this->Merge());

  EXPECT_EQ(this->app->Workbooks()->Count(), before + 1);
  EXPECT_FALSE(this->WorkHas("FRAME Matrix.xml"));
  EXPECT_FALSE(this->WorkHas("AXLE Matrix.xml"));
}

TYPED_TEST_P(ExcelMerge, LeavesTheNamesEmptyThatAnOlderWorkbookHasNot) {
  this->GivenWorkbook("FRAME", FrameTree(),
                      {{"A1", "FRAME"}, {"B1", 1.0}, {"C1", 1.0}, {"A2", "BOLT"}, {"B2", 2.0}, {"C2", 2.0}});
  this->GivenAxle();

  EXPECT_TRUE(this->Merge());

  EXPECT_EQ(this->List().count("D2"), 0U);
  EXPECT_EQ(this->List().count("D3"), 0U);
  EXPECT_EQ(this->List().at("B3"), Variant(3.0));
  EXPECT_EQ(this->List().at("B4"), Variant(1.0)) << "the empty cell counts as 0";
}

TYPED_TEST_P(ExcelMerge, ReadsNumbersThatStandAsTexts) {
  this->GivenWorkbook("FRAME", FrameTree(), FrameList() + Page{{"B2", "2"}, {"C2", "2"}});
  this->GivenAxle();

  EXPECT_TRUE(this->Merge());

  EXPECT_EQ(this->List().at("B3"), Variant(3.0));
  EXPECT_EQ(this->List().at("C3"), Variant(3.0));
}

TYPED_TEST_P(ExcelMerge, FailsAtATextThatIsNoNumber) {
  this->GivenWorkbook("FRAME", FrameTree(), FrameList() + Page{{"B2", "second"}});

  EXPECT_EQ(this->FailureOfMerge().number, failure::kTypeMismatch);
}

TYPED_TEST_P(ExcelMerge, FailsAtMoreRowsThanACounterHolds) {
  this->GivenWorkbook("FRAME", FrameTree() + Page{{"B40000", "BOLT"}}, FrameList());

  EXPECT_EQ(this->FailureOfMerge().number, failure::kOverflow);
}

TYPED_TEST_P(ExcelMerge, FailsAtAWorkbookOfOneWorksheet) {
  this->app->SetSheetsInNewWorkbook(1);
  this->app->Workbooks()->Add();
  this->app->ActiveWorkbook()->SaveAs(this->folder.Path("one.xls"));
  this->app->ActiveWorkbook()->Close(false);
  this->GivenMatrix("FRAME", this->folder.Read("one.xls"));

  EXPECT_EQ(this->FailureOfMerge().number, failure::kSubscriptOutOfRange);
}

// What is found is a matrix of the form XML, since no other is asked for.
TYPED_TEST_P(ExcelMerge, FailsAtTheMatrixThatIsReallyAnXMLFile) {
  this->GivenMatrices();

  const auto refused = this->FailureOfMerge();

  EXPECT_EQ(refused.number, failure::kRefused);
  EXPECT_THAT(refused.description, testing::HasSubstr(this->WorkPath("FRAME Matrix.xml")));
  EXPECT_THAT(refused.description, testing::HasSubstr("no workbook"));
}

TYPED_TEST_P(ExcelMerge, IsFalseWithoutAWordForASubAssemblyWhoseOnlyMatrixIsOfTheFormExcel) {
  this->GivenWorkbook("FRAME", FrameTree(), FrameList(), "Microsoft Excel");

  EXPECT_FALSE(this->Merge());

  EXPECT_THAT(this->platform.Boxes(), testing::IsEmpty());
}

TYPED_TEST_P(ExcelMerge, IsFalseWithoutAWordForASubAssemblyWithoutAMatrix) {
  this->GivenAxle();

  EXPECT_FALSE(this->Merge());

  EXPECT_THAT(this->platform.Boxes(), testing::IsEmpty());
}

TYPED_TEST_P(ExcelMerge, IsFalseWithoutAWordForAChildWithoutAnObject) {
  this->GivenFrame();
  this->OpenCarWithout("NUT.7");

  EXPECT_FALSE(this->Merge());

  EXPECT_THAT(this->platform.Boxes(), testing::IsEmpty());
}

REGISTER_TYPED_TEST_SUITE_P(ExcelMerge, PutsTheRootAtTheIdentityWhereverItIs,
                            GraftsTheRowsOfSubAssembliesOneLevelDeeperWithTheirPositionsARowTooHigh,
                            TakesTheRowsOfASubAssemblyForEachOfItsInstances, CountsRowsAndLevelsOnInTheList,
                            TakesTwoColumnsBesideThePositionsAlongAndNoMore, TakesFourteenColumnsOfTheTree,
                            OfASubAssemblyWithoutChildrenLeavesNothingBelowIt, TakesWorksheetsEnoughWhereOneIsUsual,
                            LeavesNoSourceOpenAndNoCopyBehind, LeavesTheNamesEmptyThatAnOlderWorkbookHasNot,
                            ReadsNumbersThatStandAsTexts, FailsAtATextThatIsNoNumber, FailsAtMoreRowsThanACounterHolds,
                            FailsAtAWorkbookOfOneWorksheet, FailsAtTheMatrixThatIsReallyAnXMLFile,
                            IsFalseWithoutAWordForASubAssemblyWhoseOnlyMatrixIsOfTheFormExcel,
                            IsFalseWithoutAWordForASubAssemblyWithoutAMatrix,
                            IsFalseWithoutAWordForAChildWithoutAnObject);

}  // namespace quintara::test
