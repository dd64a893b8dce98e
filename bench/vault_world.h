#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "hosts/native/native_files.h"
#include "hosts/vault/embedded_vault.h"

namespace quintara::bench {

using Clock = std::chrono::steady_clock;

/// A benchmark whose result is wrong measures nothing.
inline void Demand(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

inline void Measure(benchmark::State& state, Clock::time_point start) {
  state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
}

/// A folder of its own that goes, with all it holds, at the end.
class Folder {
 public:
  Folder() { std::filesystem::create_directories(path_); }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string PathOf(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_ = std::filesystem::temp_directory_path() /
                                ("quintara-bench-" + std::to_string(Clock::now().time_since_epoch().count()));
};

/// A vault of its own, opened when it is first asked for.
class World {
 public:
  World() {
    VaultPlan plan;
    plan.folder = folder_.PathOf("quintara.vault");
    std::filesystem::create_directories(folder_.PathOf("work"));
    InitVault(plan, *files_);
  }

  EmbeddedVault& Vault() {
    if (!vault_) {
      EmbeddedVault::Options options;
      options.files = files_;
      options.workDirectory = folder_.PathOf("work");
      vault_ = std::make_unique<EmbeddedVault>(folder_.PathOf("quintara.vault"), options);
    }
    return *vault_;
  }
  Ref<veldora::VdSession> Session() { return Vault().Application()->Engine()->Sessions(0); }
  std::string DatabasePath() const { return folder_.PathOf("quintara.vault/vault.sqlite"); }
  std::string StorePath(const std::string& name) const { return folder_.PathOf("quintara.vault/store/" + name); }

 private:
  Folder folder_;
  std::shared_ptr<NativeContents> files_ = std::make_shared<NativeContents>(std::make_shared<Gate>());
  std::unique_ptr<EmbeddedVault> vault_;
};

}  // namespace quintara::bench
