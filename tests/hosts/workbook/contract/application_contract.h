#pragma once

#include <filesystem>

#include "hosts/workbook/contract/fixture.h"

namespace quintara::test {

template <class Host>
class SpreadsheetApplicationContract : public SpreadsheetContract<Host> {};
TYPED_TEST_SUITE(SpreadsheetApplicationContract, SpreadsheetContractHosts);

TYPED_TEST(SpreadsheetApplicationContract, StartsWithoutAnyWorkbook) {
  EXPECT_EQ(this->app->Workbooks()->Count(), 0);
  EXPECT_FALSE(this->app->ActiveWorkbook());
}

TYPED_TEST(SpreadsheetApplicationContract, IsASpreadsheetApplicationAndNothingElse) {
  const Ref<AnyObject> any = this->app;

  EXPECT_EQ(any->AsSpreadsheetApplication(), this->app);
  EXPECT_FALSE(any->AsApplication());
  EXPECT_FALSE(any->AsWorksheet());
}

TYPED_TEST(SpreadsheetApplicationContract, RemembersWhetherItIsToBeSeen) {
  this->app->SetVisible(true);

  EXPECT_TRUE(this->app->Visible());

  this->app->SetVisible(false);
  EXPECT_FALSE(this->app->Visible());
}

TYPED_TEST(SpreadsheetApplicationContract, MakesAsManyWorksheetsAsItIsTold) {
  this->app->SetSheetsInNewWorkbook(5);

  const auto workbook = this->app->Workbooks()->Add();

  EXPECT_EQ(this->app->SheetsInNewWorkbook(), 5);
  EXPECT_TRUE(workbook->Worksheets()->Item(5));
  EXPECT_EQ(NumberOf([&] { workbook->Worksheets()->Item(6); }), 9);
}

TYPED_TEST(SpreadsheetApplicationContract, RefusesNoWorksheetsAndTooMany) {
  EXPECT_EQ(NumberOf([&] { this->app->SetSheetsInNewWorkbook(0); }), 1004);
  EXPECT_EQ(NumberOf([&] { this->app->SetSheetsInNewWorkbook(256); }), 1004);
  EXPECT_EQ(this->app->SheetsInNewWorkbook(), 3);
}

TYPED_TEST(SpreadsheetApplicationContract, HasTheNewestWorkbookActive) {
  const auto first = this->app->Workbooks()->Add();
  const auto second = this->app->Workbooks()->Add();

  EXPECT_EQ(this->app->ActiveWorkbook(), second);

  second->Close(false);
  EXPECT_EQ(this->app->ActiveWorkbook(), first);
}

TYPED_TEST(SpreadsheetApplicationContract, ListsItsWorkbooksInTheOrderInWhichTheyCame) {
  const auto first = this->app->Workbooks()->Add();
  const auto second = this->app->Workbooks()->Add();

  EXPECT_EQ(this->app->Workbooks()->Count(), 2);
  EXPECT_EQ(this->app->Workbooks()->Item(1), first);
  EXPECT_EQ(this->app->Workbooks()->Item(2), second);
}

TYPED_TEST(SpreadsheetApplicationContract, HasNoWorkbookBeforeTheFirstAndBehindTheLast) {
  const auto workbook = this->app->Workbooks()->Add();

  EXPECT_EQ(NumberOf([&] { this->app->Workbooks()->Item(0); }), 9);
  EXPECT_EQ(NumberOf([&] { this->app->Workbooks()->Item(2); }), 9);
}

TYPED_TEST(SpreadsheetApplicationContract, GivesAnOpenFileAgainAndMakesItActive) {
  this->folder.Write("book.xls", this->WorkbookWith(1.0));
  const auto opened = this->app->Workbooks()->Open(this->folder.Path("book.xls"));
  const auto other = this->app->Workbooks()->Add();

  const auto ownName = std::filesystem::path(this->folder.Path()).filename().string();
  const auto again = this->app->Workbooks()->Open(this->folder.Path("../" + ownName + "/book.xls"));

  EXPECT_EQ(again, opened);
  EXPECT_EQ(this->app->ActiveWorkbook(), opened);
  EXPECT_EQ(this->app->Workbooks()->Count(), 2);
}

TYPED_TEST(SpreadsheetApplicationContract, LeavesNothingBesideAFileThatIsOpen) {
  this->folder.Write("book.xls", this->WorkbookWith(1.0));

  const auto opened = this->app->Workbooks()->Open(this->folder.Path("book.xls"));

  EXPECT_THAT(this->folder.Names(), testing::ElementsAre("book.xls", "bytes.xls"));
}

TYPED_TEST(SpreadsheetApplicationContract, FailsOnWhatIsHeldOfAClosedWorkbook) {
  const auto workbook = this->app->Workbooks()->Add();
  const auto cell = workbook->Worksheets()->Item(1)->Range("A1");

  workbook->Close(false);

  EXPECT_EQ(NumberOf([&] { workbook->Worksheets(); }), 5);
  EXPECT_EQ(NumberOf([&] { cell->Value(); }), 5);
  EXPECT_EQ(NumberOf([&] { workbook->Close(false); }), 5);
}

TYPED_TEST(SpreadsheetApplicationContract, SavesOnClosingOnlyWhenItIsTold) {
  this->folder.Write("book.xls", this->WorkbookWith(1.0));
  const auto path = this->folder.Path("book.xls");
  this->app->Workbooks()->Open(path);
  this->Put("A1", 2.0);
  this->app->ActiveWorkbook()->Close(false);
  this->app->Workbooks()->Open(path);
  EXPECT_EQ(this->Value("A1"), Variant(1.0));
  this->Put("A1", 3.0);

  this->app->ActiveWorkbook()->Close(true);

  this->app->Workbooks()->Open(path);
  EXPECT_EQ(this->Value("A1"), Variant(3.0));
}

TYPED_TEST(SpreadsheetApplicationContract, RefusesToSaveANewWorkbookWithoutAName) {
  const auto workbook = this->app->Workbooks()->Add();

  EXPECT_EQ(NumberOf([&] { workbook->Save(); }), 1004);
  EXPECT_EQ(NumberOf([&] { workbook->Close(true); }), 1004);
  EXPECT_EQ(this->app->Workbooks()->Count(), 1);
}

TYPED_TEST(SpreadsheetApplicationContract, SavesUnderItsNewNameFromThenOn) {
  const auto workbook = this->app->Workbooks()->Add();
  workbook->SaveAs(this->folder.Path("book.xls"));
  this->Put("A1", "later");

  workbook->Save();

  workbook->Close(false);
  this->app->Workbooks()->Open(this->folder.Path("book.xls"));
  EXPECT_EQ(this->Value("A1"), Variant("later"));
}

TYPED_TEST(SpreadsheetApplicationContract, ReplacesTheFileThatHasTheNewName) {
  this->folder.Write("book.xls", "something else");
  this->app->Workbooks()->Add();
  this->Put("A1", "new");

  this->Reopen("book.xls");

  EXPECT_EQ(this->Value("A1"), Variant("new"));
  EXPECT_THAT(this->folder.Names(), testing::ElementsAre("book.xls"));
}

TYPED_TEST(SpreadsheetApplicationContract, RefusesTheNameOfAnotherOpenWorkbook) {
  this->folder.Write("book.xls", this->WorkbookWith(1.0));
  this->app->Workbooks()->Open(this->folder.Path("book.xls"));

  const auto other = this->app->Workbooks()->Add();

  EXPECT_EQ(NumberOf([&] { other->SaveAs(this->folder.Path("book.xls")); }), 1004);
  EXPECT_EQ(NumberOf([&] { other->SaveAs(this->folder.Path("other.xls")); }), 0);
}

TYPED_TEST(SpreadsheetApplicationContract, RefusesAFolderThatIsNotThere) {
  const auto workbook = this->app->Workbooks()->Add();
  const auto path = this->folder.Path("nowhere/book.xls");

  EXPECT_EQ(NumberOf([&] { workbook->SaveAs(path); }), 1004);
  EXPECT_EQ(NumberOf([&] { this->app->Workbooks()->Open(path); }), 1004);
  EXPECT_THAT(DescriptionOf([&] { this->app->Workbooks()->Open(path); }), testing::HasSubstr(path));
}

TYPED_TEST(SpreadsheetApplicationContract, SavesAndOpensWhateverThePathIsCalled) {
  this->app->Workbooks()->Add();
  this->Put("A1", "here");

  this->Reopen("Größe #1 %41 100% ~ 'x'.xls");

  EXPECT_EQ(this->Value("A1"), Variant("here"));
}

TYPED_TEST(SpreadsheetApplicationContract, OfOneWorksheetHasNoSecond) {
  this->app->SetSheetsInNewWorkbook(1);
  this->app->Workbooks()->Add();
  this->Reopen();

  EXPECT_TRUE(this->Sheet(1));
  EXPECT_EQ(NumberOf([&] { this->Sheet(2); }), 9);
  EXPECT_EQ(NumberOf([&] { this->Sheet(0); }), 9);
}

TYPED_TEST(SpreadsheetApplicationContract, FullToTheLastRowIsReadAndWritten) {
  this->app->Workbooks()->Add();
  this->Put("A1:A65536", 1.5);
  this->Put("IV65536", "corner");

  this->Reopen();

  EXPECT_EQ(this->Value("A65536"), Variant(1.5));
  EXPECT_EQ(this->Value("IV65536"), Variant("corner"));
  EXPECT_TRUE(this->Value("B65536").IsEmpty());
  EXPECT_EQ(this->Sheet()->Cells()->SpecialCells(excel::cell_type::kLastCell)->Row(), 65'536);
}

TYPED_TEST(SpreadsheetApplicationContract, MayBeAFolderAndFails) {
  const auto path = this->folder.Path("folder.xls");
  std::filesystem::create_directory(path);

  EXPECT_EQ(NumberOf([&] { this->app->Workbooks()->Open(path); }), 1004);
  EXPECT_EQ(NumberOf([&] { this->app->Workbooks()->Open(""); }), 1004);
}

TYPED_TEST(SpreadsheetApplicationContract, ThatIsReadOnlyIsReadButNotSaved) {
  this->folder.Write("book.xls", this->WorkbookWith("x"));
  const auto path = this->folder.Path("book.xls");
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  this->app->Workbooks()->Open(path);
  EXPECT_EQ(this->Value("A1"), Variant("x"));
  this->Put("A1", "y");

  EXPECT_EQ(NumberOf([&] { this->app->ActiveWorkbook()->Save(); }), 1004);

  this->app->ActiveWorkbook()->Close(false);
  this->app->Workbooks()->Open(path);
  EXPECT_EQ(this->Value("A1"), Variant("x"));
  // Some systems remove no file that is read-only.
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

TYPED_TEST(SpreadsheetApplicationContract, IsGoneOnceItHasQuit) {
  const auto own = this->host.NewApplication();
  const auto workbook = own->Workbooks()->Add();
  workbook->SaveAs(this->folder.Path("book.xls"));
  const auto saved = this->folder.Read("book.xls");
  const auto cell = workbook->Worksheets()->Item(1)->Range("A1");
  cell->SetValue("lost");

  own->Quit();

  EXPECT_EQ(NumberOf([&] { own->Workbooks(); }), 462);
  EXPECT_EQ(NumberOf([&] { workbook->Save(); }), 462);
  EXPECT_EQ(NumberOf([&] { cell->Value(); }), 462);
  EXPECT_EQ(NumberOf([&] { own->Quit(); }), 462);
  EXPECT_EQ(this->folder.Read("book.xls"), saved);
}

TYPED_TEST(SpreadsheetApplicationContract, HasWorkbooksOfItsOwn) {
  const auto other = this->host.NewApplication();
  other->Workbooks()->Add();

  EXPECT_EQ(this->app->Workbooks()->Count(), 0);

  other->Quit();
  EXPECT_EQ(NumberOf([&] { this->app->Workbooks()->Add(); }), 0);
}

}  // namespace quintara::test
