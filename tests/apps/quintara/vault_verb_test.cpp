#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "apps/quintara/vault_cli_fixture.h"
#include "base/text.h"
#include "hosts/vault/database.h"

namespace quintara::test {
namespace {

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class InitVerb : public Cli {
 protected:
  std::string Folder() const { return elsewhere.Path("gears.vault"); }
  Outcome Init(std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"vault", "init", Folder()});
    return RunBare(options);
  }
};

TEST_F(InitVerb, TellsWhatItMade) {
  const auto outcome = Init();

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_EQ(outcome.out, "made the vault '" + Folder() + "'\n  database  SQLite, '" + Folder() +
                             "/vault.sqlite'\n  files     '" + Folder() +
                             "/store'\n  user      'admin', with all rights, without a password\n");
  EXPECT_THAT(outcome.errors, IsEmpty());
}

TEST_F(InitVerb, MakesAVaultThatHasTheTexts) {
  Init();

  EXPECT_TRUE(fs::is_directory(ToPath(Folder() + "/base/NLS/EN/Custom")));
}

TEST_F(InitVerb, PutsTheFilesWhereItIsTold) {
  const auto outcome = Init({"--store", elsewhere.Path("share")});

  EXPECT_THAT(outcome.out, HasSubstr("files     '" + elsewhere.Path("share")));
  EXPECT_TRUE(fs::is_directory(ToPath(elsewhere.Path("share"))));
}

TEST_F(InitVerb, MakesTheVaultThatIsNamedByTheOption) {
  RunBare({"vault", "init", "--vault", Folder()});

  EXPECT_EQ(RunBare({"vault", "check", "--vault", Folder()}).exitCode, kDone);
}

TEST_F(InitVerb, GivesTheFirstUserTheNameAsked) {
  Init({"--user", "anna"});

  EXPECT_EQ(RunBare({"ls", "--vault", Folder(), "--user", "anna"}).exitCode, kDone);
  EXPECT_EQ(RunBare({"ls", "--vault", Folder()}).exitCode, kWrongUse);
}

TEST_F(InitVerb, TakesThePasswordFromTheEnvironmentAndTellsItNowhere) {
  variables["QUINTARA_PASSWORD"] = "geheim";

  const auto outcome = Init();

  EXPECT_THAT(outcome.out + outcome.errors, Not(HasSubstr("geheim")));
  EXPECT_THAT(outcome.out, Not(HasSubstr("without a password")));
  EXPECT_EQ(RunBare({"ls", "--vault", Folder()}).exitCode, kDone);
  variables.clear();
  EXPECT_EQ(RunBare({"ls", "--vault", Folder()}).exitCode, kWrongUse);
}

TEST_F(InitVerb, AsksForThePasswordOnATerminal) {
  terminal.input = terminal.errors = true;
  typed = "geheim\ngeheim\n";

  Init();

  terminal = {};
  variables["QUINTARA_PASSWORD"] = "geheim";
  EXPECT_EQ(RunBare({"ls", "--vault", Folder()}).exitCode, kDone);
}

TEST_F(InitVerb, TakesNoPasswordThatIsTypedInTwoWays) {
  terminal.input = terminal.errors = true;
  typed = "geheim\ngehiem\n";

  const auto outcome = Init();

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("the two passwords differ"), Not(HasSubstr("geh"))));
  EXPECT_FALSE(fs::exists(ToPath(Folder())));
}

TEST_F(InitVerb, LeavesAVaultThatIsThereAlone) {
  Init();

  const auto outcome = Init();

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("there is a vault in '" + Folder() + "' already"));
}

