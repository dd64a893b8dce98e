#include "apps/quintara/cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class WrongUses : public CliWithAs1 {
 protected:
  void ExpectWrongUse(const std::vector<std::string>& arguments, const std::string& message) {
    const auto names = work.Names();
    const auto outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, kWrongUse) << outcome.out;
    EXPECT_THAT(outcome.errors, AllOf(::testing::StartsWith("quintara: "), HasSubstr(message)));
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(work.Names(), names);
  }
};

TEST_F(WrongUses, WithoutAVerbTheHelpIsShown) {
  const auto outcome = RunBare({});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("what is to be done?"), HasSubstr("flatten")));
}

TEST_F(WrongUses, OptionsAloneAreNoVerb) {
  ExpectWrongUse({"--yes"}, "quintara --help");
}

TEST_F(WrongUses, AnUnknownVerbIsNamed) {
  ExpectWrongUse({"explode", "as1"}, "explode");
}

TEST_F(WrongUses, AnUnknownOptionIsNamed) {
  ExpectWrongUse({"tree", "as1", "--colour"}, "--colour");
}

TEST_F(WrongUses, AMissingArgumentPointsToTheHelpOfTheVerb) {
  ExpectWrongUse({"flatten"}, "quintara flatten --help");
}

TEST_F(WrongUses, AMissingMatrixOptionIsNamed) {
  ExpectWrongUse({"position", "as1"}, "--matrix");
}

TEST_F(WrongUses, AMissingMatrixFileIsNamed) {
  ExpectWrongUse({"position", "as1", "--matrix", "gone.xml"}, "there is no matrix file 'gone.xml'");
}

TEST_F(WrongUses, YesAndNoContradictEachOther) {
  ExpectWrongUse({"tree", "as1", "--yes", "--no"}, "--yes");
}

TEST_F(WrongUses, AllAndFirstInstancesContradictEachOther) {
  ExpectWrongUse({"position", "as1", "--matrix", kMatrix, "--all-instances", "--first-instances"}, "--all-instances");
}

TEST_F(WrongUses, ADepthIsANumber) {
  ExpectWrongUse({"tree", "as1", "--depth", "deep"}, "--depth");
}

TEST_F(WrongUses, ADepthIsNotNegative) {
  ExpectWrongUse({"tree", "as1", "--depth=-1"}, "--depth");
}

TEST_F(WrongUses, ASeedIsANumber) {
  ExpectWrongUse({"scatter", "as1", "--seed", "x"}, "--seed");
}

TEST_F(WrongUses, AProductThatIsNotThereIsNamed) {
  ExpectWrongUse({"tree", "gone"}, "there is no file 'gone', and no product of that part number in '" + work.Path());
}

TEST_F(WrongUses, AnEmptyProductNameIsNamed) {
  ExpectWrongUse({"tree", ""}, "there is no file ''");
}

TEST_F(WrongUses, AWorkDirectoryThatIsNotThereIsNamed) {
  const auto outcome = RunBare({"tree", "as1", "--work", work.Path("gone")});

  EXPECT_EQ(outcome.exitCode, kWrongUse);
  EXPECT_THAT(outcome.errors, AllOf(HasSubstr("gone"), HasSubstr("is no folder")));
}

TEST_F(WrongUses, SeveralProductsOfOnePartNumberAreListed) {
  work.Write("copy.ZVAProduct", work.Read("as1.ZVAProduct"));

  ExpectWrongUse({"tree", "as1"}, "copy.ZVAProduct");
}

TEST_F(WrongUses, APartHasNoMatrix) {
  ExpectWrongUse({"matrix", work.Path("nut.stp")}, "nut.stp' is no product document; 'quintara import'");
}

TEST_F(WrongUses, APartIsNotFlattened) {
  ExpectWrongUse({"flatten", work.Path("nut.lwt")}, "nut.lwt' is no product document");
}

TEST_F(WrongUses, OnlyAWorkInProgressIsPositioned) {
  ExpectWrongUse({"position", "as1.ZVAProduct", "--matrix", kMatrix}, "is no work in progress");
}

TEST_F(WrongUses, OnlyAWorkInProgressIsScattered) {
  ExpectWrongUse({"scatter", "l-bracket-assembly"}, "is no work in progress");
}

TEST_F(WrongUses, InstancesAreNotMadeTwice) {
  Position();

  ExpectWrongUse({"position", "as1", "--matrix", kMatrix, "--all-instances"}, "stands in");
}

TEST_F(WrongUses, APatternWithoutAMatchIsNamed) {
  ExpectWrongUse({"flatten", "as1", "--name", "x", "--light", "part:*", "--none", "wheel"},
                 "the pattern 'wheel' matches no component");
}

TEST_F(WrongUses, APatternOfAnotherKindHasNoMatch) {
  ExpectWrongUse({"flatten", "as1", "--name", "x", "--light", "product:nut"}, "product:nut");
}

TEST_F(WrongUses, AnEmptyPatternIsRefused) {
  ExpectWrongUse({"flatten", "as1", "--name", "x", "--light", "part:"}, "the pattern 'part:' is empty");
}

TEST_F(WrongUses, ANameMustServeAsAFileName) {
  ExpectWrongUse({"flatten", "as1", "--name", "a/b"}, "'a/b' can't be used in a file name");
  ExpectWrongUse({"flatten", "as1", "--name", "a."}, "'a.' can't be used in a file name");
  ExpectWrongUse({"flatten", "as1", "--name", "a\nb"}, "can't be used in a file name");
}

TEST_F(WrongUses, AnExportHasAKnownFormat) {
  ExpectWrongUse({"export", "as1", "as1.dwg"}, "'as1.dwg' is neither");
}

TEST_F(WrongUses, APictureIsAPng) {
  ExpectWrongUse({"render", "as1", "-o", "as1.jpg"}, "'as1.jpg' is no picture file");
}

TEST_F(WrongUses, ACaptionBelongsToAProduct) {
  ExpectWrongUse({"render", "as1", "-o", "as1.png", "--caption", "a", "--caption", "b"}, "'b'");
}

TEST_F(WrongUses, AnArgumentMustBeUtf8) {
  ExpectWrongUse({"tree", "\xFF"}, "is not UTF-8");
}

TEST(TheHelp, OfTheProgramNamesEachVerb) {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream errors;

  EXPECT_EQ(RunQuintara({"--help"}, {in, out, errors, {}}), kDone);

  for (const auto* verb : {"vault", "import", "ls", "tree", "show", "matrix", "flatten", "position", "scatter",
                           "compare", "export", "render", "settings", "user"}) {
    EXPECT_THAT(out.str(), HasSubstr(std::string("  ") + verb + " "));
  }
}

TEST(TheHelp, OfEachVerbHasAnExample) {
  for (const std::string verb : {"vault", "import", "ls", "tree", "show", "matrix", "flatten", "position", "scatter",
                                 "compare", "export", "render", "settings", "user"}) {
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream errors;

    EXPECT_EQ(RunQuintara({verb, "--help"}, {in, out, errors, {}}), kDone);

    EXPECT_THAT(out.str(), AllOf(HasSubstr("Example"), HasSubstr("  quintara " + verb)));
    EXPECT_THAT(errors.str(), IsEmpty());
  }
}

}  // namespace
}  // namespace quintara::test
