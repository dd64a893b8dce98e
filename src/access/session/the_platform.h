#pragma once

#include <memory>

#include "access/contracts/platform.h"

namespace quintara {

/// The platform that this process stands on. Failure 91 before one was installed.
Platform& ThePlatform();

/// Called by the executables, and by tests, before any command runs. Gives the one before.
std::shared_ptr<Platform> InstallPlatform(std::shared_ptr<Platform> platform);

}  // namespace quintara
