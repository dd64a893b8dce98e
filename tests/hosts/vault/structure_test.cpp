#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

using Names = std::vector<std::string>;

template <class Maker>
class VaultStructure : public VaultTest<Maker> {
 protected:
  Ref<veldora::VdQueryDefinition> Sought(std::int16_t classId) {
    const auto definition = this->Store()->NewQueryDefinition();
    definition->From()->Add(classId, "S");
    definition->Select()->Add("NM_CN_PART_NUMBER", "S", false);
    return definition;
  }
};
TYPED_TEST_SUITE(VaultStructure, Databases, DatabaseName);

TYPED_TEST(VaultStructure, ChildrenComeInTheOrderInWhichTheyWereLinked) {
  const auto c = this->AddPart("C");
  const auto a = this->AddPart("A");
  const auto b = this->AddProduct("B");

  const auto car = this->AddProduct("CAR", {a, c, b});

  EXPECT_EQ(this->PartNumbers(car->Children(nullptr)), (Names{"A", "C", "B"}));
  EXPECT_EQ(this->PartNumbers(car->ChildrenWithBehavior(this->Sought(0), this->Behavior())), (Names{"A", "C", "B"}));
}

TYPED_TEST(VaultStructure, ALeafHasNoChildrenAndNoFailure) {
  EXPECT_EQ(this->AddPart("A")->Children(nullptr)->Count(), 0);
}

TYPED_TEST(VaultStructure, ASelectionOfTheStartingClassDoesNotHideOtherClasses) {
  const auto car = this->AddProduct("CAR", {this->AddPart("A"), this->AddProduct("B")});
  const auto definition = this->Store()->NewQueryDefinition();
  definition->From()->Add(car->ClassInfo()->QueryClassId(), "F");
  definition->Select()->Add("NM_CN_PART_NUMBER", "F", false);
  definition->Select()->Add("REVISION", "F", false);

  EXPECT_EQ(this->PartNumbers(car->Children(definition)), (Names{"A", "B"}));
}

TYPED_TEST(VaultStructure, ParentsAreWhatHoldsAnObject) {
  const auto bolt = this->AddPart("BOLT");
  const auto car = this->AddProduct("CAR", {bolt});
  const auto bike = this->AddProduct("BIKE", {bolt});

  EXPECT_EQ(this->PartNumbers(bolt->Parents(this->Sought(0), this->Behavior())), (Names{"CAR", "BIKE"}));
  EXPECT_EQ(bolt->Parents(this->Sought(this->ClassId("ZORVA Part")), this->Behavior())->Count(), 0);
  EXPECT_EQ(car->Parents(this->Sought(0), this->Behavior())->Count(), 0);
}

TYPED_TEST(VaultStructure, ParentRowsAnswerTheirClass) {
  const auto bolt = this->AddPart("BOLT");
  this->AddProduct("CAR", {bolt});

  const auto records = bolt->Parents(this->Sought(0), this->Behavior())->Records();

  EXPECT_EQ(records->GetRecord(0)->ValueAsInteger("CLASS_ID"), this->ClassId("ZORVA Product"));
}

TYPED_TEST(VaultStructure, ADocumentLinkIsNoStructure) {
  const auto car = this->AddProduct("CAR");
  const auto document = this->AddDocument("CAR Matrix");

  this->Link(car, document, "Document Link");

  EXPECT_EQ(car->Children(nullptr)->Count(), 0);
  EXPECT_EQ(document->Parents(this->Sought(0), this->Behavior())->Count(), 0);
}

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

TYPED_TEST(VaultStructure, ALinkThatClosesACycleIsRefused) {
  const auto wheel = this->AddProduct("WHEEL");
  const auto axle = this->AddProduct("AXLE", {wheel});
  const auto car = this->AddProduct("CAR", {axle});
  const auto before = this->Dump();

  const auto failure = FailureOf([&] { this->Link(wheel, car, "Structure Link"); });

  EXPECT_THAT(failure, FailsWith(failure::kInvalidCall));
  EXPECT_THAT(failure.Description(), testing::HasSubstr(std::to_string(car->ObjectId())));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultStructure, AnObjectCannotHoldItself) {
  const auto wheel = this->AddProduct("WHEEL");

  EXPECT_THAT(FailureOf([&] { this->Link(wheel, wheel, "Structure Link"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultStructure, AChangedStructureIsRefusedOnWhatIsCheckedIn) {
  const auto bolt = this->AddPart("BOLT");
  const auto car = this->AddProduct("CAR");
  this->CheckIn(car);

  EXPECT_THAT(FailureOf([&] { this->Link(car, bolt, "Structure Link"); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->vault->SetStructure(car, {{bolt, 1}}); }), FailsWith(failure::kPermissionDenied));
}

TYPED_TEST(VaultStructure, ADocumentIsLinkedToWhatIsReleased) {
  const auto car = this->AddProduct("CAR");
  this->Release(car);
  const auto document = this->AddDocument("CAR Matrix");

  this->Link(car, document, "Document Link");

  EXPECT_TRUE(this->Store()->LinkObject(this->ClassId("Document Link"), car->ClassId(), car->ObjectId(),
                                        document->ClassId(), document->ObjectId()));
}

TYPED_TEST(VaultStructure, WrongLinksFail) {
  const auto car = this->AddProduct("CAR");
  const auto document = this->AddDocument("CAR Matrix");
  this->Link(car, document, "Document Link");

  EXPECT_THAT(FailureOf([&] { this->Link(car, document, "Document Link"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->Link(car, document, "ZORVA Part"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->Link(car, nullptr, "Document Link"); }), FailsWith(failure::kObjectNotSet));
  const auto unsaved = this->Store()->NewObject(this->ClassId("ZORVA Part"));
  EXPECT_THAT(FailureOf([&] { this->Link(car, unsaved, "Structure Link"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultStructure, ALinkObjectIsFoundAndRemoved) {
  const auto car = this->AddProduct("CAR");
  const auto document = this->AddDocument("CAR Matrix");
  this->Link(car, document, "Document Link");
  const auto find = [&] {
    return this->Store()->LinkObject(this->ClassId("Document Link"), car->ClassId(), car->ObjectId(),
                                     document->ClassId(), document->ObjectId());
  };
  const auto link = find();

  link->RemoveLink(this->Behavior());

  EXPECT_FALSE(find());
  EXPECT_THAT(FailureOf([&] { link->RemoveLink(this->Behavior()); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { car->RemoveLink(this->Behavior()); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultStructure, ObjectsThatAreNotLinkedHaveNoLinkObject) {
  const auto car = this->AddProduct("CAR");
  const auto document = this->AddDocument("CAR Matrix");
  this->Link(car, document, "Document Link");

  EXPECT_FALSE(this->Store()->LinkObject(this->ClassId("Document Link"), document->ClassId(), document->ObjectId(),
                                         car->ClassId(), car->ObjectId()));
  EXPECT_FALSE(this->Store()->LinkObject(this->ClassId("Structure Link"), car->ClassId(), car->ObjectId(),
                                         document->ClassId(), document->ObjectId()));
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

  this->vault->Integration().ReplaceChild(car, a, newer);

  EXPECT_EQ(this->PartNumbers(car->Children(nullptr)), (Names{"A2", "B"}));
  EXPECT_EQ(this->vault->Structure(car)[0].quantity, 2);
  EXPECT_THAT(FailureOf([&] { this->vault->Integration().ReplaceChild(car, a, newer); }),
              FailsWith(failure::kInvalidCall));
}

}  // namespace
}  // namespace quintara::test
