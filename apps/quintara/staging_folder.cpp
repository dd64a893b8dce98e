#include "quintara/staging_folder.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/text.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

bool IsThere(const std::string& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(ToPath(path), error));
}

}  // namespace

StagingFolder::StagingFolder(const std::string& parent, FileSystemObject& fileSystem) {
  for (int n = 1; path_.empty(); ++n) {
    auto path = FromPath(ToPath(parent) / (".quintara-import-" + std::to_string(n)));
    if (IsThere(path)) continue;
    try {
      fileSystem.CreateFolder(path);
    } catch (const Failure&) {
      // Another run of the program may have been faster.
      if (!IsThere(path)) throw;
      continue;
    }
    path_ = std::move(path);
  }
}

StagingFolder::~StagingFolder() {
  std::error_code error;
  fs::remove_all(ToPath(path_), error);
}

std::string StagingFolder::PathOf(const std::string& name) const {
  return FromPath(ToPath(path_) / ToPath(name));
}

}  // namespace quintara
