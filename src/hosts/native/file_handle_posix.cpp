#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

#include "hosts/native/file_handle.h"

namespace quintara::native {
namespace {

constexpr std::size_t kBlock = 65536;
constexpr mode_t kAllMayReadAndWrite = 0666;

int FlagsOf(FileHandle::Use use) {
  switch (use) {
    // A pipe would keep the opening waiting; on a file the flag does nothing.
    case FileHandle::Use::kRead: return O_RDONLY | O_NONBLOCK | O_CLOEXEC;
    case FileHandle::Use::kReplace: return O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
    case FileHandle::Use::kAppend: return O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC;
    case FileHandle::Use::kMake: return O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
  }
  return O_RDONLY;
}

// A rename is on the disk only once its folder is; a file system that can't sync one keeps its own promise.
void SyncFolderOf(const std::filesystem::path& file) {
  const auto folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

}  // namespace

FileHandle::FileHandle(const std::filesystem::path& path, Use use)
    : descriptor_(::open(path.c_str(), FlagsOf(use), kAllMayReadAndWrite)) {
  if (!IsOpen()) NoteError();
}

FileHandle::~FileHandle() {
  if (IsOpen()) ::close(descriptor_);
}

bool FileHandle::IsRegular() const {
  struct stat status {};
  return IsOpen() && ::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
}

bool FileHandle::ReadAll(std::string& bytes) {
  std::array<char, kBlock> block;
  while (true) {
    const auto count = ::read(descriptor_, block.data(), block.size());
    if (count == 0) return true;
    if (count > 0) bytes.append(block.data(), static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) return NoteError();
  }
}

bool FileHandle::WriteAll(const std::string& bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    const auto count = ::write(descriptor_, bytes.data() + done, bytes.size() - done);
    if (count >= 0) done += static_cast<std::size_t>(count);
    if (count < 0 && errno != EINTR) return NoteError();
  }
  return true;
}

bool FileHandle::Sync() {
  // Pipes and devices have nothing to bring to a disk.
  return ::fsync(descriptor_) == 0 || errno == EINVAL || errno == ENOTSUP || NoteError();
}

bool FileHandle::Close() {
  if (!IsOpen()) return true;
  const int closed = ::close(descriptor_);
  descriptor_ = -1;
  return closed == 0 || errno == EINTR || NoteError();
}

bool FileHandle::NoteError() {
  error_ = {errno, std::generic_category()};
  return false;
}

std::error_code Replace(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  if (!error) SyncFolderOf(to);
  return error;
}

std::string EnvironmentValue(const std::string& name) {
  const char* const value = std::getenv(name.c_str());
  return value == nullptr ? std::string() : value;
}

}  // namespace quintara::native
