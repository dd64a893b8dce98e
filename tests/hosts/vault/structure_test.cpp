#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

using Names = std::vector<std::string>;

template <class Maker>
class VaultStructure : public VaultTest<Maker> {};
TYPED_TEST_SUITE(VaultStructure, Databases, DatabaseName);

TYPED_TEST(VaultStructure, ASecondLinkToAChildAddsToItsNumber) {
  const auto bolt = this->AddPart("BOLT");
  const auto car = this->AddProduct("CAR", {bolt});

  this->Link(car, bolt, "Structure Link");

  const auto structure = this->vault->Structure(car);
  ASSERT_EQ(structure.size(), 1U);
  EXPECT_EQ(structure[0].quantity, 2);
  const auto link = this->Store()->LinkObject(this->ClassId("Structure Link"), car->ClassId(), car->ObjectId(),
                                              bolt->ClassId(), bolt->ObjectId());
  EXPECT_EQ(link->Record()->ValueAsInteger("QUANTITY"), 2);
}

TYPED_TEST(VaultStructure, AChangedStructureIsRefusedOnWhatIsCheckedIn) {
  const auto bolt = this->AddPart("BOLT");
  const auto car = this->AddProduct("CAR");
  this->CheckIn(car);

  EXPECT_THAT(FailureOf([&] { this->Link(car, bolt, "Structure Link"); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->vault->SetStructure(car, {{bolt, 1}}); }), FailsWith(failure::kPermissionDenied));
}

TYPED_TEST(VaultStructure, AStructureIsSetAsAWhole) {
  const auto a = this->AddPart("A");
  const auto b = this->AddPart("B");
  const auto car = this->AddProduct("CAR", {a});

  this->vault->SetStructure(car, {{b, 3}, {a, 1}});

  const auto structure = this->vault->Structure(car);
  ASSERT_EQ(structure.size(), 2U);
  EXPECT_EQ(structure[0].object->ObjectId(), b->ObjectId());
  EXPECT_EQ(structure[0].quantity, 3);
}

TYPED_TEST(VaultStructure, AWrongStructureChangesNothing) {
  const auto a = this->AddPart("A");
  const auto car = this->AddProduct("CAR", {a});
  const auto before = this->Dump();

  EXPECT_THAT(FailureOf([&] { this->vault->SetStructure(car, {{a, 1}, {a, 1}}); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->SetStructure(car, {{a, 0}}); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->SetStructure(car, {{car, 1}}); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultStructure, AChildIsReplacedAtItsPlace) {
  const auto a = this->AddPart("A");
  const auto b = this->AddPart("B");
  const auto car = this->AddProduct("CAR", {a, b});
  this->Link(car, a, "Structure Link");
  const auto newer = this->AddPart("A2");

  this->vault->Integration().ReplaceChildren(car, {{a, newer}});

  EXPECT_EQ(this->PartNumbers(car->Children(nullptr)), (Names{"A2", "B"}));
  EXPECT_EQ(this->vault->Structure(car)[0].quantity, 2);
  EXPECT_THAT(FailureOf([&] {
                this->vault->Integration().ReplaceChildren(car, {{a, newer}});
              }),
              FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultStructure, ChildrenChangePlacesInOneStep) {
  const auto a = this->AddPart("A");
  const auto b = this->AddPart("B");
  const auto car = this->AddProduct("CAR", {a, b});

  this->vault->Integration().ReplaceChildren(car, {{a, b}, {b, a}});

  EXPECT_EQ(this->PartNumbers(car->Children(nullptr)), (Names{"B", "A"}));
}

TYPED_TEST(VaultStructure, ChildrenThatBecomeOneStandAtThePlaceOfTheFirst) {
  const auto a = this->AddPart("A");
  const auto b = this->AddPart("B");
  const auto c = this->AddPart("C");
  const auto car = this->AddProduct("CAR", {a, b, c});
  this->vault->SetStructure(car, {{a, 2}, {b, 1}, {c, 3}});

  this->vault->Integration().ReplaceChildren(car, {{a, c}});

  const auto structure = this->vault->Structure(car);
  ASSERT_EQ(structure.size(), 2U);
  EXPECT_EQ(structure[0].object->ObjectId(), c->ObjectId());
  EXPECT_EQ(structure[0].quantity, 5);
  EXPECT_EQ(structure[1].object->ObjectId(), b->ObjectId());
}

TYPED_TEST(VaultStructure, AReplacementThatClosesACycleChangesNothing) {
  const auto bolt = this->AddPart("BOLT");
  const auto axle = this->AddProduct("AXLE", {bolt});
  const auto car = this->AddProduct("CAR", {axle});
  const auto before = this->Dump();

  EXPECT_THAT(FailureOf([&] {
                this->vault->Integration().ReplaceChildren(axle, {{bolt, car}});
              }),
              FailsWith(failure::kInvalidCall));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultStructure, MoreInstancesThanCanBeCountedAreRefused) {
  const auto bolt = this->AddPart("BOLT");
  const auto nut = this->AddPart("NUT");
  const auto car = this->AddProduct("CAR");
  this->vault->SetStructure(car, {{bolt, 2147483647}, {nut, 1}});
  const auto before = this->Dump();

  EXPECT_THAT(FailureOf([&] { this->Link(car, bolt, "Structure Link"); }), FailsWith(failure::kOverflow));
  EXPECT_THAT(FailureOf([&] {
                this->vault->Integration().ReplaceChildren(car, {{nut, bolt}});
              }),
              FailsWith(failure::kOverflow));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultStructure, SettingsAndLinksStandInNoStructure) {
  const auto car = this->AddProduct("CAR");
  const auto setting = this->vault->AddObject("Admin Setting", {}, {});

  EXPECT_THAT(FailureOf([&] { this->Link(car, setting, "Structure Link"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->SetStructure(car, {{setting, 1}}); }), FailsWith(failure::kInvalidCall));
}

}  // namespace
}  // namespace quintara::test
