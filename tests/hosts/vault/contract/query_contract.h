#pragma once

#include "hosts/vault/contract/fixture.h"

namespace quintara::test {

template <class Host>
class VaultQueryContract : public VaultContract<Host> {
 protected:
  // Documents of a product by a pattern of their description.
  Ref<veldora::VdQuery> DocumentsOf(const Ref<VdObject>& product, const std::string& description) {
    const auto query = this->Store()->NewQuery();
    const auto definition = query->Definition();
    definition->From()->Add(product->ClassId(), "F");
    definition->From()->Add(this->ClassId("Document Link"), "L");
    definition->From()->Add(this->ClassId("Document"), "S");
    definition->Select()->Add("CN_DESCRIPTION", "S", false);
    definition->Select()->Add("CN_ID", "F", false);
    definition->Where()->Add("", "OBJECT_ID", "=", Variant(product->ObjectId()), 0, "F");
    definition->Where()->Add("", "CN_DESCRIPTION", "=", Variant(description), 0, "S");
    query->RunWithBehavior(this->Behavior());
    return query;
  }
  Ref<veldora::VdQuery> Parts(const std::string& attribute, const Variant& value) {
    const auto query = this->Store()->NewQuery();
    query->Definition()->From()->Add(this->ClassId("ZORVA Part"), "F");
    query->Definition()->Select()->Add("OBJECT_ID", "F", true);
    query->Definition()->Where()->Add("", attribute, "=", value, 0, "F");
    query->RunClassQuery();
    return query;
  }
};
TYPED_TEST_SUITE(VaultQueryContract, VaultContractHosts, VaultHostName);

TYPED_TEST(VaultQueryContract, AJoinFindsTheLinkedDocumentsOfThatProductAlone) {
  const auto product = this->AddProduct("CAR");
  const auto other = this->AddProduct("BIKE");
  const auto mine = this->AddDocument("CAR Matrix");
  this->Link(product, mine, "Document Link");
  this->Link(other, this->AddDocument("BIKE Matrix"), "Document Link");
  this->Link(product, this->AddDocument("CAR Drawing"), "Document Link");

  const auto query = this->DocumentsOf(product, "*Matrix");

  ASSERT_EQ(query->RecordCount(), 1);
  const auto row = query->Result()->GetRecord(0);
  EXPECT_EQ(row->ValueAsInteger("S.OBJECT_ID"), mine->ObjectId());
  EXPECT_EQ(row->ValueAsInteger("S.CLASS_ID"), mine->ClassId());
  EXPECT_EQ(row->ValueAsInteger("F.OBJECT_ID"), product->ObjectId());
  EXPECT_EQ(row->ValueAsString("S.CN_DESCRIPTION"), "CAR Matrix");
}

TYPED_TEST(VaultQueryContract, ARowAnswersWhatWasNotSelected) {
  const auto product = this->AddProduct("CAR");
  this->Link(product, this->AddDocument("CAR Matrix"), "Document Link");

  const auto row = this->DocumentsOf(product, "*")->Result()->GetRecord(0);

  EXPECT_EQ(row->ValueAsString("S.REVISION"), "A");
  EXPECT_EQ(row->ValueAsString("F.NM_CN_PART_NUMBER"), "CAR");
  EXPECT_GT(row->ValueAsInteger("L.OBJECT_ID"), 0);
}

TYPED_TEST(VaultQueryContract, ABareNameThatMayMeanSeveralObjectsFails) {
  const auto product = this->AddProduct("CAR");
  this->Link(product, this->AddDocument("CAR Matrix"), "Document Link");
  const auto row = this->DocumentsOf(product, "*")->Result()->GetRecord(0);

  EXPECT_THAT(FailureOf([&] { row->Value("REVISION"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { row->Value("S.NONSENSE"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { row->Value("X.REVISION"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultQueryContract, ABareNameServesWhereOneAliasIsThere) {
  const auto part = this->AddPart("BOLT");

  const auto row = this->Parts("NM_CN_PART_NUMBER", Variant("BOLT"))->Result()->GetRecord(0);

  EXPECT_EQ(row->ValueAsInteger("OBJECT_ID"), part->ObjectId());
  EXPECT_EQ(row->ValueAsString("REVISION"), "A");
}

TYPED_TEST(VaultQueryContract, RowsComeInTheOrderOfTheSoughtIds) {
  const auto product = this->AddProduct("CAR");
  const auto first = this->AddDocument("1 Matrix");
  const auto second = this->AddDocument("2 Matrix");
  const auto third = this->AddDocument("3 Matrix");
  for (const auto& document : {third, first, second}) this->Link(product, document, "Document Link");

  const auto query = this->DocumentsOf(product, "*Matrix");

  const auto objects = query->ObjectStore()->ObjectsFromRecList(query->Result(), 0)->ObjectsOf("S");
  ASSERT_EQ(objects->Count(), 3);
  EXPECT_EQ(objects->Item(0)->ObjectId(), first->ObjectId());
  EXPECT_EQ(objects->Item(2)->ObjectId(), third->ObjectId());
  EXPECT_EQ(objects->Records()->GetRecord(1)->ValueAsInteger("S.OBJECT_ID"), second->ObjectId());
}

TYPED_TEST(VaultQueryContract, CaseCounts) {
  this->AddPart("Bolt");

  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("bolt"))->RecordCount(), 0);
  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("bo*"))->RecordCount(), 0);
  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("Bo*"))->RecordCount(), 1);
}

TYPED_TEST(VaultQueryContract, OnlyTheStarIsSpecial) {
  this->AddPart("100%");
  this->AddPart("1000");
  this->AddPart("a_b");
  this->AddPart("axb");
  this->AddPart("[x]?\\y");

  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("*%"))->RecordCount(), 1);
  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("a_*"))->RecordCount(), 1);
  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("a?*"))->RecordCount(), 0);
  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("[x]?\\*"))->RecordCount(), 1);
  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("*"))->RecordCount(), 5);
}

