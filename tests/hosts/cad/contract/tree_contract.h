#pragma once

#include <bit>
#include <cmath>
#include <limits>

#include "hosts/cad/contract/fixture.h"

namespace quintara::test {

template <class Host>
class CadTreeContract : public CadContract<Host> {
 protected:
  Ref<zorva::ProductDocument> document = this->NewDocument();
  Ref<zorva::Product> root = document->Product();
};
TYPED_TEST_SUITE(CadTreeContract, CadContractHosts);

TYPED_TEST(CadTreeContract, ALeafHasNoChildren) {
  EXPECT_EQ(this->Added(this->root, "PLATE")->Products()->Count(), 0);
}

TYPED_TEST(CadTreeContract, AnIndexOutsideTheChildrenFails) {
  this->Added(this->root, "PLATE");
  const auto children = this->root->Products();

  for (const int index : {-1, 0, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(FailureOf([&] { children->Item(index); }).Number(), failure::kSubscriptOutOfRange) << index;
    EXPECT_EQ(FailureOf([&] { children->Remove(index); }).Number(), failure::kSubscriptOutOfRange) << index;
  }
  EXPECT_EQ(children->Count(), 1);
}

TYPED_TEST(CadTreeContract, RemovingAChildMovesTheOthersUp) {
  this->Added(this->root, "A");
  this->Added(this->root, "B");
  this->Added(this->root, "C");

  this->root->Products()->Remove(2);

  EXPECT_EQ(NamesOf(this->root->Products()), (std::vector<std::string>{"A.1", "C.1"}));
}

TYPED_TEST(CadTreeContract, ARemovedChildFails) {
  const auto child = this->Added(this->root, "A");
  const auto place = child->Position();

  this->root->Products()->Remove(1);

  FailureOf([&] { child->Name(); });
  FailureOf([&] { child->PartNumber(); });
  FailureOf([&] { PositionOf(child); });
  FailureOf([&] { place->SetComponents(At(1)); });
}

TYPED_TEST(CadTreeContract, TheParentOfAnInstanceIsTheProductAboveIt) {
  const auto child = this->Added(this->root, "PLATE");

  EXPECT_EQ(child->Parent()->AsProduct()->Name(), this->root->Name());
}

TYPED_TEST(CadTreeContract, TheParentOfAReferenceIsItsDocument) {
  const auto child = this->Added(this->root, "PLATE");

  EXPECT_EQ(child->Reference()->Parent()->AsDocument()->FullName(), this->folder.Path("PLATE.stp"));
  EXPECT_EQ(this->root->Parent()->AsProductDocument()->FullName(), "");
  EXPECT_FALSE(this->root->Parent()->AsProduct());
}

TYPED_TEST(CadTreeContract, TheReferenceOfAReferenceIsItself) {
  const auto reference = this->Added(this->root, "PLATE")->Reference();

  EXPECT_EQ(reference->Reference()->Name(), reference->Name());
  EXPECT_EQ(this->root->Reference()->PartNumber(), this->root->PartNumber());
}

TYPED_TEST(CadTreeContract, InstancesOfOneFileShareTheirReference) {
  const auto first = this->Added(this->root, "PLATE");
  const auto second = this->Added(this->root, "PLATE");

  first->SetPartNumber("DISC");

  EXPECT_EQ(second->PartNumber(), "DISC");
  EXPECT_EQ(second->Reference()->PartNumber(), "DISC");
}

TYPED_TEST(CadTreeContract, TheRootIsNamedAfterItsPartNumberUntilItIsNamed) {
  this->root->SetPartNumber("WIP~~BENCH");
  EXPECT_EQ(this->root->Name(), "WIP~~BENCH");

  this->root->SetName("Bench");

  EXPECT_EQ(this->root->Name(), "Bench");
  EXPECT_EQ(this->root->PartNumber(), "WIP~~BENCH");
}

TYPED_TEST(CadTreeContract, AnInstanceTakesAnyNameButTheEmptyOne) {
  const auto first = this->Added(this->root, "PLATE");
  const auto second = this->Added(this->root, "PLATE");
  first->SetName("ROOT\\SUB\\Gehäuse \"A\"");
  second->SetName("ROOT\\SUB\\Gehäuse \"A\"");

  FailureOf([&] { second->SetName(""); });

  EXPECT_EQ(NamesOf(this->root->Products()),
            (std::vector<std::string>{"ROOT\\SUB\\Gehäuse \"A\"", "ROOT\\SUB\\Gehäuse \"A\""}));
}

TYPED_TEST(CadTreeContract, AnEmptyPartNumberIsRefused) {
  FailureOf([&] { this->root->SetPartNumber(""); });

  EXPECT_EQ(this->root->PartNumber(), "Product1");
}

TYPED_TEST(CadTreeContract, EverythingStandsAtTheIdentityAtFirst) {
  EXPECT_EQ(PositionOf(this->root), kIdentityPosition);
  EXPECT_EQ(PositionOf(this->Added(this->root, "PLATE")), kIdentityPosition);
}

TYPED_TEST(CadTreeContract, APositionComesBackWithTheSameBits) {
  const PositionMatrix odd = {-0.0, 1e-320, 1.0 / 3, 1e308, -1, 0.1, 0, 0, 0, 5, 1e-17, std::nextafter(1, 2)};
  const auto child = this->Added(this->root, "PLATE");

  child->Position()->SetComponents(odd);
  this->root->Position()->SetComponents(At(7));

  const auto back = PositionOf(child);
  for (std::size_t i = 0; i < odd.size(); ++i) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(back[i]), std::bit_cast<std::uint64_t>(odd[i])) << i;
  }
  EXPECT_EQ(PositionOf(this->root), At(7));
}

