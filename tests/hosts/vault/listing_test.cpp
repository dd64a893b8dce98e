#include <algorithm>

#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Listed = EmbeddedVault::Listed;
using Names = std::vector<std::string>;

// "CAR" holds "AXLE" once and "BOLT" eight times, "AXLE" holds "BOLT" twice; "BOLT" has the revisions A and B, of
// which all hold A.
template <class Maker>
class VaultListing : public VaultTest<Maker> {
 protected:
  VaultListing() {
    bolt = this->AddPart("BOLT", "bytes of a bolt");
    axle = this->AddProduct("AXLE");
    this->vault->SetStructure(axle, {{bolt, 2}});
    car = this->AddProduct("CAR");
    this->vault->SetStructure(car, {{axle, 1}, {bolt, 8}});
    this->CheckIn(bolt);
    newBolt = this->vault->NewRevision(bolt);
  }
  static Names NamesOf(const std::vector<Listed>& listed) {
    Names names;
    for (const auto& one : listed) names.push_back(one.partNumber + one.revision);
    return names;
  }

  Ref<VdObject> bolt;
  Ref<VdObject> newBolt;
  Ref<VdObject> axle;
  Ref<VdObject> car;
};
TYPED_TEST_SUITE(VaultListing, Databases, DatabaseName);

TYPED_TEST(VaultListing, HasTheNewestRevisionOfEachInTheOrderOfPartNumbers) {
  EXPECT_EQ(this->NamesOf(this->vault->List(false)), (Names{"AXLEA", "BOLTB", "CARA"}));
}

TYPED_TEST(VaultListing, HasAllRevisionsWhenAsked) {
  EXPECT_EQ(this->NamesOf(this->vault->List(true)), (Names{"AXLEA", "BOLTA", "BOLTB", "CARA"}));
}

TYPED_TEST(VaultListing, HasNoDocuments) {
  this->AddDocument("CAR Matrix");

  EXPECT_EQ(this->vault->List(true).size(), 4U);
}

TYPED_TEST(VaultListing, OrdersPartNumbersByteByByteOnEveryDatabase) {
  for (const auto* name : {"b", "a", "B", "A-1", "A1", "\xC3\x84"}) this->AddPart(name);

  auto names = this->NamesOf(this->vault->List(false));

  EXPECT_TRUE(std::ranges::is_sorted(names));
}

TYPED_TEST(VaultListing, TellsWhatAUserWantsToKnow) {
  const auto found = this->vault->FindRevision("BOLT", "A");

  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].identity.objectId, this->bolt->ObjectId());
  EXPECT_EQ(found[0].state, veldora::state::kCheckedIn);
  EXPECT_EQ(found[0].version, 1);
  EXPECT_EQ(found[0].className, "ZORVA Part");
  EXPECT_EQ(found[0].fileName, "BOLT.stp");
  EXPECT_EQ(found[0].owner, "");
  EXPECT_EQ(found[0].changedBy, "admin");
  EXPECT_EQ(found[0].changedAt.size(), std::string("2024-05-31T13:45:00Z").size());
  EXPECT_FALSE(found[0].hasComponents);
  EXPECT_TRUE(this->vault->FindNewest("CAR").at(0).hasComponents);
}

TYPED_TEST(VaultListing, TellsWhoHasAnObjectCheckedOut) {
  this->CheckOut(this->bolt->GetVersion(veldora::version::kTraversal));

  EXPECT_EQ(this->vault->FindRevision("BOLT", "A").at(0).owner, "admin");
}

TYPED_TEST(VaultListing, FindsNothingOfAnotherName) {
  EXPECT_THAT(this->vault->FindNewest("bolt"), IsEmpty());
  EXPECT_THAT(this->vault->FindNewest("BOL*"), IsEmpty());
  EXPECT_THAT(this->vault->FindRevision("BOLT", "C"), IsEmpty());
}

TYPED_TEST(VaultListing, HasTheRevisionsOfAnObjectFromTheOldestOn) {
  EXPECT_EQ(this->NamesOf(this->vault->Revisions(this->newBolt)), (Names{"BOLTA", "BOLTB"}));
  EXPECT_EQ(this->NamesOf(this->vault->Revisions(this->car)), (Names{"CARA"}));
}

