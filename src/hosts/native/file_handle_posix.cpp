#include <fcntl.h>
#include <langinfo.h>
#include <locale.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>

#include "base/text.h"
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
    case FileHandle::Use::kSync: return O_WRONLY | O_CLOEXEC;
  }
  return O_RDONLY;
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

void FileHandle::BeginSync() {
#ifdef __linux__
  // Some file systems give a file its place on the disk only now: without this, each of many files
  // would cost a commit of their journal when its turn comes.
  ::sync_file_range(descriptor_, 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
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
  const auto error = ReplaceUnsynced(from, to);
  if (!error) SyncFolder(to.parent_path());
  return error;
}

std::error_code ReplaceUnsynced(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  return error;
}

void SyncFolder(const std::filesystem::path& folder) {
  const int descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

std::string EnvironmentValue(const std::string& name) {
  const char* const value = std::getenv(name.c_str());
  return value == nullptr ? std::string() : value;
}

// The process's own locale stays that of plain C, so the user's is asked for.
std::string DecimalSeparator() {
  const auto locale = ::newlocale(LC_NUMERIC_MASK, "", nullptr);
  if (locale == nullptr) return ".";
  const std::string separator = ::nl_langinfo_l(RADIXCHAR, locale);
  ::freelocale(locale);
  return separator;
}

std::string ToCodePage(std::string_view utf8) {
  return ToCodePage1252(utf8);
}

std::string FromCodePage(std::string_view bytes) {
  return FromCodePage1252(bytes);
}

}  // namespace quintara::native
