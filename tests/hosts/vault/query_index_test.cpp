#include "hosts/vault/database.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

template <class Maker>
class VaultIndexes : public VaultTest<Maker> {
 protected:
  static constexpr int kProducts = 600;

  // Products with a matrix each, enough of them that an index is worth its while.
  void FillWithMatrices() {
    this->vault->InTransaction([&] {
      for (int i = 0; i < kProducts; ++i) {
        const auto number = "P" + std::to_string(i);
        product = this->vault->AddObject("ZORVA Product", {{"NM_CN_PART_NUMBER", number}}, {});
        this->Link(product, this->AddDocument(number + " Matrix"), "Document Link");
      }
    });
    vault::Database(this->vault->Folder().connection).ExecuteOnce("ANALYZE");
    this->Open();
  }
  // As the matrix of a product is looked for.
  Ref<veldora::VdQuery> MatrixQuery() const {
    const auto query = this->Store()->NewQuery();
    const auto definition = query->Definition();
    definition->From()->Add(product->ClassId(), "F");
    definition->From()->Add(this->ClassId("Document Link"), "L");
    definition->From()->Add(this->ClassId("Document"), "S");
    for (const auto* name : {"CN_DESCRIPTION", "FILE_TYPE"}) definition->Select()->Add(name, "S", false);
    for (const auto* name : {"CN_ID", "OBJECT_ID"}) definition->Select()->Add(name, "F", false);
    definition->Where()->Add("", "CN_ID", "=", Variant(this->TextOf(product, "CN_ID")), 0, "F");
    definition->Where()->Add("", "OBJECT_ID", "=", Variant(product->ObjectId()), 0, "F");
    definition->Where()->Add("", "CN_DESCRIPTION", "=", Variant("*Matrix"), 0, "S");
    definition->Where()->Add("", "FILE_TYPE", "=", Variant(0), 0, "S");
    return query;
  }
  std::vector<std::string> Explained(const Ref<veldora::VdQuery>& query) const {
    return this->vault->ExplainQuery(query->Definition());
  }
  // How the database's words begin where it reads a whole table.
  static constexpr auto kWholeTable = std::is_same_v<Maker, OnSqlite> ? "SCAN" : "Seq Scan";

  Ref<VdObject> product;
};
TYPED_TEST_SUITE(VaultIndexes, Databases, DatabaseName);

TYPED_TEST(VaultIndexes, TheMatrixOfAProductIsFoundThroughThem) {
  this->FillWithMatrices();
  const auto query = this->MatrixQuery();

  const auto steps = this->Explained(query);

  EXPECT_GE(steps.size(), 3U);
  EXPECT_THAT(steps, Not(Contains(HasSubstr(this->kWholeTable)))) << testing::PrintToString(steps);
  query->RunLinkQuery();
  EXPECT_EQ(query->RecordCount(), 1);
}

TYPED_TEST(VaultIndexes, AnExplanationTellsOfAWholeTableThatIsRead) {
  this->FillWithMatrices();
  const auto query = this->Store()->NewQuery();
  query->Definition()->From()->Add(this->ClassId("Document"), "S");
  query->Definition()->Where()->Add("", "FILE_TYPE", "=", Variant(7), 0, "S");

  EXPECT_THAT(this->Explained(query), Contains(HasSubstr(this->kWholeTable)));
}

TYPED_TEST(VaultIndexes, AnObjectIsFoundByItsPartNumberThroughThem) {
  this->FillWithMatrices();
  const auto query = this->Store()->NewQuery();
  query->Definition()->From()->Add(this->ClassId("ZORVA Product"), "F");
  query->Definition()->Where()->Add("", "NM_CN_PART_NUMBER", "=", Variant("P7"), 0, "F");

  EXPECT_THAT(this->Explained(query), Not(Contains(HasSubstr(this->kWholeTable))));
}

}  // namespace
}  // namespace quintara::test