TEST_F(InitVerb, TakesAFolderWithASeparatorAtItsEnd) {
  const auto outcome = RunBare({"vault", "init", Folder() + "/"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(RunBare({"vault", "check", "--vault", Folder() + "/"}).exitCode, kDone);
}

TEST_F(InitVerb, DoesNotReplaceAFile) {
  elsewhere.Write("gears.vault", "mine");

  const auto outcome = Init();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("gears.vault"));
  EXPECT_EQ(elsewhere.Read("gears.vault"), "mine");
}

TEST_F(InitVerb, RefusesADatabaseThatIsNoAddress) {
  const auto outcome = Init({"--database", "gears.db"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("'gears.db' is no address"));
}

TEST_F(InitVerb, LeavesNothingBehindWithoutTheServer) {
  const auto outcome = Init({"--database", "postgresql://host=/nowhere user=anna password=geheim dbname=gears"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(Not(HasSubstr("geheim")), Not(IsEmpty())));
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_FALSE(fs::exists(ToPath(Folder())));
}

TEST_F(InitVerb, TellsNoPasswordOfAnAddressHoweverItIsWritten) {
  for (const std::string rest : {"anna:geheim@/gears", "host=/nowhere password='geheim",
                                 "localhost:1/gears?password=geheim", "host=/nowhere password=geheim port=x"}) {
    const auto outcome = Init({"--database", "postgresql://" + rest});

    EXPECT_EQ(outcome.exitCode, kFailed) << rest;
    EXPECT_THAT(outcome.out + outcome.errors, Not(HasSubstr("geheim")));
    EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
  }
}

TEST_F(InitVerb, OnPostgresTellsNoAddress) {
  const auto outcome = Init({"--database", "postgresql://password=geheim"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("database  PostgreSQL\n"), Not(HasSubstr("geheim"))));
  EXPECT_EQ(RunBare({"ls", "--vault", Folder()}).out, "the vault holds no products or parts yet\n");
  EXPECT_THAT(RunBare({"vault", "check", "--vault", Folder()}).out, HasSubstr("nothing is wrong"));
}

TEST_F(InitVerb, OnPostgresJoinsTheVaultThatIsThere) {
  const std::string address = "postgresql://options='-c search_path=joined'";
  vault::Database("postgresql://").ExecuteOnce("CREATE SCHEMA joined");
  Init({"--database", address, "--store", elsewhere.Path("share")});

  const auto outcome = RunBare(
      {"vault", "init", elsewhere.Path("other.vault"), "--database", address, "--store", elsewhere.Path("share")});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("joined to the vault of the database"), Not(HasSubstr("user"))));
}

TEST_F(InitVerb, OnPostgresJoinsNoVaultWithoutItsStore) {
  const std::string address = "postgresql://options='-c search_path=unjoined'";
  vault::Database("postgresql://").ExecuteOnce("CREATE SCHEMA unjoined");
  Init({"--database", address});

  const auto outcome = RunBare({"vault", "init", elsewhere.Path("other.vault"), "--database", address});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("its store must be named"));
}

class CheckVerb : public VaultCli {};

