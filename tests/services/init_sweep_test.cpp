#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "services/running_hosts.h"

namespace quintara::test {
namespace {

struct Outcome {
  std::string failed;
  bool result = false;
  std::vector<Box> boxes;
};

// Fails each call of a start once, one call a start.
class FailedCallsOfAStart : public testing::Test, public RunningHosts {
 protected:
  FailedCallsOfAStart() {
    RunVault();
    RunZorva();
  }

  // Nothing if the start has fewer calls.
  std::optional<Outcome> StartWithFailedCall(int n) {
    const auto before = static_cast<std::ptrdiff_t>(platform.Boxes().size());
    gate->StartRecording();
    gate->FailCall(n);
    Outcome outcome;
    outcome.result = Init();
    const bool failed = gate->HasFailed();
    gate->Reset();
    if (!failed) return std::nullopt;
    outcome.failed = gate->Record()[static_cast<std::size_t>(n) - 1];
    outcome.boxes.assign(platform.Boxes().begin() + before, platform.Boxes().end());
    return outcome;
  }

  // Calls `prepare`, then a start whose n-th call fails, then `examine`, for every n.
  template <class Prepare, class Examine>
  int Sweep(Prepare&& prepare, Examine&& examine) {
    for (int n = 1;; ++n) {
      prepare();
      const auto outcome = StartWithFailedCall(n);
      if (!outcome) return n - 1;
      SCOPED_TRACE("call " + std::to_string(n) + ", " + outcome->failed);
      examine(*outcome);
      EXPECT_TRUE(Init());
    }
  }
};

bool BeginsWithOneOf(const std::string& text, const std::vector<std::string>& beginnings) {
  return std::ranges::any_of(beginnings, [&](const auto& beginning) { return text.starts_with(beginning); });
}

bool IsOfMakingTheTranslator(const std::string& call) {
  return BeginsWithOneOf(call, {"Platform.Create(Veldora.VdTranslator)", "VdTranslator.SetLanguage"});
}

bool IsOfTexts(const std::string& call) {
  return BeginsWithOneOf(call, {"VdTranslator.Translate", "FileSystem.FileExists", "Files.Read", "VdSession.Config",
                                "VdConfig.BaseDirectory", "Platform.Create(Scripting.FileSystemObject)"});
}

bool IsOfLookingAtTables(const std::string& call) {
  return BeginsWithOneOf(call,
                         {"VdSession.MetaInfo", "VdMetaInfo.ClassByTable", "VdClass.Attributes", "VdAttributes.Find"});
}

void ExpectCritical(const std::vector<Box>& boxes) {
  for (const auto& box : boxes) {
    EXPECT_EQ(box.style, kCritical);
    EXPECT_EQ(box.title, "Quintara");
  }
}

// A start that ends has told why, but for what is silent by design. One that comes through has at most
// missed a text, or has shown that it couldn't look at the settings' tables at once.
void ExpectTold(const Outcome& outcome) {
  ExpectCritical(outcome.boxes);
  const auto told = outcome.boxes.size();
  if (IsOfMakingTheTranslator(outcome.failed)) {
    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(told, 0U);
  } else if (IsOfLookingAtTables(outcome.failed)) {
    EXPECT_GE(told, 1U);
    EXPECT_LE(told, outcome.result ? 1U : 2U);
  } else {
    EXPECT_EQ(told, outcome.result ? 0U : 1U);
    EXPECT_TRUE(!outcome.result || IsOfTexts(outcome.failed));
  }
}

TEST_F(FailedCallsOfAStart, AreToldInAFreshProcess) {
  const int calls = Sweep([] { ResetProcess(); },
                          [](const Outcome& outcome) {
                            ExpectTold(outcome);
                            EXPECT_TRUE(outcome.boxes.size() < 2 || outcome.boxes.front() == Told(""));
                            EXPECT_TRUE(!outcome.result || TextsUnlike("EN").size() <= 1);
                          });

  EXPECT_GT(calls, 300);
}

TEST_F(FailedCallsOfAStart, AreToldWithTheCatalogueOfAnEarlierStart) {
  const int calls = Sweep(
      [] {
        EndInit();
        EXPECT_TRUE(Init());
        EndInit();
        Process().gClsAdminSettings = nullptr;
      },
      [](const Outcome& outcome) {
        ExpectTold(outcome);
        for (const auto& box : outcome.boxes) EXPECT_NE(box.text, "");
      });

  EXPECT_GT(calls, 300);
}

TEST_F(FailedCallsOfAStart, EndTheNextCommandsWithOneBox) {
  const int calls = Sweep([] { EXPECT_TRUE(Init()); },
                          [](const Outcome& outcome) {
                            EXPECT_FALSE(outcome.result);
                            ExpectTold(outcome);
                            EXPECT_TRUE(Process().gClsInit->Initialised);
                          });

  EXPECT_GT(calls, 20);
}

}  // namespace
}  // namespace quintara::test
