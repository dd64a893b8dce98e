#include "hosts/vault/contract/life_cycle_states.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class VaultLifeCycle : public WithStates<VaultTest<Maker>> {};
TYPED_TEST_SUITE(VaultLifeCycle, Databases, DatabaseName);

TYPED_TEST(VaultLifeCycle, AnImportRevisesWhatIsCheckedInToo) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->vault->NewRevision(part); }), (std::vector<int>{0, 2, 4}));
}

TYPED_TEST(VaultLifeCycle, ANewReleaseIsTheNextRevisionOfTheSameIdentity) {
  const auto part = this->AddPart("BOLT", "bytes", "light");
  part->Record()->ValuateFromString("CN_DESCRIPTION", "a bolt");
  part->Update(this->Behavior());
  this->Release(part);

  const auto next = this->Util()->NewRelease(part, nullptr, false);

  EXPECT_NE(next->ObjectId(), part->ObjectId());
  EXPECT_EQ(this->TextOf(next, "CN_ID"), this->TextOf(part, "CN_ID"));
  EXPECT_EQ(this->TextOf(next, "REVISION"), "B");
  EXPECT_EQ(this->TextOf(next, "CN_DESCRIPTION"), "a bolt");
  EXPECT_EQ(this->StateOf(next), 0);
  EXPECT_EQ(this->StateOf(part), 3);
  EXPECT_EQ(this->vault->FileOf(next), "bytes");
  EXPECT_EQ(this->vault->LightFileOf(next), "light");
  EXPECT_EQ(this->TextOf(next, "DIRECTORY"), this->TextOf(part, "DIRECTORY"));
}

TYPED_TEST(VaultLifeCycle, WhatAnotherUserHasTakenIsTheirs) {
  const auto part = this->PartIn(2);
  this->vault->AddUser("eve", "", true);
  auto options = this->Options();
  options.login = "eve";
  options.password = "";
  this->Open(options);
  const auto mine = this->Again(part);

  EXPECT_THAT(FailureOf([&] { this->CheckIn(mine); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->Release(mine); }), FailsWith(failure::kPermissionDenied));
  EXPECT_FALSE(this->Util()->CanPerform(mine, this->Operation("CHECKIN"), 0));
  mine->Record()->ValuateFromString("CN_DESCRIPTION", "hers");
  EXPECT_THAT(FailureOf([&] { mine->Update(this->Behavior()); }), FailsWith(failure::kPermissionDenied));
}

TYPED_TEST(VaultLifeCycle, WithoutTheRightNothingHappens) {
  const auto part = this->AddPart("BOLT");
  const auto product = this->AddProduct("CAR");
  this->vault->AddUser("eve", "", false);
  this->vault->Grant("eve", "CHECKIN", "ZORVA Part");
  auto options = this->Options();
  options.login = "eve";
  options.password = "";
  this->Open(options);

  EXPECT_THAT(FailureOf([&] { this->CheckIn(this->Again(product)); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->Release(this->Again(part)); }), FailsWith(failure::kPermissionDenied));
  EXPECT_FALSE(this->Util()->CanPerform(this->Again(part), this->Operation("APPROVE"), 0));
  this->CheckIn(this->Again(part));
  EXPECT_EQ(this->StateOf(part), 1);
}

TYPED_TEST(VaultLifeCycle, ARightIsTakenBack) {
  this->vault->AddUser("eve", "", false);
  this->vault->Grant("eve", "", "");
  this->vault->Revoke("eve", "", "");
  const auto part = this->AddPart("BOLT");
  auto options = this->Options();
  options.login = "eve";
  options.password = "";
  this->Open(options);

  EXPECT_THAT(FailureOf([&] { this->CheckIn(this->Again(part)); }), FailsWith(failure::kPermissionDenied));
}

TYPED_TEST(VaultLifeCycle, OnlyAUserWithAllRightsChangesThoseOfUsers) {
  this->vault->AddUser("eve", "", false);
  this->vault->Grant("eve", "CHECKIN", "");
  auto options = this->Options();
  options.login = "eve";
  options.password = "";
  this->Open(options);
  const auto before = this->Dump();

  EXPECT_THAT(FailureOf([&] { this->vault->Grant("eve", "", ""); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->vault->Revoke("admin", "", ""); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->vault->AddUser("mallory", "", true); }), FailsWith(failure::kPermissionDenied));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultLifeCycle, UnknownUsersOperationsAndClassesFail) {
  this->vault->AddUser("eve", "", false);

  EXPECT_THAT(FailureOf([&] { this->vault->AddUser("eve", "", false); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->AddUser("", "", false); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->Grant("nobody", "", ""); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->Grant("eve", "NONSENSE", ""); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->Revoke("eve", "", "Nonsense"); }), FailsWith(failure::kInvalidCall));
}

}  // namespace
}  // namespace quintara::test
