#include <filesystem>
#include <map>

#include "apps/quintara/cli_fixture.h"
#include "base/text.h"

namespace quintara::test {
namespace {

// Runs a verb once for each call that it makes of the hosts, and lets that call fail.
class EachFailingCall : public CliWithAs1 {
 protected:
  template <class Check>
  void Sweep(const std::vector<std::string>& arguments, int step, Check&& check) {
    for (int n = 1;; n += step) {
      gate = std::make_shared<Gate>();
      gate->FailCall(n);
      const auto outcome = Run(arguments);
      if (!gate->HasFailed()) break;
      SCOPED_TRACE("call " + std::to_string(n) + ": " + outcome.errors);
      check(outcome);
      if (HasFailure()) break;
    }
  }
};

TEST_F(EachFailingCall, OfAnImportLeavesTheWorkDirectoryAsItWas) {
  const auto names = work.Names();
  std::map<std::string, std::string> before;
  for (const auto& name : names) before[name] = work.Read(name);

  elsewhere.Write("bolt.stp", work.Read("bolt.stp"));
  Sweep({"import", elsewhere.Path("bolt.stp"), "--replace"}, 1, [&](const Outcome& outcome) {
    EXPECT_EQ(outcome.exitCode, kFailed);
    EXPECT_EQ(work.Names(), names);
    for (const auto& [name, bytes] : before) EXPECT_TRUE(work.Read(name) == bytes) << name;
  });
}

TEST_F(EachFailingCall, OfFlattenMakesAWholeProductOrNone) {
  const std::string made = "WIP~~x.ZVAProduct";
  Run({"flatten", "as1", "--name", "x"});
  const auto whole = work.Read(made);
  std::filesystem::remove(ToPath(work.Path(made)));

  Sweep({"flatten", "as1", "--name", "x"}, 1, [&](const Outcome& outcome) {
    EXPECT_EQ(work.Has(made), outcome.exitCode == kDone);
    if (!work.Has(made)) return;
    EXPECT_EQ(work.Read(made), whole);
    std::filesystem::remove(ToPath(work.Path(made)));
  });
}

TEST_F(EachFailingCall, OfPositionSavesOnlyWhatIsPlaced) {
  const auto before = work.Read(kWip);

  Sweep({"position", "as1", "--matrix", kMatrix, "--all-instances"}, 7, [&](const Outcome& outcome) {
    EXPECT_EQ(work.Read(kWip) == before, outcome.exitCode != kDone);
    work.Write(kWip, before);
  });
}

}  // namespace
}  // namespace quintara::test
