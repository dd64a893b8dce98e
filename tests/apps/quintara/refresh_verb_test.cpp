#include <algorithm>
#include <string>
#include <vector>

#include "apps/quintara/vault_with_as1.h"
#include "hosts/vault/database.h"
#include "support/refresh_paths.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

using Lines = std::vector<std::string>;

constexpr auto kSuccess = "The product and all its components were refreshed.";

// The real assembly in the vault, of whose nut there is a newer revision than the one that is held.
class RefreshVerb : public VaultWithAs1 {
 protected:
  RefreshVerb() {
    const auto vault = Open();
    const auto config = vault->Application()->Engine()->Sessions(0)->Config();
    for (const auto& path : SettingPaths()) config->SetValue(path, "my " + path);
  }

  void GivenANewerNut() const {
    const auto vault = Open();
    const auto newer = vault->NewRevision(Newest(*vault, "nut"));
    work.Write("nut.stp", NewerNut(vault->FileOf(newer)));
    vault->StoreFile(newer, work.Path("nut.stp"));
    CheckIn(*vault, newer);
  }
  void ReleaseAll() {
    for (const auto* partNumber : {"nut", "bolt", "rod", "plate", "l-bracket"}) RunWell({"release", partNumber});
    const auto vault = Open();
    const auto session = vault->Application()->Engine()->Sessions(0);
    const auto util = session->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil();
    for (const auto* partNumber : {"rod-assembly", "nut-bolt-assembly", "l-bracket-assembly", "as1"}) {
      util->Release(Newest(*vault, partNumber), nullptr, false);
    }
  }

  static Object Newest(EmbeddedVault& vault, const std::string& partNumber) {
    return ObjectIn(vault, vault.FindNewest(partNumber).at(0).identity);
  }
  static std::string NewerNut(std::string bytes) {
    const auto data = bytes.find("DATA;");
    if (data != bytes.npos) bytes.insert(data, "/* drawn again */");
    return bytes;
  }
  // All that a product holds, at the revisions that it holds, "nut B".
  Lines Holds(const std::string& partNumber) const {
    const auto vault = Open();
    Lines lines;
    for (const auto& held : vault->WholeStructure(Newest(*vault, partNumber))) {
      lines.push_back(held.object.partNumber + " " + held.object.revision);
    }
    std::ranges::sort(lines);
    return lines;
  }
  Lines Values() const {
    const auto vault = Open();
    Lines values;
    for (const auto& path : SettingPaths()) {
      values.push_back(vault->Application()->Engine()->Sessions(0)->Config()->Value(path));
    }
    return values;
  }
  static Lines Mine() {
    Lines values;
    for (const auto& path : SettingPaths()) values.push_back("my " + path);
    return values;
  }
  std::size_t MatricesOf(const std::string& partNumber) const {
    const auto vault = Open();
    const auto links = vault->Links(Newest(*vault, partNumber));
    return static_cast<std::size_t>(
        std::ranges::count_if(links, [](const auto& link) { return !link.isStructure && link.goesOut; }));
  }
};

TEST_F(RefreshVerb, PointsTheStructureAtTheNewestRevisions) {
  GivenANewerNut();

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.errors, HasSubstr(kSuccess));
  EXPECT_THAT(Holds("as1"), ElementsAre("as1 A", "bolt A", "l-bracket A", "l-bracket-assembly A", "nut B",
                                        "nut-bolt-assembly A", "plate A", "rod A", "rod-assembly A"));
  for (const auto* partNumber : {"as1", "rod-assembly", "nut-bolt-assembly", "l-bracket-assembly"}) {
    EXPECT_EQ(RevisionAndState(partNumber), "A1") << partNumber;
  }
  EXPECT_EQ(RevisionAndState("nut"), "B1");
}

TEST_F(RefreshVerb, TellsWhatIsAnotherOneNow) {
  GivenANewerNut();

  EXPECT_EQ(Run({"refresh", "as1"}).out,
            "object             before        now\n"
            "-----------------  ------------  ------------\n"
            "rod-assembly       A checked in  A checked in\n"
            "nut-bolt-assembly  A checked in  A checked in\n"
            "nut                A checked in  B checked in\n"
            "matrix 'as1 Matrix' (revision A, checked in): unchanged\n"
            "refreshed 'as1' (revision A)\n");
}

