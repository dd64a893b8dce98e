#pragma once

#include <string>

#include "automation/platform/windows_platform.h"

namespace quintara::bench {

/// The system as it is, but with the hosts of a world in the place of those that are registered; and no box stops a
/// run, as each is told and answered at once.
class BenchPlatform final : public automation::WindowsPlatform {
 public:
  /// `world` may be nothing.
  explicit BenchPlatform(Ref<AnyObject> world = nullptr);

  Ref<AnyObject> Attach(const std::string& programName) override;
  Ref<AnyObject> Create(const std::string& programName) override;
  int ShowBox(const std::string& text, int style, const std::string& title) override;

 private:
  Ref<AnyObject> world_;
};

}  // namespace quintara::bench
