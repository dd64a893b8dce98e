#include "matrix/hash_fixture.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const char* const kOutside = "Subscript out of range";

class HashOperations : public ::testing::Test {
 protected:
  std::int32_t KeyOf(const std::string& text) {
    std::int32_t key = -1;
    EXPECT_TRUE(internals.Key(text, key));
    return key;
  }
  std::int32_t PrimeOf(std::int32_t number) {
    std::int32_t prime = -1;
    EXPECT_TRUE(internals.NextPrime(number, prime));
    return prime;
  }
  // A chain of these names of part number "P" in slots 0, 1, 2 ..., each linked to the next.
  void GivenChain(const std::vector<std::string>& names) {
    internals.size = 1;  // everybody's home is slot 0
    for (std::size_t i = 0; i < names.size(); ++i) {
      const int next = i + 1 < names.size() ? static_cast<int>(i) + 1 : -1;
      internals.table.push_back({names[i].empty() ? "" : "P", names[i], 0, next});
    }
  }
  std::vector<int> Links() {
    std::vector<int> links;
    for (const auto& slot : internals.table) links.push_back(slot.NextIndex);
    return links;
  }
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const auto& slot : internals.table) names.push_back(slot.InstanceName);
    return names;
  }

  TestPlatform platform;
  HashTableInternals internals;
};

TEST_F(HashOperations, AKeyWeighsEachCharacterTwiceAsMuchAsTheOneBefore) {
  EXPECT_EQ(KeyOf(""), 0);
  EXPECT_EQ(KeyOf("A"), 65);
  EXPECT_EQ(KeyOf("ABC"), 65 + 2 * 66 + 4 * 67);
}

TEST_F(HashOperations, OnlyTheFirstTwentyCharactersOfAKeyCount) {
  const auto key = KeyOf(kTwenty);

  EXPECT_EQ(KeyOf(kTwenty + "U"), key);
  EXPECT_EQ(KeyOf(kTwenty + std::string(1'000, 'x')), key);
  EXPECT_NE(KeyOf(kTwenty.substr(0, 19) + "U"), key);
  EXPECT_NE(KeyOf(kTwenty.substr(0, 19)), key);
}

TEST_F(HashOperations, AKeyCountsTheCodesOfTheEightBitCodePage) {
  EXPECT_EQ(KeyOf("é"), 233);
  EXPECT_EQ(KeyOf("€"), 128);
  EXPECT_EQ(KeyOf("Ж"), '?');
  EXPECT_EQ(KeyOf("😀"), '?' + 2 * '?');
}

// A system whose page holds a single letter beyond ASCII.
class PolishPlatform : public NativePlatform {
 public:
  PolishPlatform() : NativePlatform(std::make_shared<Gate>(), nullptr) {}

  std::string ToCodePage(std::string_view utf8) override { return utf8 == "ł" ? "\xB3" : std::string(utf8); }
};

TEST_F(HashOperations, TheCodePageOfAKeyIsThatOfTheSystem) {
  const auto before = InstallPlatform(std::make_shared<PolishPlatform>());

  EXPECT_EQ(KeyOf("ł"), 0xB3);

  InstallPlatform(before);
}

TEST_F(HashOperations, CharactersOfSeveralBytesAreCountedOnceEach) {
  std::string euros;
  for (int i = 0; i < 20; ++i) euros += "€";

  EXPECT_EQ(KeyOf(euros), 128 * ((1 << 20) - 1));
  EXPECT_EQ(KeyOf(euros + "€"), KeyOf(euros));
}

TEST_F(HashOperations, TheLargestKeyFitsIntoThirtyTwoBits) {
  std::string text;
  for (int i = 0; i < 20; ++i) text += "ÿ";

  EXPECT_EQ(KeyOf(text), 255 * ((1 << 20) - 1));
}

TEST_F(HashOperations, AnIndexIsTheRemainderOfTheKey) {
  std::int32_t index = -1;

  EXPECT_TRUE(internals.Index(197, 13, index));
  EXPECT_EQ(index, 2);
  EXPECT_TRUE(internals.Hash("AB", 13, index));
  EXPECT_EQ(index, 2);
}

TEST_F(HashOperations, ASizeOfNothingIsShownOnceAndPassedUp) {
  std::int32_t index = -1;

  EXPECT_FALSE(internals.Hash("AB", 0, index));

  EXPECT_EQ(index, -1);
  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("GetHashTableIndex", "Division by zero")));
}

TEST_F(HashOperations, PrimesAreThoseOfTheSieve) {
  constexpr std::int32_t kEnd = 10'000;
  std::vector<bool> composite(kEnd, false);
  for (std::int32_t i = 2; i < kEnd; ++i) {
    for (std::int32_t multiple = 2 * i; multiple < kEnd; multiple += i)
      composite[static_cast<std::size_t>(multiple)] = true;
  }

  for (std::int32_t number = 0; number < kEnd; ++number) {
    bool isPrime = false;
    ASSERT_TRUE(internals.IsPrime(number, isPrime));
    ASSERT_EQ(isPrime, number >= 2 && !composite[static_cast<std::size_t>(number)]) << number;
  }
}

TEST_F(HashOperations, ASizeIsTheSmallestPrimeThatIsNotBelowTheNumber) {
  EXPECT_EQ(PrimeOf(0), 2);
  EXPECT_EQ(PrimeOf(1), 2);
  EXPECT_EQ(PrimeOf(2), 2);
  EXPECT_EQ(PrimeOf(3), 3);
  EXPECT_EQ(PrimeOf(4), 5);
  EXPECT_EQ(PrimeOf(24), 29);
  EXPECT_EQ(PrimeOf(32'767), 32'771);
  EXPECT_EQ(PrimeOf(2'147'483'646), 2'147'483'647);
}

TEST_F(HashOperations, ANegativeNumberHasNoSquareRoot) {
  std::int32_t prime = 0;

  EXPECT_FALSE(internals.NextPrime(-1, prime));

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("IsPrimeNumber", "Invalid procedure call or argument")));
}

TEST_F(HashOperations, ANewTableIsFreeThroughout) {
  internals.Create(2);
  bool free = false;
  std::int32_t next = 77;

  for (int index = 0; index <= 2; ++index) {
    EXPECT_TRUE(internals.IsFree(index, free, next));
    EXPECT_TRUE(free);
  }

  EXPECT_EQ(next, 77) << "a free slot says nothing of the next one";
  EXPECT_THAT(Links(), ElementsAre(0, 0, 0));
}

TEST_F(HashOperations, ATakenSlotTellsTheNextOne) {
  GivenChain({"a", "b"});
  bool free = true;
  std::int32_t next = 77;

  EXPECT_TRUE(internals.IsFree(0, free, next));

  EXPECT_FALSE(free);
  EXPECT_EQ(next, 1);
}

TEST_F(HashOperations, ASlotWithoutPartNumberIsFreeWhateverElseItHolds) {
  internals.table = {{"", "name", 7, 5}};
  bool free = false;
  std::int32_t next = 77;

  EXPECT_TRUE(internals.IsFree(0, free, next));

  EXPECT_TRUE(free);
}

TEST_F(HashOperations, ASlotOutsideOfTheTableIsShown) {
  internals.Create(2);
  bool free = false;
  std::int32_t next = 0;

  EXPECT_FALSE(internals.IsFree(-1, free, next));
  EXPECT_FALSE(internals.IsFree(3, free, next));

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("IsIndexFree", kOutside), HashError("IsIndexFree", kOutside)));
}

