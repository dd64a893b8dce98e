#include <filesystem>

#include "apps/quintara/vault_cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

// The part "p" in each of the five states, and what a verb makes of it.
struct Passing {
  std::string verb;
  int from;
  std::string to;  ///< revision and state; empty where the verb is refused
};

std::ostream& operator<<(std::ostream& out, const Passing& passing) {
  return out << passing.verb << " from " << passing.from;
}

class TheLifeCycle : public VaultCli, public ::testing::WithParamInterface<Passing> {
 protected:
  void MakePart(int state) const {
    const auto vault = Open();
    const auto part = Add(*vault, "ZORVA Part", "p");
    const auto session = vault->Application()->Engine()->Sessions(0);
    const auto util = session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil();
    if (state == 1 || state == 2) util->CheckIn(part, nullptr, false);
    if (state == 2) util->CheckOut(part, nullptr, false);
    if (state >= 3) util->Release(part, nullptr, false);
    if (state == 4) util->Obsolete(part, nullptr, false);
  }
  std::string RevisionAndState() const {
    const auto found = Open()->FindNewest("p").at(0);
    return found.revision + std::to_string(found.state);
  }
};

TEST_P(TheLifeCycle, GoesOnlyItsWay) {
  MakePart(GetParam().from);
  const auto before = RevisionAndState();

  const auto outcome = Run({GetParam().verb, "p"});

  if (GetParam().to.empty()) {
    EXPECT_EQ(outcome.exitCode, kFailed);
    EXPECT_THAT(outcome.errors, HasSubstr("The life-cycle operation wasn't done. Check the state of the object: p, A"));
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(RevisionAndState(), before);
  } else {
    EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
    EXPECT_EQ(RevisionAndState(), GetParam().to);
  }
}

std::vector<Passing> AllPassings() {
  return {{"checkin", 0, "A1"},   {"checkin", 1, ""},     {"checkin", 2, "A1"},   {"checkin", 3, ""},
          {"checkin", 4, ""},     {"release", 0, "A3"},   {"release", 1, "A3"},   {"release", 2, "A3"},
          {"release", 3, ""},     {"release", 4, ""},     {"obsolete", 0, ""},    {"obsolete", 1, ""},
          {"obsolete", 2, ""},    {"obsolete", 3, "A4"},  {"obsolete", 4, ""},    {"checkout", 0, ""},
          {"checkout", 1, "A2"},  {"checkout", 2, ""},    {"checkout", 3, ""},    {"checkout", 4, ""},
          {"new-release", 0, ""}, {"new-release", 1, ""}, {"new-release", 2, ""}, {"new-release", 3, "B0"},
          {"new-release", 4, ""}};
}

INSTANTIATE_TEST_SUITE_P(OfEachState, TheLifeCycle, ::testing::ValuesIn(AllPassings()));

class WithAPart : public TheLifeCycle {
 protected:
  bool HasFile() const { return std::filesystem::exists(ToPath(AdminPath("p.stp"))); }
};

using CheckOutVerb = WithAPart;

TEST_F(CheckOutVerb, BringsTheFile) {
  MakePart(1);

  const auto outcome = Run({"checkout", "p"});

  EXPECT_EQ(outcome.out, "checked out 'p' (revision A)\nbrought '" + AdminPath("p.stp") + "'\n");
  EXPECT_TRUE(HasFile());
}

TEST_F(CheckOutVerb, BringsNothingThatItCouldNotTake) {
  MakePart(3);

  Run({"checkout", "p"});

  EXPECT_FALSE(HasFile());
}

TEST_F(CheckOutVerb, SaysThatTheFileCannotBeBrought) {
  MakePart(1);
  gate->FailOperation("VdSessionUtil.RunOperation", 1);

  const auto outcome = Run({"checkout", "p"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("Cls_Utils.CopyVeldoraObjectToWork"));
  EXPECT_EQ(RevisionAndState(), "A2");
}

TEST_F(CheckOutVerb, GoesOnWithTheNextAfterARefusal) {
  MakePart(3);
  {
    const auto vault = Open();
    CheckIn(*vault, Add(*vault, "ZORVA Part", "q"));
  }

  const auto outcome = Run({"checkout", "p", "q"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("checked out 'q'"), Not(HasSubstr("'p'"))));
}

TEST_F(CheckOutVerb, TellsInADryRunWhatItWouldDo) {
  MakePart(1);

  const auto outcome = Run({"checkout", "p", "--dry-run"});

  EXPECT_EQ(outcome.out, "nothing changed, as asked: 'p' (revision A) would be checked out\n");
  EXPECT_EQ(RevisionAndState(), "A1");
  EXPECT_FALSE(HasFile());
}

TEST_F(CheckOutVerb, ListsTheObjectsThatANameStandsFor) {
  MakePart(1);
  {
    const auto vault = Open();
    Add(*vault, "ZORVA Product", "p");
  }

  const auto outcome = Run({"checkout", "p"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("several objects of the vault are called 'p'"), HasSubstr("ZORVA Part"),
                                    HasSubstr("ZORVA Product")));
}

TEST_F(CheckOutVerb, NamesWhatIsMissing) {
  EXPECT_EQ(Run({"checkout"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"checkout", "gone"}).exitCode, kWrongUse);
}

using NewReleaseVerb = WithAPart;

TEST_F(NewReleaseVerb, BringsTheFileOfTheNewRevision) {
  MakePart(3);

  const auto outcome = Run({"new-release", "p"});

  EXPECT_EQ(outcome.out, "made 'p' (revision B)\nbrought '" + AdminPath("p.stp") + "'\n");
  EXPECT_TRUE(HasFile());
}

TEST_F(NewReleaseVerb, OfAnOldRevisionIsRefused) {
  MakePart(3);
  Run({"new-release", "p"});

  const auto outcome = Run({"new-release", "p@A"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_EQ(RevisionAndState(), "B0");
}

using ObsoleteVerb = WithAPart;

TEST_F(ObsoleteVerb, TellsWhatBecameObsolete) {
  MakePart(3);

  EXPECT_EQ(Run({"obsolete", "p"}).out, "obsolete now: 'p' (revision A)\n");
  EXPECT_FALSE(HasFile());
}

}  // namespace
}  // namespace quintara::test
