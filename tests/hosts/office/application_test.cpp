#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

using TheApplication = Spreadsheet;

TEST_F(TheApplication, StartsWithoutAnyWorkbook) {
  EXPECT_EQ(app->Workbooks()->Count(), 0);
  EXPECT_FALSE(app->ActiveWorkbook());
}

TEST_F(TheApplication, IsASpreadsheetApplicationAndNothingElse) {
  const Ref<AnyObject> any = app;

  EXPECT_EQ(any->AsSpreadsheetApplication(), app);
  EXPECT_FALSE(any->AsApplication());
  EXPECT_FALSE(any->AsWorksheet());
}

TEST_F(TheApplication, RemembersWhetherItIsToBeSeen) {
  app->SetVisible(true);

  EXPECT_TRUE(app->Visible());

  app->SetVisible(false);
  EXPECT_FALSE(app->Visible());
}

TEST_F(TheApplication, MakesAsManyWorksheetsAsItIsTold) {
  app->SetSheetsInNewWorkbook(5);

  const auto workbook = app->Workbooks()->Add();

  EXPECT_EQ(app->SheetsInNewWorkbook(), 5);
  EXPECT_TRUE(workbook->Worksheets()->Item(5));
  EXPECT_EQ(NumberOf([&] { workbook->Worksheets()->Item(6); }), 9);
}

TEST_F(TheApplication, RefusesNoWorksheetsAndTooMany) {
  EXPECT_EQ(NumberOf([&] { app->SetSheetsInNewWorkbook(0); }), 1004);
  EXPECT_EQ(NumberOf([&] { app->SetSheetsInNewWorkbook(256); }), 1004);
  EXPECT_EQ(app->SheetsInNewWorkbook(), 3);
}

TEST_F(TheApplication, HasTheNewestWorkbookActive) {
  const auto first = app->Workbooks()->Add();
  const auto second = app->Workbooks()->Add();

  EXPECT_EQ(app->ActiveWorkbook(), second);

  second->Close(false);
  EXPECT_EQ(app->ActiveWorkbook(), first);
}

TEST_F(TheApplication, ListsItsWorkbooksInTheOrderInWhichTheyCame) {
  const auto first = app->Workbooks()->Add();
  const auto second = app->Workbooks()->Add();

  EXPECT_EQ(app->Workbooks()->Count(), 2);
  EXPECT_EQ(app->Workbooks()->Item(1), first);
  EXPECT_EQ(app->Workbooks()->Item(2), second);
}

TEST_F(TheApplication, HasNoWorkbookBeforeTheFirstAndBehindTheLast) {
  const auto workbook = app->Workbooks()->Add();

  EXPECT_EQ(NumberOf([&] { app->Workbooks()->Item(0); }), 9);
  EXPECT_EQ(NumberOf([&] { app->Workbooks()->Item(2); }), 9);
}

TEST_F(TheApplication, GivesAnOpenFileAgainAndMakesItActive) {
  folder.Write("book.xls", WorkbookWith(1.0));
  const auto opened = app->Workbooks()->Open(folder.Path("book.xls"));
  const auto other = app->Workbooks()->Add();

  const auto again =
      app->Workbooks()->Open(folder.Path("../") + folder.Path().substr(folder.Path().rfind('/') + 1) + "/book.xls");

  EXPECT_EQ(again, opened);
  EXPECT_EQ(app->ActiveWorkbook(), opened);
  EXPECT_EQ(app->Workbooks()->Count(), 2);
}

TEST_F(TheApplication, LeavesNothingBesideAFileThatIsOpen) {
  folder.Write("book.xls", WorkbookWith(1.0));

  const auto opened = app->Workbooks()->Open(folder.Path("book.xls"));

  EXPECT_THAT(folder.Names(), ElementsAre("book.xls", "bytes.xls"));
}

