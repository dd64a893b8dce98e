#include <cmath>
#include <limits>

#include "hosts/office/office_fixture.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

class Cells : public Spreadsheet {
 protected:
  Cells() { app->Workbooks()->Add(); }
};

TEST_F(Cells, AreEmptyInANewWorkbook) {
  EXPECT_TRUE(Value("A1").IsEmpty());
  EXPECT_TRUE(Value("IV65536", 3).IsEmpty());
}

TEST_F(Cells, GiveWhatWasPutIntoThem) {
  Put("A1", "text");
  Put("B2", 1.5);
  Put("C3", true);
  Put("D4", std::int16_t{7});

  EXPECT_EQ(Value("A1"), Variant("text"));
  EXPECT_EQ(Value("B2"), Variant(1.5));
  EXPECT_EQ(Value("C3"), Variant(true));
  EXPECT_EQ(Value("D4"), Variant(7.0));
}

TEST_F(Cells, KeepAllKindsInTheFile) {
  Put("A1", "text");
  Put("B2", 1.5);
  Put("C3", true);
  Put("C4", false);
  Put("D4", std::int32_t{-70'000});

  Reopen();

  EXPECT_EQ(Value("A1"), Variant("text"));
  EXPECT_EQ(Value("B2"), Variant(1.5));
  EXPECT_EQ(Value("C3"), Variant(true));
  EXPECT_EQ(Value("C4"), Variant(false));
  EXPECT_EQ(Value("D4"), Variant(-70'000.0));
}

TEST_F(Cells, KeepEveryBitOfANumber) {
  const std::vector<double> numbers = {
      0.1, 1.0 / 3, -2e-308, std::numeric_limits<double>::max(), 5e-324, 0.01, 1e15 + 1, 123.45, -std::sqrt(2)};
  for (std::size_t i = 0; i < numbers.size(); ++i) Sheet()->Cells(static_cast<int>(i) + 1, 1)->SetValue(numbers[i]);

  Reopen();

  for (std::size_t i = 0; i < numbers.size(); ++i) {
    EXPECT_EQ(Sheet()->Cells(static_cast<int>(i) + 1, 1)->Value(), Variant(numbers[i])) << numbers[i];
  }
}

TEST_F(Cells, KeepTextsThatLookLikeSomethingElse) {
  const std::vector<std::string> texts = {"007", "1E5", "=A1",  "'x", "TRUE", "2024-01-02",
                                          " x ", "-",   "#N/A", "+1", "1/2"};
  for (std::size_t i = 0; i < texts.size(); ++i) Sheet()->Cells(static_cast<int>(i) + 1, 4)->SetValue(texts[i]);

  Reopen();

  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(Sheet()->Cells(static_cast<int>(i) + 1, 4)->Value(), Variant(texts[i]));
  }
}

TEST_F(Cells, KeepTextsOfAllScripts) {
  const std::string text = "Schraube Ø5 €, болт, 螺丝, 🔩\nsecond line";
  Put("A1", text);

  Reopen();

  EXPECT_EQ(Value("A1"), Variant(text));
}

TEST_F(Cells, HoldTextsOfUpTo32767Units) {
  Put("A1", std::string(32'767, 'x'));
  EXPECT_EQ(NumberOf([&] { Put("A2", std::string(32'768, 'x')); }), 1004);

  Reopen();

  EXPECT_EQ(Value("A1").ToText().size(), 32'767U);
  EXPECT_TRUE(Value("A2").IsEmpty());
}

TEST_F(Cells, AreClearedByNothingAndByTheEmptyText) {
  Put("A1", 1.0);
  Put("A2", "x");
  Reopen();

  Put("A1", Variant());
  Put("A2", "");

  EXPECT_TRUE(Value("A1").IsEmpty());
  Reopen();
  EXPECT_TRUE(Value("A1").IsEmpty());
  EXPECT_TRUE(Value("A2").IsEmpty());
}

TEST_F(Cells, RefuseWhatNoCellHolds) {
  EXPECT_EQ(NumberOf([&] { Put("A1", std::nan("")); }), 1004);
  EXPECT_EQ(NumberOf([&] { Put("A1", std::numeric_limits<double>::infinity()); }), 1004);
  EXPECT_EQ(NumberOf([&] { Put("A1", "\xFF"); }), 5);
  EXPECT_EQ(NumberOf([&] { Put("A1", Ref<AnyObject>(app)); }), 13);
  EXPECT_TRUE(Value("A1").IsEmpty());
}

TEST_F(Cells, StandOnTheWorksheet) {
  const auto sheet = Sheet();

  EXPECT_EQ(NumberOf([&] { sheet->Cells(0, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(1, 0); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(65'537, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(1, 257); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(65'536, 256); }), 0);
}

TEST_F(Cells, AreAddressedByColumnAndRow) {
  Sheet()->Cells(12, 28)->SetValue("here");

  EXPECT_EQ(Value("AB12"), Variant("here"));
  EXPECT_EQ(Value("$ab$12"), Variant("here"));
  EXPECT_EQ(Sheet()->Range("AB12")->Row(), 12);
}

TEST_F(Cells, RefuseWhatIsNoAddress) {
  for (const auto* const address : {"", "A", "1", "A0", "A65537", "IW1", "A1:", "A1:B2:C3", "1A", "A1 ", "Ä1", "A-1"}) {
    EXPECT_EQ(NumberOf([&] { Sheet()->Range(address); }), 1004) << address;
  }
}

TEST_F(Cells, OfARangeAreAllWritten) {
  Put("C2:B1", 4.0);

  EXPECT_EQ(Value("B1"), Variant(4.0));
  EXPECT_EQ(Value("C2"), Variant(4.0));
  EXPECT_TRUE(Value("A1").IsEmpty());
}

TEST_F(Cells, OfARangeHaveNoSingleValue) {
  EXPECT_EQ(NumberOf([&] { Value("A1:B2"); }), 13);
}

TEST_F(Cells, AreTooManyToBeWrittenAllAtOnce) {
  EXPECT_EQ(NumberOf([&] { Sheet()->Cells()->SetValue(1.0); }), 1004);
}

TEST_F(Cells, OfTheTextFormatTurnNumbersIntoTexts) {
  const auto cell = Sheet(2)->Cells(3, 4);
  cell->SetNumberFormat("@");
  cell->SetValue(12.5);

  EXPECT_EQ(cell->NumberFormat(), "@");
  EXPECT_EQ(cell->Value(), Variant("12.5"));

  Reopen();
  EXPECT_EQ(Value("D3", 2), Variant("12.5"));
  EXPECT_EQ(Sheet(2)->Cells(3, 4)->NumberFormat(), "@");
}

TEST_F(Cells, KeepTheirValueWhenTheFormatBecomesText) {
  Put("A1", 12.5);

  Sheet()->Range("A1")->SetNumberFormat("@");

  EXPECT_EQ(Value("A1"), Variant(12.5));
}

TEST_F(Cells, KeepTheirNumberFormats) {
  Sheet()->Range("A1")->SetNumberFormat("0.00");
  Put("A1", 1.0);
  Sheet()->Range("B1")->SetNumberFormat("yyyy\\-mm\\-dd");
  Put("B1", 45'293.0);
  Sheet()->Range("C1:C4")->SetNumberFormat("@");

  Reopen();

  EXPECT_EQ(Sheet()->Range("A1")->NumberFormat(), "0.00");
  EXPECT_EQ(Sheet()->Range("B1")->NumberFormat(), "YYYY-MM-DD");
  EXPECT_EQ(Value("B1"), Variant(45'293.0));
  EXPECT_EQ(Sheet()->Range("C4")->NumberFormat(), "@");
  EXPECT_EQ(Sheet()->Range("C5")->NumberFormat(), "General");
}

TEST_F(Cells, RefuseTheEmptyNumberFormat) {
  EXPECT_EQ(NumberOf([&] { Sheet()->Range("A1")->SetNumberFormat(""); }), 1004);
}

TEST_F(Cells, ThatHeldABooleanTakeANumber) {
  Put("A1", true);
  Reopen("first.xls");

  Put("A1", 1.0);

  Reopen("second.xls");
  EXPECT_EQ(Value("A1"), Variant(1.0));
  EXPECT_EQ(Sheet()->Range("A1")->NumberFormat(), "General");
}

TEST_F(Cells, AreOnlyWrittenWhereTheyChanged) {
  Put("A1:F40", "old");
  Reopen("first.xls");
  Put("C7", "new");
  Put("E7", 5.0);
  Put("A39", "last");

  Reopen("second.xls");

  EXPECT_EQ(Value("C7"), Variant("new"));
  EXPECT_EQ(Value("D7"), Variant("old"));
  EXPECT_EQ(Value("E7"), Variant(5.0));
  EXPECT_EQ(Value("A39"), Variant("last"));
  EXPECT_EQ(Value("F40"), Variant("old"));
}

TEST_F(Cells, TellTheLastOneInUse) {
  const auto last = [&] { return Sheet()->Cells()->SpecialCells(excel::cell_type::kLastCell); };
  EXPECT_EQ(last()->Row(), 1);
  Put("B7", 1.0);
  Put("F3", 1.0);
  EXPECT_EQ(last()->Row(), 7);

  Reopen();

  EXPECT_EQ(last()->Row(), 7);
  last()->SetValue("corner");
  EXPECT_EQ(Value("F7"), Variant("corner"));
}

TEST_F(Cells, KnowNoOtherSpecialOnes) {
  EXPECT_EQ(NumberOf([&] { Sheet()->Cells()->SpecialCells(2); }), 1004);
  EXPECT_EQ(NumberOf([&] { Sheet()->Cells()->End(-4162); }), 1004);
}

TEST_F(Cells, EndAtTheLeftWhereTheyBegin) {
  Put("B2:D2", 1.0);
  Put("G2", 1.0);
  const auto endOf = [&](const std::string& address) {
    Sheet(1)->Range(address)->End(excel::direction::kToLeft)->SetValue("end");
    for (int column = 1; column <= 10; ++column) {
      const auto cell = Sheet()->Cells(2, column);
      if (!cell->Value().IsText()) continue;
      cell->SetValue(column == 2 || column == 4 || column == 7 ? Variant(1.0) : Variant());
      return column;
    }
    return 0;
  };

  EXPECT_EQ(endOf("D2"), 2);
  EXPECT_EQ(endOf("J2"), 7);
  EXPECT_EQ(endOf("G2"), 4);
  EXPECT_EQ(endOf("B2"), 1);
  EXPECT_EQ(endOf("A2"), 1);
}

}  // namespace
}  // namespace quintara::test
