#include "apps/quintara/cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class ThePartsOfAs1 : public CliWithAs1 {
 protected:
  Outcome Compare(const std::string& wip = "as1") { return Run({"compare", wip, "--with", Data("as1-oc-214.stp")}); }
};

TEST_F(ThePartsOfAs1, BecomeFilesOfTheirOwn) {
  for (const auto* part : {"bolt", "l-bracket", "nut", "plate", "rod"}) {
    EXPECT_TRUE(work.Has(std::string(part) + ".stp")) << part;
    EXPECT_TRUE(work.Has(std::string(part) + ".lwt")) << part;
  }
}

TEST_F(ThePartsOfAs1, AreHeldByProductDocuments) {
  for (const auto* assembly : {"as1", "l-bracket-assembly", "nut-bolt-assembly", "rod-assembly"}) {
    EXPECT_TRUE(work.Has(std::string(assembly) + ".ZVAProduct")) << assembly;
    EXPECT_TRUE(work.Has(std::string(assembly) + ".lwt")) << assembly;
  }
}

TEST_F(ThePartsOfAs1, LeaveNothingElseBehind) {
  EXPECT_EQ(work.Names().size(), 2U * 9U + 2U) << ::testing::PrintToString(work.Names());
}

TEST_F(ThePartsOfAs1, AreOneComponentEachInTheFlatProduct) {
  const auto outcome = Run({"tree", kWip});

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 2 + 1 + 5) << outcome.out;
}

TEST_F(ThePartsOfAs1, AreMissingAsLongAsTheyAreNotPlaced) {
  const auto outcome = Compare();

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.out,
              AllOf(HasSubstr("MISSING"), HasSubstr("SURPLUS"), HasSubstr("0 of 18 in place, 18 missing, 5 surplus")));
}

TEST_F(ThePartsOfAs1, AreEighteenInstancesInPlace) {
  const auto placed = Run({"position", "as1", "--matrix", kMatrix, "--all-instances"});
  const auto compared = Compare();

  EXPECT_THAT(placed.out, HasSubstr("placed 18 components"));
  EXPECT_EQ(compared.exitCode, kDone) << compared.out << compared.errors;
  EXPECT_THAT(compared.out, HasSubstr("18 of 18 in place"));
  EXPECT_THAT(compared.errors, IsEmpty());
}

TEST_F(ThePartsOfAs1, KeepTheirFormWhenTheyAreCopied) {
  Position();

  const auto outcome = Run({"tree", kWip});

  EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 2 + 1 + 18);
  std::istringstream lines(outcome.out);
  for (std::string line; std::getline(lines, line);) {
    const bool isLight = line.find(".lwt") != std::string::npos;
    EXPECT_EQ(line.find("  light  ") != std::string::npos, isLight) << line;
  }
}

TEST_F(ThePartsOfAs1, AreOutOfPlaceOnceScattered) {
  Position();

  const auto scattered = Run({"scatter", "as1", "--seed", "7"});
  const auto compared = Compare();

  EXPECT_EQ(scattered.exitCode, kDone);
  EXPECT_EQ(compared.exitCode, kFailed);
  EXPECT_THAT(compared.out, AllOf(HasSubstr("OUT OF PLACE"), HasSubstr("0 of 18 in place, 18 out of place")));
}

TEST_F(ThePartsOfAs1, ReturnToTheirPlaces) {
  Position();
  Run({"scatter", "as1"});

  const auto placed = Run({"position", "as1", "--matrix", kMatrix});
  const auto compared = Compare();

  EXPECT_THAT(placed.out, HasSubstr("placed 18 components"));
  EXPECT_EQ(compared.exitCode, kDone) << compared.out;
}

TEST_F(ThePartsOfAs1, AreScatteredAlikeByTheSameSeed) {
  Position();
  Run({"scatter", "as1", "--seed", "7"});
  const auto first = work.Read(kWip);

  Run({"scatter", "as1", "--seed", "8"});
  const auto other = work.Read(kWip);
  Run({"scatter", "as1", "--seed", "7"});

  EXPECT_NE(other, first);
  EXPECT_EQ(work.Read(kWip), first);
}

TEST_F(ThePartsOfAs1, StandAtTheirFirstInstanceWhenOneOfEachIsAskedFor) {
  const auto placed = Run({"position", "as1", "--matrix", kMatrix, "--first-instances"});
  const auto compared = Compare();

  EXPECT_THAT(placed.out, HasSubstr("placed 5 components"));
  EXPECT_THAT(compared.out, AllOf(HasSubstr("5 of 18 in place"), Not(HasSubstr("OUT OF PLACE"))));
}

TEST_F(ThePartsOfAs1, InsideAnAssemblyThatIsTakenAreNotPlacedAgain) {
  const auto made = Run({"flatten", "as1", "--name", "rods", "--light", "rod-assembly", "--document", "nut"});
  const auto placed = Run({"position", "rods", "--matrix", kMatrix, "--all-instances"});
  const auto compared = Compare("rods");

  EXPECT_THAT(made.out, HasSubstr("with 2 components"));
  EXPECT_THAT(placed.out, HasSubstr("placed 7 components"));
  EXPECT_EQ(compared.exitCode, kDone) << compared.out;
  EXPECT_THAT(compared.out, HasSubstr("7 of 7 in place"));
}

}  // namespace
}  // namespace quintara::test
