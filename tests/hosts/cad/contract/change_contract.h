#pragma once

#include "hosts/cad/contract/fixture.h"

namespace quintara::test {

template <class Host>
class CadFilesContract : public CadContract<Host> {
 protected:
  Ref<zorva::ProductDocument> document = this->NewDocument();
  Ref<zorva::Product> root = document->Product();
  Ref<zorva::Products> children = root->Products();
};
TYPED_TEST_SUITE(CadFilesContract, CadContractHosts);

TYPED_TEST(CadFilesContract, FilesAreAppendedInTheirOrderAtTheIdentity) {
  this->Added(this->root, "A")->Position()->SetComponents(At(1));

  this->children->AddComponentsFromFiles({this->Part("C"), this->Light("B")}, "All");

  EXPECT_EQ(NamesOf(this->children), (std::vector<std::string>{"A.1", "C.1", "B.1"}));
  EXPECT_EQ(this->children->Item(3)->PartNumber(), "B");
  EXPECT_EQ(PositionOf(this->children->Item(2)), kIdentityPosition);
}

TYPED_TEST(CadFilesContract, AnAddedChildGetsTheFirstFreeNumber) {
  for (int i = 0; i < 4; ++i) this->Added(this->root, "PLATE");
  this->children->Item(2)->SetName("free now");
  this->children->Remove(4);

  this->Added(this->root, "PLATE");
  this->Added(this->root, "PLATE");

  EXPECT_EQ(NamesOf(this->children),
            (std::vector<std::string>{"PLATE.1", "free now", "PLATE.3", "PLATE.2", "PLATE.4"}));
}

TYPED_TEST(CadFilesContract, ANumberIsFreeOnlyWhenNoDoubleOfItIsLeft) {
  this->Added(this->root, "PLATE");
  this->Added(this->root, "PLATE")->SetName("PLATE.1");
  this->children->Remove(1);

  this->Added(this->root, "PLATE");

  EXPECT_EQ(NamesOf(this->children), (std::vector<std::string>{"PLATE.1", "PLATE.2"}));
}

TYPED_TEST(CadFilesContract, ThePartNumberComesFromTheContentNotFromTheName) {
  const auto path = this->Written("other.stp.lwt", TinyLight("PLATE"));

  this->children->AddComponentsFromFiles({path}, "All");

  EXPECT_EQ(this->children->Item(1)->PartNumber(), "PLATE");
  EXPECT_EQ(this->children->Item(1)->Name(), "PLATE.1");
}

TYPED_TEST(CadFilesContract, OneUnreadableFileKeepsAllOut) {
  const auto damaged = this->Written("damaged.lwt", "glTF");

  for (const auto& bad : {std::string(), damaged, this->folder.Path("absent.stp")}) {
    FailureOf([&] { this->children->AddComponentsFromFiles({this->Part("A"), bad}, "All"); });
  }

  EXPECT_EQ(this->children->Count(), 0);
}

TYPED_TEST(CadFilesContract, AnotherFilterThanAllIsRefused) {
  FailureOf([&] { this->children->AddComponentsFromFiles({this->Part("A")}, "*.stp"); });

  EXPECT_EQ(this->children->Count(), 0);
}

TYPED_TEST(CadFilesContract, NoFilesAddNothing) {
  this->children->AddComponentsFromFiles({}, "All");

  EXPECT_EQ(this->children->Count(), 0);
}

TYPED_TEST(CadFilesContract, AllInstancesAtOnceAreNotReplaced) {
  const auto child = this->Added(this->root, "A");

  FailureOf([&] { this->children->ReplaceWithFile(child, this->Part("B"), true); });

  EXPECT_EQ(child->PartNumber(), "A");
}

TYPED_TEST(CadFilesContract, APartTakesNoComponents) {
  const auto part = this->Added(this->root, "A");

  FailureOf([&] { part->Products()->AddComponentsFromFiles({this->Part("B")}, "All"); });

  EXPECT_EQ(part->Products()->Count(), 0);
}

TYPED_TEST(CadFilesContract, AReplacementKeepsIndexPositionAndName) {
  this->Added(this->root, "A");
  const auto old = this->Added(this->root, "B");
  this->Added(this->root, "C");
  old->SetName("mine");
  old->Position()->SetComponents(At(5));

  const auto replaced = this->children->ReplaceWithFile(old, this->Light("D"), false);

  EXPECT_EQ(replaced->PartNumber(), "D");
  EXPECT_EQ(PositionOf(replaced), At(5));
  EXPECT_EQ(NamesOf(this->children), (std::vector<std::string>{"A.1", "mine", "C.1"}));
  EXPECT_EQ(this->children->Item(2)->PartNumber(), "D");
}

TYPED_TEST(CadFilesContract, AReplacementLeavesOtherInstancesAlone) {
  const auto first = this->Added(this->root, "A");
  const auto second = this->Added(this->root, "A");

  this->children->ReplaceWithFile(first, this->Part("B"), false);

  EXPECT_EQ(second->PartNumber(), "A");
}

TYPED_TEST(CadFilesContract, TheReplacedProductFails) {
  const auto old = this->Added(this->root, "A");

  this->children->ReplaceWithFile(old, this->Part("B"), false);

  FailureOf([&] { old->PartNumber(); });
  FailureOf([&] { this->children->ReplaceWithFile(old, this->Part("B"), false); });
}

TYPED_TEST(CadFilesContract, WhatIsNoDirectChildCannotBeReplaced) {
  const auto other = this->Added(this->NewDocument()->Product(), "A");

  FailureOf([&] { this->children->ReplaceWithFile(other, this->Part("B"), false); });
  FailureOf([&] { this->children->ReplaceWithFile(this->root, this->Part("B"), false); });
  FailureOf([&] { this->children->ReplaceWithFile(nullptr, this->Part("B"), false); });

  EXPECT_EQ(other->PartNumber(), "A");
}

TYPED_TEST(CadFilesContract, AReplacementByAnUnreadableFileChangesNothing) {
  const auto child = this->Added(this->root, "A");
  const auto damaged = this->Written("damaged.stp", "ISO-10303-21;");

  for (const auto& bad : {std::string(), damaged, this->folder.Path("absent.stp")}) {
    FailureOf([&] { this->children->ReplaceWithFile(child, bad, false); });
  }

  EXPECT_EQ(child->PartNumber(), "A");
}

TYPED_TEST(CadFilesContract, AnUnloadedComponentCanBeReplaced) {
  const auto child = this->Added(this->root, "A");
  this->host.Unload(child);

  const auto replaced = this->children->ReplaceWithFile(child, this->Part("B"), false);

  EXPECT_EQ(replaced->PartNumber(), "B");
}

template <class Host>
class CadParametersContract : public CadContract<Host> {
 protected:
  Ref<zorva::ProductDocument> document = this->NewDocument();
  Ref<zorva::Product> root = document->Product();
  Ref<zorva::Product> component = this->Added(root, "PLATE");
};
TYPED_TEST_SUITE(CadParametersContract, CadContractHosts);

TYPED_TEST(CadParametersContract, AProductHasNoneAtFirst) {
  EXPECT_EQ(this->component->Parameters()->Count(), 0);
  EXPECT_EQ(this->root->UserProperties()->Count(), 0);
}

TYPED_TEST(CadParametersContract, AnUnknownParameterFails) {
  this->root->UserProperties()->CreateString("WIP", "TRUE");

  FailureOf([&] { this->root->Parameters()->Item("wip"); });
  FailureOf([&] { this->root->UserProperties()->Item(""); });
}

TYPED_TEST(CadParametersContract, ACreatedPropertyIsFoundInTheParameters) {
  const auto made = this->root->UserProperties()->CreateString("WIP", "TRUE");

  EXPECT_EQ(made->ValueAsString(), "TRUE");
  EXPECT_EQ(made->Name(), "WIP");
  EXPECT_EQ(this->root->Parameters()->Count(), 1);
  EXPECT_EQ(ValueOf(this->root->Parameters(), "WIP"), "TRUE");
}

TYPED_TEST(CadParametersContract, AParameterTakesAnotherValue) {
  this->root->UserProperties()->CreateString("WIP", "TRUE");

  this->root->Parameters()->Item("WIP")->ValuateFromString("Größe");

  EXPECT_EQ(ValueOf(this->root->UserProperties(), "WIP"), "Größe");
}

TYPED_TEST(CadParametersContract, AValueSetThroughAnInstanceReachesThePropertyOfItsReference) {
  this->component->Reference()->UserProperties()->CreateString("SHARED", "1");
  const auto other = this->Added(this->root, "PLATE");

  this->component->Parameters()->Item("SHARED")->ValuateFromString("2");

  EXPECT_EQ(ValueOf(other->Parameters(), "SHARED"), "2");
  EXPECT_EQ(this->component->UserProperties()->Count(), 0);
}

TYPED_TEST(CadParametersContract, APropertyNeedsANameOfItsOwn) {
  this->root->UserProperties()->CreateString("WIP", "TRUE");

  FailureOf([&] { this->root->UserProperties()->CreateString("WIP", "FALSE"); });
  FailureOf([&] { this->root->UserProperties()->CreateString("", "x"); });

  EXPECT_EQ(ValueOf(this->root->Parameters(), "WIP"), "TRUE");
}

TYPED_TEST(CadParametersContract, APropertyBelongsToTheObjectItWasCreatedOn) {
  const auto other = this->Added(this->root, "PLATE");
  this->component->UserProperties()->CreateString("OWN", "1");
  this->component->Reference()->UserProperties()->CreateString("SHARED", "2");

  EXPECT_EQ(ValueOf(this->component->Parameters(), "OWN"), "1");
  EXPECT_EQ(ValueOf(this->component->Parameters(), "SHARED"), "2");
  EXPECT_EQ(ValueOf(other->Parameters(), "SHARED"), "2");
  FailureOf([&] { other->Parameters()->Item("OWN"); });
  FailureOf([&] { this->component->Reference()->Parameters()->Item("OWN"); });
}

TYPED_TEST(CadParametersContract, TheInstancesOwnComeBeforeThoseOfItsReference) {
  this->component->Reference()->UserProperties()->CreateString("TYPE", "3D");
  this->component->UserProperties()->CreateString("TYPE", "LWT");

  EXPECT_EQ(ValueOf(this->component->Parameters(), "TYPE"), "LWT");
  EXPECT_EQ(ValueOf(this->component->Reference()->Parameters(), "TYPE"), "3D");
}

TYPED_TEST(CadParametersContract, AReplacedOrAddedComponentBeginsWithNoneOfItsOwn) {
  this->component->UserProperties()->CreateString("OWN", "1");
  this->component->Reference()->UserProperties()->CreateString("SHARED", "2");
  const auto path = this->folder.Path("PLATE.stp");

  const auto replaced = this->root->Products()->ReplaceWithFile(this->component, path, false);
  this->root->Products()->AddComponentsFromFiles({path}, "All");

  for (const auto& product : {replaced, this->root->Products()->Item(2)}) {
    EXPECT_EQ(product->UserProperties()->Count(), 0);
    EXPECT_EQ(ValueOf(product->Parameters(), "SHARED"), "2");
  }
}

}  // namespace quintara::test
