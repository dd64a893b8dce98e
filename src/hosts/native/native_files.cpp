#include "hosts/native/native_files.h"

#include <filesystem>
#include <optional>
#include <set>
#include <system_error>
#include <utility>

#include "base/text.h"
#include "hosts/native/file_failure.h"
#include "hosts/native/file_handle.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

constexpr auto kMayWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

// A folder, or a path that can't be looked at, is no file.
bool IsFile(const std::string& path) {
  std::error_code ignored;
  const auto status = fs::status(ToPath(path), ignored);
  return fs::exists(status) && !fs::is_directory(status);
}

void RequireFile(const std::string& path) {
  if (!IsFile(path)) throw Failure(failure::kFileNotFound, "File not found: \"" + path + "\"");
}

bool IsReadOnly(const fs::file_status& status) {
  return (status.permissions() & kMayWrite) == fs::perms::none;
}

[[noreturn]] void ThrowReadOnly(const std::string& path) {
  throw Failure(failure::kPermissionDenied, "Permission denied: \"" + path + "\" is read-only");
}

[[noreturn]] void ThrowNoFile(const std::string& path) {
  throw Failure(failure::kPathAccess, "Path/File access error: \"" + path + "\" is no file");
}

void LiftWriteProtection(const std::string& path, bool force) {
  std::error_code error;
  const auto status = fs::status(ToPath(path), error);
  if (error || !IsReadOnly(status)) return;
  if (!force) ThrowReadOnly(path);
  fs::permissions(ToPath(path), fs::perms::owner_write, fs::perm_options::add, error);
}

enum class Syncing { kNow, kLater };

bool Synced(native::FileHandle& file, Syncing when) {
  if (when == Syncing::kNow) return file.Sync();
  file.BeginSync();
  return true;
}

void WriteTo(native::FileHandle& file, const fs::path& path, const std::string& bytes, Syncing when) {
  const bool ours = file.IsRegular();
  if (file.WriteAll(bytes) && Synced(file, when) && file.Close()) return;
  const auto error = file.Error();
  file.Close();
  std::error_code ignored;
  if (ours) fs::remove(path, ignored);
  native::ThrowFileFailure(error, FromPath(path));
}

void Overwrite(const std::string& path, const std::string& bytes, Syncing when) {
  native::FileHandle file(ToPath(path), native::FileHandle::Use::kReplace);
  if (!file.IsOpen()) native::ThrowFileFailure(file.Error(), path);
  WriteTo(file, ToPath(path), bytes, when);
}

// A link that leads nowhere stands for itself.
fs::path BehindLinks(const fs::path& path) {
  std::error_code error;
  if (!fs::is_symlink(fs::symlink_status(path, error))) return path;
  auto target = fs::canonical(path, error);
  return error ? path : target;
}

// What a new file has in common with the one it replaces.
std::optional<fs::perms> PermissionsOf(const fs::path& target, const std::string& path) {
  std::error_code error;
  const auto status = fs::status(target, error);
  if (!fs::exists(status)) return {};
  if (!fs::is_regular_file(status)) ThrowNoFile(path);
  if (IsReadOnly(status)) ThrowReadOnly(path);
  return status.permissions();
}

/// A file beside another one, under a name that was free; removed unless it has been renamed.
class FileBeside {
 public:
  FileBeside(const fs::path& target, const std::string& bytes) {
    for (int number = 1;; ++number) {
      path_ = target;
      path_ += number == 1 ? ".new" : ".new" + std::to_string(number);
      native::FileHandle file(path_, native::FileHandle::Use::kMake);
      if (!file.IsOpen() && file.Error() == std::errc::file_exists) continue;
      if (!file.IsOpen()) native::ThrowFileFailure(file.Error(), FromPath(path_));
      WriteTo(file, path_, bytes, Syncing::kNow);
      return;
    }
  }
  ~FileBeside() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove(path_, ignored);
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  const fs::path& Path() const noexcept { return path_; }
  void Keep() noexcept { path_.clear(); }

 private:
  fs::path path_;
};

}  // namespace

NativeFileSystem::NativeFileSystem(std::shared_ptr<Gate> gate) : gate_(std::move(gate)) {}

bool NativeFileSystem::FileExists(const std::string& path) {
  gate_->Pass("FileSystem.FileExists", [&] { return path; });
  return IsFile(path);
}

