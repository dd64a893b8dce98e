#include <gmock/gmock.h>

#include <algorithm>
#include <array>

#include "automation/dispatch/late_bound.h"
#include "automation/server/arrays.h"
#include "automation/server/client.h"
#include "automation/server/methods.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class Element>
Value TypedArray(VARTYPE type, const std::vector<Element>& elements) {
  Value array;
  array.Raw().vt = static_cast<VARTYPE>(VT_ARRAY | type);
  array.Raw().parray = SafeArrayCreateVector(type, 0, static_cast<ULONG>(elements.size()));
  std::ranges::copy(elements, static_cast<Element*>(array.Raw().parray->pvData));
  return array;
}

Value TwoColumnsToo(std::size_t rows, std::size_t columns) {
  std::array bounds{SAFEARRAYBOUND{static_cast<ULONG>(rows), 0}, SAFEARRAYBOUND{static_cast<ULONG>(columns), 0}};
  Value array;
  array.Raw().vt = VT_ARRAY | VT_VARIANT;
  array.Raw().parray = SafeArrayCreate(VT_VARIANT, 2, bounds.data());
  return array;
}

class Bytes : public testing::Test {
 protected:
  TestPlatform platform;
  Client base64{"Cls_Base64Class"};
};

TEST_F(Bytes, ComeAsBytes) {
  EXPECT_EQ(base64.Call("EncodeByteArray", TypedArray<std::uint8_t>(VT_UI1, {72, 101, 108})).Given(), Variant("SGVs"));
}

TEST_F(Bytes, ComeAsVariants) {
  EXPECT_EQ(base64.Call("EncodeByteArray", Array(72, "101", 108.0)).Given(), Variant("SGVs"));
}

TEST_F(Bytes, ComeInAVariable) {
  auto bytes = TypedArray<std::uint8_t>(VT_UI1, {72, 101, 108});

  EXPECT_EQ(base64.Call("EncodeByteArray", bytes).Given(), Variant("SGVs"));
}

TEST_F(Bytes, ComeInATypedVariable) {
  auto bytes = TypedArray<std::uint8_t>(VT_UI1, {72, 101, 108});
  Value reference;
  reference.Raw().vt = VT_BYREF | VT_ARRAY | VT_UI1;
  reference.Raw().pparray = &bytes.Raw().parray;

  EXPECT_EQ(base64.Call("EncodeByteArray", std::move(reference)).Given(), Variant("SGVs"));
}

TEST_F(Bytes, GoOutAsBytes) {
  const auto outcome = base64.Call("DecodeToByteArray", "SGVs");

  ASSERT_EQ(outcome.value.Raw().vt, VT_ARRAY | VT_UI1);
  EXPECT_THAT(automation::BytesIn(outcome.value.Raw().parray), ElementsAre(72, 101, 108));
}

TEST_F(Bytes, AreNoLargerNumbers) {
  EXPECT_EQ(base64.Call("EncodeByteArray", Array(256)).code, RunTimeError(6));
  EXPECT_EQ(base64.Call("EncodeByteArray", Array(-1)).code, RunTimeError(6));
}

TEST_F(Bytes, AreNoTexts) {
  EXPECT_EQ(base64.Call("EncodeByteArray", Array("H")).code, RunTimeError(13));
}

TEST_F(Bytes, StandInOneRow) {
  EXPECT_EQ(base64.Call("EncodeByteArray", TwoColumnsToo(1, 1)).code, RunTimeError(13));
}

TEST_F(Bytes, MustBeThere) {
  EXPECT_EQ(base64.Call("EncodeByteArray", Array()).code, RunTimeError(9));
  EXPECT_EQ(base64.Call("EncodeByteArray", Value()).code, RunTimeError(9));
}

class APosition : public testing::Test {
 protected:
  static std::vector<double> Numbers() { return {1, 0, 0, 0, 1, 0, 0, 0, 1, 10, 20, 30}; }
  static std::vector<Value> Variants(std::size_t size = 12) {
    std::vector<Value> all;
    for (std::size_t i = 0; i < size; ++i) all.push_back(Value(Numbers()[i]));
    return all;
  }

