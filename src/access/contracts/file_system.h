#pragma once

#include <string>

#include "access/contracts/any_object.h"

namespace quintara {

/// The file-system object. Paths are UTF-8, in the platform's spelling.
class FileSystemObject : public AnyObject {
 public:
  virtual bool FileExists(const std::string& path) = 0;
  /// Fails with 53 when there is no such file; `force` deletes a read-only file too.
  virtual void DeleteFile(const std::string& path, bool force) = 0;
  /// What stands behind the last point of the file's name, without the point; empty if none.
  virtual std::string GetExtensionName(const std::string& path) = 0;
  virtual bool FolderExists(const std::string& path) = 0;
  /// Fails when the folder is there already or the one above it isn't.
  virtual void CreateFolder(const std::string& path) = 0;
};

/// Reading and writing of whole files, beside what the file-system object offers.
class FileContents {
 public:
  virtual ~FileContents() = default;

  /// All bytes of a file. Failures name the path.
  virtual std::string Read(const std::string& path) = 0;
  /// Makes or overwrites the file; on return the bytes are on the disk. A failure removes what
  /// was written.
  virtual void Write(const std::string& path, const std::string& bytes) = 0;
  /// Gives `from` the name `to`, in one step; a file of that name is replaced.
  virtual void Rename(const std::string& from, const std::string& to) = 0;
};

}  // namespace quintara
