#include "hosts/native/native_files.h"

#include <filesystem>
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

void LiftWriteProtection(const std::string& path, bool force) {
  std::error_code error;
  const auto permissions = fs::status(ToPath(path), error).permissions();
  if (error || (permissions & kMayWrite) != fs::perms::none) return;
  if (!force) throw Failure(failure::kPermissionDenied, "Permission denied: \"" + path + "\" is read-only");
  fs::permissions(ToPath(path), fs::perms::owner_write, fs::perm_options::add, error);
}

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
  if (!file.IsOpen() || !file.ReadAll(bytes)) native::ThrowFileFailure(file.Error(), path);
  return bytes;
}

void NativeContents::Write(const std::string& path, const std::string& bytes) {
  gate_->Pass("Files.Write", [&] { return path; });
  native::FileHandle file(ToPath(path), native::FileHandle::Use::kReplace);
  if (!file.IsOpen()) native::ThrowFileFailure(file.Error(), path);
  const bool ours = file.IsRegular();
  if (file.WriteAll(bytes) && file.Sync() && file.Close()) return;
  const auto error = file.Error();
  file.Close();
  std::error_code ignored;
  if (ours) fs::remove(ToPath(path), ignored);
  native::ThrowFileFailure(error, path);
}

void NativeContents::Rename(const std::string& from, const std::string& to) {
  gate_->Pass("Files.Rename", [&] { return from + ", " + to; });
  if (const auto error = native::Replace(ToPath(from), ToPath(to))) native::ThrowFileFailure(error, from, to);
}

}  // namespace quintara