  TestPlatform platform;
  Client command{"Cls_RetrieveMatrix"};
};

TEST_F(APosition, IsAnArrayOfVariantsOrOfNumbers) {
  EXPECT_EQ(command.Call("Operation_Matrice", ArrayOf(Variants()), TypedArray(VT_R8, Numbers())).result, S_OK);
}

TEST_F(APosition, MayBeginAtAnyIndexAndBeInAVariable) {
  auto child = ArrayOf(Variants(), 1);
  auto parent = ArrayOf(Variants(), -3);

  EXPECT_EQ(command.Call("Operation_Matrice", child, parent).result, S_OK);
}

TEST_F(APosition, HasTwelveNumbers) {
  EXPECT_EQ(command.Call("Operation_Matrice", ArrayOf(Variants(11)), ArrayOf(Variants())).code, RunTimeError(9));
}

TEST_F(APosition, HasNumbersOnly) {
  auto numbers = Variants();
  numbers[3] = Value(std::string("up"));

  const auto outcome = command.Call("Operation_Matrice", ArrayOf(std::move(numbers)), ArrayOf(Variants()));

  EXPECT_EQ(outcome.code, RunTimeError(13));
  EXPECT_EQ(outcome.source, "Quintara.Cls_RetrieveMatrix");
}

/// The pairs whose doubles are renamed: two rows of the same name, 5 and 6.
class Couples : public testing::Test {
 protected:
  static Value Rows() { return Array(Array("BOLT", "BOLT.1", 5), Array("BOLT", "BOLT.1", 6)); }

  TestPlatform platform;
};

TEST_F(Couples, ComeAsArraysOfThree) {
  const auto couples = automation::CouplesIn(Rows().Raw().parray);

  ASSERT_EQ(couples.size(), 2U);
  EXPECT_EQ(couples[1].PartNumber, "BOLT");
  EXPECT_EQ(couples[1].InstanceName, "BOLT.1");
  EXPECT_EQ(int{couples[1].Row}, 6);
}

TEST_F(Couples, ComeAsRowsOfThree) {
  auto rows = TwoColumnsToo(2, 3);
  for (LONG row = 0; row < 2; ++row) {
    std::array cells{Value(std::string("BOLT")), Value(std::string("BOLT.1")), Value(std::int32_t{row + 5})};
    for (LONG column = 0; column < 3; ++column) {
      std::array indices{row, column};
      SafeArrayPutElement(rows.Raw().parray, indices.data(), &cells[static_cast<std::size_t>(column)].Raw());
    }
  }

  const auto couples = automation::CouplesIn(rows.Raw().parray);

  ASSERT_EQ(couples.size(), 2U);
  EXPECT_EQ(couples[0].InstanceName, "BOLT.1");
  EXPECT_EQ(int{couples[1].Row}, 6);
}

TEST_F(Couples, HaveThreeFields) {
  const auto outcome =
      Client("Cls_HashTable").Call("RenameDoublesWithHashTable", Array(Array("BOLT", "BOLT.1")), 1, nullptr);

  EXPECT_EQ(outcome.code, RunTimeError(13));
}

TEST_F(Couples, AreArraysThemselves) {
  EXPECT_EQ(Client("Cls_HashTable").Call("RenameDoublesWithHashTable", Array("BOLT"), 1, nullptr).code,
            RunTimeError(13));
}

TEST_F(Couples, ComeBackAsTheyWentIn) {
  auto rows = Rows();

  const auto outcome = Client("Cls_HashTable").Call("RenameDoublesWithHashTable", rows, 2, nullptr);

  EXPECT_EQ(outcome.Given(), Variant(false));
  ASSERT_EQ(platform.Boxes().size(), 1U);
  EXPECT_EQ(platform.Boxes()[0].title, "QNTR");
  const auto couples = automation::CouplesIn(rows.Raw().parray);
  EXPECT_EQ(couples[0].InstanceName, "BOLT.1");
  EXPECT_EQ(couples[1].InstanceName, "BOLT.1");
}

}  // namespace
}  // namespace quintara::test
