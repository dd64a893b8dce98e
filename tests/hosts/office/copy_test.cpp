#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

class Copying : public Spreadsheet {
 protected:
  Copying() { app->Workbooks()->Add(); }

  void Copy(const std::string& from, const std::string& to, int toSheet = 1) const {
    Sheet()->Range(from)->Copy(Sheet(toSheet)->Range(to));
  }
};

TEST_F(Copying, PutsACellElsewhere) {
  Put("A1", "x");

  Copy("A1", "C3");

  EXPECT_EQ(Value("C3"), Variant("x"));
  EXPECT_EQ(Value("A1"), Variant("x"));
}

TEST_F(Copying, TakesAllOfARangeToTheFirstCellOfAnother) {
  Put("A1", 1.0);
  Put("B2", 2.0);

  Copy("A1:B2", "D5:D5", 2);

  EXPECT_EQ(Value("D5", 2), Variant(1.0));
  EXPECT_EQ(Value("E6", 2), Variant(2.0));
}

TEST_F(Copying, ClearsWhatEmptyCellsCover) {
  Put("A1", 1.0);
  Put("D5:E9", "old");

  Copy("A1:B3", "D5");

  EXPECT_EQ(Value("D5"), Variant(1.0));
  EXPECT_TRUE(Value("E5").IsEmpty());
  EXPECT_TRUE(Value("D7").IsEmpty());
  EXPECT_EQ(Value("D8"), Variant("old"));
}

TEST_F(Copying, TakesCornersInWhateverOrder) {
  Put("O1", "first");
  Put("O2", "second");

  Copy("O2:AB1", "O4");

  EXPECT_EQ(Value("O4"), Variant("first"));
  EXPECT_EQ(Value("O5"), Variant("second"));
}

TEST_F(Copying, OntoItselfTakesTheOldValues) {
  Put("A1", 1.0);
  Put("A2", 2.0);
  Put("A3", 3.0);

  Copy("A1:A3", "A2");

  EXPECT_EQ(Value("A1"), Variant(1.0));
  EXPECT_EQ(Value("A2"), Variant(1.0));
  EXPECT_EQ(Value("A3"), Variant(2.0));
  EXPECT_EQ(Value("A4"), Variant(3.0));
}

TEST_F(Copying, GoesFromOneWorkbookToAnother) {
  Put("A1", "part");
  Put("B1", 2.5);
  Reopen("source.xls");
  const auto source = Sheet();
  app->Workbooks()->Add();
  Put("A7", "before");

  source->Range("A1:N1")->Copy(Sheet()->Range("B7"));
  Reopen("target.xls");

  EXPECT_EQ(Value("A7"), Variant("before"));
  EXPECT_EQ(Value("B7"), Variant("part"));
  EXPECT_EQ(Value("C7"), Variant(2.5));
}

TEST_F(Copying, TakesNumberFormatsAlong) {
  Sheet()->Range("A1")->SetNumberFormat("@");
  Put("A1", 7.0);
  Reopen("source.xls");
  const auto source = Sheet();
  app->Workbooks()->Add();

  source->Range("A1")->Copy(Sheet()->Range("B2"));
  Reopen("target.xls");

  EXPECT_EQ(Value("B2"), Variant("7"));
  EXPECT_EQ(Sheet()->Range("B2")->NumberFormat(), "@");
}

TEST_F(Copying, OfAWholeWorksheetTakesWhatIsInUse) {
  Put("A1", 1.0);
  Put("IV300", 2.0);

  Sheet()->Cells()->Copy(Sheet(2)->Range("A1"));

  EXPECT_EQ(Value("IV300", 2), Variant(2.0));
}

TEST_F(Copying, RefusesToRunOverTheEdge) {
  EXPECT_EQ(NumberOf([&] { Copy("A1:B2", "IV1"); }), 1004);
  EXPECT_EQ(NumberOf([&] { Copy("A1:B2", "A65536"); }), 1004);
}

TEST_F(Copying, NeedsACellToCopyTo) {
  EXPECT_EQ(NumberOf([&] { Sheet()->Range("A1")->Copy(nullptr); }), 91);
}

TEST_F(Copying, RefusesACellOfAClosedWorkbook) {
  const auto closed = app->Workbooks()->Add();
  const auto cell = closed->Worksheets()->Item(1)->Range("A1");
  closed->Close(false);

  EXPECT_EQ(NumberOf([&] { Sheet()->Range("A1")->Copy(cell); }), 5);
}

}  // namespace
}  // namespace quintara::test
