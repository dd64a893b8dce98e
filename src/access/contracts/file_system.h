#pragma once

#include <string>
#include <vector>

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
  struct NewName {
    std::string from;
    std::string to;
  };

  virtual ~FileContents() = default;

  /// All bytes of a file. Failures name the path; what is no file of a disk fails with 75.
  virtual std::string Read(const std::string& path) = 0;
  /// Makes or overwrites the file; on return the bytes are on the disk. A failure removes what
  /// was written, and a file that was there before is gone with it: `WriteWhole` is for those.
  virtual void Write(const std::string& path, const std::string& bytes) = 0;
  /// `Write`, on the disk only once `SyncAll` was called for the file: for many files together that
  /// takes much less time.
  virtual void WriteUnsynced(const std::string& path, const std::string& bytes) = 0;
  /// Brings files, and their names, to the disk. Fails with the first one that can't be brought there.
  virtual void SyncAll(const std::vector<std::string>& paths) = 0;
  /// Makes the file, or puts a new one in the place of the old one, as a whole: the bytes are
  /// written beside it first, under a name that no other file has, so that a failure leaves the
  /// old file as it was and nothing beside it. Where `path` is a link, the file that it leads to
  /// is replaced. Fails with 70 for a read-only file and with 75 for what is no file.
  virtual void WriteWhole(const std::string& path, const std::string& bytes) = 0;
  /// Gives `from` the name `to`, in one step; a file of that name is replaced.
  virtual void Rename(const std::string& from, const std::string& to) = 0;
  /// `Rename` for each, in this order; on the disk at the end only, which takes much less time. After
  /// a failure it goes on with the others, and fails with the first one when it is through.
  virtual void RenameAll(const std::vector<NewName>& names) = 0;
};

}  // namespace quintara
