#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>

#include "apps/quintara/vault_with_as1.h"

namespace quintara::test {
namespace {

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class ImportWithMatrices : public VaultWithAs1 {
 protected:
  // An import into a vault of its own that is still empty.
  ImportWithMatrices() {
    fs::remove_all(ToPath(Folder()));
    MakeVault(Folder());
  }
  Outcome Import(std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"import", Data("as1-oc-214.stp"), "--work", work.Path()});
    return Run(options);
  }
  // The same assembly with its rods elsewhere.
  std::string MovedFile() {
    auto text = Read(Data("as1-oc-214.stp"));
    const std::string ofTheRods = "(-10.,75.,60.)";
    const auto place = text.find(ofTheRods);
    if (place == std::string::npos) throw std::runtime_error("the example has changed");
    text.replace(place, ofTheRods.size(), "(-20.,75.,60.)");
    elsewhere.Write("moved.stp", text);
    return elsewhere.Path("moved.stp");
  }

 private:
  static std::string Read(const std::string& path) { return NativeContents(std::make_shared<Gate>()).Read(path); }
};

TEST_F(ImportWithMatrices, GivesEachAssemblyItsOwn) {
  const auto outcome = Import();

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_THAT(outcome.out, AllOf(ContainsRegex("rod-assembly +assembly +3 +added +created"),
                                 ContainsRegex("as1 +assembly +4 +added +created"),
                                 Not(ContainsRegex("nut +part +added +created"))));
  for (const auto* number : {"as1", "rod-assembly", "l-bracket-assembly", "nut-bolt-assembly"}) {
    EXPECT_EQ(RevisionAndStateOfMatrix(number), "A1") << number;
  }
  EXPECT_EQ(RevisionAndStateOfMatrix("nut"), "");
  EXPECT_THAT(Open()->Check(), IsEmpty());
}

TEST_F(ImportWithMatrices, TouchesOnlyTheMatrixFilesOfTheWorkDirectory) {
  Import();

  EXPECT_THAT(work.Names(), ElementsAre("as1 Matrix.xml", "l-bracket-assembly Matrix.xml",
                                        "nut-bolt-assembly Matrix.xml", "rod-assembly Matrix.xml"));
  EXPECT_EQ(work.Read("as1 Matrix.xml"), StoredMatrix("as1"));
}

