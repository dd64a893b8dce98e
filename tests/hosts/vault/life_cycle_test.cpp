#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class VaultLifeCycle : public VaultTest<Maker> {
 protected:
  Ref<VdObject> PartIn(int state) {
    const auto part = this->AddPart("PART" + std::to_string(++number_));
    if (state == 1 || state == 2) this->CheckIn(part);
    if (state == 2) this->CheckOut(part);
    if (state == 3 || state == 4) this->Release(part);
    if (state == 4) this->Util()->Obsolete(part, nullptr, false);
    EXPECT_EQ(this->StateOf(part), state);
    return part;
  }
  // The states in which `operation` is refused, each time with the object left as it was.
  template <class Operation>
  std::vector<int> RefusedIn(Operation&& operation) {
    std::vector<int> refused;
    for (int state = 0; state <= 4; ++state) {
      const auto part = PartIn(state);
      const auto before = this->Dump();
      if (FailureOf([&] { operation(part); }).Number() == 0) continue;
      refused.push_back(state);
      EXPECT_EQ(this->Dump(), before);
    }
    return refused;
  }

 private:
  int number_ = 0;
};
TYPED_TEST_SUITE(VaultLifeCycle, Databases, DatabaseName);

TYPED_TEST(VaultLifeCycle, CheckOutIsForWhatIsCheckedIn) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->CheckOut(part); }), (std::vector<int>{0, 2, 3, 4}));
}

TYPED_TEST(VaultLifeCycle, CheckInIsForWhatIsNewOrCheckedOut) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->CheckIn(part); }), (std::vector<int>{1, 3, 4}));
}

TYPED_TEST(VaultLifeCycle, ReleaseIsForAllThatIsNotReleasedYet) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->Release(part); }), (std::vector<int>{3, 4}));
}

TYPED_TEST(VaultLifeCycle, ObsoleteIsForWhatIsReleased) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->Util()->Obsolete(part, nullptr, false); }),
            (std::vector<int>{0, 1, 2, 4}));
}

TYPED_TEST(VaultLifeCycle, ANewReleaseIsForWhatIsReleased) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->Util()->NewRelease(part, nullptr, false); }),
            (std::vector<int>{0, 1, 2, 4}));
}

TYPED_TEST(VaultLifeCycle, AnImportRevisesWhatIsCheckedInToo) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->vault->NewRevision(part); }), (std::vector<int>{0, 2, 4}));
}

TYPED_TEST(VaultLifeCycle, WhatIsCheckedInOrReleasedCannotBeUpdated) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) {
    part->Record()->ValuateFromString("CN_DESCRIPTION", "changed");
    part->Update(this->Behavior());
  }),
            (std::vector<int>{1, 3}));
}

