#pragma once

#include "hosts/vault/contract/fixture.h"

namespace quintara::test {

using Names = std::vector<std::string>;

template <class Host>
class VaultStructureContract : public VaultContract<Host> {
 protected:
  Ref<veldora::VdQueryDefinition> Sought(std::int16_t classId) {
    const auto definition = this->Store()->NewQueryDefinition();
    definition->From()->Add(classId, "S");
    definition->Select()->Add("NM_CN_PART_NUMBER", "S", false);
    return definition;
  }
};
TYPED_TEST_SUITE(VaultStructureContract, VaultContractHosts, VaultHostName);

TYPED_TEST(VaultStructureContract, ChildrenComeInTheOrderInWhichTheyWereLinked) {
  const auto c = this->AddPart("C");
  const auto a = this->AddPart("A");
  const auto b = this->AddProduct("B");

  const auto car = this->AddProduct("CAR", {a, c, b});

  EXPECT_EQ(this->PartNumbers(car->Children(nullptr)), (Names{"A", "C", "B"}));
  EXPECT_EQ(this->PartNumbers(car->ChildrenWithBehavior(this->Sought(0), this->Behavior())), (Names{"A", "C", "B"}));
}

TYPED_TEST(VaultStructureContract, ALeafHasNoChildrenAndNoFailure) {
  EXPECT_EQ(this->AddPart("A")->Children(nullptr)->Count(), 0);
}

TYPED_TEST(VaultStructureContract, ASelectionOfTheStartingClassDoesNotHideOtherClasses) {
  const auto car = this->AddProduct("CAR", {this->AddPart("A"), this->AddProduct("B")});
  const auto definition = this->Store()->NewQueryDefinition();
  definition->From()->Add(car->ClassInfo()->QueryClassId(), "F");
  definition->Select()->Add("NM_CN_PART_NUMBER", "F", false);
  definition->Select()->Add("REVISION", "F", false);

  EXPECT_EQ(this->PartNumbers(car->Children(definition)), (Names{"A", "B"}));
}

TYPED_TEST(VaultStructureContract, ParentsAreWhatHoldsAnObject) {
  const auto bolt = this->AddPart("BOLT");
  const auto car = this->AddProduct("CAR", {bolt});
  const auto bike = this->AddProduct("BIKE", {bolt});

  EXPECT_EQ(this->PartNumbers(bolt->Parents(this->Sought(0), this->Behavior())), (Names{"CAR", "BIKE"}));
  EXPECT_EQ(bolt->Parents(this->Sought(this->ClassId("ZORVA Part")), this->Behavior())->Count(), 0);
  EXPECT_EQ(car->Parents(this->Sought(0), this->Behavior())->Count(), 0);
}

TYPED_TEST(VaultStructureContract, ParentRowsAnswerTheirClass) {
  const auto bolt = this->AddPart("BOLT");
  this->AddProduct("CAR", {bolt});

  const auto records = bolt->Parents(this->Sought(0), this->Behavior())->Records();

  EXPECT_EQ(records->GetRecord(0)->ValueAsInteger("CLASS_ID"), this->ClassId("ZORVA Product"));
}

TYPED_TEST(VaultStructureContract, ADocumentLinkIsNoStructure) {
  const auto car = this->AddProduct("CAR");
  const auto document = this->AddDocument("CAR Matrix");

  this->Link(car, document, "Document Link");

  EXPECT_EQ(car->Children(nullptr)->Count(), 0);
  EXPECT_EQ(document->Parents(this->Sought(0), this->Behavior())->Count(), 0);
}

TYPED_TEST(VaultStructureContract, ALinkThatClosesACycleIsRefused) {
  const auto wheel = this->AddProduct("WHEEL");
  const auto axle = this->AddProduct("AXLE", {wheel});
  const auto car = this->AddProduct("CAR", {axle});
  const auto before = this->Dump();

  const auto failure = FailureOf([&] { this->Link(wheel, car, "Structure Link"); });

  EXPECT_THAT(failure, FailsWith(failure::kInvalidCall));
  EXPECT_THAT(failure.Description(), testing::HasSubstr(std::to_string(car->ObjectId())));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultStructureContract, AnObjectCannotHoldItself) {
  const auto wheel = this->AddProduct("WHEEL");

  EXPECT_THAT(FailureOf([&] { this->Link(wheel, wheel, "Structure Link"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultStructureContract, ADocumentIsLinkedToWhatIsReleased) {
  const auto car = this->AddProduct("CAR");
  this->Release(car);
  const auto document = this->AddDocument("CAR Matrix");

  this->Link(car, document, "Document Link");

  EXPECT_TRUE(this->Store()->LinkObject(this->ClassId("Document Link"), car->ClassId(), car->ObjectId(),
                                        document->ClassId(), document->ObjectId()));
}

TYPED_TEST(VaultStructureContract, WrongLinksFail) {
  const auto car = this->AddProduct("CAR");
  const auto document = this->AddDocument("CAR Matrix");
  this->Link(car, document, "Document Link");

  EXPECT_THAT(FailureOf([&] { this->Link(car, document, "Document Link"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->Link(car, document, "ZORVA Part"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->Link(car, nullptr, "Document Link"); }), FailsWith(failure::kObjectNotSet));
  const auto unsaved = this->Store()->NewObject(this->ClassId("ZORVA Part"));
  EXPECT_THAT(FailureOf([&] { this->Link(car, unsaved, "Structure Link"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultStructureContract, ALinkObjectIsFoundAndRemoved) {
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

TYPED_TEST(VaultStructureContract, ObjectsThatAreNotLinkedHaveNoLinkObject) {
  const auto car = this->AddProduct("CAR");
  const auto document = this->AddDocument("CAR Matrix");
  this->Link(car, document, "Document Link");

  EXPECT_FALSE(this->Store()->LinkObject(this->ClassId("Document Link"), document->ClassId(), document->ObjectId(),
                                         car->ClassId(), car->ObjectId()));
  EXPECT_FALSE(this->Store()->LinkObject(this->ClassId("Structure Link"), car->ClassId(), car->ObjectId(),
                                         document->ClassId(), document->ObjectId()));
}

TYPED_TEST(VaultStructureContract, AnAssemblyBelowTheParentIsFoundBeforeItIsLinkedUpwards) {
  const auto wheel = this->AddProduct("WHEEL");
  const auto car = this->AddProduct("CAR", {wheel});
  const auto bolt = this->AddPart("BOLT");

  this->Link(wheel, bolt, "Structure Link");

  EXPECT_THAT(FailureOf([&] { this->Link(wheel, car, "Structure Link"); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(this->PartNumbers(wheel->Children(nullptr)), Names{"BOLT"});
}

TYPED_TEST(VaultStructureContract, AStructureLinkIsTakenFromWhatCanBeChangedOnly) {
  const auto bolt = this->AddPart("BOLT");
  const auto car = this->AddProduct("CAR", {bolt});
  const auto link = this->Store()->LinkObject(this->ClassId("Structure Link"), car->ClassId(), car->ObjectId(),
                                              bolt->ClassId(), bolt->ObjectId());
  this->CheckIn(car);
  const auto before = this->Dump();

  EXPECT_THAT(FailureOf([&] { link->RemoveLink(this->Behavior()); }), FailsWith(failure::kPermissionDenied));
  EXPECT_EQ(this->Dump(), before);

  this->CheckOut(car);
  link->RemoveLink(this->Behavior());
  EXPECT_EQ(car->Children(nullptr)->Count(), 0);
}

TYPED_TEST(VaultStructureContract, ASelectionThatTheClassHasNotFails) {
  const auto car = this->AddProduct("CAR", {this->AddPart("BOLT")});
  const auto unknown = this->Store()->NewQueryDefinition();
  unknown->From()->Add(car->ClassId(), "F");
  unknown->Select()->Add("NONSENSE", "F", false);
  const auto foreign = this->Store()->NewQueryDefinition();
  foreign->Select()->Add("REVISION", "X", false);

  for (const auto& definition : {unknown, foreign}) {
    EXPECT_THAT(FailureOf([&] { car->Children(definition); }), FailsWith(failure::kInvalidCall));
    EXPECT_THAT(FailureOf([&] { car->Parents(definition, this->Behavior()); }), FailsWith(failure::kInvalidCall));
  }
}

TYPED_TEST(VaultStructureContract, TraversalsOfOneClassLeaveTheOthersOut) {
  const auto car = this->AddProduct("CAR", {this->AddPart("A"), this->AddProduct("B"), this->AddPart("C")});

  const auto parts = car->ChildrenWithBehavior(this->Sought(this->ClassId("ZORVA Part")), this->Behavior());

  EXPECT_EQ(this->PartNumbers(parts), (Names{"A", "C"}));
}

}  // namespace quintara::test
