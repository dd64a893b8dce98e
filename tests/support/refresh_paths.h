#pragma once

#include <string>
#include <vector>

namespace quintara::test {

/// The values of the configuration that a global refresh sets and puts back, in that order.
inline const std::vector<std::string>& SettingPaths() {
  static const std::vector<std::string> paths = {R"($User\LifeCycleSetUp\LatestAvailableOnCheckOut)",
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
  return paths;
}

}  // namespace quintara::test