TYPED_TEST(VaultLifeCycle, TheObjectAtHandKnowsItsNewState) {
  const auto part = this->AddPart("BOLT");

  this->CheckIn(part);
  EXPECT_EQ(part->Record()->ValueAsInteger("STATE"), 1);

  const auto taken = this->Util()->CheckOut(part, nullptr, false);
  EXPECT_EQ(taken->Record()->ValueAsInteger("STATE"), 2);
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

TYPED_TEST(VaultLifeCycle, ANewReleaseCarriesOutgoingLinksAndLeavesIncomingOnes) {
  const auto bolt = this->AddPart("BOLT");
  const auto axle = this->AddProduct("AXLE", {bolt});
  const auto car = this->AddProduct("CAR", {axle});
  this->Link(axle, this->AddDocument("AXLE Matrix"), "Document Link");
  this->Release(axle);

  const auto next = this->Util()->NewRelease(axle, nullptr, false);

  EXPECT_EQ(this->PartNumbers(next->Children(nullptr)), std::vector<std::string>{"BOLT"});
  EXPECT_EQ(car->Children(nullptr)->Item(0)->ObjectId(), axle->ObjectId());
  EXPECT_EQ(next->Parents(nullptr, this->Behavior())->Count(), 0);
  const auto query = this->Store()->NewQuery();
  query->Definition()->From()->Add(next->ClassId(), "F");
  query->Definition()->From()->Add(this->ClassId("Document Link"), "L");
  query->Definition()->From()->Add(this->ClassId("Document"), "S");
  query->Definition()->Where()->Add("", "OBJECT_ID", "=", Variant(next->ObjectId()), 0, "F");
  query->RunLinkQuery();
  EXPECT_EQ(query->RecordCount(), 1);
}

TYPED_TEST(VaultLifeCycle, OnlyTheNewestRevisionIsRevised) {
  const auto part = this->PartIn(3);
  this->Util()->NewRelease(part, nullptr, false);

  const auto failure = FailureOf([&] { this->Util()->NewRelease(part, nullptr, false); });

  EXPECT_THAT(failure, FailsWith(failure::kInvalidCall));
  EXPECT_THAT(failure.Description(), testing::HasSubstr("newer revision"));
  EXPECT_FALSE(this->Util()->CanPerform(part, this->Operation("NEWRELEASE"), 0));
}

TYPED_TEST(VaultLifeCycle, TheLastVersionIsTheNewestOfTheIdentity) {
  const auto part = this->PartIn(3);
  const auto next = this->Util()->NewRelease(part, nullptr, false);

  EXPECT_EQ(part->GetVersion(3)->ObjectId(), next->ObjectId());
  EXPECT_EQ(part->LinkedVersion(3)->ObjectId(), next->ObjectId());
  EXPECT_EQ(next->GetVersion(3)->ObjectId(), next->ObjectId());
  EXPECT_EQ(part->GetVersion(2)->ObjectId(), part->ObjectId());
  EXPECT_EQ(part->LinkedVersion(2)->ObjectId(), part->ObjectId());
  EXPECT_THAT(FailureOf([&] { part->GetVersion(1); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultLifeCycle, TwentySevenRevisionsGoPastTheAlphabet) {
  auto part = this->AddPart("BOLT");
  for (int i = 0; i < 26; ++i) {
    this->Release(part);
    part = this->Util()->NewRelease(part, nullptr, false);
  }

  EXPECT_EQ(this->TextOf(part, "REVISION"), "AA");
  EXPECT_EQ(part->GetVersion(3)->ObjectId(), part->ObjectId());
}

TYPED_TEST(VaultLifeCycle, RunOperationDoesTheSame) {
  const auto part = this->AddPart("BOLT");
  const auto run = [&](const std::string& name) {
    this->Util()->RunOperation(part, this->Operation(name), true, nullptr, nullptr);
  };

  run("CHECKIN");
  EXPECT_EQ(this->StateOf(part), 1);
  run("CHECKOUT");
  EXPECT_EQ(this->StateOf(part), 2);
  run("APPROVE");
  EXPECT_EQ(this->StateOf(part), 3);
  run("NEWRELEASE");
  EXPECT_NE(part->GetVersion(3)->ObjectId(), part->ObjectId());
  run("FREEZE");
  EXPECT_EQ(this->StateOf(part), 4);
  const auto view = this->Session()->MetaInfo()->Operations(0)->Find("VIEW OBJECT");
  EXPECT_THAT(FailureOf([&] { this->Util()->RunOperation(part, view, true, nullptr, nullptr); }),
              FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultLifeCycle, CanPerformTellsStatesApart) {
  const auto part = this->PartIn(1);

  EXPECT_TRUE(this->Util()->CanPerform(part, this->Operation("CHECKOUT"), 0));
  EXPECT_TRUE(this->Util()->CanPerform(part, this->Operation("APPROVE"), 0));
  EXPECT_TRUE(this->Util()->CanPerform(part, this->Operation("CopyFile"), 0));
  EXPECT_FALSE(this->Util()->CanPerform(part, this->Operation("CHECKIN"), 0));
  EXPECT_FALSE(this->Util()->CanPerform(part, this->Operation("NEWRELEASE"), 0));
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

TYPED_TEST(VaultLifeCycle, SettingsHaveNoLifeCycle) {
  const auto query = this->Store()->NewQuery();
  query->Definition()->From()->Add(this->ClassId("Admin Setting"), "F");
  query->RunClassQuery();
  const auto setting = this->Store()->ObjectFromRecord(query->Result()->GetRecord(0), -1);

  EXPECT_THAT(FailureOf([&] { this->CheckIn(setting); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(setting->GetVersion(3)->ObjectId(), setting->ObjectId());
}

}  // namespace
}  // namespace quintara::test
