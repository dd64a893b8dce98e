#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class VaultQueries : public VaultTest<Maker> {
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
TYPED_TEST_SUITE(VaultQueries, Databases, DatabaseName);

TYPED_TEST(VaultQueries, AJoinFindsTheLinkedDocumentsOfThatProductAlone) {
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

TYPED_TEST(VaultQueries, ARowAnswersWhatWasNotSelected) {
  const auto product = this->AddProduct("CAR");
  this->Link(product, this->AddDocument("CAR Matrix"), "Document Link");

  const auto row = this->DocumentsOf(product, "*")->Result()->GetRecord(0);

  EXPECT_EQ(row->ValueAsString("S.REVISION"), "A");
  EXPECT_EQ(row->ValueAsString("F.NM_CN_PART_NUMBER"), "CAR");
  EXPECT_GT(row->ValueAsInteger("L.OBJECT_ID"), 0);
}

TYPED_TEST(VaultQueries, ABareNameThatMayMeanSeveralObjectsFails) {
  const auto product = this->AddProduct("CAR");
  this->Link(product, this->AddDocument("CAR Matrix"), "Document Link");
  const auto row = this->DocumentsOf(product, "*")->Result()->GetRecord(0);

  EXPECT_THAT(FailureOf([&] { row->Value("REVISION"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { row->Value("S.NONSENSE"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { row->Value("X.REVISION"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultQueries, ABareNameServesWhereOneAliasIsThere) {
  const auto part = this->AddPart("BOLT");

  const auto row = this->Parts("NM_CN_PART_NUMBER", Variant("BOLT"))->Result()->GetRecord(0);

  EXPECT_EQ(row->ValueAsInteger("OBJECT_ID"), part->ObjectId());
  EXPECT_EQ(row->ValueAsString("REVISION"), "A");
}

TYPED_TEST(VaultQueries, RowsComeInTheOrderOfTheSoughtIds) {
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

TYPED_TEST(VaultQueries, CaseCounts) {
  this->AddPart("Bolt");

  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("bolt"))->RecordCount(), 0);
  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("bo*"))->RecordCount(), 0);
  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("Bo*"))->RecordCount(), 1);
}

TYPED_TEST(VaultQueries, OnlyTheStarIsSpecial) {
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

TYPED_TEST(VaultQueries, WhatWasNeverSetIsTheEmptyTextAndZero) {
  this->AddPart("BOLT");

  EXPECT_EQ(this->Parts("CN_DESCRIPTION", Variant(""))->RecordCount(), 1);
  EXPECT_EQ(this->Parts("FILE_TYPE", Variant(0))->RecordCount(), 1);
  EXPECT_EQ(this->Parts("CN_DESCRIPTION", Variant("*"))->RecordCount(), 1);
}

TYPED_TEST(VaultQueries, AnIntegerIsComparedWithATextThatShowsIt) {
  const auto part = this->AddPart("BOLT");

  EXPECT_EQ(this->Parts("OBJECT_ID", Variant(std::to_string(part->ObjectId())))->RecordCount(), 1);
  EXPECT_EQ(this->Parts("STATE", Variant("0*"))->RecordCount(), 1);
  EXPECT_THAT(FailureOf([&] { this->Parts("OBJECT_ID", Variant("x")); }), FailsWith(failure::kTypeMismatch));
}

TYPED_TEST(VaultQueries, NoRowsAreACountOfZeroAndNoFailure) {
  const auto query = this->DocumentsOf(this->AddProduct("CAR"), "*Matrix");

  EXPECT_EQ(query->RecordCount(), 0);
  EXPECT_EQ(query->ObjectStore()->ObjectsFromRecList(query->Result(), 0)->ObjectsOf("S")->Count(), 0);
  EXPECT_THAT(FailureOf([&] { query->Result()->GetRecord(0); }), FailsWith(failure::kSubscriptOutOfRange));
}

TYPED_TEST(VaultQueries, AValueIsNeverReadAsSql) {
  this->AddPart("BOLT");

  EXPECT_EQ(this->Parts("NM_CN_PART_NUMBER", Variant("' OR 1=1 --"))->RecordCount(), 0);
  EXPECT_THAT(FailureOf([&] { this->Parts("STATE\" = 0 OR \"STATE", Variant(0)); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultQueries, AWrongCompositionFails) {
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

TYPED_TEST(VaultQueries, AFileTypeIsFoundByItsName) {
  const auto query = this->Store()->NewQuery();
  query->Definition()->From()->Add(this->ClassId("FILE_TYPE"), "F");
  query->Definition()->Select()->Add("OBJECT_ID", "F", true);
  query->Definition()->Where()->Add("", "TDM_NAME", "=", Variant("xml"), 0, "F");

  query->RunClassQuery();

  EXPECT_EQ(query->Result()->GetRecord(0)->ValueAsInteger("OBJECT_ID"), this->vault->FileTypeId("xml"));
}

}  // namespace
}  // namespace quintara::test
