#include "apps/quintara/vault_with_workbook.h"

namespace quintara::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr auto kFile = "WIP~~TRIAL.ZVAProduct";
constexpr auto kIsThere = "Ca existe deja";

int Count(const std::string& text, const std::string& part) {
  int count = 0;
  for (auto at = text.find(part); at != text.npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

class CheckInsert : public VaultWithWorkbook {
 protected:
  explicit CheckInsert(bool hasNames = true) : VaultWithWorkbook(hasNames) {
    const auto made = RunProgram("wip as1 --light plate --light l-bracket --name TRIAL");
    EXPECT_TRUE(HasWork(kFile)) << made.errors;
    before = ReadWork(kFile);
  }

  std::string before;
};

class CheckInsertWithAnOldWorkbook : public CheckInsert {
 protected:
  CheckInsertWithAnOldWorkbook() : CheckInsert(false) {}
};

TEST_F(CheckInsert, TellsOfAComponentThatIsThere) {
  const auto outcome = RunProgram("check-insert TRIAL plate");

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_EQ(Count(outcome.errors, kIsThere), 1) << outcome.errors;
  EXPECT_THAT(outcome.errors, Not(HasSubstr("old version")));
  EXPECT_EQ(ReadWork(kFile), before);
}

TEST_F(CheckInsert, TellsOfEachAfterAnotherWasInserted) {
  ASSERT_EQ(RunProgram("insert TRIAL plate --document").exitCode, kDone);

  EXPECT_EQ(Count(RunProgram("check-insert TRIAL plate").errors, kIsThere), 2);
}

TEST_F(CheckInsert, SaysNothingOfAComponentThatIsntThere) {
  const auto outcome = RunProgram("check-insert TRIAL nut");

  EXPECT_EQ(outcome.exitCode, kDone);
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_TRUE(HasWork("as1 Matrix.xls"));
}

TEST_F(CheckInsertWithAnOldWorkbook, TellsThatAndGoesOn) {
  const auto outcome = RunProgram("check-insert TRIAL plate");

  EXPECT_EQ(outcome.exitCode, kFailed);
  EXPECT_THAT(outcome.errors, HasSubstr("The matrix has been created with an old version of QNTR (< DROP 4)."));
  EXPECT_EQ(Count(outcome.errors, kIsThere), 1) << outcome.errors;
}

}  // namespace
}  // namespace quintara::test