TEST_F(TheApplication, FailsOnWhatIsHeldOfAClosedWorkbook) {
  const auto workbook = app->Workbooks()->Add();
  const auto cell = workbook->Worksheets()->Item(1)->Range("A1");

  workbook->Close(false);

  EXPECT_EQ(NumberOf([&] { workbook->Worksheets(); }), 5);
  EXPECT_EQ(NumberOf([&] { cell->Value(); }), 5);
  EXPECT_EQ(NumberOf([&] { workbook->Close(false); }), 5);
}

TEST_F(TheApplication, SavesOnClosingOnlyWhenItIsTold) {
  folder.Write("book.xls", WorkbookWith(1.0));
  const auto path = folder.Path("book.xls");
  app->Workbooks()->Open(path);
  Put("A1", 2.0);
  app->ActiveWorkbook()->Close(false);
  app->Workbooks()->Open(path);
  EXPECT_EQ(Value("A1"), Variant(1.0));
  Put("A1", 3.0);

  app->ActiveWorkbook()->Close(true);

  app->Workbooks()->Open(path);
  EXPECT_EQ(Value("A1"), Variant(3.0));
}

TEST_F(TheApplication, RefusesToSaveANewWorkbookWithoutAName) {
  const auto workbook = app->Workbooks()->Add();

  EXPECT_EQ(NumberOf([&] { workbook->Save(); }), 1004);
  EXPECT_EQ(NumberOf([&] { workbook->Close(true); }), 1004);
  EXPECT_EQ(app->Workbooks()->Count(), 1);
}

TEST_F(TheApplication, SavesUnderItsNewNameFromThenOn) {
  const auto workbook = app->Workbooks()->Add();
  workbook->SaveAs(folder.Path("book.xls"));
  Put("A1", "later");

  workbook->Save();

  workbook->Close(false);
  app->Workbooks()->Open(folder.Path("book.xls"));
  EXPECT_EQ(Value("A1"), Variant("later"));
}

TEST_F(TheApplication, ReplacesTheFileThatHasTheNewName) {
  folder.Write("book.xls", "something else");
  app->Workbooks()->Add();
  Put("A1", "new");

  Reopen("book.xls");

  EXPECT_EQ(Value("A1"), Variant("new"));
  EXPECT_THAT(folder.Names(), ElementsAre("book.xls"));
}

TEST_F(TheApplication, RefusesTheNameOfAnotherOpenWorkbook) {
  folder.Write("book.xls", WorkbookWith(1.0));
  app->Workbooks()->Open(folder.Path("book.xls"));

  const auto other = app->Workbooks()->Add();

  EXPECT_EQ(NumberOf([&] { other->SaveAs(folder.Path("book.xls")); }), 1004);
  EXPECT_EQ(NumberOf([&] { other->SaveAs(folder.Path("other.xls")); }), 0);
}

TEST_F(TheApplication, LeavesTheOldFileWhenSavingFails) {
  folder.Write("book.xls", "something else");
  const auto workbook = app->Workbooks()->Add();
  TheGate()->FailOperation("Files.Rename", 1, Failure(61, "Disk full"));

  EXPECT_EQ(NumberOf([&] { workbook->SaveAs(folder.Path("book.xls")); }), 1004);

  EXPECT_EQ(folder.Read("book.xls"), "something else");
  EXPECT_THAT(folder.Names(), ElementsAre("book.xls"));
}

TEST_F(TheApplication, RefusesAFolderThatIsNotThere) {
  const auto workbook = app->Workbooks()->Add();
  const auto path = folder.Path("nowhere/book.xls");

  EXPECT_EQ(NumberOf([&] { workbook->SaveAs(path); }), 1004);
  EXPECT_EQ(NumberOf([&] { app->Workbooks()->Open(path); }), 1004);
  EXPECT_THAT(DescriptionOf([&] { app->Workbooks()->Open(path); }), HasSubstr(path));
}

TEST_F(TheApplication, SavesAndOpensWhateverThePathIsCalled) {
  app->Workbooks()->Add();
  Put("A1", "here");

  Reopen("Größe #1 %41 100% ~ 'x'.xls");

  EXPECT_EQ(Value("A1"), Variant("here"));
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
