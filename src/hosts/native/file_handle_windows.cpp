#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "base/text.h"
#include "hosts/native/file_handle.h"

namespace quintara::native {
namespace {

constexpr std::size_t kBlock = 65536;
constexpr std::size_t kLongestWrite = 1U << 20U;

int FlagsOf(FileHandle::Use use) {
  switch (use) {
    case FileHandle::Use::kRead: return _O_RDONLY | _O_BINARY | _O_NOINHERIT;
    case FileHandle::Use::kReplace: return _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY | _O_NOINHERIT;
    case FileHandle::Use::kAppend: return _O_WRONLY | _O_CREAT | _O_APPEND | _O_BINARY | _O_NOINHERIT;
    case FileHandle::Use::kMake: return _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT;
  }
  return _O_RDONLY | _O_BINARY;
}

}  // namespace

FileHandle::FileHandle(const std::filesystem::path& path, Use use)
    : descriptor_(::_wopen(path.c_str(), FlagsOf(use), _S_IREAD | _S_IWRITE)) {
  if (!IsOpen()) NoteError();
}

FileHandle::~FileHandle() {
  if (IsOpen()) ::_close(descriptor_);
}

bool FileHandle::IsRegular() const {
  struct _stat64 status {};
  return IsOpen() && ::_fstat64(descriptor_, &status) == 0 && (status.st_mode & _S_IFREG) != 0;
}

bool FileHandle::ReadAll(std::string& bytes) {
  std::array<char, kBlock> block;
  while (true) {
    const int count = ::_read(descriptor_, block.data(), static_cast<unsigned>(block.size()));
    if (count == 0) return true;
    if (count < 0) return NoteError();
    bytes.append(block.data(), static_cast<std::size_t>(count));
  }
}

bool FileHandle::WriteAll(const std::string& bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    const auto length = static_cast<unsigned>(std::min(bytes.size() - done, kLongestWrite));
    const int count = ::_write(descriptor_, bytes.data() + done, length);
    if (count < 0) return NoteError();
    if (count == 0) {
      errno = ENOSPC;
      return NoteError();
    }
    done += static_cast<std::size_t>(count);
  }
  return true;
}

bool FileHandle::Sync() {
  return ::_commit(descriptor_) == 0 || !IsRegular() || NoteError();
}

bool FileHandle::Close() {
  if (!IsOpen()) return true;
  const int closed = ::_close(descriptor_);
  descriptor_ = -1;
  return closed == 0 || NoteError();
}

bool FileHandle::NoteError() {
  error_ = {errno, std::generic_category()};
  return false;
}

std::error_code Replace(const std::filesystem::path& from, const std::filesystem::path& to) {
  if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) return {};
  return {static_cast<int>(::GetLastError()), std::system_category()};
}

std::string EnvironmentValue(const std::string& name) {
  const wchar_t* const value = ::_wgetenv(ToPath(name).c_str());
  return value == nullptr ? std::string() : FromPath(value);
}

}  // namespace quintara::native
