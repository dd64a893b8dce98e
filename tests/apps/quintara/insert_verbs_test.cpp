#include "apps/quintara/vault_with_as1.h"
#include "base/attempt.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr auto kFile = "WIP~~TRIAL.ZVAProduct";

// A work in progress with a plate in it.
class InsertVerbs : public VaultWithAs1 {
 protected:
  InsertVerbs() {
    RunWell({"wip", "as1", "--light", "plate", "--name", "TRIAL"});
    before = ReadWork(kFile);
  }

  Outcome Insert(std::vector<std::string> options) {
    options.insert(options.begin(), {"insert", "TRIAL", "--lang", "EN"});
    return Run(options);
  }
  bool IsUntouched() const { return ReadWork(kFile) == before; }
  PositionMatrix PositionOf(const std::string& file, const std::string& partNumber) const {
    const auto own = std::make_shared<Gate>();
    CadHost host({own, std::make_shared<NativeContents>(own), {}});
    const auto component = host.Application()->Documents()->Open(AdminPath(file))->GetItem(partNumber)->AsProduct();
    PositionMatrix position{};
    component->Position()->GetComponents(position);
    return position;
  }
  // "nut LWT" and so on.
  std::vector<std::string> Components() const {
    const auto own = std::make_shared<Gate>();
    CadHost host({own, std::make_shared<NativeContents>(own), {}});
    const auto children =
        host.Application()->Documents()->Open(AdminPath(kFile))->AsProductDocument()->Product()->Products();
    std::vector<std::string> components;
    for (int i = 1; i <= children->Count(); ++i) {
      const auto child = children->Item(i);
      const auto type = OrElse(std::string(), [&] { return child->Parameters()->Item("TYPE")->ValueAsString(); });
      components.push_back(child->PartNumber() + " " + type);
    }
    return components;
  }
  std::string IdentityOfMatrix() const {
    const auto vault = Open();
    const auto as1 = vault->FindNewest("as1").at(0).identity;
    for (const auto& link : vault->Links(ObjectIn(*vault, as1))) {
      const auto& id = link.object.identity;
      if (!link.isStructure) return std::to_string(id.classId) + ":" + std::to_string(id.objectId);
    }
    return {};
  }

  std::string before;
};

TEST_F(InsertVerbs, AddALightRepresentation) {
  for (const auto& options : {std::vector<std::string>{"nut"}, {"nut", "--light"}}) {
    WriteWork(kFile, before);

    const auto outcome = Insert(options);

    EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
    EXPECT_THAT(outcome.out, HasSubstr("saved '" + AdminPath(kFile)));
    EXPECT_THAT(Components(), ElementsAre("plate LWT", "nut LWT"));
  }
}

TEST_F(InsertVerbs, AddADocument) {
  EXPECT_EQ(Insert({"nut", "--document"}).exitCode, kDone);

  EXPECT_THAT(Components(), ElementsAre("plate LWT", "nut "));
}

TEST_F(InsertVerbs, AddAWholeAssembly) {
  EXPECT_EQ(Insert({"rod-assembly", "--document"}).exitCode, kDone);

  EXPECT_THAT(Components(), ElementsAre("plate LWT", "rod-assembly "));
  EXPECT_THAT(Run({"tree", AdminPath(kFile)}).out, HasSubstr("nut"));
}

TEST_F(InsertVerbs, AddWhatIsThenPutInItsPlace) {
  RunWell({"wip", "as1", "--light", "rod", "--name", "OTHER"});
  ASSERT_EQ(Insert({"rod"}).exitCode, kDone);
  ASSERT_EQ(PositionOf(kFile, "rod"), kIdentityPosition);

  ASSERT_EQ(Run({"retrieve", "TRIAL"}).exitCode, kDone);

  EXPECT_EQ(PositionOf(kFile, "rod"), PositionOf("WIP~~OTHER.ZVAProduct", "rod"));
  EXPECT_NE(PositionOf(kFile, "rod"), kIdentityPosition);
}

TEST_F(InsertVerbs, AddWhatTheNextVerbFindsByItsStamps) {
  ASSERT_EQ(Insert({"nut"}).exitCode, kDone);
  RunWell({"release", "nut", "--yes"});
  RunWell({"new-release", "nut"});

  const auto outcome = Run({"replace-by-latest", "TRIAL", "--tick", "nut"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, ::testing::ContainsRegex("nut[^ ]* +A +B"));
  EXPECT_THAT(Components(), ElementsAre("plate LWT", "nut LWT"));
}

TEST_F(InsertVerbs, SaveNothingWhenTheyOnlyTell) {
  EXPECT_EQ(Insert({"nut", "--dry-run"}).exitCode, kDone);

  EXPECT_TRUE(IsUntouched());
}

TEST_F(InsertVerbs, TakeOneFormOnly) {
  EXPECT_EQ(Insert({"nut", "--light", "--document"}).exitCode, kWrongUse);
  EXPECT_EQ(Insert({}).exitCode, kWrongUse);
}

TEST_F(InsertVerbs, RefuseWhatIsNotThere) {
  EXPECT_EQ(Insert({"nothing"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"insert", "nowhere", "nut"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"check-insert", "TRIAL", "nothing"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"check-insert", "nowhere", "nut"}).exitCode, kWrongUse);
  EXPECT_TRUE(IsUntouched());
}

TEST_F(InsertVerbs, TellOfAnObjectThatTheCommandLeavesOut) {
  const auto outcome = Insert({IdentityOfMatrix()});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("was not inserted in 'WIP~~TRIAL'"));
  EXPECT_TRUE(IsUntouched());
}

TEST_F(InsertVerbs, LeaveTheFileAloneAfterAFailure) {
  gate->FailOperation("Products.AddComponentsFromFiles", 1, Failure(failure::kRefused, "cable"));

  const auto outcome = Insert({"nut"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("cable"));
  EXPECT_TRUE(IsUntouched());
}

TEST_F(InsertVerbs, SaveAComponentWhoseStampsFailed) {
  gate->FailOperation("Document.GetItem", 1, Failure(failure::kRefused, "cable"));

  const auto outcome = Insert({"nut"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.out, HasSubstr("saved '"));
  EXPECT_THAT(Components(), ElementsAre("plate LWT", "nut "));
}

TEST_F(InsertVerbs, CheckWorkInProgressWithAWorkbookOnly) {
  const auto outcome = Run({"check-insert", "TRIAL", "plate", "--lang", "EN"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("Veldora has no matrix document for this WIP."));
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_TRUE(IsUntouched());
}

}  // namespace
}  // namespace quintara::test