TEST_F(HashOperations, ASearchEndsAtAFreeHome) {
  internals.Create(13);
  internals.found = true;

  EXPECT_TRUE(internals.Search("P", "AB"));

  EXPECT_FALSE(internals.found);
  EXPECT_EQ(internals.lastIndex, 2);
}

TEST_F(HashOperations, ASearchStaysAtTheSlotThatMatches) {
  GivenChain({"a", "b", "c"});

  EXPECT_TRUE(internals.Search("P", "b"));

  EXPECT_TRUE(internals.found);
  EXPECT_EQ(internals.lastIndex, 1);
}

TEST_F(HashOperations, ASearchWithoutMatchEndsAtTheLastSlotOfTheChain) {
  GivenChain({"a", "b", "c"});

  EXPECT_TRUE(internals.Search("P", "x"));

  EXPECT_FALSE(internals.found);
  EXPECT_EQ(internals.lastIndex, 2);
}

TEST_F(HashOperations, ASearchEndsAtAFreeSlotOfTheChain) {
  GivenChain({"a", "", "c"});

  EXPECT_TRUE(internals.Search("P", "c"));

  EXPECT_FALSE(internals.found);
  EXPECT_EQ(internals.lastIndex, 1);
}

TEST_F(HashOperations, AnyNegativeLinkEndsASearch) {
  internals.size = 1;
  internals.table = {{"P", "a", 0, -2}};

  EXPECT_TRUE(internals.Search("P", "x"));

  EXPECT_FALSE(internals.found);
  EXPECT_EQ(internals.lastIndex, 0);
}

TEST_F(HashOperations, BothPartNumberAndNameMustMatchWithCase) {
  GivenChain({"a"});

  EXPECT_TRUE(internals.Search("p", "a"));
  EXPECT_FALSE(internals.found);
  EXPECT_TRUE(internals.Search("P", "A"));
  EXPECT_FALSE(internals.found);
  EXPECT_TRUE(internals.Search("P", "a"));
  EXPECT_TRUE(internals.found);
}

TEST_F(HashOperations, AHomeOutsideOfTheTableIsShownOnce) {
  internals.Create(13);
  internals.table.resize(2);

  EXPECT_FALSE(internals.Search("P", "AB"));

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("IsIndexFree", kOutside)));
}

TEST_F(HashOperations, ALinkThatLeadsNowhereIsShownOnce) {
  internals.size = 1;
  internals.table = {{"P", "a", 0, 5}};

  EXPECT_FALSE(internals.Search("P", "x"));

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("IsIndexFree", kOutside)));
}

