#include "hosts/office/cell_area.h"
#include "hosts/office/cell_grid.h"
#include "hosts/office/office_fixture.h"
#include "hosts/office/read_plan.h"
#include "hosts/office/workbook_bytes.h"

namespace quintara::office {

static void PrintTo(const CellArea& area, std::ostream* stream) {
  *stream << AddressOf(area);
}

namespace {

using test::NumberOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

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

TEST(AReadPlan, IsOneBlockForAnIndentedTable) {
  std::vector<CellArea> areas = {{1, 15, 5000, 12}};
  for (int row = 1; row <= 5000; ++row) areas.push_back({row, 1 + row % 6});

  EXPECT_THAT(BlocksToRead(areas, kMany), ElementsAre(CellArea{1, 1, 5000, 26}));
}

TEST(AReadPlan, LeavesLongStretchesOfNothingOut) {
  EXPECT_THAT(BlocksToRead({{1, 1, 10, 5}, {65'536, 256}}, kMany),
              ElementsAre(CellArea{1, 1, 10, 5}, CellArea{65'536, 256}));
}

TEST(AReadPlan, CutsBlocksThatAreTooLarge) {
  EXPECT_THAT(BlocksToRead({{1, 1, 100, 10}}, 300), SizeIs(4));
  EXPECT_THAT(BlocksToRead({{1, 1, 2, 256}}, 100), SizeIs(2));
  EXPECT_THAT(BlocksToRead({}, 100), IsEmpty());
}

// A compound file of 512-byte sectors: its table, and so many others that it says are in use.
std::string Compound(std::size_t others) {
  std::string bytes(512 * (2 + others), '\0');
  bytes.replace(0, 8, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
  bytes[30] = 9;
  bytes[44] = 1;
  for (std::size_t i = 0; i < 128; ++i) {
    if (i > others) bytes.replace(512 + 4 * i, 4, "\xFF\xFF\xFF\xFF");
  }
  return bytes;
}

TEST(TheBytesOfAWorkbook, AreThoseOfAWholeCompoundFileOrAPackage) {
  EXPECT_EQ(NumberOf([] { RequireWorkbook(Compound(4), "x.xls"); }), 0);
  EXPECT_EQ(NumberOf([] { RequireWorkbook("PK\x03\x04...", "x.xls"); }), 0);
}

TEST(TheBytesOfAWorkbook, MayEndWithinTheLastSector) {
  const auto bytes = Compound(4);

  EXPECT_EQ(NumberOf([&] { RequireWorkbook(bytes.substr(0, bytes.size() - 500), "x.xls"); }), 0);
  EXPECT_EQ(NumberOf([&] { RequireWorkbook(bytes.substr(0, bytes.size() - 512), "x.xls"); }), 1004);
}

TEST(TheBytesOfAWorkbook, AreRefusedAtWhateverLengthTheyAreCut) {
  const auto bytes = Compound(3);

  for (std::size_t length = 0; length < bytes.size() - 512; length += 7) {
    EXPECT_EQ(NumberOf([&] { RequireWorkbook(bytes.substr(0, length), "x.xls"); }), 1004) << length;
  }
}

TEST(TheBytesOfAWorkbook, MayNotAskForMoreTablesThanThereIsRoomFor) {
  auto bytes = Compound(4);
  bytes.replace(44, 4, "\xFF\xFF\xFF\x7F");
  EXPECT_EQ(NumberOf([&] { RequireWorkbook(bytes, "x.xls"); }), 1004);
  bytes.replace(44, 4, std::string(4, '\0'));
  EXPECT_EQ(NumberOf([&] { RequireWorkbook(bytes, "x.xls"); }), 1004);
}

TEST(TheBytesOfAWorkbook, AreNoTextAndNoPage) {
  for (const auto* const text : {"", " ", "a,b,c", "<html></html>", "\r\n <?xml version='1.0'?>"}) {
    EXPECT_EQ(NumberOf([&] { RequireWorkbook(text, "x.xls"); }), 1004) << text;
  }
}

}  // namespace
}  // namespace quintara::office