TYPED_TEST(VaultListing, HasTheLinksOfAnObjectInTheirOrder) {
  const auto document = this->AddDocument("AXLE Matrix");
  this->Link(this->axle, document, "Document Link");

  const auto links = this->vault->Links(this->axle);

  ASSERT_EQ(links.size(), 3U);
  EXPECT_EQ(links[0].object.partNumber, "BOLT");
  EXPECT_TRUE(links[0].isStructure && links[0].goesOut);
  EXPECT_EQ(links[0].quantity, 2);
  EXPECT_EQ(links[1].object.description, "AXLE Matrix");
  EXPECT_EQ(links[1].linkClass, "Document Link");
  EXPECT_FALSE(links[1].isStructure);
  EXPECT_EQ(links[2].object.partNumber, "CAR");
  EXPECT_TRUE(links[2].isStructure && !links[2].goesOut);
}

TYPED_TEST(VaultListing, HasNoLinksOfAnotherRevision) {
  EXPECT_THAT(this->vault->Links(this->newBolt), IsEmpty());
  EXPECT_EQ(this->vault->Links(this->bolt).size(), 2U);
}

TYPED_TEST(VaultListing, HasEachObjectOfAStructureOnce) {
  const auto structure = this->vault->WholeStructure(this->car);

  ASSERT_EQ(structure.size(), 3U);
  EXPECT_EQ(structure[0].object.partNumber, "CAR");
  ASSERT_EQ(structure[0].components.size(), 2U);
  const auto [first, once] = structure[0].components[0];
  EXPECT_EQ(structure[first].object.partNumber, "AXLE");
  EXPECT_EQ(once, 1);
  const auto [second, eightTimes] = structure[0].components[1];
  EXPECT_EQ(structure[second].object.partNumber + structure[second].object.revision, "BOLTA");
  EXPECT_EQ(eightTimes, 8);
  EXPECT_THAT(structure[first].components, ElementsAre(std::pair(second, 2)));
  EXPECT_THAT(structure[second].components, IsEmpty());
}

TYPED_TEST(VaultListing, TakesAsManyStatementsForAnyStructure) {
  const auto before = this->vault->StatementCount();
  this->vault->WholeStructure(this->bolt);
  const auto ofOne = this->vault->StatementCount() - before;
  this->vault->WholeStructure(this->car);

  EXPECT_EQ(this->vault->StatementCount() - before, 2 * ofOne);
}

TYPED_TEST(VaultListing, HasUsersWithTheirRights) {
  this->vault->AddUser("anna", "geheim", false);
  this->vault->AddUser("bert", "geheim", false);
  this->vault->Grant("bert", "CHECKIN", "ZORVA Part");
  this->vault->Grant("bert", "CHECKOUT", "");

  const auto users = this->vault->Users();

  ASSERT_EQ(users.size(), 3U);
  EXPECT_EQ(users[0].login, "admin");
  ASSERT_EQ(users[0].rights.size(), 1U);
  EXPECT_EQ(users[0].rights[0].operation + users[0].rights[0].className, "");
  EXPECT_THAT(users[1].rights, IsEmpty());
  ASSERT_EQ(users[2].rights.size(), 2U);
  EXPECT_EQ(users[2].rights[0].operation, "CHECKIN");
  EXPECT_EQ(users[2].rights[0].className, "ZORVA Part");
  EXPECT_EQ(users[2].rights[1].className, "");
}

TYPED_TEST(VaultListing, TakesObjectsOfItsOwnOnly) {
  EXPECT_THAT(FailureOf([&] { this->vault->Links(nullptr); }), FailsWith(failure::kObjectNotSet));
  EXPECT_THAT(FailureOf([&] { this->vault->Revisions(nullptr); }), FailsWith(failure::kObjectNotSet));
  EXPECT_THAT(FailureOf([&] { this->vault->WholeStructure(nullptr); }), FailsWith(failure::kObjectNotSet));
}

TYPED_TEST(VaultListing, NeedsAUserWhoIsLoggedOn) {
  this->Session()->UserLogoff();

  EXPECT_THAT(FailureOf([&] { this->vault->List(false); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->vault->Users(); }), FailsWith(failure::kPermissionDenied));
}

}  // namespace
}  // namespace quintara::test
