#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "access/contracts/veldora.h"
#include "base/ref.h"

namespace quintara {

/// The settings of the user that a global refresh overwrites so that nothing asks or reports meanwhile, and what they
/// were before. What wasn't read yet is the empty text. Failures go to the caller; what was written before one stays.
class RefreshSettings {
 public:
  static constexpr std::size_t kCount = 11;

  void Read(const Ref<veldora::VdConfig>& config);
  void Overwrite(const Ref<veldora::VdConfig>& config) const;

  /// The three that decide what a check-out takes, once it is done.
  void PutBackFirst(const Ref<veldora::VdConfig>& config) const;
  void PutBackOthers(const Ref<veldora::VdConfig>& config) const;
  /// All of them, three under the other spelling of their keys that the vault keeps from failed refreshes.
  void PutBackAfterFailure(const Ref<veldora::VdConfig>& config) const;

 private:
  std::array<std::string, kCount> before_;
};

}  // namespace quintara
