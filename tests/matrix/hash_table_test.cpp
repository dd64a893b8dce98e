#include <algorithm>
#include <chrono>
#include <thread>

#include "base/failure.h"
#include "hosts/native/native_platform.h"
#include "matrix/hash_fixture.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::Return;
using ::testing::SizeIs;

class RenamedDoubles : public ::testing::Test {
 protected:
  bool Rename() { return RenameFirst(static_cast<std::int32_t>(couples.size())); }
  bool RenameFirst(std::int32_t count) {
    Cls_HashTable hash([this] { return numbers.at(used++); });
    return hash.RenameDoublesWithHashTable(couples, count, workbook.excel);
  }
  void FailAtWriting(const std::string& writing, const Failure& failure) {
    workbook.beforeWriting = [=](const std::string& at) {
      if (at == writing) throw failure;
    };
  }

  TestPlatform platform;
  WorkbookOnTheBench workbook;
  std::vector<PN_IN_Couple> couples;
  std::vector<float> numbers = {0.5F, 0.25F, 0.75F, 0.125F};
  std::size_t used = 0;
};

TEST_F(RenamedDoubles, NothingIsDoneForNoCouples) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}};

  EXPECT_TRUE(RenameFirst(0));

  EXPECT_THAT(workbook.written, IsEmpty());
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(RenamedDoubles, NothingIsDoneForPairsThatDiffer) {
  couples = {{"A", "A.1", 1}, {"A", "A.2", 2}, {"B", "B.1", 3}};

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, IsEmpty());
}

TEST_F(RenamedDoubles, ARepeatIsWrittenAsTextIntoItsRow) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 17}};

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, ElementsAre("17,4 format @", "17,4 value A.15000"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(RenamedDoubles, EveryLaterRepeatIsCaughtToo) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}, {"B", "B.1", 3}, {"A", "A.1", 4}, {"A", "A.1", 5}};

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, ElementsAre("2,4 format @", "2,4 value A.15000", "4,4 format @", "4,4 value A.12500",
                                            "5,4 format @", "5,4 value A.17500"));
}

TEST_F(RenamedDoubles, NamesThatDifferAfterTheTwentiethCharacterAreNoRepeat) {
  couples = {{"A", kTwenty + "1", 1}, {"A", kTwenty + "2", 2}, {"A", kTwenty, 3}, {"A", kTwenty + "2", 4}};

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, ElementsAre("4,4 format @", "4,4 value " + kTwenty + "25000"));
}

TEST_F(RenamedDoubles, OneNameUnderSeveralPartNumbersIsNoRepeat) {
  couples = {{"A", "X.1", 1}, {"B", "X.1", 2}, {"C", "X.1", 3}, {"B", "X.1", 4}};

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, ElementsAre("4,4 format @", "4,4 value X.15000"));
}

TEST_F(RenamedDoubles, ANewNameMayBeOneThatIsThere) {
  couples = {{"A", "A.15000", 1}, {"A", "A.1", 2}, {"A", "A.1", 3}};

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, ElementsAre("3,4 format @", "3,4 value A.15000"));
}

TEST_F(RenamedDoubles, ANewNameIsNotRemembered) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}, {"A", "A.15000", 3}};

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, ElementsAre("2,4 format @", "2,4 value A.15000"));
}

TEST_F(RenamedDoubles, PairsWithoutPartNumberAreNeverRepeats) {
  couples = {{"", "A.1", 1}, {"", "A.1", 2}};

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, IsEmpty());
}

TEST_F(RenamedDoubles, PairsBehindTheCountAreLeftAlone) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}, {"A", "A.1", 3}};

  EXPECT_TRUE(RenameFirst(2));

  EXPECT_THAT(workbook.written, SizeIs(2));
}

TEST_F(RenamedDoubles, TheWorkbookIsNotTouchedWithoutARepeat) {
  couples = {{"A", "A.1", 1}};
  EXPECT_CALL(*workbook.excel, ActiveWorkbook).Times(0);

  EXPECT_TRUE(Rename());
}

TEST_F(RenamedDoubles, TheNumberHasDecimalsWhereItNeedsThem) {
  couples = {{"A", "A.", 1}, {"A", "A.", 2}, {"A", "A.", 3}};
  numbers = {0.12345F, 0.0F};

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, ElementsAre("2,4 format @", "2,4 value A.1234.5", "3,4 format @", "3,4 value A.0"));
}

class CommaPlatform : public NativePlatform {
 public:
  using NativePlatform::NativePlatform;
  std::string DecimalSeparator() override { return ","; }
};

TEST_F(RenamedDoubles, TheNumberCarriesTheUsersDecimalSeparator) {
  couples = {{"A", "A.", 1}, {"A", "A.", 2}};
  numbers = {0.12345F};
  const auto before = InstallPlatform(std::make_shared<CommaPlatform>(platform.TheGate(), nullptr));

  EXPECT_TRUE(Rename());

  InstallPlatform(before);
  EXPECT_THAT(workbook.written, ElementsAre("2,4 format @", "2,4 value A.1234,5"));
}

TEST_F(RenamedDoubles, AClassOfItsOwnDrawsFromTheClock) {
  couples.assign(50, {"A", "A.", 2});
  const auto renamed = [&] {
    workbook.written.clear();
    EXPECT_TRUE(Cls_HashTable().RenameDoublesWithHashTable(couples, 50, workbook.excel));
    return workbook.written;
  };

  const auto first = renamed();
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  const auto second = renamed();

  EXPECT_THAT(first, SizeIs(98));
  EXPECT_NE(first, second);
}

