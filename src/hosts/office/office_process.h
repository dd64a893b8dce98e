#pragma once

#include <sys/types.h>

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quintara::office {

/// The address of a file or folder by its absolute path.
std::string FileUrl(std::string_view path);

/// A folder of its own under the system's folder for temporary files, gone with all it holds at the end.
class PrivateFolder {
 public:
  PrivateFolder();
  ~PrivateFolder();
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;

  const std::string& Path() const noexcept { return path_; }
  /// The last piece of its path, which no other folder there has.
  std::string Name() const;

 private:
  std::string path_;
};

/// A LibreOffice of its own, without windows: another process, which never outlives this object, nor the thread
/// that made it, however these end.
class OfficeProcess {
 public:
  /// Starts `program` on the profile in `folder`, listening on the pipe `pipe`. Fails with 429.
  OfficeProcess(const std::string& program, const std::string& folder, const std::string& pipe);
  ~OfficeProcess();
  OfficeProcess(const OfficeProcess&) = delete;
  OfficeProcess& operator=(const OfficeProcess&) = delete;

  int Id() const noexcept { return process_; }
  /// How it ended, its exit code or 128 and the signal's number; nothing while it runs.
  std::optional<int> Ending();
  /// True when it has ended within that time.
  bool EndsWithin(std::chrono::milliseconds time);
  /// Notes what it listens on, so that this is gone even after a violent end.
  void NotePipes();
  /// Ends it at once, from whatever thread.
  void Kill();

 private:
  std::optional<int> Collect(int options);

  pid_t process_;
  std::mutex mutex_;
  std::optional<int> ending_;
  std::vector<std::string> pipeFiles_;
};

}  // namespace quintara::office