TYPED_TEST(VaultQueryContract, WhatWasNeverSetIsTheEmptyTextAndZero) {
  this->AddPart("BOLT");

  EXPECT_EQ(this->Parts("CN_DESCRIPTION", Variant(""))->RecordCount(), 1);
  EXPECT_EQ(this->Parts("FILE_TYPE", Variant(0))->RecordCount(), 1);
  EXPECT_EQ(this->Parts("CN_DESCRIPTION", Variant("*"))->RecordCount(), 1);
}

TYPED_TEST(VaultQueryContract, AnIntegerIsComparedWithATextThatShowsIt) {
  const auto part = this->AddPart("BOLT");

  EXPECT_EQ(this->Parts("OBJECT_ID", Variant(std::to_string(part->ObjectId())))->RecordCount(), 1);
  EXPECT_EQ(this->Parts("STATE", Variant("0*"))->RecordCount(), 1);
  EXPECT_THAT(FailureOf([&] { this->Parts("OBJECT_ID", Variant("x")); }), FailsWith(failure::kTypeMismatch));
}

TYPED_TEST(VaultQueryContract, NoRowsAreACountOfZeroAndNoFailure) {
  const auto query = this->DocumentsOf(this->AddProduct("CAR"), "*Matrix");

  EXPECT_EQ(query->RecordCount(), 0);
  EXPECT_EQ(query->ObjectStore()->ObjectsFromRecList(query->Result(), 0)->ObjectsOf("S")->Count(), 0);
  EXPECT_THAT(FailureOf([&] { query->Result()->GetRecord(0); }), FailsWith(failure::kSubscriptOutOfRange));
}

