#include "hosts/office/office_fixture.h"
#include "hosts/office/read_plan.h"
#include "hosts/office/workbook_bytes.h"
#include "hosts/workbook/cell_area.h"

namespace quintara::workbook {

static void PrintTo(const CellArea& area, std::ostream* stream) {
  *stream << AddressOf(area);
}

}  // namespace quintara::workbook

namespace quintara::office {
namespace {

using test::NumberOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::size_t kMany = 1'000'000;

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
