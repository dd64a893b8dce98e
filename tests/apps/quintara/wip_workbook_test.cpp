#include "apps/quintara/vault_with_workbook.h"

namespace quintara::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class AWipWithAWorkbook : public VaultWithWorkbook {
 protected:
  Outcome Wip(const std::string& options) { return RunProgram("wip as1 " + options); }
};

TEST_F(AWipWithAWorkbook, IsPlacedByIt) {
  const auto outcome = Wip("--light plate --light l-bracket");

  EXPECT_EQ(outcome.exitCode, kDone) << outcome.errors;
  EXPECT_THAT(outcome.errors, Not(HasSubstr("quintara: ")));
}

TEST_F(AWipWithAWorkbook, IsComparedWithIt) {
  const auto outcome = Wip("--light rod --document plate");

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("'rod' (rod.1) is still at the origin, since the matrix has no place for it"));
  EXPECT_THAT(outcome.errors,
              HasSubstr("'plate' (plate.1) is still at the origin, though the matrix places it elsewhere"));
}

}  // namespace
}  // namespace quintara::test