TYPED_TEST(VaultQueryContract, AValueIsNeverReadAsSql) {
  this->AddPart("BOLT");

  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("' OR 1=1 --"))->RecordCount(), 0);
  EXPECT_THAT(FailureOf([&] { this->Parts("STATE\" = 0 OR \"STATE", Variant(0)); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultQueryContract, AWrongCompositionFails) {
  const auto query = this->Store()->NewQuery();
  EXPECT_THAT(FailureOf([&] { query->RunClassQuery(); }), FailsWith(failure::kInvalidCall));
  query->Definition()->From()->Add(this->ClassId("ZORVA Part"), "F");

  EXPECT_THAT(FailureOf([&] { query->RecordCount(); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { query->RunLinkQuery(); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { query->RunWithBehavior(nullptr); }), FailsWith(failure::kObjectNotSet));
  EXPECT_THAT(FailureOf([&] { query->Definition()->Where()->Add("OR", "STATE", "=", Variant(0), 0, "F"); }),
              FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { query->Definition()->Where()->Add("", "STATE", "<", Variant(0), 0, "F"); }),
              FailsWith(failure::kInvalidCall));
  query->Definition()->From()->Add(this->ClassId("ZORVA Part"), "S");
  EXPECT_THAT(FailureOf([&] { query->RunWithBehavior(this->Behavior()); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultQueryContract, AnAliasThatTheQueryHasNotFailsWithoutRowsToo) {
  const auto query = this->DocumentsOf(this->AddProduct("CAR"), "*Matrix");

  const auto results = query->ObjectStore()->ObjectsFromRecList(query->Result(), 0);

  EXPECT_EQ(results->ObjectsOf("F")->Count(), 0);
  EXPECT_THAT(FailureOf([&] { results->ObjectsOf("X"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultQueryContract, SeveralConditionsHoldTogether) {
  this->Add("ZORVA Part", {{"NM_CN_PART_NUMBER", "A"}, {"CN_DESCRIPTION", "x"}});
  this->Add("ZORVA Part", {{"NM_CN_PART_NUMBER", "A"}, {"CN_DESCRIPTION", "y"}});
  this->Add("ZORVA Part", {{"NM_CN_PART_NUMBER", "B"}, {"CN_DESCRIPTION", "y"}});
  const auto query = this->Store()->NewQuery();
  query->Definition()->From()->Add(this->ClassId("ZORVA Part"), "F");
  query->Definition()->Where()->Add("", "NM_CN_PART_NUMBER", "=", Variant("A"), 0, "F");
  query->Definition()->Where()->Add("", "CN_DESCRIPTION", "=", Variant("y*"), 0, "F");

  query->RunWithBehavior(this->Behavior());

  EXPECT_EQ(query->RecordCount(), 1);
}

TYPED_TEST(VaultQueryContract, AStarStandsForAnyTextTheEmptyOneIncluded) {
  this->AddPart("CAR Matrix");

  for (const auto* pattern : {"*Matrix", "CAR*", "*R M*", "CAR Matrix*", "**", "C*R*x"}) {
    EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant(pattern))->RecordCount(), 1) << pattern;
  }
  for (const auto* pattern : {"*matrix", "*Matri", "AR*", "C*Q*x"}) {
    EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant(pattern))->RecordCount(), 0) << pattern;
  }
}

TYPED_TEST(VaultQueryContract, StructureLinksJoinAsDocumentLinksDo) {
  const auto bolt = this->AddPart("BOLT");
  const auto car = this->AddProduct("CAR", {bolt});
  const auto query = this->Store()->NewQuery();
  query->Definition()->From()->Add(car->ClassId(), "F");
  query->Definition()->From()->Add(this->ClassId("Structure Link"), "L");
  query->Definition()->From()->Add(this->ClassId("ZORVA Part"), "S");
  query->Definition()->Select()->Add("QUANTITY", "L", false);
  query->Definition()->Where()->Add("", "OBJECT_ID", "=", Variant(car->ObjectId()), 0, "F");

  query->RunLinkQuery();

  ASSERT_EQ(query->RecordCount(), 1);
  EXPECT_EQ(query->Result()->GetRecord(0)->ValueAsInteger("L.QUANTITY"), 1);
  EXPECT_EQ(this->Store()->ObjectFromRecord(query->Result()->GetRecord(0), -1)->ObjectId(), bolt->ObjectId());
}

}  // namespace quintara::test