void NativeFileSystem::DeleteFile(const std::string& path, bool force) {
  gate_->Pass("FileSystem.DeleteFile", [&] { return path + (force ? ", True" : ", False"); });
  RequireFile(path);
  LiftWriteProtection(path, force);
  std::error_code error;
  fs::remove(ToPath(path), error);
  if (error) native::ThrowFileFailure(error, path);
}

std::string NativeFileSystem::GetExtensionName(const std::string& path) {
  gate_->Pass("FileSystem.GetExtensionName", [&] { return path; });
  const auto name = FromPath(ToPath(path).filename());
  const auto point = name.rfind('.');
  return point == name.npos ? std::string() : name.substr(point + 1);
}

bool NativeFileSystem::FolderExists(const std::string& path) {
  gate_->Pass("FileSystem.FolderExists", [&] { return path; });
  std::error_code ignored;
  return fs::is_directory(ToPath(path), ignored);
}

void NativeFileSystem::CreateFolder(const std::string& path) {
  gate_->Pass("FileSystem.CreateFolder", [&] { return path; });
  std::error_code error;
  if (fs::create_directory(ToPath(path), error)) return;
  if (error) native::ThrowFileFailure(error, path);
  throw Failure(failure::kPathAccess, "Path/File access error: \"" + path + "\" is there already");
}

Ref<FileSystemObject> NativeFileSystem::AsFileSystemObject() {
  return Ref<FileSystemObject>(weak_from_this().lock());
}

NativeContents::NativeContents(std::shared_ptr<Gate> gate) : gate_(std::move(gate)) {}

std::string NativeContents::Read(const std::string& path) {
  gate_->Pass("Files.Read", [&] { return path; });
  native::FileHandle file(ToPath(path), native::FileHandle::Use::kRead);
  std::string bytes;
  if (!file.IsOpen()) native::ThrowFileFailure(file.Error(), path);
  if (!file.IsRegular()) ThrowNoFile(path);
  if (!file.ReadAll(bytes)) native::ThrowFileFailure(file.Error(), path);
  return bytes;
}

void NativeContents::Write(const std::string& path, const std::string& bytes) {
  gate_->Pass("Files.Write", [&] { return path; });
  Overwrite(path, bytes, Syncing::kNow);
}

void NativeContents::WriteUnsynced(const std::string& path, const std::string& bytes) {
  gate_->Pass("Files.Write", [&] { return path; });
  Overwrite(path, bytes, Syncing::kLater);
}

void NativeContents::SyncAll(const std::vector<std::string>& paths) {
  std::set<fs::path::string_type> folders;
  for (const auto& path : paths) {
    gate_->Pass("Files.Sync", [&] { return path; });
    native::FileHandle file(ToPath(path), native::FileHandle::Use::kSync);
    if (!file.IsOpen() || !file.Sync()) native::ThrowFileFailure(file.Error(), path);
    folders.insert(ToPath(path).parent_path().native());
  }
  for (const auto& folder : folders) native::SyncFolder(folder);
}

void NativeContents::WriteWhole(const std::string& path, const std::string& bytes) {
  gate_->Pass("Files.Write", [&] { return path + ".new"; });
  const auto target = BehindLinks(ToPath(path));
  const auto permissions = PermissionsOf(target, path);
  FileBeside beside(target, bytes);
  std::error_code ignored;
  if (permissions) fs::permissions(beside.Path(), *permissions, ignored);
  Rename(FromPath(beside.Path()), FromPath(target));
  beside.Keep();
}

void NativeContents::Rename(const std::string& from, const std::string& to) {
  gate_->Pass("Files.Rename", [&] { return from + ", " + to; });
  if (const auto error = native::Replace(ToPath(from), ToPath(to))) native::ThrowFileFailure(error, from, to);
}

void NativeContents::RenameAll(const std::vector<NewName>& names) {
  std::set<fs::path::string_type> folders;
  std::optional<Failure> first;
  for (const auto& [from, to] : names) {
    try {
      gate_->Pass("Files.Rename", [&] { return from + ", " + to; });
      if (const auto error = native::ReplaceUnsynced(ToPath(from), ToPath(to)))
        native::ThrowFileFailure(error, from, to);
      folders.insert(ToPath(to).parent_path().native());
    } catch (const Failure& failure) {
      if (!first) first = failure;
    }
  }
  for (const auto& folder : folders) native::SyncFolder(folder);
  if (first) throw Failure(*first);
}

}  // namespace quintara
