#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class VaultMeta : public VaultTest<Maker> {};
TYPED_TEST_SUITE(VaultMeta, Databases, DatabaseName);

TYPED_TEST(VaultMeta, FileTypesHaveIdsThatFitSixteenBits) {
  for (const auto* type : {"ZVAProduct", "ZVAPart", "xml", "Microsoft Excel"}) {
    EXPECT_GT(this->vault->FileTypeId(type), 0);
    EXPECT_LT(this->vault->FileTypeId(type), 32768);
  }
  EXPECT_THAT(FailureOf([&] { this->vault->FileTypeId("XML"); }), FailsWith(failure::kInvalidCall));
}

}  // namespace
}  // namespace quintara::test
