#include "access/session/the_platform.h"

#include <utility>

#include "base/failure.h"

namespace quintara {
namespace {

// Never destroyed: objects that end at process exit may still speak to it.
std::shared_ptr<Platform>& Installed() {
  static auto& platform = *new std::shared_ptr<Platform>();
  return platform;
}

}  // namespace

Platform& ThePlatform() {
  if (!Installed()) throw Failure(failure::kObjectNotSet, "No platform is installed");
  return *Installed();
}

std::shared_ptr<Platform> InstallPlatform(std::shared_ptr<Platform> platform) {
  return std::exchange(Installed(), std::move(platform));
}

}  // namespace quintara
