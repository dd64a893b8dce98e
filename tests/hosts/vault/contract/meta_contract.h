#pragma once

#include "hosts/vault/contract/fixture.h"

namespace quintara::test {

template <class Host>
class VaultMetaContract : public VaultContract<Host> {};
TYPED_TEST_SUITE(VaultMetaContract, VaultContractHosts, VaultHostName);

TYPED_TEST(VaultMetaContract, ClassesAreFoundByNameByIdAndByTable) {
  const auto meta = this->Session()->MetaInfo();

  const auto part = meta->ClassByName("ZORVA Part");

  EXPECT_EQ(meta->ClassById(part->ClassId())->ClassName(), "ZORVA Part");
  EXPECT_EQ(meta->ClassByTable("TDMX_USER_SETTING")->ClassName(), "User Setting");
  EXPECT_EQ(meta->Classes()->Find("Document")->ClassName(), "Document");
}

TYPED_TEST(VaultMetaContract, AnUnknownClassFailsByNameAndById) {
  const auto meta = this->Session()->MetaInfo();

  EXPECT_THAT(FailureOf([&] { meta->ClassByName("zorva part"); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { meta->ClassById(999); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultMetaContract, AnUnknownClassIsNothingInTheListAndByTable) {
  const auto meta = this->Session()->MetaInfo();

  EXPECT_FALSE(meta->Classes()->Find("Nonsense"));
  EXPECT_FALSE(meta->ClassByTable("NONSENSE"));
}

TYPED_TEST(VaultMetaContract, KeyAttributesArePartNumberAndRevision) {
  const auto keys = this->Session()->MetaInfo()->ClassByName("ZORVA Part")->KeyAttributes();

  ASSERT_EQ(keys->Count(), 2);
  EXPECT_EQ(keys->Item(Variant(0))->Name(), "NM_CN_PART_NUMBER");
  EXPECT_EQ(keys->Item(Variant("1"))->Name(), "REVISION");
}

TYPED_TEST(VaultMetaContract, AttributesFailPastTheEndAndForUnknownNames) {
  const auto attributes = this->Session()->MetaInfo()->ClassByName("ZORVA Part")->Attributes();

  EXPECT_THAT(FailureOf([&] { attributes->Item(Variant(attributes->Count())); }),
              FailsWith(failure::kSubscriptOutOfRange));
  EXPECT_THAT(FailureOf([&] { attributes->Item(Variant(-1)); }), FailsWith(failure::kSubscriptOutOfRange));
  EXPECT_THAT(FailureOf([&] { attributes->ItemByName("NONSENSE"); }), FailsWith(failure::kInvalidCall));
  EXPECT_FALSE(attributes->Find("NONSENSE"));
  EXPECT_EQ(attributes->Find("STATE")->Name(), "STATE");
}

TYPED_TEST(VaultMetaContract, HasTheSevenOperations) {
  const auto meta = this->Session()->MetaInfo();

  for (const auto* name : {"CHECKIN", "APPROVE", "FREEZE", "CHECKOUT", "NEWRELEASE", "CopyFile"}) {
    EXPECT_GT(meta->OperationByName(name)->OperationId(), 0) << name;
  }
  EXPECT_GT(meta->Operations(0)->Find("VIEW OBJECT")->OperationId(), 0);
  EXPECT_THAT(FailureOf([&] { meta->OperationByName("checkin"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultMetaContract, MasksNumberIdentitiesAndBeginRevisionsWithA) {
  const auto masks = this->Store()->Masks();
  const auto attributes = this->Session()->MetaInfo()->ClassByName("ZORVA Part")->Attributes();

  const auto first = masks->MaskOf(attributes->ItemByName("CN_ID"))->NextValue();
  const auto second = masks->MaskOf(attributes->ItemByName("CN_ID"))->NextValue();

  EXPECT_NE(first, second);
  EXPECT_EQ(masks->MaskOf(attributes->ItemByName("REVISION"))->FirstRevision(), "A");
  EXPECT_FALSE(masks->MaskOf(attributes->ItemByName("STATE")));
}

TYPED_TEST(VaultMetaContract, AMaskFailsForWhatItDoesNotHold) {
  const auto masks = this->Store()->Masks();
  const auto attributes = this->Session()->MetaInfo()->ClassByName("ZORVA Part")->Attributes();

  EXPECT_THAT(FailureOf([&] { masks->MaskOf(attributes->ItemByName("CN_ID"))->FirstRevision(); }),
              FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { masks->MaskOf(attributes->ItemByName("REVISION"))->NextValue(); }),
              FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { masks->MaskOf(nullptr); }), FailsWith(failure::kObjectNotSet));
}

}  // namespace quintara::test
