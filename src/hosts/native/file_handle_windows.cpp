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
constexpr std::size_t kUsualValue = 256;
constexpr std::size_t kLongestWrite = 1U << 20U;

int FlagsOf(FileHandle::Use use) {
  switch (use) {
    case FileHandle::Use::kRead: return _O_RDONLY | _O_BINARY | _O_NOINHERIT;
    case FileHandle::Use::kReplace: return _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY | _O_NOINHERIT;
    case FileHandle::Use::kAppend: return _O_WRONLY | _O_CREAT | _O_APPEND | _O_BINARY | _O_NOINHERIT;
    case FileHandle::Use::kMake: return _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT;
    case FileHandle::Use::kSync: return _O_WRONLY | _O_BINARY | _O_NOINHERIT;
  }
  return _O_RDONLY | _O_BINARY;
}

// A system may be set to UTF-8, in which only ASCII has one byte for a character.
bool HasEightBitPage() {
  return ::GetACP() != CP_UTF8;
}

char PageByte(wchar_t unit) {
  std::array<char, 8> bytes{};
  const int length =
      ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, &unit, 1, bytes.data(), int{bytes.size()}, nullptr, nullptr);
  return length == 1 ? bytes[0] : '?';
}

wchar_t PageCharacter(char byte) {
  wchar_t unit = 0;
  return ::MultiByteToWideChar(CP_ACP, 0, &byte, 1, &unit, 1) == 1 ? unit : L'?';
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

void FileHandle::BeginSync() {}

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

std::error_code ReplaceUnsynced(const std::filesystem::path& from, const std::filesystem::path& to) {
  return Replace(from, to);
}

void SyncFolder(const std::filesystem::path& /*folder*/) {}

// The process's own, not the C library's copy of it, which the program that we are loaded into doesn't keep up.
std::string EnvironmentValue(const std::string& name) {
  const auto wide = ToPath(name);
  std::wstring value(kUsualValue, L'\0');
  while (true) {
    const auto length = ::GetEnvironmentVariableW(wide.c_str(), value.data(), static_cast<DWORD>(value.size()));
    const bool fits = length < value.size();
    value.resize(length);
    if (fits) return FromPath(value);
  }
}

std::string DecimalSeparator() {
  std::array<wchar_t, 8> text{};  // four characters at most, says the system
  const int length = ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, text.data(), int{text.size()});
  return length == 0 ? "." : FromPath(text.data());
}

std::string ToCodePage(std::string_view utf8) {
  constexpr std::int32_t kFirstPair = 0x10000;
  if (!HasEightBitPage()) return ToCodePage1252(utf8);
  std::string bytes;
  while (!utf8.empty()) {
    const auto code = TakeCharacter(utf8).code;
    if (code < 0 || code >= kFirstPair) {
      bytes.append(code < 0 ? 1 : 2, '?');
    } else {
      bytes.push_back(PageByte(static_cast<wchar_t>(code)));
    }
  }
  return bytes;
}

std::string FromCodePage(std::string_view bytes) {
  if (!HasEightBitPage()) return FromCodePage1252(bytes);
  std::string text;
  for (const char byte : bytes) AppendCharacter(text, PageCharacter(byte));
  return text;
}

}  // namespace quintara::native
