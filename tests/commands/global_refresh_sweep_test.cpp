#include <algorithm>
#include <exception>
#include <filesystem>
#include <map>
#include <optional>

#include "base/text.h"
#include "commands/refresh_bench.h"

namespace quintara::test {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// The ways in which a refresh of which one call fails can end.
enum class End {
  kNotStarted,     ///< the start has told why
  kReported,       ///< before any setting is touched
  kWell,           ///< whoever was called has swallowed the failure, or told it
  kRestored,       ///< reported, with the settings put back as after a failure
  kNotReloaded,    ///< the same, and the reload has told why
  kLoggedOff,      ///< the same, but nobody is logged on who could put the settings back
  kReloadedBadly,  ///< well, after the reload at the end has told of its own failure
};

/// The calls from one on, up to the next stretch, all end the same way.
struct Stretch {
  const char* call;  ///< what the first of them begins with, but for those before it
  int nth;
  int before;
  End end;
};
constexpr Stretch kStretches[] = {
    {"Platform.Attach", 1, 0, End::kNotStarted},
    {"VdRecList.RecordCount", 1, 0, End::kReported},
    // The children and their states.
    {"VdObjectStore.NewObjects", 1, 1, End::kWell},
    // The file's name, the dialog, the version.
    {"VdRecord.ValueAsString(CAD_REF_FILE_NAME)", 1, 1, End::kReported},
    {"VdSession.Config", 1, 0, End::kRestored},
    {"VdSession.ApplicationName", 1, 0, End::kNotReloaded},
    {"VdSession.UserLogin", 1, 0, End::kLoggedOff},
    {"HIXEngine.Connect", 1, 0, End::kNotReloaded},
    // The check-out and the opening.
    {"HIXEngine.DocumentHandle(", 1, 2, End::kRestored},
    // The matrix.
    {"Platform.Attach", 3, 0, End::kWell},
    {"HIXEngine.DocumentHandleOf", 1, 0, End::kRestored},
    {"VdSession.ApplicationName", 2, 0, End::kReloadedBadly},
    {"View.Unload", 1, 0, End::kRestored},
};

struct Outcome {
  std::vector<Box> boxes;
  std::map<std::string, std::string> settings;
  bool alerts = false;
  bool isWaiting = false;
  std::size_t displays = 0;
  std::string product;  ///< its revision and state, and the bolt in the frame
  std::size_t matrices = 0;
};

std::string OperationOf(const std::string& call) {
  return call.substr(0, call.find('('));
}

// Fails each call once, one a run, all on the same vault: a run is undone when it is over.
class FailedCallsOfARefresh : public RefreshTest, public testing::WithParamInterface<First> {
 protected:
  FailedCallsOfARefresh() : RefreshTest(GetParam()) {
    EXPECT_THAT(RunFailing(0).boxes, ElementsAre(Successful()));
    all = gate->Record();
  }

  Outcome RunFailing(int n) {
    class Undo : public std::exception {};
    Outcome outcome;
    try {
      vault->InTransaction([&] {
        failing = n;
        outcome.boxes = Refresh();
        gate->Reset();
        Look(outcome);
        throw Undo();
      });
    } catch (const Undo&) {
      PutBack();
    }
    return outcome;
  }
  void Look(Outcome& outcome) {
    outcome.alerts = Alerts();
    outcome.isWaiting = IsWaiting();
    outcome.displays = DisplaysRefreshed();
    // It may be that nobody is, after a failed reload.
    Session()->UserLogin("admin", "secret");
    for (const auto* paths : {&SettingPaths(), &KeysOfFailure()}) {
      for (const auto& path : *paths) outcome.settings[path] = Session()->Config()->Value(path);
    }
    outcome.product = RevisionAndState("CAR") + " " + Holds("FRAME")[0];
    outcome.matrices = Matrices().size();
  }
  void PutBack() {
    const auto documents = host.Application()->Documents();
    while (documents->Count() > 0) host.Application()->ActiveDocument()->AsDocument()->Close();
    host.Application()->SetDisplayFileAlerts(true);
    for (const auto& file : std::filesystem::directory_iterator(ToPath(folder.Path("work")))) {
      std::filesystem::remove(file.path());
    }
    Session()->UserLogoff();
    Session()->UserLogin("admin", "secret");
    engine->Connect("admin", "secret");
    Process().texts = texts;
  }

  // The place, from 1; 0 for a call that isn't made.
  std::size_t PlaceOf(const std::string& beginning, int nth = 1) const {
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (all[i].starts_with(beginning) && --nth == 0) return i + 1;
    }
    return 0;
  }
  End EndOf(std::size_t n) const {
    auto end = End::kNotStarted;
    for (const auto& stretch : kStretches) {
      const auto place = PlaceOf(stretch.call, stretch.nth);
      if (place != 0 && n + static_cast<std::size_t>(stretch.before) >= place) end = stretch.end;
    }
    return end;
  }