TEST_F(HashOperations, ASearchThatCannotHashStopsBeforeItsHome) {
  EXPECT_FALSE(internals.Search("P", "a"));

  EXPECT_FALSE(internals.found);
  EXPECT_EQ(internals.lastIndex, -1);
  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("GetHashTableIndex", "Division by zero")));
}

TEST_F(HashOperations, APairTakesAFreeSlotAndEndsItsChain) {
  internals.Create(2);

  EXPECT_TRUE(internals.AddInIndex("P", "a", 1, 7));

  const auto& slot = internals.table[1];
  EXPECT_EQ(slot.PartNumber, "P");
  EXPECT_EQ(slot.InstanceName, "a");
  EXPECT_EQ(slot.Row, 7);
  EXPECT_EQ(slot.NextIndex, -1);
  EXPECT_EQ(internals.table.size(), 3U);
}

TEST_F(HashOperations, EachCollisionTakesOneNewSlotBehindTheOthers) {
  internals.Create(2);

  for (const char* name : {"a", "b", "c"}) EXPECT_TRUE(internals.AddInIndex("P", name, 1));

  EXPECT_THAT(Names(), ElementsAre("", "a", "", "b", "c"));
  EXPECT_THAT(Links(), ElementsAre(0, 3, 0, 4, -1));
}

TEST_F(HashOperations, APairAddedInTheMiddleOfAChainGoesToItsEnd) {
  GivenChain({"a", "b", "c"});

  EXPECT_TRUE(internals.AddInIndex("P", "d", 1));

  EXPECT_THAT(Names(), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(Links(), ElementsAre(1, 2, 3, -1));
}

TEST_F(HashOperations, AFreeSlotReachedOnTheWayIsLinkedAndStaysFree) {
  GivenChain({"a", "", "c"});

  EXPECT_TRUE(internals.AddInIndex("P", "d", 0));

  EXPECT_THAT(Names(), ElementsAre("a", "", "c", "d"));
  EXPECT_THAT(Links(), ElementsAre(1, 3, -1, -1));
}

TEST_F(HashOperations, TheLastSlotThatAChainCanReachIs32767) {
  internals.Create(32'765);
  ASSERT_TRUE(internals.AddInIndex("P", "a", 0));

  EXPECT_TRUE(internals.AddInIndex("P", "b", 0));
  EXPECT_TRUE(internals.AddInIndex("P", "c", 0));
  EXPECT_EQ(internals.table[32'766].NextIndex, 32'767);
  EXPECT_FALSE(internals.AddInIndex("P", "d", 0));

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("AddInHashTableInIndex", "Overflow")));
  EXPECT_EQ(internals.table[32'767].NextIndex, -1);
}

TEST_F(HashOperations, AHomeMayLieBeyondWhatAChainCanReach) {
  internals.Create(40'009);

  EXPECT_TRUE(internals.AddInIndex("P", "a", 40'000));

  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(HashOperations, AddingOutsideOfTheTableIsShownOnce) {
  internals.Create(2);

  EXPECT_FALSE(internals.AddInIndex("P", "a", -1));

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("IsIndexFree", kOutside)));
}

TEST_F(HashOperations, AddingBehindALinkThatLeadsNowhereChangesNothing) {
  internals.table = {{"P", "a", 0, 5}};

  EXPECT_FALSE(internals.AddInIndex("P", "b", 0));

  EXPECT_EQ(internals.table.size(), 1U);
  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("IsIndexFree", kOutside)));
}

TEST_F(HashOperations, TheOtherEntryFindsTheHomeItself) {
  internals.Create(13);

  EXPECT_TRUE(internals.Add("P", "AB", 7));

  const auto& slot = internals.table[2];
  EXPECT_EQ(slot.PartNumber, "P");
  EXPECT_EQ(slot.InstanceName, "AB");
  EXPECT_EQ(slot.Row, 7);
  EXPECT_EQ(slot.NextIndex, -1);
}

TEST_F(HashOperations, TheOtherEntryTakesTheFirstFreeSlotOfTheChain) {
  GivenChain({"a", "b", "", "d", ""});

  EXPECT_TRUE(internals.Add("P", "x"));

  EXPECT_THAT(Names(), ElementsAre("a", "b", "x", "d", ""));
  EXPECT_THAT(Links(), ElementsAre(1, 2, -1, 4, -1));
}

TEST_F(HashOperations, TheOtherEntryFindsNoFreeSlotBehindTheEndOfAChain) {
  GivenChain({"a"});

  EXPECT_FALSE(internals.Add("P", "x"));

  EXPECT_THAT(Names(), ElementsAre("a"));
  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("IsIndexFree", kOutside)));
}

TEST_F(HashOperations, TheOtherEntryWithoutAHomeIsShownOnce) {
  EXPECT_FALSE(internals.Add("P", "x"));

  EXPECT_THAT(platform.Boxes(), ElementsAre(HashError("GetHashTableIndex", "Division by zero")));
}

}  // namespace
}  // namespace quintara::test