TEST_F(ImportWithMatrices, GivesTheRootAloneOneWhenAsked) {
  const auto outcome = Import({"--matrix", "root"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(RevisionAndStateOfMatrix("as1"), "A1");
  EXPECT_EQ(RevisionAndStateOfMatrix("rod-assembly"), "");
  EXPECT_THAT(work.Names(), ElementsAre("as1 Matrix.xml"));
}

TEST_F(ImportWithMatrices, GivesNoneWhenAsked) {
  const auto outcome = Import({"--matrix", "none"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(RevisionAndStateOfMatrix("as1"), "");
  EXPECT_THAT(work.Names(), IsEmpty());
}

TEST_F(ImportWithMatrices, KnowsThreeWays) {
  EXPECT_EQ(Import({"--matrix", "some"}).exitCode, kWrongUse);
}

TEST_F(ImportWithMatrices, NeedsAVaultForThem) {
  const auto outcome = RunBare({"import", Data("as1-oc-214.stp"), "--matrix", "all", "--work", work.Path()});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, HasSubstr("--matrix is of no use without a vault"));
  EXPECT_THAT(work.Names(), IsEmpty());
}

TEST_F(ImportWithMatrices, WritesNoneInADryRun) {
  EXPECT_EQ(Import({"--dry-run"}).exitCode, kDone);

  EXPECT_THAT(work.Names(), IsEmpty());
}

TEST_F(ImportWithMatrices, LeavesThoseOfUnchangedAssembliesAlone) {
  Import();
  work.Write("as1 Matrix.xml", "mine");

  const auto outcome = Import();

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(work.Read("as1 Matrix.xml"), "mine");
}

TEST_F(ImportWithMatrices, UpdatesThatOfAChangedAssembly) {
  Import();
  const auto before = ElementsOf(StoredMatrix("as1"));

  const auto outcome = Run({"import", MovedFile(), "--work", work.Path()});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.out, ContainsRegex("as1 +assembly +4 +new revision B +updated"));
  EXPECT_EQ(RevisionAndState("as1") + RevisionAndStateOfMatrix("as1"), "B1A1");
  EXPECT_NE(ElementsOf(StoredMatrix("as1")), before);
}

TEST_F(ImportWithMatrices, TakesBackItsMatrixFilesWhenItFails) {
  work.Write("as1 Matrix.xml", "mine");
  gate->FailOperation("VdSessionUtil.CheckIn", 8);

  const auto outcome = Import();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(work.Names(), ElementsAre("as1 Matrix.xml"));
  EXPECT_THAT(Open()->List(true), IsEmpty());
}

TEST_F(ImportWithMatrices, SaysWhichMatrixCouldNotBeWritten) {
  fs::create_directory(ToPath(work.Path("rod-assembly Matrix.xml")));

  const auto outcome = Import();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("no matrix was written for 'rod-assembly'"));
  EXPECT_EQ(RevisionAndState("rod-assembly"), "A1");
  EXPECT_EQ(RevisionAndStateOfMatrix("as1"), "A1");
}

TEST_F(ImportWithMatrices, FailsAsAWholeWhenAnAssemblyCannotBeOpened) {
  gate->FailOperation("Documents.Open", 3);

  const auto outcome = Import();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(Open()->List(true), IsEmpty());
  EXPECT_THAT(work.Names(), IsEmpty());
}

TEST_F(ImportWithMatrices, NeedsASessionForThem) {
  fs::remove_all(ToPath(Folder() + "/base/NLS"));

  EXPECT_EQ(Import().exitCode, kFailed);
  EXPECT_THAT(Open()->List(true), IsEmpty());
  EXPECT_EQ(Import({"--matrix", "none"}).exitCode, kDone);
}

TEST_F(ImportWithMatrices, LeavesNothingBehindWhenItIsInterrupted) {
  const auto staging = "'" + elsewhere.Path(".quintara-import-1") + "'";
  const auto command = "TMPDIR='" + elsewhere.Path() + "' '" QUINTARA_PROGRAM "' import '" + Data("as1-oc-214.stp") +
                       "' --vault '" + Folder() + "' --work '" + work.Path() + "' 2>'" + elsewhere.Path("errors") +
                       "' & running=$!; while [ ! -e " + staging +
                       " ] && kill -0 $running; do :; done; kill -TERM $running; wait $running";

  const int status = std::system(command.c_str());

  EXPECT_EQ(WEXITSTATUS(status), kFailed);
  EXPECT_THAT(elsewhere.Read("errors"), HasSubstr("interrupted"));
  EXPECT_FALSE(elsewhere.Has(".quintara-import-1"));
  EXPECT_THAT(work.Names(), IsEmpty());
  EXPECT_THAT(Open()->List(true), IsEmpty());
}

// What different CAD systems write.
class AnImportedAssembly : public ImportWithMatrices, public ::testing::WithParamInterface<std::string> {
 protected:
  std::vector<std::string> AssembliesIn(const std::string& folder) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(ToPath(folder))) {
      if (entry.path().extension() == ".ZVAProduct") names.push_back(FromPath(entry.path().stem()));
    }
    return names;
  }
};

TEST_P(AnImportedAssembly, HasForEachAssemblyTheMatrixThatItsFilesGive) {
  const TemporaryFolder split;
  ASSERT_EQ(RunBare({"import", Data(GetParam()), "--work", split.Path()}).exitCode, kDone);

  const auto outcome = Run({"import", Data(GetParam()), "--work", work.Path()});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  const auto assemblies = AssembliesIn(split.Path());
  EXPECT_THAT(assemblies, Not(IsEmpty()));
  EXPECT_EQ(work.Names().size(), assemblies.size());
  for (const auto& assembly : assemblies) {
    ASSERT_EQ(RunBare({"matrix", assembly, "--work", split.Path()}).exitCode, kDone) << assembly;
    EXPECT_EQ(StoredMatrix(assembly), split.Read(assembly + " Matrix.xml")) << assembly;
  }
}

INSTANTIATE_TEST_SUITE_P(Exchanged, AnImportedAssembly,
                         ::testing::Values("as1-oc-214.stp", "as1-tu-203.stp", "as1_pe_203.stp", "dm1-id-214.stp",
                                           "dm1-oc-214.stp", "dm1-pe-214.stp", "s1-c5-214/s1-c5-214.stp",
                                           "s1-tu-203/s1-tu-203.stp", "s1_pe_214/s1_pe_214.stp"));

}  // namespace
}  // namespace quintara::test