TEST_F(RefreshVerb, OfWhatIsReleasedMakesNewRevisionsOfWhatHeldAnOlderOne) {
  GivenANewerNut();
  ReleaseAll();

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(Holds("as1"), ElementsAre("as1 B", "bolt A", "l-bracket A", "l-bracket-assembly B", "nut B",
                                        "nut-bolt-assembly B", "plate A", "rod A", "rod-assembly B"));
  EXPECT_EQ(RevisionAndState("as1") + RevisionAndState("rod-assembly") + RevisionAndState("plate"), "B1B1A3");
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("as1                 A released    B checked in\n"),
                                 HasSubstr("nut                 A checked in  B released\n"),
                                 HasSubstr("refreshed 'as1' (revision B)\n")));
}

TEST_F(RefreshVerb, LeavesTheSettingsAsTheyWere) {
  GivenANewerNut();

  RunWell({"refresh", "as1"});

  EXPECT_EQ(Values(), Mine());
}

TEST_F(RefreshVerb, WritesTheMatrixAnewAndMakesNoSecondOne) {
  GivenANewerNut();
  const auto before = ElementsOf(StoredMatrix("as1"));

  RunWell({"refresh", "as1"});

  EXPECT_EQ(MatricesOf("as1"), 1U);
  EXPECT_EQ(RevisionAndStateOfMatrix("as1"), "A1");
  EXPECT_THAT(ElementsOf(StoredMatrix("as1")), ElementsAreArray(before));
}

// What moved in a sub-assembly stands elsewhere in the whole now.
TEST_F(RefreshVerb, WritesWhereTheNewestRevisionsHaveTheirComponents) {
  RunWell({"checkout", "rod-assembly"});
  Move("rod-assembly.ZVAProduct", "nut_1", 10);
  RunWell({"checkin", "rod-assembly", "--yes"});
  const auto nutIn = [](const std::vector<MatrixElement>& elements) {
    const auto found = std::ranges::find_if(
        elements, [](const auto& element) { return element.fullName.ends_with("rod-assembly_1\\nut_1"); });
    return found == elements.end() ? std::string("no nut") : found->numbers[9];
  };
  const auto before = nutIn(ElementsOf(StoredMatrix("as1")));

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_THAT(outcome.out, HasSubstr("matrix 'as1 Matrix' (revision A, checked in): updated\n"));
  EXPECT_NE(nutIn(ElementsOf(StoredMatrix("as1"))), before);
  EXPECT_EQ(MatricesOf("as1"), 1U);
}

