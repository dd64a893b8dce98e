#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;

using TheApplication = Spreadsheet;

TEST_F(TheApplication, LeavesTheOldFileWhenSavingFails) {
  folder.Write("book.xls", "something else");
  const auto workbook = app->Workbooks()->Add();
  TheGate()->FailOperation("Files.Rename", 1, Failure(61, "Disk full"));

  EXPECT_EQ(NumberOf([&] { workbook->SaveAs(folder.Path("book.xls")); }), 1004);

  EXPECT_EQ(folder.Read("book.xls"), "something else");
  EXPECT_THAT(folder.Names(), ElementsAre("book.xls"));
}

TEST_F(TheApplication, PassesEveryOperationThroughTheGate) {
  TheGate()->StartRecording();

  const auto workbook = app->Workbooks()->Add();
  const auto sheet = workbook->Worksheets()->Item(2);
  sheet->Cells(3, 4)->SetValue(5.0);
  sheet->Cells()->SpecialCells(excel::cell_type::kLastCell)->End(excel::direction::kToLeft)->Row();
  sheet->Range("A1")->Copy(sheet->Range("B1"));
  workbook->Close(false);

  EXPECT_THAT(TheGate()->Record(),
              ElementsAre("ExcelApplication.Workbooks", "Workbooks.Add", "Workbook.Worksheets", "Worksheets.Item(2)",
                          "Worksheet.Cells(3, 4)", "Range.Value=(D3 of worksheet 2)", "Worksheet.Cells",
                          "Range.SpecialCells(11)", "Range.End(-4159)", "Range.Row", "Worksheet.Range(A1)",
                          "Worksheet.Range(B1)", "Range.Copy(A1 of worksheet 2)", "Workbook.Close(False)"));
}

TEST_F(TheApplication, FailsWhereTheGateSaysSo) {
  app->Workbooks()->Add();
  TheGate()->FailOperation("Range.Value=");

  EXPECT_EQ(NumberOf([&] { Put("A1", 1.0); }), 57);

  TheGate()->Reset();
  EXPECT_TRUE(Value("A1").IsEmpty());
}

}  // namespace
}  // namespace quintara::test
