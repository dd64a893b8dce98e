#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/workbook/cell_area.h"
#include "hosts/workbook/cell_grid.h"

namespace quintara::workbook {

static void PrintTo(const CellArea& area, std::ostream* stream) {
  *stream << AddressOf(area);
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::size_t kMany = 1'000'000;

TEST(AnAddress, HasColumnsOfOneAndTwoLetters) {
  EXPECT_EQ(AreaOf("Z1"), (CellArea{1, 26}));
  EXPECT_EQ(AreaOf("AA1"), (CellArea{1, 27}));
  EXPECT_EQ(AddressOf({1, 26}), "Z1");
  EXPECT_EQ(AddressOf({1, 27}), "AA1");
  EXPECT_EQ(AddressOf(kWholeSheet), "A1:IV65536");
}

TEST(AnAddress, IsTheSameBackFromEachColumn) {
  for (int column = 1; column <= kColumns; ++column) {
    EXPECT_EQ(AreaOf(AddressOf({9, column})), (CellArea{9, column}));
  }
}

TEST(AnAddress, OfTwoCornersTakesThemInWhateverOrder) {
  EXPECT_EQ(AreaOf("C2:B7"), (CellArea{2, 2, 6, 2}));
}

TEST(AGrid, SendsOneBlockForATableOfTextsAndNumbers) {
  CellGrid grid;
  for (int row = 1; row <= 500; ++row) {
    grid.SetValue(row, 1 + row % 5, "part");
    for (int column = 15; column <= 26; ++column) grid.SetValue(row, column, 1.0);
  }

  EXPECT_THAT(grid.ChangedBlocks(kMany), ElementsAre(CellArea{1, 1, 500, 26}));
}

TEST(AGrid, SendsNothingThatDidNotChange) {
  CellGrid grid;
  grid.Enter(2, 2, {.value = "there"});
  grid.SetValue(2, 1, 1.0);
  grid.SetValue(2, 3, 1.0);

  EXPECT_THAT(grid.ChangedBlocks(kMany), ElementsAre(CellArea{2, 1}, CellArea{2, 3}));
}

TEST(AGrid, PassesRoundACellThatStandsBetweenTwoRows) {
  CellGrid grid;
  grid.Enter(2, 2, {.value = "there"});
  grid.SetValue(1, 2, 1.0);
  grid.SetValue(3, 2, 1.0);

  EXPECT_THAT(grid.ChangedBlocks(kMany), ElementsAre(CellArea{1, 2}, CellArea{3, 2}));
}

TEST(AGrid, DoesNotWidenABlockOverACellOfAnEarlierRow) {
  CellGrid grid;
  grid.Enter(1, 1, {.value = "there"});
  grid.SetValue(1, 2, 1.0);
  grid.SetValue(2, 1, 1.0);
  grid.SetValue(2, 2, 1.0);

  EXPECT_THAT(grid.ChangedBlocks(kMany), ElementsAre(CellArea{1, 2}, CellArea{2, 1, 1, 2}));
}

TEST(AGrid, CutsBlocksThatAreTooLarge) {
  CellGrid grid;
  for (int row = 1; row <= 10; ++row) grid.SetValue(row, 1, 1.0);

  EXPECT_THAT(grid.ChangedBlocks(4), ElementsAre(CellArea{1, 1, 4, 1}, CellArea{5, 1, 4, 1}, CellArea{9, 1, 2, 1}));
}

TEST(AGrid, HasNothingToSendOnceItIsSent) {
  CellGrid grid;
  grid.SetValue(1, 1, 1.0);
  grid.SetFormat(1, 1, "@");

  grid.ForgetChanges();

  EXPECT_FALSE(grid.HasChanges());
  EXPECT_THAT(grid.ChangedBlocks(kMany), IsEmpty());
  EXPECT_THAT(grid.ChangedFormats(), IsEmpty());
}

TEST(AGrid, SendsEachFormatOnce) {
  CellGrid grid;
  for (const int row : {1, 2, 3, 7}) grid.SetFormat(row, 4, "@");
  grid.SetFormat(5, 5, "0.0");

  EXPECT_THAT(grid.ChangedFormats(), ElementsAre(Pair("0.0", ElementsAre(CellArea{5, 5})),
                                                 Pair("@", ElementsAre(CellArea{1, 4, 3, 1}, CellArea{7, 4}))));
}

TEST(AGrid, KnowsFormatsOfCellsThatAreEmpty) {
  CellGrid grid;
  grid.Enter(1, 1, {.value = 1.0});
  grid.EnterFormat({1, 1, 100, 2}, "@");

  EXPECT_EQ(grid.Format(1, 1), "@");
  EXPECT_EQ(grid.Format(50, 2), "@");
  EXPECT_EQ(grid.Format(101, 2), "General");
  grid.SetValue(50, 2, 5.0);
  EXPECT_EQ(grid.At(50, 2).value, Variant("5"));
}

}  // namespace
}  // namespace quintara::workbook
