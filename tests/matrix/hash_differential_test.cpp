#include <random>

#include "base/failure.h"
#include "matrix/hash_fixture.h"
#include "matrix/literal_hash_table.h"

namespace quintara::test {
namespace {

// Random numbers whose texts make names that other couples have.
struct Draw {
  float number;
  const char* text;
};
constexpr Draw kDraws[] = {{0.0F, "0"}, {0.5F, "5000"}, {0.0001F, "1"}, {0.0002F, "2"}, {0.12345F, "1234.5"}};

class Chance {
 public:
  explicit Chance(unsigned seed) : random_(seed) {}

  int Number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
  bool OneIn(int count) { return Number(1, count) == 1; }
  template <class List>
  const auto& Of(const List& list) {
    return list[static_cast<std::size_t>(Number(0, static_cast<int>(std::size(list)) - 1))];
  }

  // Many meet: few part numbers, short names and names that are equal for twenty characters.
  PN_IN_Couple Couple(int row) {
    static const std::vector<std::string> kBeginnings = {"", "N", "é", "€.", "NO", "Ж", kTwenty, kTwenty + "X"};
    static const std::vector<std::string> kEnds = {"", "0", "1", "2", "5000", "11", "1234.5"};
    static const std::vector<std::string> kPartNumbers = {"A", "B", "C"};
    return {OneIn(25) ? "" : Of(kPartNumbers), Of(kBeginnings) + Of(kEnds), row};
  }

 private:
  std::mt19937 random_;
};

// What one renaming is given.
struct Case {
  explicit Case(unsigned seed) {
    Chance chance(seed);
    const int count = chance.Number(0, 80);
    for (int i = 0; i < count; ++i) couples.push_back(chance.Couple(chance.Number(1, 32'767)));
    arrayIndex = chance.OneIn(10) ? chance.Number(0, count + 2) : count;
    failingWriting = chance.OneIn(5) ? chance.Number(1, 20) : 0;
    for (int i = 0; i < count; ++i) draws.push_back(chance.Of(kDraws));
  }

  std::vector<PN_IN_Couple> couples;
  int arrayIndex = 0;
  int failingWriting = 0;
  std::vector<Draw> draws;
};

struct Outcome {
  bool result = false;
  std::vector<std::string> names;
  std::vector<std::string> boxes;

  bool operator==(const Outcome&) const = default;
};

void FailAt(int& left) {
  if (left > 0 && --left == 0) throw Failure(failure::kDeviceError, "refused");
}

Outcome Literally(const Case& each) {
  Outcome outcome;
  int left = each.failingWriting;
  std::size_t used = 0;
  LiteralHashTable table({[&](int row, const std::string& name) {
                            FailAt(left);
                            outcome.names.push_back(std::to_string(row) + ",4 value " + name);
                          },
                          [&] { return each.draws[used++].text; },
                          [&](const std::string& box) { outcome.boxes.push_back(box); }});
  outcome.result = table.Rename(each.couples, each.arrayIndex);
  return outcome;
}

Outcome Really(const Case& each) {
  TestPlatform platform;
  WorkbookOnTheBench workbook;
  int left = each.failingWriting;
  std::size_t used = 0;
  workbook.beforeWriting = [&](const std::string& writing) {
    if (writing.find(" value ") != std::string::npos) FailAt(left);
  };
  Cls_HashTable hash([&] { return each.draws[used++].number; });
  Outcome outcome;
  outcome.result = hash.RenameDoublesWithHashTable(each.couples, each.arrayIndex, workbook.excel);
  for (const auto& writing : workbook.written) {
    if (writing.find(" value ") != std::string::npos) outcome.names.push_back(writing);
  }
  for (const auto& box : platform.Boxes()) outcome.boxes.push_back(box.text);
  return outcome;
}

TEST(RenamingOfDoubles, MeansWhatItSaysWordByWord) {
  constexpr unsigned kCases = 1'500;
  unsigned renamed = 0;
  unsigned failed = 0;

  for (unsigned seed = 1; seed <= kCases; ++seed) {
    const Case each(seed);
    const auto literal = Literally(each);
    const auto real = Really(each);
    ASSERT_EQ(real.result, literal.result) << "seed " << seed;
    ASSERT_EQ(real.names, literal.names) << "seed " << seed;
    ASSERT_EQ(real.boxes, literal.boxes) << "seed " << seed;
    if (literal.names.size() > 3) ++renamed;
    if (!literal.result) ++failed;
  }

  EXPECT_GT(renamed, kCases / 3);
  EXPECT_GT(failed, kCases / 20);
}

// One table of each kind, led through the same operations.
class TwoTables {
 public:
  explicit TwoTables(int size) {
    internals_.Create(size);
    literal_.Create(size);
  }

  void Step(Chance& chance) {
    const auto couple = chance.Couple(chance.Number(1, 99));
    switch (chance.Number(1, 6)) {
      case 1: AddAnywhere(couple, chance.Number(-1, static_cast<int>(literal_.slots.size()))); break;
      case 2: AddByTheOtherEntry(couple); break;
      default: SearchAndAdd(couple);
    }
  }

  void ExpectEqual() {
    std::vector<std::string> boxes;
    for (const auto& box : platform_.Boxes()) boxes.push_back(box.text);
    ASSERT_EQ(boxes, boxes_);
    ASSERT_EQ(internals_.table.size(), literal_.slots.size());
    for (std::size_t i = 0; i < literal_.slots.size(); ++i) {
      ASSERT_EQ(internals_.table[i].PartNumber, literal_.slots[i].partNumber) << i;
      ASSERT_EQ(internals_.table[i].InstanceName, literal_.slots[i].instanceName) << i;
      ASSERT_EQ(internals_.table[i].Row, literal_.slots[i].row) << i;
      ASSERT_EQ(internals_.table[i].NextIndex, literal_.slots[i].next) << i;
    }
  }

  std::size_t Boxes() const { return boxes_.size(); }

 private:
  void SearchAndAdd(const PN_IN_Couple& couple) {
    bool found = false;
    int last = 0;
    ASSERT_EQ(internals_.Search(couple.PartNumber, couple.InstanceName), literal_.Search(couple, found, last));
    ASSERT_EQ(internals_.found, found);
    ASSERT_EQ(internals_.lastIndex, last);
    AddAnywhere(couple, last);
  }
  void AddAnywhere(const PN_IN_Couple& couple, int index) {
    ASSERT_EQ(internals_.AddInIndex(couple.PartNumber, couple.InstanceName, index, couple.Row),
              literal_.AddInIndex(couple, index));
  }
  void AddByTheOtherEntry(const PN_IN_Couple& couple) {
    ASSERT_EQ(internals_.Add(couple.PartNumber, couple.InstanceName, couple.Row), literal_.Add(couple));
  }

  TestPlatform platform_;
  std::vector<std::string> boxes_;
  HashTableInternals internals_;
  LiteralHashTable literal_{{{}, {}, [this](const std::string& box) { boxes_.push_back(box); }}};
};

TEST(TableOfDoubles, StandsAsItsWordsSayAfterEachOperation) {
  std::size_t boxes = 0;

  for (unsigned seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Chance chance(seed);
    TwoTables tables(chance.Number(1, 23));
    for (int step = 0; step < 60; ++step) {
      tables.Step(chance);
      ASSERT_NO_FATAL_FAILURE(tables.ExpectEqual());
      ASSERT_FALSE(::testing::Test::HasFatalFailure());
    }
    boxes += tables.Boxes();
  }

  EXPECT_GT(boxes, 100U);
}

}  // namespace
}  // namespace quintara::test
