#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "access/vault_bench.h"

namespace quintara::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using veldora::VdObjects;

template <class Maker>
class LifeCycleInVault : public VaultOn<Maker> {
 protected:
  Ref<VdObject> AddInState(int state) {
    const auto object = this->AddPart("P" + std::to_string(++parts_));
    if (state == 1 || state == 2) this->CheckIn(object);
    if (state == 2) this->CheckOut(object);
    if (state >= 3) this->Release(object);
    if (state == 4) this->Util()->Obsolete(object, nullptr, false);
    return object;
  }
  bool Run(const Ref<VdObject>& object, const std::string& operation) {
    Process().texts.COMMON_UNEXPECTED_ERROR.text = "Failure in REP1: REP2";
    return this->utils.LifeCycleOperation(this->session, object, operation);
  }
  Box RefusalOf(const Ref<VdObject>& object) const {
    return Report("Cls_Utils.LifeCycleOperation", "wrong state: " + this->TextOf(object, "NM_CN_PART_NUMBER") + ", A");
  }

 private:
  int parts_ = 0;
};
TYPED_TEST_SUITE(LifeCycleInVault, Databases, DatabaseName);

TYPED_TEST(LifeCycleInVault, OperationsRunFromTheirStatesAndAreRefusedFromAllOthers) {
  // The state after each operation, for each state before it; -1 where it is refused.
  const std::map<std::string, std::vector<int>> states = {{"CHECKIN", {1, -1, 1, -1, -1}},
                                                          {"RELEASE", {3, 3, 3, -1, -1}},
                                                          {"OBSOLETE", {-1, -1, -1, 4, -1}},
                                                          {"CHECKOUT", {-1, 2, -1, -1, -1}},
                                                          {"NEWRELEASE", {-1, -1, -1, 3, -1}}};
  for (const auto& [operation, after] : states) {
    for (int before = 0; before < 5; ++before) {
      const auto object = this->AddInState(before);
      const auto vaultBefore = this->Dump();
      const auto boxes = this->Boxes().size();
      const int expected = after[static_cast<std::size_t>(before)];

      EXPECT_EQ(this->Run(object, operation), expected != -1) << operation << before;

      if (expected != -1) {
        EXPECT_EQ(this->StateOf(object), expected) << operation << before;
        EXPECT_EQ(this->Boxes().size(), boxes) << operation << before;
      } else {
        EXPECT_EQ(this->Dump(), vaultBefore) << operation << before;
        EXPECT_EQ(this->Boxes().size(), boxes + 1) << operation << before;
        EXPECT_EQ(this->Boxes().back(), this->RefusalOf(object)) << operation << before;
      }
    }
  }
}

TYPED_TEST(LifeCycleInVault, ANewReleaseMakesTheNextRevision) {
  const auto object = this->AddInState(3);

  EXPECT_TRUE(this->Run(object, "NEWRELEASE"));

  const auto newest = this->utils.LastVersion(object);
  EXPECT_NE(newest->ObjectId(), object->ObjectId());
  EXPECT_EQ(newest->Record()->ValueAsString("REVISION"), "B");
  EXPECT_EQ(this->StateOf(newest), 0);
}

TYPED_TEST(LifeCycleInVault, TheStateIsThatOfTheVaultAndNotOfAnOldCopy) {
  const auto object = this->AddInState(1);
  const auto copy = this->Again(object);
  copy->Retrieve();
  this->CheckOut(object);

  EXPECT_FALSE(this->Run(copy, "CHECKOUT"));

  EXPECT_EQ(this->Boxes().back(), this->RefusalOf(object));
}

