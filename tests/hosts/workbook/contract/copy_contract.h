#pragma once

#include "hosts/workbook/contract/fixture.h"

namespace quintara::test {

template <class Host>
class SpreadsheetCopyContract : public SpreadsheetContract<Host> {
 protected:
  SpreadsheetCopyContract() { this->app->Workbooks()->Add(); }

  void Copy(const std::string& from, const std::string& to, int toSheet = 1) const {
    this->Sheet()->Range(from)->Copy(this->Sheet(toSheet)->Range(to));
  }
};
TYPED_TEST_SUITE(SpreadsheetCopyContract, SpreadsheetContractHosts);

TYPED_TEST(SpreadsheetCopyContract, PutsACellElsewhere) {
  this->Put("A1", "x");

  this->Copy("A1", "C3");

  EXPECT_EQ(this->Value("C3"), Variant("x"));
  EXPECT_EQ(this->Value("A1"), Variant("x"));
}

TYPED_TEST(SpreadsheetCopyContract, TakesAllOfARangeToTheFirstCellOfAnother) {
  this->Put("A1", 1.0);
  this->Put("B2", 2.0);

  this->Copy("A1:B2", "D5:D5", 2);

  EXPECT_EQ(this->Value("D5", 2), Variant(1.0));
  EXPECT_EQ(this->Value("E6", 2), Variant(2.0));
}

TYPED_TEST(SpreadsheetCopyContract, ClearsWhatEmptyCellsCover) {
  this->Put("A1", 1.0);
  this->Put("D5:E9", "old");

  this->Copy("A1:B3", "D5");

  EXPECT_EQ(this->Value("D5"), Variant(1.0));
  EXPECT_TRUE(this->Value("E5").IsEmpty());
  EXPECT_TRUE(this->Value("D7").IsEmpty());
  EXPECT_EQ(this->Value("D8"), Variant("old"));
}

TYPED_TEST(SpreadsheetCopyContract, TakesCornersInWhateverOrder) {
  this->Put("O1", "first");
  this->Put("O2", "second");

  this->Copy("O2:AB1", "O4");

  EXPECT_EQ(this->Value("O4"), Variant("first"));
  EXPECT_EQ(this->Value("O5"), Variant("second"));
}

TYPED_TEST(SpreadsheetCopyContract, OntoItselfTakesTheOldValues) {
  this->Put("A1", 1.0);
  this->Put("A2", 2.0);
  this->Put("A3", 3.0);

  this->Copy("A1:A3", "A2");

  EXPECT_EQ(this->Value("A1"), Variant(1.0));
  EXPECT_EQ(this->Value("A2"), Variant(1.0));
  EXPECT_EQ(this->Value("A3"), Variant(2.0));
  EXPECT_EQ(this->Value("A4"), Variant(3.0));
}

TYPED_TEST(SpreadsheetCopyContract, GoesFromOneWorkbookToAnother) {
  this->Put("A1", "part");
  this->Put("B1", 2.5);
  this->Reopen("source.xls");
  const auto source = this->Sheet();
  this->app->Workbooks()->Add();
  this->Put("A7", "before");

  source->Range("A1:N1")->Copy(this->Sheet()->Range("B7"));
  this->Reopen("target.xls");

  EXPECT_EQ(this->Value("A7"), Variant("before"));
  EXPECT_EQ(this->Value("B7"), Variant("part"));
  EXPECT_EQ(this->Value("C7"), Variant(2.5));
}

TYPED_TEST(SpreadsheetCopyContract, TakesNumberFormatsAlong) {
  this->Sheet()->Range("A1")->SetNumberFormat("@");
  this->Put("A1", 7.0);
  this->Reopen("source.xls");
  const auto source = this->Sheet();
  this->app->Workbooks()->Add();

  source->Range("A1")->Copy(this->Sheet()->Range("B2"));
  this->Reopen("target.xls");

  EXPECT_EQ(this->Value("B2"), Variant("7"));
  EXPECT_EQ(this->Sheet()->Range("B2")->NumberFormat(), "@");
}

TYPED_TEST(SpreadsheetCopyContract, OfAWholeWorksheetTakesWhatIsInUse) {
  this->Put("A1", 1.0);
  this->Put("IV300", 2.0);

  this->Sheet()->Cells()->Copy(this->Sheet(2)->Range("A1"));

  EXPECT_EQ(this->Value("IV300", 2), Variant(2.0));
}

TYPED_TEST(SpreadsheetCopyContract, RefusesToRunOverTheEdge) {
  EXPECT_EQ(NumberOf([&] { this->Copy("A1:B2", "IV1"); }), 1004);
  EXPECT_EQ(NumberOf([&] { this->Copy("A1:B2", "A65536"); }), 1004);
}

TYPED_TEST(SpreadsheetCopyContract, NeedsACellToCopyTo) {
  EXPECT_EQ(NumberOf([&] { this->Sheet()->Range("A1")->Copy(nullptr); }), 91);
}

TYPED_TEST(SpreadsheetCopyContract, RefusesACellOfAClosedWorkbook) {
  const auto closed = this->app->Workbooks()->Add();
  const auto cell = closed->Worksheets()->Item(1)->Range("A1");
  closed->Close(false);

  EXPECT_EQ(NumberOf([&] { this->Sheet()->Range("A1")->Copy(cell); }), 5);
}

}  // namespace quintara::test
