#include "windows/bench_platform.h"

#include <cstdio>
#include <utility>

namespace quintara::bench {
namespace {

constexpr auto kFileSystem = "Scripting.FileSystemObject";

}  // namespace

BenchPlatform::BenchPlatform(Ref<AnyObject> world) : world_(std::move(world)) {}

Ref<AnyObject> BenchPlatform::Attach(const std::string& programName) {
  return world_ ? world_->GetItem(programName) : WindowsPlatform::Attach(programName);
}

Ref<AnyObject> BenchPlatform::Create(const std::string& programName) {
  return world_ && programName != kFileSystem ? world_->GetItem(programName) : WindowsPlatform::Create(programName);
}

int BenchPlatform::ShowBox(const std::string& text, int /*style*/, const std::string& /*title*/) {
  std::printf("a box came up: %s\n", text.c_str());
  return answer::kOk;
}

}  // namespace quintara::bench
