#pragma once

#include <string>

#include "access/contracts/file_system.h"

namespace quintara {

/// A new folder that goes, with what is still in it, at the end.
class StagingFolder {
 public:
  /// In `parent`, which must be there, under a name that was free.
  StagingFolder(const std::string& parent, FileSystemObject& fileSystem);
  ~StagingFolder();
  StagingFolder(const StagingFolder&) = delete;
  StagingFolder& operator=(const StagingFolder&) = delete;

  const std::string& Path() const noexcept { return path_; }
  /// The path of a file or folder in it.
  std::string PathOf(const std::string& name) const;

 private:
  std::string path_;
};

}  // namespace quintara
