#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

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

/// For what needn't survive the machine: nothing waits for the disk.
class UnsyncedContents : public NativeContents {
 public:
  using NativeContents::NativeContents;
  void SyncAll(const std::vector<std::string>& /*paths*/) override {}
  void WriteWhole(const std::string& path, const std::string& bytes) override { WriteUnsynced(path, bytes); }
};

/// A vault of its own, opened when it is first asked for.
class World {
 public:
  World() : World(std::make_shared<NativeContents>(std::make_shared<Gate>()), {}) {}
  /// On other files, and with the NLS files that whole commands need.
  World(std::shared_ptr<NativeContents> files, std::map<std::string, std::string> texts) : files_(std::move(files)) {
    VaultPlan plan;
    plan.folder = folder_.PathOf("quintara.vault");
    plan.texts = std::move(texts);
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
  std::string WorkPath(const std::string& name) const { return folder_.PathOf("work/" + name); }
  std::string DatabasePath() const { return folder_.PathOf("quintara.vault/vault.sqlite"); }
  std::string StorePath(const std::string& name) const { return folder_.PathOf("quintara.vault/store/" + name); }

 private:
  Folder folder_;
  std::shared_ptr<NativeContents> files_;
  std::unique_ptr<EmbeddedVault> vault_;
};

}  // namespace quintara::bench
