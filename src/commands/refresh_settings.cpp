#include "commands/refresh_settings.h"

#include <initializer_list>

namespace quintara {
namespace {

using veldora::VdConfig;

// In the order in which they are read.
enum Setting : std::size_t {
  kLatestAvailable,
  kForceCheckOut,
  kReplacingReport,
  kLightScreen,
  kRefreshScreen,
  kOverwriteSilence,
  kEvaluationReport,
  kForceNewRelease,
  kCheckOutOverwrite,
  kCompareRevision,
  kCopyOverwrite
};

constexpr std::array<const char*, RefreshSettings::kCount> kPaths = {
    R"($User\LifeCycleSetUp\LatestAvailableOnCheckOut)",
    R"($User\LIFE_CYCLE\SwitchToLatestForceCheckOut)",
    R"($User\LifeCycleSetUp\ReplacingObjectsReportOnCheckOut)",
    R"($User\LifeCycleSetUp\UseLightLifeCycleScreen)",
    R"($User\ZORVA\Refresh_Screen)",
    R"($User\LIFE_CYCLE\FileOverwriteSilienceMode)",
    R"($User\LIFE_CYCLE\LifeCycleEvaluationReport)",
    R"($User\LIFE_CYCLE\SwitchToLatestForceNewRelease)",
    R"($User\LifeCycleSetUp\CheckOutOverwrite)",
    R"($User\LifeCycleSetUp\CompareRevisionBeforeOverwriteFile)",
    R"($User\LifeCycleSetUp\CopyOverwrite)"};

struct Written {
  Setting setting;
  const char* value;
};
constexpr std::array kOverwritten = {
    Written{kForceCheckOut, "TRUE"},     Written{kReplacingReport, "NO"},   Written{kLightScreen, "NODIALOG"},
    Written{kRefreshScreen, "FALSE"},    Written{kLatestAvailable, "YES"},  Written{kOverwriteSilence, "TRUE"},
    Written{kEvaluationReport, "FALSE"}, Written{kForceNewRelease, "TRUE"}, Written{kCheckOutOverwrite, "YES"},
    Written{kCompareRevision, "NO"},     Written{kCopyOverwrite, "YES"}};

// The blank and the small "u" of the first three are the keys that failed refreshes have always left.
struct PutBack {
  Setting setting;
  const char* path;
};
constexpr std::array kAfterFailure = {
    PutBack{kForceCheckOut, R"($User\LIFE CYCLE\SwitchToLatestForceCheckOut)"},
    PutBack{kReplacingReport, R"($User\LifeCycleSetup\ReplacingObjectsReportOnCheckOut)"},
    PutBack{kLightScreen, R"($User\LifeCycleSetup\UseLightLifeCycleScreen)"},
    PutBack{kRefreshScreen, kPaths[kRefreshScreen]},
    PutBack{kLatestAvailable, kPaths[kLatestAvailable]},
    PutBack{kOverwriteSilence, kPaths[kOverwriteSilence]},
    PutBack{kEvaluationReport, kPaths[kEvaluationReport]},
    PutBack{kForceNewRelease, kPaths[kForceNewRelease]},
    PutBack{kCheckOutOverwrite, kPaths[kCheckOutOverwrite]},
    PutBack{kCompareRevision, kPaths[kCompareRevision]},
    PutBack{kCopyOverwrite, kPaths[kCopyOverwrite]}};

static_assert(kOverwritten.size() == RefreshSettings::kCount && kAfterFailure.size() == RefreshSettings::kCount);

}  // namespace

void RefreshSettings::Read(const Ref<VdConfig>& config) {
  for (std::size_t i = 0; i < kCount; ++i) before_[i] = config->Value(kPaths[i]);
}

void RefreshSettings::Overwrite(const Ref<VdConfig>& config) const {
  for (const auto& [setting, value] : kOverwritten) config->SetValue(kPaths[setting], value);
}

void RefreshSettings::PutBackFirst(const Ref<VdConfig>& config) const {
  for (const auto setting : {kForceCheckOut, kLatestAvailable, kReplacingReport}) {
    config->SetValue(kPaths[setting], before_[setting]);
  }
}

void RefreshSettings::PutBackOthers(const Ref<VdConfig>& config) const {
  for (std::size_t i = kLightScreen; i < kCount; ++i) config->SetValue(kPaths[i], before_[i]);
}

void RefreshSettings::PutBackAfterFailure(const Ref<VdConfig>& config) const {
  for (const auto& [setting, path] : kAfterFailure) config->SetValue(path, before_[setting]);
}

}  // namespace quintara
