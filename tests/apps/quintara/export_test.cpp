#include "apps/quintara/cli_fixture.h"

namespace quintara::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class Export : public CliWithAs1 {};

TEST_F(Export, WritesStepThatHoldsEachComponent) {
  Position();

  const auto outcome = Run({"export", kWip, work.Path("flat.stp")});
  const auto tree = Run({"tree", work.Path("flat.stp")});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_EQ(std::ranges::count(tree.out, '\n'), 2 + 1 + 18) << tree.out;
}

TEST_F(Export, WritesBinaryGltf) {
  const auto outcome = Run({"export", "as1.ZVAProduct", work.Path("as1.GLB")});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(work.Read("as1.GLB"), StartsWith("glTF"));
}

TEST_F(Export, RefusesToReplaceAFile) {
  work.Write("flat.stp", "mine");

  const auto outcome = Run({"export", kWip, work.Path("flat.stp")});

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("exists already"));
  EXPECT_EQ(work.Read("flat.stp"), "mine");
}

TEST_F(Export, ReplacesAFileWhenToldTo) {
  work.Write("flat.stp", "mine");

  const auto outcome = Run({"export", "rod-assembly", work.Path("flat.stp"), "--replace"});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(work.Read("flat.stp"), StartsWith("ISO-10303-21;"));
}

TEST_F(Export, FailsWhereThereIsNoFolder) {
  EXPECT_EQ(Run({"export", "as1", work.Path("nowhere/flat.stp")}).exitCode, kFailed);
}

TEST_F(Export, DrawsTheOriginalBesideTheFlatProduct) {
  Position();

  const auto outcome = Run({"render", Data("as1-oc-214.stp"), kWip, "-o", work.Path("both.png")});

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(work.Read("both.png"), StartsWith("\x89PNG\r\n"));
}

}  // namespace
}  // namespace quintara::test
