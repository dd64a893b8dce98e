#pragma once

#include <memory>
#include <string>

#include "access/contracts/platform.h"

namespace quintara::automation {

/// The full path of the file that this code was loaded from.
std::wstring ModulePath();

/// From now on the first object of a public class makes the platform of the process. It goes with the last one, unless
/// the globals of the process hold something of a host.
void UsePlatform(std::shared_ptr<Platform> (*make)());

/// Keeps the module loaded as long as it lives. Objects of the public classes have one each; it makes the platform
/// where there is none, and fails as that does.
class ModuleUse {
 public:
  ModuleUse();
  ~ModuleUse();
  ModuleUse(const ModuleUse&) = delete;
  ModuleUse& operator=(const ModuleUse&) = delete;
};

/// Counts a caller's lock on the module, or takes it back. Unlike objects, locks need no platform.
void LockModule(bool isLocked) noexcept;

/// Whether nothing of the module is in use: no object, no lock, and nothing of a host in the globals of the process.
bool CanUnload() noexcept;

}  // namespace quintara::automation
