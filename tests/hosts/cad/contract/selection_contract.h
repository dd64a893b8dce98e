#pragma once

#include <limits>

#include "hosts/cad/contract/fixture.h"

namespace quintara::test {

template <class Host>
class CadSelectionContract : public CadContract<Host> {
 protected:
  void Copy(const Ref<zorva::Product>& product) {
    selection->Clear();
    selection->Add(product);
    selection->Copy();
    selection->Clear();
  }
  void PasteInto(const Ref<AnyObject>& target) {
    selection->Add(target);
    selection->Paste();
    selection->Clear();
  }

  Ref<zorva::ProductDocument> document = this->NewDocument();
  Ref<zorva::Product> root = document->Product();
  Ref<zorva::Product> component = this->Added(root, "PLATE");
  Ref<zorva::Selection> selection = document->Selection();
};
TYPED_TEST_SUITE(CadSelectionContract, CadContractHosts);

TYPED_TEST(CadSelectionContract, WhatWasAddedIsSelectedInThatOrder) {
  this->selection->Add(this->component);
  this->selection->Add(this->root);

  EXPECT_EQ(this->document->Selection()->Count(), 2);
  EXPECT_EQ(this->selection->Item(1)->Value()->AsProduct()->Name(), "PLATE.1");
  EXPECT_EQ(this->selection->Item(2)->Value()->AsProduct()->Name(), "Product1");
}

TYPED_TEST(CadSelectionContract, TheChildrenOfAProductCanBeSelected) {
  this->selection->Add(this->root->Products());

  EXPECT_TRUE(this->selection->Item(1)->Value()->AsProducts());
  EXPECT_FALSE(this->selection->Item(1)->Value()->AsProduct());
}

TYPED_TEST(CadSelectionContract, NothingElseCanBeSelected) {
  FailureOf([&] { this->selection->Add(this->document); });
  FailureOf([&] { this->selection->Add(this->application); });
  FailureOf([&] { this->selection->Add(nullptr); });

  EXPECT_EQ(this->selection->Count(), 0);
}

TYPED_TEST(CadSelectionContract, AnIndexOutsideTheSelectionFails) {
  this->selection->Add(this->component);

  for (const int index : {-1, 0, 2, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(FailureOf([&] { this->selection->Item(index); }).Number(), failure::kSubscriptOutOfRange) << index;
  }
}

TYPED_TEST(CadSelectionContract, EachDocumentHasASelectionOfItsOwn) {
  this->selection->Add(this->component);

  EXPECT_EQ(this->NewDocument()->Selection()->Count(), 0);
  EXPECT_EQ(this->selection->Count(), 1);
}

TYPED_TEST(CadSelectionContract, ASelectionKeepsItsEntriesWhenAComponentIsReplaced) {
  this->selection->Add(this->component);
  this->selection->Add(this->Added(this->root, "BOLT"));

  this->root->Products()->ReplaceWithFile(this->component, this->Light("PLATE"), false);

  EXPECT_EQ(this->selection->Count(), 2);
  EXPECT_EQ(this->selection->Item(2)->Value()->AsProduct()->PartNumber(), "BOLT");
}

TYPED_TEST(CadSelectionContract, APasteAppendsACopyAtThePositionOfItsSource) {
  this->Added(this->root, "BOLT");
  this->component->Position()->SetComponents(At(4));
  this->Copy(this->component);

  this->PasteInto(this->root->Products());

  const auto pasted = this->root->Products()->Item(3);
  EXPECT_EQ(NamesOf(this->root->Products()), (std::vector<std::string>{"PLATE.1", "BOLT.1", "PLATE.2"}));
  EXPECT_EQ(pasted->PartNumber(), "PLATE");
  EXPECT_EQ(PositionOf(pasted), At(4));
}

TYPED_TEST(CadSelectionContract, ACopyMovesAndIsNamedOnItsOwn) {
  this->Copy(this->component);
  this->PasteInto(this->root->Products());
  const auto pasted = this->root->Products()->Item(2);

  pasted->SetName("ROOT\\PLATE");
  pasted->Position()->SetComponents(At(9));

  EXPECT_EQ(this->component->Name(), "PLATE.1");
  EXPECT_EQ(PositionOf(this->component), kIdentityPosition);
}

TYPED_TEST(CadSelectionContract, APasteTakesTheFirstFreeNumberWhateverTheSourceIsCalled) {
  this->Copy(this->component);
  this->component->SetName("ROOT\\A");

  this->PasteInto(this->root->Products());
  this->root->Products()->Item(2)->SetName("ROOT\\B");
  this->PasteInto(this->root->Products());
  this->PasteInto(this->root->Products());

  EXPECT_EQ(NamesOf(this->root->Products()), (std::vector<std::string>{"ROOT\\A", "ROOT\\B", "PLATE.1", "PLATE.2"}));
}

TYPED_TEST(CadSelectionContract, ACopyTakesItsOwnPropertiesAlong) {
  this->component->UserProperties()->CreateString("TYPE", "LWT");
  this->Copy(this->component);
  this->PasteInto(this->root);
  const auto pasted = this->root->Products()->Item(2);

  pasted->Parameters()->Item("TYPE")->ValuateFromString("3D");

  EXPECT_EQ(ValueOf(pasted->UserProperties(), "TYPE"), "3D");
  EXPECT_EQ(ValueOf(this->component->UserProperties(), "TYPE"), "LWT");
}

TYPED_TEST(CadSelectionContract, SeveralComponentsArePastedInTheOrderOfTheirSelection) {
  this->selection->Add(this->Added(this->root, "BOLT"));
  this->selection->Add(this->component);
  this->selection->Copy();
  this->selection->Clear();

  this->PasteInto(this->root->Products());

  EXPECT_EQ(NamesOf(this->root->Products()), (std::vector<std::string>{"PLATE.1", "BOLT.1", "BOLT.2", "PLATE.2"}));
}

TYPED_TEST(CadSelectionContract, AComponentCanBePastedIntoAnotherDocument) {
  const auto other = this->NewDocument();
  this->Copy(this->component);

  other->Selection()->Add(other->Product()->Products());
  other->Selection()->Paste();

  EXPECT_EQ(NamesOf(other->Product()->Products()), (std::vector<std::string>{"PLATE.1"}));
}

TYPED_TEST(CadSelectionContract, TheClipboardOutlivesItsSource) {
  this->Copy(this->component);
  this->root->Products()->Remove(1);

  this->PasteInto(this->root->Products());

  EXPECT_EQ(this->root->Products()->Item(1)->PartNumber(), "PLATE");
}

TYPED_TEST(CadSelectionContract, CopyingNothingFails) {
  FailureOf([&] { this->selection->Copy(); });
}

TYPED_TEST(CadSelectionContract, AnEmptyClipboardCannotBePasted) {
  this->selection->Add(this->root->Products());

  FailureOf([&] { this->selection->Paste(); });

  EXPECT_EQ(this->root->Products()->Count(), 1);
}

TYPED_TEST(CadSelectionContract, APasteNeedsExactlyOneTarget) {
  this->Copy(this->component);
  FailureOf([&] { this->selection->Paste(); });
  this->selection->Add(this->root);
  this->selection->Add(this->root->Products());

  FailureOf([&] { this->selection->Paste(); });

  EXPECT_EQ(this->root->Products()->Count(), 1);
}

TYPED_TEST(CadSelectionContract, TheChildrenOfAProductCannotBeCopied) {
  this->selection->Add(this->root->Products());

  FailureOf([&] { this->selection->Copy(); });
}

TYPED_TEST(CadSelectionContract, AnUnloadedTargetTakesNoPastedComponent) {
  this->Copy(this->component);
  this->selection->Add(this->component);
  this->host.Unload(this->component);

  FailureOf([&] { this->selection->Paste(); });
}

TYPED_TEST(CadSelectionContract, ACopyOfAnUnloadedComponentIsUnloaded) {
  this->host.Unload(this->component);
  this->Copy(this->component);

  this->PasteInto(this->root);

  const auto pasted = this->root->Products()->Item(2);
  EXPECT_EQ(pasted->Name(), "PLATE.2");
  FailureOf([&] { pasted->PartNumber(); });
}

TYPED_TEST(CadSelectionContract, APartTakesNoPastedComponent) {
  this->Copy(this->component);
  this->selection->Add(this->component);

  FailureOf([&] { this->selection->Paste(); });
}

TYPED_TEST(CadSelectionContract, AProductCannotBePastedIntoItself) {
  this->Copy(this->root);
  this->selection->Add(this->root->Products());

  FailureOf([&] { this->selection->Paste(); });

  EXPECT_EQ(this->root->Products()->Count(), 1);
}

}  // namespace quintara::test