TYPED_TEST(CadTreeContract, APositionWithoutTwelveFiniteNumbersIsRefused) {
  const auto child = this->Added(this->root, "PLATE");
  const auto position = child->Position();
  std::vector<double> eleven(11);
  std::vector<double> thirteen(13);

  FailureOf([&] { position->SetComponents(eleven); });
  FailureOf([&] { position->SetComponents(thirteen); });
  FailureOf([&] { position->GetComponents(eleven); });
  FailureOf([&] { position->GetComponents(thirteen); });
  FailureOf([&] { position->SetComponents(At(std::numeric_limits<double>::infinity())); });
  FailureOf([&] { position->SetComponents(At(std::nan(""))); });

  EXPECT_EQ(PositionOf(child), kIdentityPosition);
}

TYPED_TEST(CadTreeContract, AComponentWithoutDesignGivesItsPartNumberInWorkModesZeroAndTwoOnly) {
  const auto child = this->Added(this->root, "PLATE");
  this->host.LoadWithoutDesign(child);

  FailureOf([&] { child->PartNumber(); });
  child->SetWorkMode(0);
  EXPECT_EQ(child->PartNumber(), "PLATE");
  child->SetWorkMode(1);
  FailureOf([&] { child->PartNumber(); });
  FailureOf([&] { child->SetPartNumber("OTHER"); });
  child->SetWorkMode(2);
  EXPECT_EQ(child->PartNumber(), "PLATE");
}

TYPED_TEST(CadTreeContract, AnUnknownWorkModeIsRefused) {
  const auto child = this->Added(this->root, "PLATE");

  for (const int mode : {-1, 3, 100}) FailureOf([&] { child->SetWorkMode(mode); });

  EXPECT_EQ(child->PartNumber(), "PLATE");
}

TYPED_TEST(CadTreeContract, AnUnloadedComponentHasOnlyItsNameAndPosition) {
  const auto child = this->Added(this->root, "PLATE");
  const auto children = child->Products();
  this->host.Unload(child);

  FailureOf([&] { child->PartNumber(); });
  FailureOf([&] { child->SetWorkMode(0); });
  FailureOf([&] { child->Reference(); });
  FailureOf([&] { child->Products(); });
  FailureOf([&] { children->Count(); });
  child->SetName("still here");
  child->Position()->SetComponents(At(3));
  EXPECT_EQ(child->Name(), "still here");
  EXPECT_EQ(PositionOf(child), At(3));
}

TYPED_TEST(CadTreeContract, AnUpdateOfAComponentIsAccepted) {
  this->Added(this->root, "PLATE")->ApplyUpdate();
}

TYPED_TEST(CadTreeContract, TheDocumentFindsTheChildAddedLastByPartNumberOrName) {
  this->Added(this->root, "PLATE");
  this->Added(this->root, "BOLT");
  this->Added(this->root, "PLATE")->SetName("newest");

  EXPECT_EQ(this->document->GetItem("PLATE")->AsProduct()->Name(), "newest");
  EXPECT_EQ(this->document->GetItem("PLATE.1")->AsProduct()->Name(), "PLATE.1");
  EXPECT_EQ(this->document->GetItem("BOLT")->AsProduct()->Name(), "BOLT.1");
}

TYPED_TEST(CadTreeContract, TheDocumentFindsItsRootAfterItsChildren) {
  EXPECT_EQ(this->document->GetItem("Product1")->AsProduct()->Name(), "Product1");

  this->Added(this->root, "PLATE")->SetName("Product1");

  EXPECT_EQ(this->document->GetItem("Product1")->AsProduct()->PartNumber(), "PLATE");
}

TYPED_TEST(CadTreeContract, TheDocumentFailsForAnItemThatIsNotThere) {
  FailureOf([&] { this->document->GetItem("PLATE"); });
  FailureOf([&] { this->document->GetItem(""); });
}

TYPED_TEST(CadTreeContract, TheDocumentFindsAComponentWithoutDesignByItsPartNumber) {
  this->host.LoadWithoutDesign(this->Added(this->root, "PLATE"));

  EXPECT_TRUE(this->document->GetItem("PLATE")->AsProduct());
  EXPECT_TRUE(this->document->GetItem("PLATE.1")->AsProduct());
}

TYPED_TEST(CadTreeContract, TheDocumentFindsAnUnloadedComponentByItsNameOnly) {
  this->host.Unload(this->Added(this->root, "PLATE"));

  FailureOf([&] { this->document->GetItem("PLATE"); });
  EXPECT_TRUE(this->document->GetItem("PLATE.1")->AsProduct());
}

TYPED_TEST(CadTreeContract, TheChildrenOfAnUnloadedComponentCannotBeReached) {
  const auto child = this->Added(this->root, "PLATE");
  const auto children = child->Products();
  this->host.Unload(child);
  const auto part = this->Part("BOLT");

  FailureOf([&] { children->Item(1); });
  FailureOf([&] { children->Remove(1); });
  FailureOf([&] { children->AddComponentsFromFiles({part}, "All"); });
  FailureOf([&] { children->ReplaceWithFile(child, part, false); });
}

TYPED_TEST(CadTreeContract, WorkModeOneTakesTheDesignFormAway) {
  const auto child = this->Added(this->root, "PLATE");

  child->SetWorkMode(1);

  FailureOf([&] { child->PartNumber(); });
  EXPECT_EQ(child->Products()->Count(), 0);
}

}  // namespace quintara::test
