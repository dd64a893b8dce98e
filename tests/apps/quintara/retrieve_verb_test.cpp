#include "apps/quintara/vault_with_as1.h"

namespace quintara::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class RetrieveVerb : public VaultWithAs1 {
 protected:
  RetrieveVerb() {
    RunWell({"wip", "as1", "--light", "part:*", "--all-instances", "--name", "TRIAL"});
    RunWell({"scatter", "TRIAL"});
  }
  std::string Compared() { return Run({"compare", "TRIAL", "--with", Data("as1-oc-214.stp")}).out; }
};

TEST_F(RetrieveVerb, PutsMovedComponentsBack) {
  ASSERT_THAT(Compared(), HasSubstr("18 out of place"));

  const auto outcome = Run({"retrieve", "TRIAL"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, HasSubstr("saved '" + AdminPath("WIP~~TRIAL.ZVAProduct")));
  EXPECT_THAT(Compared(), HasSubstr("18 of 18 in place"));
}

TEST_F(RetrieveVerb, TakesTheWipByItsPartNumberAndItsFile) {
  EXPECT_EQ(Run({"retrieve", "WIP~~TRIAL"}).exitCode, kDone);
  EXPECT_EQ(Run({"retrieve", AdminPath("WIP~~TRIAL.ZVAProduct")}).exitCode, kDone);
}

TEST_F(RetrieveVerb, SavesNothingWhenItOnlyTells) {
  EXPECT_EQ(Run({"retrieve", "TRIAL", "--dry-run"}).exitCode, kDone);

  EXPECT_THAT(Compared(), HasSubstr("18 out of place"));
}

TEST_F(RetrieveVerb, RefusesWhatIsNoWip) {
  EXPECT_EQ(Run({"retrieve", "nowhere"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"retrieve", AdminPath("as1 Matrix.xml")}).exitCode, kFailed);
}

TEST_F(RetrieveVerb, NeedsAVault) {
  EXPECT_EQ(RunBare({"retrieve", "TRIAL", "--work", AdminPath()}).exitCode, kWrongUse);
}

TEST_F(RetrieveVerb, SaysThatTheWipRemembersNoMatrix) {
  auto text = ReadWork("WIP~~TRIAL.ZVAProduct");
  const auto at = text.find("DocXMLOID");
  ASSERT_NE(at, text.npos);
  text.replace(at, 9, "DocXMLOIX");
  WriteWork("WIP~~TRIAL.ZVAProduct", text);

  const auto outcome = Run({"retrieve", "TRIAL"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("Veldora has no matrix document for this WIP."));
  EXPECT_THAT(Compared(), HasSubstr("18 out of place"));
}

TEST_F(RetrieveVerb, SavesWhatWasPlacedBeforeAFailure) {
  gate->FailOperation("Position.SetComponents", 3);

  const auto outcome = Run({"retrieve", "TRIAL"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.out, HasSubstr("saved '"));
  EXPECT_THAT(Compared(), HasSubstr("2 of 18 in place"));
}

TEST_F(RetrieveVerb, LeavesAnUnreadableWipAlone) {
  WriteWork("WIP~~TRIAL.ZVAProduct", "no product");

  EXPECT_EQ(Run({"retrieve", "WIP~~TRIAL.ZVAProduct"}).exitCode, kFailed);
  EXPECT_EQ(ReadWork("WIP~~TRIAL.ZVAProduct"), "no product");
}

TEST_F(RetrieveVerb, RefusesAProductWithoutTheMarksOfAWip) {
  RunWell({"checkout", "as1"});

  const auto outcome = Run({"retrieve", AdminPath("as1.ZVAProduct")});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("is no work in progress"));
}

}  // namespace
}  // namespace quintara::test