TEST_F(RenamedDoubles, WithoutASpreadsheetARepeatIsShown) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}};
  Cls_HashTable hash;

  EXPECT_TRUE(hash.RenameDoublesWithHashTable(couples, 1, nullptr));
  EXPECT_FALSE(hash.RenameDoublesWithHashTable(couples, 2, nullptr));

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(HashError("RenameDoublesWithHashTable", "Object variable or With block variable not set")));
}

TEST_F(RenamedDoubles, WithoutAnActiveWorkbookARepeatIsShown) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}};
  ON_CALL(*workbook.excel, ActiveWorkbook).WillByDefault(Return(nullptr));

  EXPECT_FALSE(Rename());

  EXPECT_THAT(platform.Boxes(),
              ElementsAre(HashError("RenameDoublesWithHashTable", "Object variable or With block variable not set")));
}

TEST_F(RenamedDoubles, WithoutASecondWorksheetARepeatIsShown) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}};
  ON_CALL(*workbook.worksheets, Item(2)).WillByDefault([](int) -> Ref<excel::Worksheet> {
    throw Failure(failure::kSubscriptOutOfRange, "No worksheet 2");
  });

  EXPECT_FALSE(Rename());

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("RenameDoublesWithHashTable", "No worksheet 2")));
}

TEST_F(RenamedDoubles, ACellThatRefusesItsFormatGetsNoName) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}, {"A", "A.1", 3}};
  FailAtWriting("2,4 format @", Failure(failure::kDeviceError, "protected"));

  EXPECT_FALSE(Rename());

  EXPECT_THAT(workbook.written, IsEmpty());
  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("RenameDoublesWithHashTable", "protected")));
}

TEST_F(RenamedDoubles, RowsRenamedBeforeAFailureStayRenamed) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}, {"A", "A.1", 3}, {"A", "A.1", 4}};
  FailAtWriting("3,4 value A.12500", Failure(failure::kDeviceError, "gone"));

  EXPECT_FALSE(Rename());

  EXPECT_THAT(workbook.written, ElementsAre("2,4 format @", "2,4 value A.15000", "3,4 format @"));
  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("RenameDoublesWithHashTable", "gone")));
}

TEST_F(RenamedDoubles, ACountPastTheEndOfTheArrayIsShownAfterWhatIsThere) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}};

  EXPECT_FALSE(RenameFirst(3));

  EXPECT_THAT(workbook.written, SizeIs(2));
  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("RenameDoublesWithHashTable", "Subscript out of range")));
}

TEST_F(RenamedDoubles, ANegativeCountIsShownOnce) {
  EXPECT_FALSE(RenameFirst(-1));

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("IsPrimeNumber", "Invalid procedure call or argument")));
}

TEST_F(RenamedDoubles, AFailingGeneratorIsShown) {
  couples = {{"A", "A.1", 1}, {"A", "A.1", 2}};
  numbers.clear();

  EXPECT_FALSE(Rename());

  EXPECT_THAT(platform.Boxes(), ElementsAre(Field(&Box::style, 16)));
  EXPECT_THAT(workbook.written, IsEmpty());
}

TEST_F(RenamedDoubles, ThirtyThousandCouplesOverflowTheChains) {
  for (int row = 1; row <= 30'000; ++row) couples.push_back({"A", "A." + std::to_string(row), row});

  EXPECT_FALSE(Rename());

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("AddInHashTableInIndex", "Overflow")));
}

// 16,411 is a prime, so that the last of these couples stands in slot 16,411 + 16,411 - `homes`.
std::vector<PN_IN_Couple> CouplesWithHomes(int homes) {
  std::vector<PN_IN_Couple> couples;
  for (int i = 0; i < 16'411; ++i) {
    const char first = static_cast<char>('0' + i % homes);
    couples.push_back({"A", first + std::string(19, 'x') + std::to_string(i), i});
  }
  return couples;
}

TEST_F(RenamedDoubles, TheTableHasOneSlotMoreThanItsPrime) {
  couples = CouplesWithHomes(55);
  EXPECT_TRUE(Rename());
  EXPECT_THAT(platform.Boxes(), IsEmpty());

  couples = CouplesWithHomes(54);
  EXPECT_FALSE(Rename());
  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("AddInHashTableInIndex", "Overflow")));
}

TEST_F(RenamedDoubles, AShortListHasRoomForItsCollisions) {
  for (int row = 1; row <= 15'000; ++row) couples.push_back({"A", "A." + std::to_string(row), row});
  couples.push_back({"A", "A.9999", 15'001});

  EXPECT_TRUE(Rename());

  EXPECT_THAT(workbook.written, ElementsAre("15001,4 format @", "15001,4 value A.99995000"));
}

class BoxlessPlatform : public NativePlatform {
 public:
  using NativePlatform::NativePlatform;
  int ShowBox(const std::string&, int, const std::string&) override { throw Failure(failure::kDeviceError); }
};

TEST_F(RenamedDoubles, ABoxThatCannotBeShownStaysWithin) {
  const auto before = InstallPlatform(std::make_shared<BoxlessPlatform>(platform.TheGate(), nullptr));

  EXPECT_NO_THROW(EXPECT_FALSE(RenameFirst(-1)));

  InstallPlatform(before);
}

}  // namespace
}  // namespace quintara::test
