#pragma once

#include <string>

#include "access/contracts/file_system.h"
#include "base/file_names.h"
#include "base/text.h"

namespace quintara {

/// Deletes a file, be it read-only; nothing happens where there is none.
inline void DeleteIfThere(FileSystemObject& files, const std::string& path) {
  constexpr bool kForce = true;
  if (files.FileExists(path)) files.DeleteFile(path, kForce);
}

/// The path that a file is about to be copied to; one that stands there is deleted. An empty name gives the
/// path of the directory, which stays. Fails as `RequireFileName` does for any other name.
inline std::string ClearedPath(FileSystemObject& files, const std::string& directory, const std::string& name) {
  if (!name.empty()) RequireFileName(name);
  auto path = FromPath(ToPath(directory) / ToPath(name));
  DeleteIfThere(files, path);
  return path;
}

}  // namespace quintara
