#pragma once

#include <memory>
#include <string>
#include <vector>

#include "access/contracts/file_system.h"
#include "hosts/gate/gate.h"

namespace quintara {

/// The file-system object on the files of this machine. Every operation passes `gate` as
/// "FileSystem.FileExists(path)" and so on.
class NativeFileSystem : public FileSystemObject, public std::enable_shared_from_this<NativeFileSystem> {
 public:
  explicit NativeFileSystem(std::shared_ptr<Gate> gate);

  bool FileExists(const std::string& path) override;
  void DeleteFile(const std::string& path, bool force) override;
  std::string GetExtensionName(const std::string& path) override;
  bool FolderExists(const std::string& path) override;
  void CreateFolder(const std::string& path) override;
  Ref<FileSystemObject> AsFileSystemObject() override;

 private:
  std::shared_ptr<Gate> gate_;
};

/// Whole files of this machine. Operations pass `gate` as "Files.Write(path)" and so on.
class NativeContents : public FileContents {
 public:
  explicit NativeContents(std::shared_ptr<Gate> gate);

  std::string Read(const std::string& path) override;
  void Write(const std::string& path, const std::string& bytes) override;
  /// Passes as "Files.Write" too.
  void WriteUnsynced(const std::string& path, const std::string& bytes) override;
  /// Passes as "Files.Sync(path)" for each.
  void SyncAll(const std::vector<std::string>& paths) override;
  /// Passes as the writing of the file beside and its renaming.
  void WriteWhole(const std::string& path, const std::string& bytes) override;
  void Rename(const std::string& from, const std::string& to) override;
  /// Passes as so many renamings.
  void RenameAll(const std::vector<NewName>& names) override;

 private:
  std::shared_ptr<Gate> gate_;
};

}  // namespace quintara