  // What the settings are where the n-th call fails: those that had been written by then, and what is put back.
  std::map<std::string, std::string> ExpectedSettings(std::size_t n, bool isRestored) const {
    std::map<std::string, std::string> values;
    std::map<std::string, std::string> read;
    for (const auto& key : KeysOfFailure()) values[key] = "";
    for (std::size_t i = 0; i < SettingPaths().size(); ++i) values[SettingPaths()[i]] = OldValues()[i];
    for (std::size_t i = 0; i + 1 < n; ++i) {
      const auto bracket = all[i].find('(');
      const auto inside = all[i].substr(bracket + 1, all[i].size() - bracket - 2);
      if (all[i].starts_with("VdConfig.Value(")) read[inside] = values[inside];
      const auto comma = inside.find(", ");
      if (all[i].starts_with("VdConfig.SetValue(")) values[inside.substr(0, comma)] = inside.substr(comma + 2);
    }
    if (!isRestored) return values;
    for (std::size_t i = 0; i < SettingPaths().size(); ++i) {
      const auto& path = i >= 1 && i <= 3 ? KeysOfFailure()[i - 1] : SettingPaths()[i];
      values[path] = read[SettingPaths()[i]];
    }
    return values;
  }
  bool ExpectedAlerts(std::size_t n) const {
    return n <= PlaceOf("Application.DisplayFileAlerts=(False)") || n > PlaceOf("Application.DisplayFileAlerts=(True)");
  }
  // A check-out or a commit that fails is undone.
  std::string ExpectedProduct(std::size_t n, End end) const {
    if (end == End::kWell || end == End::kReloadedBadly) return "A1 BOLT B";
    if (n < PlaceOf("VdConfig.SetValue", 12)) return "A1 BOLT A";
    return n < PlaceOf("VdConfig.SetValue", 15) ? "A2 BOLT B" : "A1 BOLT B";
  }
  static std::vector<Box> ExpectedBoxes(End end) {
    const auto report = ReloadReport(kInjected);
    switch (end) {
      case End::kReloadedBadly: return {report, Successful()};
      // The text of the report has been filled by then.
      case End::kNotReloaded:
      case End::kLoggedOff: return {report, report};
      default: return {RunReport(kInjected)};
    }
  }
  static void ExpectBoxes(const std::vector<Box>& boxes, End end) {
    if (end != End::kNotStarted && end != End::kWell) {
      EXPECT_EQ(boxes, ExpectedBoxes(end));
      return;
    }
    ASSERT_THAT(boxes, Not(IsEmpty()));
    for (const auto& box : boxes) EXPECT_THAT(box.text, Not(HasSubstr("Cls_GlobalRefreshVD")));
    if (end == End::kWell) {
      EXPECT_EQ(boxes.back(), Successful());
    } else {
      EXPECT_THAT(boxes, ElementsAre(testing::Field(&Box::text, AnyOf(HasSubstr("QD.INIT"), HasSubstr("Cls_Init")))));
    }
  }
  void Expect(std::size_t n, const Outcome& outcome) const {
    const auto end = EndOf(n);
    const bool isRestored = end == End::kRestored || end == End::kNotReloaded;
    const bool isWell = end == End::kWell || end == End::kReloadedBadly;
    ExpectBoxes(outcome.boxes, end);
    EXPECT_EQ(outcome.settings, ExpectedSettings(isWell ? all.size() : n, isRestored));
    EXPECT_EQ(outcome.alerts, isWell || ExpectedAlerts(n));
    EXPECT_FALSE(outcome.isWaiting);
    const std::size_t again = all[n - 1].starts_with("Application.RefreshDisplay") ? 1 : 0;
    EXPECT_EQ(outcome.displays, end == End::kNotStarted ? 0 : 1 + again);
    EXPECT_EQ(outcome.product, ExpectedProduct(n, end));
    EXPECT_THAT(outcome.matrices, AnyOf(1U, end == End::kWell ? 2U : 1U));
  }

  const Texts texts = Process().texts;
  std::vector<std::string> all;
};

TEST_P(FailedCallsOfARefresh, EndItAsTheTableTells) {
  std::map<End, int> ends;
  for (std::size_t n = 1; n <= all.size(); ++n) {
    SCOPED_TRACE("call " + std::to_string(n) + ", " + all[n - 1]);

    const auto outcome = RunFailing(static_cast<int>(n));

    EXPECT_EQ(OperationOf(gate->Record()[n - 1]), OperationOf(all[n - 1]));
    Expect(n, outcome);
    ++ends[EndOf(n)];
    if (HasFailure()) return;
  }
  EXPECT_GT(ends[End::kWell], 150);
  EXPECT_GT(ends[End::kRestored], 100);
  EXPECT_GT(ends[End::kReported], 10);
  EXPECT_EQ(ends[End::kLoggedOff], GetParam() == First::kVault ? 1 : 0);
  EXPECT_THAT(vault->Check(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(StartedFirst, FailedCallsOfARefresh, testing::Values(First::kVault, First::kZorva),
                         [](const auto& one) { return one.param == First::kVault ? "TheVault" : "TheCadHost"; });

}  // namespace
}  // namespace quintara::test
