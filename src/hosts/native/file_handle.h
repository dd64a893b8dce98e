#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

/// The few calls of the operating system that whole files need: one half for each platform.
namespace quintara::native {

/// An open file; closed when it goes. `Error` tells what the last call that gave False met with.
class FileHandle {
 public:
  /// `kMake` fails when there is a file of that name; `kSync` is for bringing it to the disk alone.
  enum class Use { kRead, kReplace, kAppend, kMake, kSync };

  FileHandle(const std::filesystem::path& path, Use use);
  ~FileHandle();
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;

  bool IsOpen() const noexcept { return descriptor_ >= 0; }
  const std::error_code& Error() const noexcept { return error_; }
  /// False for a device, a pipe and whatever else is no file of a disk.
  bool IsRegular() const;

  /// Appends all that is left to `bytes`.
  bool ReadAll(std::string& bytes);
  bool WriteAll(const std::string& bytes);
  /// Brings what was written to the disk.
  bool Sync();
  /// Lets the system begin with that, where it can be asked to, so that a later `Sync` waits less.
  void BeginSync();
  bool Close();

 private:
  bool NoteError();

  int descriptor_;
  std::error_code error_;
};

/// Renames a file in one step; a file named `to` is replaced.
std::error_code Replace(const std::filesystem::path& from, const std::filesystem::path& to);
/// The same, on the disk only once `SyncFolder` was called for the folder of `to`.
std::error_code ReplaceUnsynced(const std::filesystem::path& from, const std::filesystem::path& to);
/// Brings what was renamed in a folder to the disk; a file system that can't keeps its own promise.
void SyncFolder(const std::filesystem::path& folder);

/// The value of an environment variable as UTF-8; empty when it isn't set.
std::string EnvironmentValue(const std::string& name);

/// The decimal separator of the user's locale as UTF-8; a point when the locale isn't known.
std::string DecimalSeparator();

/// The system's 8-bit code page, Windows-1252 where it has none; see `Platform`.
std::string ToCodePage(std::string_view utf8);
std::string FromCodePage(std::string_view bytes);

}  // namespace quintara::native
