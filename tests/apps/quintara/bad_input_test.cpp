#include <filesystem>

#include "apps/quintara/cli_fixture.h"
#include "base/text.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class BadInput : public CliWithAs1 {
 protected:
  // A failure that names `object` and leaves the work directory as it is.
  void ExpectFailure(const std::vector<std::string>& arguments, const std::string& object) {
    const auto names = work.Names();
    const auto wip = work.Read(kWip);
    const auto outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, kFailed) << outcome.out;
    EXPECT_THAT(outcome.errors, HasSubstr(object));
    EXPECT_EQ(work.Names(), names);
    EXPECT_EQ(work.Read(kWip), wip);
  }

  std::string Written(const std::string& name, const std::string& bytes) {
    elsewhere.Write(name, bytes);
    return elsewhere.Path(name);
  }
};

TEST_F(BadInput, AnEmptyFileIsNotImported) {
  ExpectFailure({"import", Written("empty.stp", "")}, "empty.stp");
}

TEST_F(BadInput, AFileThatIsNoStepIsNotImported) {
  ExpectFailure({"import", Written("letter.stp", "Dear Sir or Madam,\n")}, "letter.stp");
}

TEST_F(BadInput, AFileOfBinaryNoiseIsNotImported) {
  ExpectFailure({"import", Written("noise.stp", std::string(4000, '\x90'))}, "noise.stp");
}

TEST_F(BadInput, AFileThatIsCutOffIsNotImported) {
  work.Write("whole.stp", work.Read("nut.stp"));
  const auto whole = work.Read("whole.stp");

  ExpectFailure({"import", Written("cut.stp", whole.substr(0, whole.size() / 2))}, "cut.stp");
}

TEST_F(BadInput, AWorkDirectoryThatCannotBeWrittenStopsTheImport) {
  const auto outcome = RunBare({"import", work.Path("bolt.stp"), "--work", "/proc/self"});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("/proc/"));
}

TEST_F(BadInput, ADamagedProductIsNotOpened) {
  ExpectFailure({"tree", Written("x.ZVAProduct", "<Product")}, "x.ZVAProduct");
}

TEST_F(BadInput, AnEmptyProductIsNotOpened) {
  ExpectFailure({"matrix", Written("x.ZVAProduct", "")}, "x.ZVAProduct");
}

TEST_F(BadInput, AMatrixThatIsNoXmlPlacesNothing) {
  ExpectFailure({"position", "as1", "--matrix", Written("x.xml", "<PART"), "--all-instances"},
                "Error in loading XML file");
}

TEST_F(BadInput, AMatrixOfAnotherProductPlacesNothing) {
  RunBare({"import", Data("dm1-id-214.stp"), "--work", elsewhere.Path()});
  const auto strange = Written("x.xml", R"(<?xml version='1.0' encoding='UTF-8'?><PART PART_NUMBER="strange"/>)");

  ExpectFailure({"position", "as1", "--matrix", strange}, "stays as it was");
}

TEST_F(BadInput, AProductThatIsThereIsNotReplacedByAFlatOne) {
  ExpectFailure({"flatten", "as1"}, "WIP~~as1.ZVAProduct' exists already; --replace replaces it");
}

TEST_F(BadInput, AMatrixThatIsThereIsNotReplaced) {
  const auto before = work.Read(kMatrix);

  ExpectFailure({"matrix", "l-bracket-assembly", "-o", work.Path(kMatrix)}, "as1 Matrix.xml' exists already");

  EXPECT_EQ(work.Read(kMatrix), before);
}

TEST_F(BadInput, AMatrixIsNotWrittenIntoAFolderThatIsNotThere) {
  ExpectFailure({"matrix", "as1", "-o", work.Path("nowhere/x.xml")}, "nowhere");
}

TEST_F(BadInput, AMatrixIsNotWrittenOverAFolder) {
  ExpectFailure({"matrix", "as1", "-o", elsewhere.Path(), "--replace"}, "is a folder");
}

TEST_F(BadInput, AComponentWithoutALightFileIsNotTakenAsLight) {
  std::filesystem::remove(ToPath(work.Path("rod.lwt")));

  ExpectFailure({"flatten", "as1", "--name", "x", "--light", "rod"}, "rod.lwt");
}

TEST_F(BadInput, AFileToCompareWithMustBeStep) {
  ExpectFailure({"compare", "as1", "--with", work.Path(kMatrix)}, kMatrix);
}

TEST_F(BadInput, AResultThatCannotBeWrittenIsAFailure) {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream errors;
  out.setstate(std::ios::badbit);

  const int exitCode = RunQuintara({"tree", "as1", "--work", work.Path()}, {in, out, errors, terminal});

  EXPECT_EQ(exitCode, kFailed);
  EXPECT_EQ(errors.str(), "quintara: the result can't be written\n");
}

TEST_F(BadInput, ADryRunSavesNothing) {
  const auto names = work.Names();
  const auto wip = work.Read(kWip);

  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"flatten", "as1", "--name", "other", "--dry-run"},
                                             {"matrix", "rod-assembly", "--dry-run"},
                                             {"position", "as1", "--matrix", kMatrix, "--all-instances", "--dry-run"},
                                             {"scatter", "as1", "--dry-run"},
                                             {"export", "as1", work.Path("x.stp"), "--dry-run"},
                                             {"render", "as1", "-o", work.Path("x.png"), "--dry-run"}}) {
    const auto outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("nothing "), HasSubstr("as asked"))) << arguments.front();
    EXPECT_THAT(outcome.errors, IsEmpty());
  }

  EXPECT_EQ(work.Names(), names);
  EXPECT_EQ(work.Read(kWip), wip);
}

}  // namespace
}  // namespace quintara::test