TEST_F(CheckVerb, TellsThatNothingIsWrong) {
  AddGear();

  const auto outcome = Run({"vault", "check"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_EQ(outcome.out, "nothing is wrong in '" + Folder() + "'\n");
}

TEST_F(CheckVerb, FindsADamagedFile) {
  AddGear();
  fs::path damaged;
  for (const auto& entry : fs::recursive_directory_iterator(ToPath(Folder() + "/store"))) {
    if (entry.is_regular_file() && entry.file_size() == std::string("content of nut").size()) damaged = entry.path();
  }
  fs::permissions(damaged, fs::perms::owner_write, fs::perm_options::add);
  fs::resize_file(damaged, 3);

  const auto outcome = Run({"vault", "check"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("damaged file"), HasSubstr("nut.stp")));
  EXPECT_EQ(outcome.errors, "quintara: 1 thing is wrong in '" + Folder() + "'\n");
}

TEST_F(CheckVerb, FindsWhatIsMissingAndWhatIsTooMuch) {
  AddGear();
  for (const auto& entry : fs::recursive_directory_iterator(ToPath(Folder() + "/store"))) {
    if (!entry.is_regular_file() || entry.file_size() != std::string("content of nut").size()) continue;
    fs::rename(entry.path(), entry.path().parent_path() / "stray");
    break;
  }

  const auto outcome = Run({"vault", "check"});

  EXPECT_THAT(outcome.out, AllOf(HasSubstr("missing file"), HasSubstr("stray file")));
  EXPECT_THAT(outcome.errors, HasSubstr("2 things are wrong"));
}

TEST_F(CheckVerb, NeedsAVault) {
  const auto outcome = RunBare({"vault", "check", "--vault", work.Path()});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("'" + work.Path() + "' is no vault; 'quintara vault init' makes one"));
}

TEST_F(CheckVerb, IsNoMoreThanOneWord) {
  EXPECT_EQ(RunBare({"vault"}).exitCode, kWrongUse);
  EXPECT_THAT(RunBare({"vault"}).errors, HasSubstr("'quintara vault --help'"));
  EXPECT_THAT(RunBare({"vault", "chek"}).errors, HasSubstr("chek"));
}

// Which vault is meant; told by the folder that its check names.
class FindingTheVault : public VaultCli {
 protected:
  FindingTheVault() {
    MakeVault(work.Path("quintara.vault"));
    fs::create_directories(ToPath(work.Path("a/b")));
  }
  std::string Found(const std::string& folder, const std::string& before, const std::string& options = {}) {
    const auto command = "cd '" + folder + "' && " + before + " '" QUINTARA_PROGRAM "' vault check " + options + " >'" +
                         elsewhere.Path("out") + "' 2>&1 </dev/null";
    const int status = std::system(command.c_str());
    EXPECT_TRUE(WIFEXITED(status));
    return elsewhere.Read("out");
  }
};

TEST_F(FindingTheVault, GoesUpwards) {
  EXPECT_THAT(Found(work.Path("a/b"), ""), HasSubstr("'" + work.Path("quintara.vault") + "'"));
}

TEST_F(FindingTheVault, TakesTheNearest) {
  MakeVault(work.Path("a/quintara.vault"));

  EXPECT_THAT(Found(work.Path("a/b"), ""), HasSubstr("'" + work.Path("a/quintara.vault") + "'"));
}

TEST_F(FindingTheVault, PassesAFolderThatOnlyHasTheName) {
  fs::create_directory(ToPath(work.Path("a/quintara.vault")));

  EXPECT_THAT(Found(work.Path("a/b"), ""), HasSubstr("'" + work.Path("quintara.vault") + "'"));
}

TEST_F(FindingTheVault, TakesTheEnvironmentBeforeWhatIsThere) {
  EXPECT_THAT(Found(work.Path(), "QUINTARA_VAULT='" + Folder() + "'"), HasSubstr("'" + Folder() + "'"));
}

TEST_F(FindingTheVault, TakesTheOptionBeforeTheEnvironment) {
  EXPECT_THAT(Found(work.Path(), "QUINTARA_VAULT=/nowhere", "--vault '" + Folder() + "'"),
              HasSubstr("'" + Folder() + "'"));
}

TEST_F(FindingTheVault, NeverFallsBackFromOneThatIsNamed) {
  EXPECT_THAT(Found(work.Path(), "QUINTARA_VAULT=/nowhere"), HasSubstr("'/nowhere' is no vault"));
}

TEST_F(FindingTheVault, SaysWhatToDoWithoutAny) {
  EXPECT_THAT(Found(elsewhere.Path(), "rm -r quintara.vault;"),
              AllOf(HasSubstr("there is no vault here"), HasSubstr("--vault"), HasSubstr("quintara vault init")));
}

TEST_F(FindingTheVault, LeavesVerbsOnFilesAlone) {
  const auto outcome = RunBare({"position", "gone", "--matrix", "gone.xml", "--work", work.Path()});

  EXPECT_THAT(outcome.errors, HasSubstr("there is no matrix file 'gone.xml'"));
}

class TheUser : public VaultCli {};

TEST_F(TheUser, HasAWorkDirectoryInTheVault) {
  EXPECT_THAT(Run({"matrix", "gone"}).errors, HasSubstr("'" + AdminPath() + "'"));

  Run({"ls"});

  EXPECT_TRUE(fs::is_directory(ToPath(AdminPath())));
}

TEST_F(TheUser, FindsFilesWrittenToTheWorkDirectory) {
  work.Write("small.ZVAProduct", R"(<ZVAProduct partNumber="small"/>)");

  EXPECT_EQ(Run({"matrix", work.Path("small.ZVAProduct")}).exitCode, kDone);

  EXPECT_TRUE(fs::exists(ToPath(AdminPath("small Matrix.xml"))));
}

TEST_F(TheUser, WhoIsUnknownLeavesNothingBehind) {
  Run({"ls", "--user", "anna"});
  Run({"tree", "gone", "--user", "anna"});

  EXPECT_FALSE(fs::exists(ToPath(Folder() + "/work")));
}

TEST_F(TheUser, IsNotAskedForAPasswordWhenTheVaultCannotBeRead) {
  terminal.input = terminal.errors = true;
  typed = "geheim\n";
  std::ofstream(ToPath(Folder() + "/vault.xml")) << "<Vault";

  const auto outcome = Run({"ls"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("vault.xml"), Not(HasSubstr("Password"))));
}

TEST_F(TheUser, HasTheWorkDirectoryThatIsNamed) {
  variables["QUINTARA_WORK"] = work.Path();
  EXPECT_THAT(Run({"matrix", "gone"}).errors, HasSubstr("'" + work.Path() + "'"));

  EXPECT_THAT(Run({"matrix", "gone", "--work", elsewhere.Path()}).errors, HasSubstr("'" + elsewhere.Path() + "'"));
  EXPECT_FALSE(fs::exists(ToPath(Folder() + "/work")));
}

TEST_F(TheUser, CannotHaveAFolderOfAnyName) {
  for (const std::string user : {"../anna", "..", "a/b", "nul"}) {
    const auto outcome = Run({"ls", "--user", user});

    EXPECT_EQ(outcome.exitCode, kWrongUse) << user;
    EXPECT_THAT(outcome.errors, AllOf(HasSubstr("'" + user + "'"), HasSubstr("--work")));
  }
}

TEST_F(TheUser, MustBeKnown) {
  variables["QUINTARA_USER"] = "anna";

  const auto outcome = Run({"ls"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("\"anna\""), HasSubstr("QUINTARA_PASSWORD")));
}

TEST_F(TheUser, IsAskedForAPasswordOnlyWhenItIsMissed) {
  terminal.input = terminal.errors = true;
  typed = "unread\n";

  EXPECT_THAT(Run({"ls"}).errors, IsEmpty());
}

TEST_F(TheUser, TypesThePasswordOnATerminal) {
  variables["QUINTARA_NEW_PASSWORD"] = "geheim";
  Run({"user", "add", "anna"});
  terminal.input = terminal.errors = true;
  typed = "geheim\n";

  const auto outcome = Run({"ls", "--user", "anna"});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_EQ(outcome.errors, "Password of 'anna': \n");
}

TEST_F(TheUser, IsRefusedAfterAWrongPassword) {
  terminal.input = terminal.errors = true;
  typed = "geheim\n";

  const auto outcome = Run({"ls", "--user", "anna"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, Not(HasSubstr("geheim")));
}

TEST_F(TheUser, NamesALanguageByTwoLetters) {
  EXPECT_EQ(Run({"ls", "--lang", "de"}).exitCode, kDone);

  const auto outcome = Run({"ls", "--lang", "german"});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("'german' is no language"));
}

TEST_F(TheUser, StartsOneOfTheTwoClientsFirst) {
  EXPECT_EQ(Run({"ls", "--started-first", "zorva"}).exitCode, kDone);

  EXPECT_THAT(Run({"ls", "--started-first", "excel"}).errors, HasSubstr("excel"));
}

}  // namespace
}  // namespace quintara::test
