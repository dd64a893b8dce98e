#include "hosts/workbook/workbook_fixture.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using TheApplicationInMemory = InMemory;

TEST_F(TheApplicationInMemory, PassesEveryOperationThroughTheGate) {
  gate->StartRecording();

  const auto workbook = app->Workbooks()->Add();
  workbook->Worksheets()->Item(2)->Cells(3, 4)->SetValue(5.0);
  workbook->SaveAs(folder.Path("book.xls"));
  app->Quit();

  auto record = gate->Record();
  std::erase_if(record, [](const std::string& each) { return each.starts_with("Files."); });
  EXPECT_THAT(record, ElementsAre("ExcelApplication.Workbooks", "Workbooks.Add", "Workbook.Worksheets",
                                  "Worksheets.Item(2)", "Worksheet.Cells(3, 4)", "Range.Value=(D3 of worksheet 2)",
                                  "Workbook.SaveAs(" + folder.Path("book.xls") + ")", "ExcelApplication.Quit"));
}

TEST_F(TheApplicationInMemory, FailsWhereTheGateSaysSo) {
  app->Workbooks()->Add();
  gate->FailOperation("Range.Value=");

  EXPECT_EQ(NumberOf([&] { Put("A1", 1.0); }), 57);

  gate->Reset();
  EXPECT_TRUE(Value("A1").IsEmpty());
}

TEST_F(TheApplicationInMemory, LeavesTheOldFileWhenSavingFails) {
  folder.Write("book.xls", "something else");
  const auto workbook = app->Workbooks()->Add();
  gate->FailOperation("Files.Rename", 1, Failure(61, "Disk full"));

  EXPECT_EQ(NumberOf([&] { workbook->SaveAs(folder.Path("book.xls")); }), 1004);

  EXPECT_EQ(folder.Read("book.xls"), "something else");
  EXPECT_THAT(folder.Names(), ElementsAre("book.xls"));
}

TEST_F(TheApplicationInMemory, SaysThatANewWorkbookHasNoFile) {
  const auto workbook = app->Workbooks()->Add();

  EXPECT_THAT(DescriptionOf([&] { workbook->Save(); }), HasSubstr("no file yet"));
}

TEST_F(TheApplicationInMemory, NamesTheCellWhoseTextNoFileCanHold) {
  app->Workbooks()->Add();
  Put("C5", "a\x01z", 2);
  const auto save = [&] { app->ActiveWorkbook()->SaveAs(folder.Path("book.xls")); };

  EXPECT_EQ(NumberOf(save), 1004);
  EXPECT_THAT(DescriptionOf(save), AllOf(HasSubstr("C5"), HasSubstr("\"Sheet2\"")));
  EXPECT_THAT(folder.Names(), ElementsAre());
}

}  // namespace
}  // namespace quintara::test
