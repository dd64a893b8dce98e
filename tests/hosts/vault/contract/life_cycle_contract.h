#pragma once

#include "hosts/vault/contract/fixture.h"
#include "hosts/vault/contract/life_cycle_states.h"

namespace quintara::test {

template <class Host>
class VaultLifeCycleContract : public WithStates<VaultContract<Host>> {};
TYPED_TEST_SUITE(VaultLifeCycleContract, VaultContractHosts, VaultHostName);

TYPED_TEST(VaultLifeCycleContract, CheckOutIsForWhatIsCheckedIn) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->CheckOut(part); }), (std::vector<int>{0, 2, 3, 4}));
}

TYPED_TEST(VaultLifeCycleContract, CheckInIsForWhatIsNewOrCheckedOut) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->CheckIn(part); }), (std::vector<int>{1, 3, 4}));
}

TYPED_TEST(VaultLifeCycleContract, ReleaseIsForAllThatIsNotReleasedYet) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->Release(part); }), (std::vector<int>{3, 4}));
}

TYPED_TEST(VaultLifeCycleContract, ObsoleteIsForWhatIsReleased) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->Util()->Obsolete(part, nullptr, false); }),
            (std::vector<int>{0, 1, 2, 4}));
}

TYPED_TEST(VaultLifeCycleContract, ANewReleaseIsForWhatIsReleased) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) { this->Util()->NewRelease(part, nullptr, false); }),
            (std::vector<int>{0, 1, 2, 4}));
}

TYPED_TEST(VaultLifeCycleContract, WhatIsCheckedInOrReleasedCannotBeUpdated) {
  EXPECT_EQ(this->RefusedIn([&](const auto& part) {
    part->Record()->ValuateFromString("CN_DESCRIPTION", "changed");
    part->Update(this->Behavior());
  }),
            (std::vector<int>{1, 3}));
}

TYPED_TEST(VaultLifeCycleContract, TheObjectAtHandKnowsItsNewState) {
  const auto part = this->AddPart("BOLT");

  this->CheckIn(part);
  EXPECT_EQ(part->Record()->ValueAsInteger("STATE"), 1);

  const auto taken = this->Util()->CheckOut(part, nullptr, false);
  EXPECT_EQ(taken->Record()->ValueAsInteger("STATE"), 2);
}

TYPED_TEST(VaultLifeCycleContract, ANewReleaseCarriesOutgoingLinksAndLeavesIncomingOnes) {
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

TYPED_TEST(VaultLifeCycleContract, OnlyTheNewestRevisionIsRevised) {
  const auto part = this->PartIn(3);
  this->Util()->NewRelease(part, nullptr, false);

  const auto failure = FailureOf([&] { this->Util()->NewRelease(part, nullptr, false); });

  EXPECT_THAT(failure, FailsWith(failure::kInvalidCall));
  EXPECT_THAT(failure.Description(), testing::HasSubstr("newer revision"));
  EXPECT_FALSE(this->Util()->CanPerform(part, this->Operation("NEWRELEASE"), 0));
}

TYPED_TEST(VaultLifeCycleContract, TheLastVersionIsTheNewestOfTheIdentity) {
  const auto part = this->PartIn(3);
  const auto next = this->Util()->NewRelease(part, nullptr, false);

  EXPECT_EQ(part->GetVersion(3)->ObjectId(), next->ObjectId());
  EXPECT_EQ(part->LinkedVersion(3)->ObjectId(), next->ObjectId());
  EXPECT_EQ(next->GetVersion(3)->ObjectId(), next->ObjectId());
  EXPECT_EQ(part->GetVersion(2)->ObjectId(), part->ObjectId());
  EXPECT_EQ(part->LinkedVersion(2)->ObjectId(), part->ObjectId());
  EXPECT_THAT(FailureOf([&] { part->GetVersion(1); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultLifeCycleContract, TwentySevenRevisionsGoPastTheAlphabet) {
  auto part = this->AddPart("BOLT");
  for (int i = 0; i < 26; ++i) {
    this->Release(part);
    part = this->Util()->NewRelease(part, nullptr, false);
  }

  EXPECT_EQ(this->TextOf(part, "REVISION"), "AA");
  EXPECT_EQ(part->GetVersion(3)->ObjectId(), part->ObjectId());
}

TYPED_TEST(VaultLifeCycleContract, RunOperationDoesTheSame) {
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

TYPED_TEST(VaultLifeCycleContract, CanPerformTellsStatesApart) {
  const auto part = this->PartIn(1);

  EXPECT_TRUE(this->Util()->CanPerform(part, this->Operation("CHECKOUT"), 0));
  EXPECT_TRUE(this->Util()->CanPerform(part, this->Operation("APPROVE"), 0));
  EXPECT_TRUE(this->Util()->CanPerform(part, this->Operation("CopyFile"), 0));
  EXPECT_FALSE(this->Util()->CanPerform(part, this->Operation("CHECKIN"), 0));
  EXPECT_FALSE(this->Util()->CanPerform(part, this->Operation("NEWRELEASE"), 0));
}

TYPED_TEST(VaultLifeCycleContract, SettingsHaveNoLifeCycle) {
  const auto query = this->Store()->NewQuery();
  query->Definition()->From()->Add(this->ClassId("Admin Setting"), "F");
  query->RunClassQuery();
  const auto setting = this->Store()->ObjectFromRecord(query->Result()->GetRecord(0), -1);

  EXPECT_THAT(FailureOf([&] { this->CheckIn(setting); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(setting->GetVersion(3)->ObjectId(), setting->ObjectId());
}

TYPED_TEST(VaultLifeCycleContract, ARecordGivenToALifeCycleOperationIsRefused) {
  const auto part = this->AddPart("BOLT");
  const auto before = this->Dump();

  EXPECT_THAT(FailureOf([&] { this->Util()->CheckIn(part, part->Record(), false); }), FailsWith(failure::kInvalidCall));
  EXPECT_EQ(this->Dump(), before);
}

TYPED_TEST(VaultLifeCycleContract, LifeCycleOperationsOfNothingFail) {
  EXPECT_THAT(FailureOf([&] { this->CheckIn(nullptr); }), FailsWith(failure::kObjectNotSet));
  EXPECT_THAT(FailureOf([&] { this->Util()->CanPerform(nullptr, this->Operation("CHECKIN"), 0); }),
              FailsWith(failure::kObjectNotSet));
  const auto unsaved = this->Store()->NewObject(this->ClassId("ZORVA Part"));
  EXPECT_THAT(FailureOf([&] { this->CheckIn(unsaved); }), FailsWith(failure::kInvalidCall));
  EXPECT_FALSE(this->Util()->CanPerform(unsaved, this->Operation("CHECKIN"), 0));
}

TYPED_TEST(VaultLifeCycleContract, WhatWasSetAndNotStoredOutlivesACheckOut) {
  const auto part = this->PartIn(1);
  part->Record()->ValuateFromString("CN_DESCRIPTION", "mine");
  part->Record()->ValuateFromString("FILE_NAME", "mine.stp");

  this->CheckOut(part);

  EXPECT_EQ(part->Record()->ValueAsString("CN_DESCRIPTION"), "mine");
  EXPECT_EQ(part->Record()->ValueAsString("FILE_NAME"), "mine.stp");
  EXPECT_EQ(part->Record()->ValueAsInteger("STATE"), 2);
}

}  // namespace quintara::test
