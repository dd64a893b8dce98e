#pragma once

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "base/text.h"
#include "hosts/workbook/contract/fixture.h"

namespace quintara::test {

template <class Host>
class SpreadsheetCellContract : public SpreadsheetContract<Host> {
 protected:
  SpreadsheetCellContract() { this->app->Workbooks()->Add(); }
};
TYPED_TEST_SUITE(SpreadsheetCellContract, SpreadsheetContractHosts);

TYPED_TEST(SpreadsheetCellContract, AreEmptyInANewWorkbook) {
  EXPECT_TRUE(this->Value("A1").IsEmpty());
  EXPECT_TRUE(this->Value("IV65536", 3).IsEmpty());
}

TYPED_TEST(SpreadsheetCellContract, GiveWhatWasPutIntoThem) {
  this->Put("A1", "text");
  this->Put("B2", 1.5);
  this->Put("C3", true);
  this->Put("D4", std::int16_t{7});

  EXPECT_EQ(this->Value("A1"), Variant("text"));
  EXPECT_EQ(this->Value("B2"), Variant(1.5));
  EXPECT_EQ(this->Value("C3"), Variant(true));
  EXPECT_EQ(this->Value("D4"), Variant(7.0));
}

TYPED_TEST(SpreadsheetCellContract, KeepAllKindsInTheFile) {
  this->Put("A1", "text");
  this->Put("B2", 1.5);
  this->Put("C3", true);
  this->Put("C4", false);
  this->Put("D4", std::int32_t{-70'000});

  this->Reopen();

  EXPECT_EQ(this->Value("A1"), Variant("text"));
  EXPECT_EQ(this->Value("B2"), Variant(1.5));
  EXPECT_EQ(this->Value("C3"), Variant(true));
  EXPECT_EQ(this->Value("C4"), Variant(false));
  EXPECT_EQ(this->Value("D4"), Variant(-70'000.0));
}

TYPED_TEST(SpreadsheetCellContract, KeepEveryBitOfANumber) {
  const std::vector<double> numbers = {
      0.1, 1.0 / 3, -2e-308, std::numeric_limits<double>::max(), 5e-324, 0.01, 1e15 + 1, 123.45, -std::sqrt(2)};
  for (std::size_t i = 0; i < numbers.size(); ++i)
    this->Sheet()->Cells(static_cast<int>(i) + 1, 1)->SetValue(numbers[i]);

  this->Reopen();

  for (std::size_t i = 0; i < numbers.size(); ++i) {
    EXPECT_EQ(this->Sheet()->Cells(static_cast<int>(i) + 1, 1)->Value(), Variant(numbers[i])) << numbers[i];
  }
}

TYPED_TEST(SpreadsheetCellContract, KeepTextsThatLookLikeSomethingElse) {
  const std::vector<std::string> texts = {"007", "1E5", "=A1",  "'x", "TRUE", "2024-01-02",
                                          " x ", "-",   "#N/A", "+1", "1/2"};
  for (std::size_t i = 0; i < texts.size(); ++i) this->Sheet()->Cells(static_cast<int>(i) + 1, 4)->SetValue(texts[i]);

  this->Reopen();

  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(this->Sheet()->Cells(static_cast<int>(i) + 1, 4)->Value(), Variant(texts[i]));
  }
}

TYPED_TEST(SpreadsheetCellContract, KeepTextsOfAllScripts) {
  const std::string text = "Schraube Ø5 €, болт, 螺丝, 🔩\nsecond line";
  this->Put("A1", text);

  this->Reopen();

  EXPECT_EQ(this->Value("A1"), Variant(text));
}

TYPED_TEST(SpreadsheetCellContract, HoldTextsOfUpTo32767Units) {
  this->Put("A1", std::string(32'767, 'x'));
  EXPECT_EQ(NumberOf([&] { this->Put("A2", std::string(32'768, 'x')); }), 1004);

  this->Reopen();

  EXPECT_EQ(this->Value("A1").ToText().size(), 32'767U);
  EXPECT_TRUE(this->Value("A2").IsEmpty());
}

TYPED_TEST(SpreadsheetCellContract, AreClearedByNothingAndByTheEmptyText) {
  this->Put("A1", 1.0);
  this->Put("A2", "x");
  this->Reopen();

  this->Put("A1", Variant());
  this->Put("A2", "");

  EXPECT_TRUE(this->Value("A1").IsEmpty());
  this->Reopen();
  EXPECT_TRUE(this->Value("A1").IsEmpty());
  EXPECT_TRUE(this->Value("A2").IsEmpty());
}

TYPED_TEST(SpreadsheetCellContract, RefuseWhatNoCellHolds) {
  EXPECT_EQ(NumberOf([&] { this->Put("A1", std::nan("")); }), 1004);
  EXPECT_EQ(NumberOf([&] { this->Put("A1", std::numeric_limits<double>::infinity()); }), 1004);
  EXPECT_EQ(NumberOf([&] { this->Put("A1", "\xFF"); }), 5);
  EXPECT_EQ(NumberOf([&] { this->Put("A1", Ref<AnyObject>(this->app)); }), 13);
  EXPECT_TRUE(this->Value("A1").IsEmpty());
}

TYPED_TEST(SpreadsheetCellContract, StandOnTheWorksheet) {
  const auto sheet = this->Sheet();

  EXPECT_EQ(NumberOf([&] { sheet->Cells(0, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(1, 0); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(65'537, 1); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(1, 257); }), 1004);
  EXPECT_EQ(NumberOf([&] { sheet->Cells(65'536, 256); }), 0);
}

TYPED_TEST(SpreadsheetCellContract, AreAddressedByColumnAndRow) {
  this->Sheet()->Cells(12, 28)->SetValue("here");

  EXPECT_EQ(this->Value("AB12"), Variant("here"));
  EXPECT_EQ(this->Value("$ab$12"), Variant("here"));
  EXPECT_EQ(this->Sheet()->Range("AB12")->Row(), 12);
}

TYPED_TEST(SpreadsheetCellContract, RefuseWhatIsNoAddress) {
  for (const auto* const address : {"", "A", "1", "A0", "A65537", "IW1", "A1:", "A1:B2:C3", "1A", "A1 ", "Ä1", "A-1"}) {
    EXPECT_EQ(NumberOf([&] { this->Sheet()->Range(address); }), 1004) << address;
  }
}

TYPED_TEST(SpreadsheetCellContract, OfARangeAreAllWritten) {
  this->Put("C2:B1", 4.0);

  EXPECT_EQ(this->Value("B1"), Variant(4.0));
  EXPECT_EQ(this->Value("C2"), Variant(4.0));
  EXPECT_TRUE(this->Value("A1").IsEmpty());
}

TYPED_TEST(SpreadsheetCellContract, OfARangeHaveNoSingleValue) {
  EXPECT_EQ(NumberOf([&] { this->Value("A1:B2"); }), 13);
}

TYPED_TEST(SpreadsheetCellContract, AreTooManyToBeWrittenAllAtOnce) {
  EXPECT_EQ(NumberOf([&] { this->Sheet()->Cells()->SetValue(1.0); }), 1004);
}

TYPED_TEST(SpreadsheetCellContract, OfTheTextFormatTurnNumbersIntoTexts) {
  const auto cell = this->Sheet(2)->Cells(3, 4);
  cell->SetNumberFormat("@");
  cell->SetValue(12.5);

  EXPECT_EQ(cell->NumberFormat(), "@");
  EXPECT_EQ(cell->Value(), Variant("12.5"));

  this->Reopen();
  EXPECT_EQ(this->Value("D3", 2), Variant("12.5"));
  EXPECT_EQ(this->Sheet(2)->Cells(3, 4)->NumberFormat(), "@");
}

TYPED_TEST(SpreadsheetCellContract, KeepTheirValueWhenTheFormatBecomesText) {
  this->Put("A1", 12.5);

  this->Sheet()->Range("A1")->SetNumberFormat("@");

  EXPECT_EQ(this->Value("A1"), Variant(12.5));
}

TYPED_TEST(SpreadsheetCellContract, KeepTheirNumberFormats) {
  this->Sheet()->Range("A1")->SetNumberFormat("0.00");
  this->Put("A1", 1.0);
  this->Sheet()->Range("B1")->SetNumberFormat("yyyy\\-mm\\-dd");
  this->Put("B1", 45'293.0);
  this->Sheet()->Range("C1:C4")->SetNumberFormat("@");

  this->Reopen();

  EXPECT_EQ(this->Sheet()->Range("A1")->NumberFormat(), "0.00");
  auto date = Capitals(this->Sheet()->Range("B1")->NumberFormat());
  std::erase(date, '\\');
  EXPECT_EQ(date, "YYYY-MM-DD");
  EXPECT_EQ(this->Value("B1"), Variant(45'293.0));
  EXPECT_EQ(this->Sheet()->Range("C4")->NumberFormat(), "@");
  EXPECT_EQ(this->Sheet()->Range("C5")->NumberFormat(), "General");
}

TYPED_TEST(SpreadsheetCellContract, RefuseTheEmptyNumberFormat) {
  EXPECT_EQ(NumberOf([&] { this->Sheet()->Range("A1")->SetNumberFormat(""); }), 1004);
}

TYPED_TEST(SpreadsheetCellContract, ThatHeldABooleanTakeANumber) {
  this->Put("A1", true);
  this->Reopen("first.xls");

  this->Put("A1", 1.0);

  this->Reopen("second.xls");
  EXPECT_EQ(this->Value("A1"), Variant(1.0));
  EXPECT_EQ(this->Sheet()->Range("A1")->NumberFormat(), "General");
}

TYPED_TEST(SpreadsheetCellContract, AreOnlyWrittenWhereTheyChanged) {
  this->Put("A1:F40", "old");
  this->Reopen("first.xls");
  this->Put("C7", "new");
  this->Put("E7", 5.0);
  this->Put("A39", "last");

  this->Reopen("second.xls");

  EXPECT_EQ(this->Value("C7"), Variant("new"));
  EXPECT_EQ(this->Value("D7"), Variant("old"));
  EXPECT_EQ(this->Value("E7"), Variant(5.0));
  EXPECT_EQ(this->Value("A39"), Variant("last"));
  EXPECT_EQ(this->Value("F40"), Variant("old"));
}

TYPED_TEST(SpreadsheetCellContract, TellTheLastOneInUse) {
  const auto last = [&] { return this->Sheet()->Cells()->SpecialCells(excel::cell_type::kLastCell); };
  EXPECT_EQ(last()->Row(), 1);
  this->Put("B7", 1.0);
  this->Put("F3", 1.0);
  EXPECT_EQ(last()->Row(), 7);

  this->Reopen();

  EXPECT_EQ(last()->Row(), 7);
  last()->SetValue("corner");
  EXPECT_EQ(this->Value("F7"), Variant("corner"));
}

TYPED_TEST(SpreadsheetCellContract, KnowNoOtherSpecialOnes) {
  EXPECT_EQ(NumberOf([&] { this->Sheet()->Cells()->SpecialCells(2); }), 1004);
  EXPECT_EQ(NumberOf([&] { this->Sheet()->Cells()->End(-4162); }), 1004);
}

TYPED_TEST(SpreadsheetCellContract, EndAtTheLeftWhereTheyBegin) {
  this->Put("B2:D2", 1.0);
  this->Put("G2", 1.0);
  const auto endOf = [&](const std::string& address) {
    this->Sheet(1)->Range(address)->End(excel::direction::kToLeft)->SetValue("end");
    for (int column = 1; column <= 10; ++column) {
      const auto cell = this->Sheet()->Cells(2, column);
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

}  // namespace quintara::test