TYPED_TEST(LifeCycleInVault, TheSimpleFormsAskTheVaultAloneAndNeverSayThatItRefused) {
  const auto object = this->AddInState(0);

  this->utils.CheckInObject(this->session, object);
  EXPECT_EQ(this->StateOf(object), 1);
  this->utils.CheckInObject(this->session, object);
  EXPECT_EQ(this->StateOf(object), 1);
  this->utils.ReleaseObject(this->session, object);
  EXPECT_EQ(this->StateOf(object), 3);
  this->utils.ReleaseObject(this->session, object);

  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(LifeCycleInVault, MasksFillTheNumberedAttributesOfANewObject) {
  const auto object = this->Store()->NewObject(this->ClassId("ZORVA Part"));

  this->utils.PopulateObjectMasks(this->session, object);

  EXPECT_NE(object->Record()->ValueAsString("CN_ID"), "");
  EXPECT_EQ(object->Record()->ValueAsString("REVISION"), "A");
  EXPECT_EQ(object->Record()->ValueAsString("CN_DESCRIPTION"), "");
}

TYPED_TEST(LifeCycleInVault, AGlobalRefreshTakesCheckedInAndReleasedObjects) {
  const auto list = this->Store()->NewObjects();
  list->Add(this->AddInState(1));
  list->Add(this->AddInState(3));
  EXPECT_TRUE(this->utils.AcceptGlobalRefresh(list));

  list->Add(this->AddInState(0));
  EXPECT_FALSE(this->utils.AcceptGlobalRefresh(list));
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

template <class Maker>
class StructureInVault : public VaultOn<Maker> {
 protected:
  std::vector<std::string> AllBelow(const Ref<VdObject>& object, const Ref<veldora::VdBehavior>& behavior = nullptr,
                                    const std::string& attributes = {}) {
    Ref<VdObjects> all;
    EXPECT_TRUE(this->utils.GetAllChildren(this->session, object, all, behavior, attributes));
    return this->PartNumbers(all);
  }

  Ref<VdObject> bolt = this->AddPart("BOLT");
  Ref<VdObject> left = this->AddProduct("LEFT", {bolt});
  Ref<VdObject> right = this->AddProduct("RIGHT", {bolt, this->AddPart("NUT")});
  Ref<VdObject> car = this->AddProduct("CAR", {left, right});
};
TYPED_TEST_SUITE(StructureInVault, Databases, DatabaseName);

TYPED_TEST(StructureInVault, IsWalkedBreadthFirstWithRepeats) {
  EXPECT_THAT(this->AllBelow(this->car), ElementsAre("LEFT", "RIGHT", "BOLT", "BOLT", "NUT"));
  EXPECT_THAT(this->AllBelow(this->car, this->Behavior(), "STATE,CN_ID"),
              ElementsAre("LEFT", "RIGHT", "BOLT", "BOLT", "NUT"));
  EXPECT_THAT(this->AllBelow(this->bolt), IsEmpty());
}

TYPED_TEST(StructureInVault, GivesTheLinkedObjectsOnceEach) {
  const auto drawing = this->AddDocument("CAR Drawing");
  const auto matrix = this->AddDocument("CAR Matrix");
  this->Link(this->car, drawing, "Document Link");
  this->Link(this->car, matrix, "Document Link");
  this->Link(this->left, this->AddDocument("LEFT Matrix"), "Document Link");
  Ref<VdObjects> linked;

  EXPECT_TRUE(this->utils.RetrieveAllObjectsLinked(this->session, this->car, "Document", "Document Link", linked));

  ASSERT_EQ(linked->Count(), 2);
  EXPECT_EQ(linked->Item(0)->ObjectId(), drawing->ObjectId());
  EXPECT_EQ(linked->Item(1)->ObjectId(), matrix->ObjectId());
}

TYPED_TEST(StructureInVault, GivesNothingWhereNothingIsLinked) {
  Ref<VdObjects> linked;

  EXPECT_TRUE(this->utils.RetrieveAllObjectsLinked(this->session, this->car, "Document", "Document Link", linked));

  EXPECT_FALSE(linked);
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(StructureInVault, LosesALinkThatIsRemovedAndNoOther) {
  const auto drawing = this->AddDocument("CAR Drawing");
  const auto matrix = this->AddDocument("CAR Matrix");
  this->Link(this->car, drawing, "Document Link");
  this->Link(this->car, matrix, "Document Link");

  EXPECT_TRUE(this->utils.RemoveLogicalLink(this->session, this->car, drawing, "Document Link"));

  Ref<VdObjects> linked;
  this->utils.RetrieveAllObjectsLinked(this->session, this->car, "Document", "Document Link", linked);
  ASSERT_EQ(linked->Count(), 1);
  EXPECT_EQ(linked->Item(0)->ObjectId(), matrix->ObjectId());
}

TYPED_TEST(StructureInVault, IsAsItWasWhereALinkThatIsNotThereIsRemoved) {
  const auto drawing = this->AddDocument("CAR Drawing");
  this->Link(this->car, drawing, "Document Link");
  const auto before = this->Dump();

  EXPECT_TRUE(this->utils.RemoveLogicalLink(this->session, drawing, this->car, "Document Link"));
  EXPECT_TRUE(this->utils.RemoveLogicalLink(this->session, this->left, drawing, "Document Link"));

  EXPECT_EQ(this->Dump(), before);
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(StructureInVault, KeepsALinkThatTheVaultDoesNotLetGoWhichIsReported) {
  this->CheckIn(this->car);

  EXPECT_FALSE(this->utils.RemoveLogicalLink(this->session, this->car, this->left, "Structure Link"));

  EXPECT_THAT(this->AllBelow(this->car), SizeIs(5));
  ASSERT_THAT(this->Boxes(), SizeIs(1));
  EXPECT_EQ(this->Boxes()[0].style, kCritical);
  EXPECT_THAT(this->Boxes()[0].text, testing::StartsWith("Failure in Cls_Utils.RemoveLogicalLink: "));
}

class StructureWithFailures : public StructureInVault<OnSqlite> {};

TEST_F(StructureWithFailures, IsWalkedOrReportedWhicheverCallFails) {
  Ref<VdObjects> all;

  const int calls = FailingEachCall(
      [&](int n) { EXPECT_EQ(utils.GetAllChildren(session, car, all, nullptr, "STATE"), n == 0) << n; });

  EXPECT_THAT(Boxes(), SizeIs(static_cast<std::size_t>(calls)));
  EXPECT_THAT(Boxes(), Each(Report("Cls_Utils.GetAllChildren", "Injected failure")));
}

TEST_F(StructureWithFailures, GivesItsLinkedObjectsOrReportsWhicheverCallFails) {
  Link(car, AddDocument("CAR Drawing"), "Document Link");
  Ref<VdObjects> linked;

  const int calls = FailingEachCall([&](int n) {
    EXPECT_EQ(utils.RetrieveAllObjectsLinked(session, car, "Document", "Document Link", linked), n == 0) << n;
  });

  EXPECT_THAT(Boxes(), SizeIs(static_cast<std::size_t>(calls)));
}

TEST_F(StructureWithFailures, LosesALinkOrReportsWhicheverCallFails) {
  const auto drawing = AddDocument("CAR Drawing");
  Link(car, drawing, "Document Link");
  gate->StartRecording();
  const auto remove = [&] { return utils.RemoveLogicalLink(session, car, drawing, "Document Link"); };
  EXPECT_TRUE(remove());
  const int calls = gate->Calls();
  gate->Reset();
  Link(car, drawing, "Document Link");

  for (int n = 1; n <= calls; ++n) {
    gate->FailCall(n);
    EXPECT_FALSE(remove()) << n;
    gate->Reset();
  }

  EXPECT_THAT(Boxes(), SizeIs(static_cast<std::size_t>(calls)));
  EXPECT_THAT(Boxes(), Each(Report("Cls_Utils.RemoveLogicalLink", "Injected failure")));
  EXPECT_TRUE(remove());
}

TEST_F(StructureWithFailures, OperationsAreRefusedWhicheverCallFails) {
  const auto refused = [&](int n) {
    const auto object = AddPart("P" + std::to_string(n));
    gate->FailCall(n);
    const bool done = utils.LifeCycleOperation(session, object, "CHECKIN");
    const bool failed = gate->HasFailed();
    gate->Reset();
    EXPECT_EQ(done, !failed) << n;
    return failed;
  };

  int n = 1;
  while (refused(n)) ++n;

  EXPECT_GT(n, 10);
  EXPECT_THAT(Boxes(), SizeIs(static_cast<std::size_t>(n - 1)));
}

TEST_F(StructureWithFailures, OperationsThatTheUserMayNotRunAreRefused) {
  vault->AddUser("guest", "secret", false);
  CheckIn(bolt);
  auto options = Options();
  options.login = "guest";
  Open(options);
  session = Session();

  EXPECT_FALSE(utils.LifeCycleOperation(session, Again(bolt), "CHECKOUT"));

  EXPECT_THAT(Boxes(), ElementsAre(Report("Cls_Utils.LifeCycleOperation", "wrong state: BOLT, A")));
}

}  // namespace
}  // namespace quintara::test
