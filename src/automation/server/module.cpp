#include "automation/server/module.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "automation/dispatch/com.h"
#include "services/Cls_Init.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace quintara::automation {
namespace {

std::atomic<int> uses = 0;
std::atomic<int> locks = 0;
std::shared_ptr<Platform> (*makePlatform)() = nullptr;
bool isPlatformMade = false;

bool HoldsSomethingOfHosts() {
  const auto& process = Process();
  return process.gSession || process.gZorva || process.gHIX || process.gSessionUtil || process.gFileSystem ||
         (process.gClsInit && process.gClsInit->Xml) || !process.gLoadedDialogs.empty() ||
         std::ranges::any_of(process.ReplaceCandidates,
                             [](const ReplaceCandidate& candidate) { return bool(candidate.Product); });
}

}  // namespace

std::wstring ModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const auto length =
        GetModuleFileNameW(reinterpret_cast<HMODULE>(&__ImageBase), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return path.substr(0, length);
    path.resize(2 * path.size());
  }
}

void UsePlatform(std::shared_ptr<Platform> (*make)()) {
  makePlatform = make;
}

ModuleUse::ModuleUse() {
  if (makePlatform && !isPlatformMade) {
    InstallPlatform(makePlatform());
    isPlatformMade = true;
  }
  ++uses;
}

ModuleUse::~ModuleUse() {
  if (--uses != 0 || !isPlatformMade || HoldsSomethingOfHosts()) return;
  // Its windows and objects end here, on their own thread; when the module is unloaded it's too late.
  isPlatformMade = false;
  InstallPlatform(nullptr);
}

void LockModule(bool isLocked) noexcept {
  locks += isLocked ? 1 : -1;
}

bool CanUnload() noexcept {
  return uses == 0 && locks == 0 && !HoldsSomethingOfHosts();
}

}  // namespace quintara::automation
