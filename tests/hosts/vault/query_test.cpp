#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class VaultQueries : public VaultTest<Maker> {
 protected:
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

TYPED_TEST(VaultQueries, AFileTypeIsFoundByItsName) {
  const auto query = this->Store()->NewQuery();
  query->Definition()->From()->Add(this->ClassId("FILE_TYPE"), "F");
  query->Definition()->Select()->Add("OBJECT_ID", "F", true);
  query->Definition()->Where()->Add("", "TDM_NAME", "=", Variant("xml"), 0, "F");

  query->RunClassQuery();

  EXPECT_EQ(query->Result()->GetRecord(0)->ValueAsInteger("OBJECT_ID"), this->vault->FileTypeId("xml"));
}

TYPED_TEST(VaultQueries, WhatIsNoTextIsRefusedOnEveryDatabase) {
  this->AddPart("BOLT");

  for (const auto& value : {std::string("BOLT\0", 5), std::string("BOLT\xFF"), std::string("*\xC3")}) {
    EXPECT_THAT(FailureOf([&] { this->Parts("NM_CN_PART_NUMBER", Variant(value)); }), FailsWith(failure::kInvalidCall));
    EXPECT_THAT(FailureOf([&] { this->vault->FindNewest(value); }), FailsWith(failure::kInvalidCall));
  }
  this->vault->InTransaction([&] {
    FailureOf([&] { this->vault->FindNewest("\xFF"); });
    EXPECT_EQ(this->vault->FindNewest("BOLT").size(), 1U);
  });
}

}  // namespace
}  // namespace quintara::test