TEST_F(RefreshVerb, DoesTheSameWhereTheCadHostWasStartedFirst) {
  GivenANewerNut();

  const auto outcome = Run({"refresh", "as1", "--started-first", "zorva"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(Holds("as1"), AllOf(Contains("nut B"), Not(Contains("nut A"))));
  EXPECT_EQ(RevisionAndState("as1"), "A1");
  EXPECT_EQ(MatricesOf("as1"), 1U);
  EXPECT_EQ(Values(), Mine());
}

TEST_F(RefreshVerb, LogsOffAndOnOnlyWhereTheVaultWasStartedFirst) {
  const auto logOns = [&](const Lines& further) {
    gate = std::make_shared<Gate>();
    gate->StartRecording();
    Lines arguments = {"refresh", "as1"};
    arguments.insert(arguments.end(), further.begin(), further.end());
    RunWell(arguments);
    return std::ranges::count(gate->Record(), "VdSession.UserLogin(***)");
  };

  EXPECT_EQ(logOns({}), 2);
  EXPECT_EQ(logOns({"--started-first", "veldora"}), 2);
  EXPECT_EQ(logOns({"--started-first", "zorva"}), 0);
}

TEST_F(RefreshVerb, BringsTheNewestFilesAndTheirLightRepresentations) {
  GivenANewerNut();
  const auto light = StoredLight("as1");

  RunWell({"refresh", "as1"});

  EXPECT_THAT(ReadWork("nut.stp"), HasSubstr("drawn again"));
  EXPECT_EQ(StoredFile("as1"), ReadWork("as1.ZVAProduct"));
  EXPECT_THAT(light, Not(IsEmpty()));
  EXPECT_EQ(StoredLight("as1"), ReadWork("as1.ZVAProduct.lwt"));
}

TEST_F(RefreshVerb, OfWhatIsUpToDateChangesNoRevision) {
  const auto before = Holds("as1");

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(outcome.out,
            "matrix 'as1 Matrix' (revision A, checked in): unchanged\n"
            "refreshed 'as1' (revision A)\n");
  EXPECT_EQ(Holds("as1"), before);
  EXPECT_EQ(RevisionAndState("as1"), "A1");
}

TEST_F(RefreshVerb, CanBeRunAgainAndAgain) {
  for (int i = 0; i < 3; ++i) {
    GivenANewerNut();
    EXPECT_EQ(Run({"refresh", "as1"}).exitCode, kDone);
  }

  EXPECT_THAT(Holds("as1"), Contains("nut D"));
  EXPECT_EQ(MatricesOf("as1"), 1U);
  EXPECT_THAT(Run({"vault", "check"}).out, HasSubstr("nothing is wrong"));
}

TEST_F(RefreshVerb, OfASubAssemblyWritesNoMatrix) {
  GivenANewerNut();
  const auto before = StoredMatrix("rod-assembly");

  EXPECT_EQ(Run({"refresh", "rod-assembly"}).exitCode, kDone);

  EXPECT_EQ(StoredMatrix("rod-assembly"), before);
  EXPECT_THAT(Holds("rod-assembly"), ElementsAre("nut B", "rod A", "rod-assembly A"));
  EXPECT_THAT(Holds("nut-bolt-assembly"), Contains("nut A"));
}

TEST_F(RefreshVerb, ShowsTheWaitingDialogOnATerminal) {
  terminal = {true, true, true};

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_THAT(outcome.errors, HasSubstr("Global refresh in progress..."));
  EXPECT_LT(outcome.errors.find("Global refresh in progress..."), outcome.errors.find(kSuccess));
}

TEST_F(RefreshVerb, SpeaksTheLanguageOfItsUser) {
  terminal = {true, true, true};

  const auto outcome = Run({"refresh", "as1", "--lang", "DE"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("Globale Aktualisierung läuft"), HasSubstr("wurden aktualisiert.")));
}

TEST_F(RefreshVerb, NamesTheNewestRevisionsThatAreStillInWork) {
  {
    const auto vault = Open();
    vault->NewRevision(Newest(*vault, "nut"));
  }

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.errors, HasSubstr("'nut' (revision B) is still in work: new"));
  EXPECT_EQ(RevisionAndState("nut"), "B0");
}

// What it doesn't do.

TEST_F(RefreshVerb, RefusesAProductInWork) {
  RunWell({"checkout", "as1"});

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("as1"), HasSubstr("checked in or released")));
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_EQ(RevisionAndState("as1"), "A2");
  EXPECT_EQ(Values(), Mine());
}

TEST_F(RefreshVerb, RefusesAComponentInWork) {
  GivenANewerNut();
  RunWell({"checkout", "plate"});

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("All components of the product must be checked in or released."));
  EXPECT_THAT(outcome.out, IsEmpty());
  EXPECT_THAT(Holds("as1"), Contains("nut A"));
  EXPECT_EQ(Values(), Mine());
}

TEST_F(RefreshVerb, IsWrongUseOfWhatIsNotThere) {
  EXPECT_EQ(Run({"refresh", "unknown"}).exitCode, kWrongUse);
  EXPECT_EQ(Run({"refresh"}).exitCode, kWrongUse);
  EXPECT_EQ(RunBare({"refresh", "as1", "--work", work.Path()}).exitCode, kWrongUse);
  EXPECT_EQ(Values(), Mine());
}

TEST_F(RefreshVerb, TellsWhatAFailureLeavesCheckedOut) {
  GivenANewerNut();
  gate->FailOperation("HIXEngine.CommitStep2");

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors,
              AllOf(HasSubstr("Injected failure"), HasSubstr("'as1' (revision A) is left checked out (admin)"),
                    HasSubstr("'rod-assembly' (revision A) is left checked out (admin)")));
  EXPECT_THAT(outcome.errors, Not(HasSubstr("'plate'")));
  EXPECT_THAT(outcome.out, Not(HasSubstr("refreshed")));
  EXPECT_EQ(RevisionAndState("as1"), "A2");
}

