#include "apps/quintara/vault_cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

class UserVerb : public VaultCli {
 protected:
  void AddAnna(const std::string& rights = "none") {
    variables["QUINTARA_NEW_PASSWORD"] = "geheim";
    ASSERT_EQ(Run({"user", "add", "anna", "--rights", rights}).exitCode, kDone);
    variables.clear();
  }
  Outcome RunAsAnna(std::vector<std::string> arguments) {
    variables["QUINTARA_PASSWORD"] = "geheim";
    arguments.insert(arguments.end(), {"--user", "anna"});
    auto outcome = Run(arguments);
    variables.clear();
    return outcome;
  }
};

TEST_F(UserVerb, ListsUsersAndRights) {
  AddAnna();

  EXPECT_EQ(Run({"user"}).out, "user   rights\n-----  ------\nadmin  all\nanna   none\n");
}

TEST_F(UserVerb, AddsAUserWhoCanLogOn) {
  AddAnna("all");

  EXPECT_EQ(RunAsAnna({"ls"}).exitCode, kDone);
}

TEST_F(UserVerb, TakesThePasswordFromAPipe) {
  typed = "geheim\r\nnext\n";

  const auto outcome = Run({"user", "add", "anna"});

  EXPECT_THAT(outcome.out, AllOf(HasSubstr("added 'anna', without rights"), Not(HasSubstr("geheim"))));
  EXPECT_EQ(RunAsAnna({"ls"}).exitCode, kDone);
}

TEST_F(UserVerb, TakesThePasswordTwiceFromATerminal) {
  terminal.input = terminal.errors = true;
  typed = "geheim\ngeheim\n";

  Run({"user", "add", "anna"});

  EXPECT_EQ(RunAsAnna({"ls"}).exitCode, kDone);
}

TEST_F(UserVerb, AddsNobodyWithoutAPassword) {
  const auto outcome = Run({"user", "add", "anna"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("the password of 'anna' is missing"));
  EXPECT_THAT(Run({"user"}).out, Not(HasSubstr("anna")));
}

TEST_F(UserVerb, TakesNoPasswordAsAnArgument) {
  EXPECT_EQ(Run({"user", "add", "anna", "geheim"}).exitCode, kWrongUse);
}

TEST_F(UserVerb, AddsNobodyTwice) {
  AddAnna();

  const auto outcome = Run({"user", "add", "anna"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("there is a user 'anna' already"));
}

TEST_F(UserVerb, IsForUsersWithAllRights) {
  AddAnna();

  const auto outcome = RunAsAnna({"user", "grant", "anna", "all"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("only a user with all rights may do this; 'anna' has: none"));
  EXPECT_THAT(Run({"user"}).out, HasSubstr("anna   none"));
}

TEST_F(UserVerb, GivesARightOnOneClass) {
  AddAnna();

  const auto outcome = Run({"user", "grant", "anna", "CHECKIN", "ZORVA Part"});

  EXPECT_EQ(outcome.out, "'anna' has these rights now: CHECKIN on ZORVA Part\n");
}

TEST_F(UserVerb, GivesAndTakesAllRights) {
  AddAnna();
  EXPECT_EQ(Run({"user", "grant", "anna", "all"}).out, "'anna' has these rights now: all\n");

  EXPECT_EQ(Run({"user", "revoke", "anna", "all"}).out, "'anna' has these rights now: none\n");
}

TEST_F(UserVerb, NamesTheUserThatItDoesNotKnow) {
  const auto outcome = Run({"user", "grant", "bert", "CHECKIN"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("the vault has no user 'bert'"));
}

TEST_F(UserVerb, NamesTheOperationThatItDoesNotKnow) {
  const auto outcome = Run({"user", "grant", "admin", "EXPLODE"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("EXPLODE"));
}

TEST_F(UserVerb, NamesTheClassThatItDoesNotKnow) {
  const auto outcome = Run({"user", "revoke", "admin", "CHECKIN", "Wheel"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("Wheel"));
}

TEST_F(UserVerb, WantsAllOrNone) {
  EXPECT_EQ(Run({"user", "add", "anna", "--rights", "some"}).exitCode, kWrongUse);
}

}  // namespace
}  // namespace quintara::test