TEST_F(RefreshVerb, AfterAFailureKeepsThoseOfTheSettingsThatGoToKeysOfTheirOwn) {
  gate->FailOperation("HIXEngine.CheckOutDocument");

  EXPECT_EQ(Run({"refresh", "as1"}).exitCode, kFailed);

  auto expected = Mine();
  expected[1] = "TRUE";
  expected[2] = "NO";
  expected[3] = "NODIALOG";
  EXPECT_EQ(Values(), expected);
  EXPECT_EQ(RevisionAndState("as1"), "A1");
}

TEST_F(RefreshVerb, EndsWithAFailureWhereTheUserCannotLogOnAgain) {
  gate->FailOperation("VdSession.UserLogin");

  const auto outcome = Run({"refresh", "as1"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("Injected failure"), HasSubstr("Nobody is logged on to the vault")));
  EXPECT_EQ(RevisionAndState("as1"), "A1");
}

TEST_F(RefreshVerb, RefusesAUserWhoMayNotCheckOut) {
  variables = {{"QUINTARA_NEW_PASSWORD", "apple"}};
  RunWell({"user", "add", "eve"});
  variables = {{"QUINTARA_PASSWORD", "apple"}};

  const auto outcome = Run({"refresh", "as1", "--user", "eve"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_EQ(RevisionAndState("as1"), "A1");
}

// A box may be passed over, a vault in disorder may not.
TEST_F(RefreshVerb, LeavesTheVaultInOrderWhicheverCallFails) {
  constexpr int kStep = 97;
  GivenANewerNut();
  const TemporaryFolder kept;
  std::filesystem::copy(ToPath(Folder()), ToPath(kept.Path("quintara.vault")),
                        std::filesystem::copy_options::recursive);

  for (int n = 1;; n += kStep) {
    UseCopyOf(kept);
    gate = std::make_shared<Gate>();
    gate->FailCall(n);
    const auto outcome = Run({"refresh", "as1"});
    if (!gate->HasFailed()) break;
    SCOPED_TRACE("call " + std::to_string(n) + ": " + outcome.out + outcome.errors);
    EXPECT_THAT(Open()->Check(), IsEmpty());
    const bool isRefreshed = outcome.errors.find(kSuccess) != std::string::npos;
    if (isRefreshed) {
      EXPECT_EQ(RevisionAndState("as1"), "A1");
      EXPECT_EQ(Values(), Mine());
    } else {
      EXPECT_NE(outcome.exitCode, kDone);
    }
    if (HasFailure()) break;
  }
}

// The same, on a vault of its own.
class ARefresh : public Cli {
 protected:
  // Once the nut has its next revision.
  void RefreshThere(const std::string& first, const std::string& line) {
    for (const auto* verb : {"release", "new-release", "checkin"}) RunThere({verb, "nut"});
    const auto outcome = RunThere({"refresh", "as1", "--started-first", first});
    EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
    EXPECT_THAT(outcome.out, AllOf(HasSubstr(line), HasSubstr("refreshed 'as1' (revision A)\n")));
  }
  Outcome RunThere(Lines arguments) {
    arguments.insert(arguments.end(), {"--vault", elsewhere.Path("other.vault"), "--yes"});
    return RunBare(arguments);
  }
};

TEST_F(ARefresh, OnPostgresIsTheSame) {
  vault::Database("postgresql://").ExecuteOnce("CREATE SCHEMA refresh");
  RunBare(
      {"vault", "init", elsewhere.Path("other.vault"), "--database", "postgresql://options='-c search_path=refresh'"});
  RunThere({"import", Data("as1-oc-214.stp")});

  RefreshThere("veldora", "nut                A released    B checked in\n");
  RefreshThere("zorva", "nut                B released    C checked in\n");

  EXPECT_THAT(RunThere({"links", "as1"}).out, HasSubstr("as1 Matrix.xml"));
  EXPECT_THAT(RunThere({"vault", "check"}).out, HasSubstr("nothing is wrong"));
}

}  // namespace
}  // namespace quintara::test
