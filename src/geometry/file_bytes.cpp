#include "geometry/file_bytes.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>

#include "base/failure.h"
#include "base/text.h"

namespace quintara {

std::string BytesOfFile(const std::string& path) {
  return FirstBytesOfFile(path, std::numeric_limits<std::size_t>::max());
}

std::string FirstBytesOfFile(const std::string& path, std::size_t count) {
  const auto file = ToPath(path);
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) throw Failure(failure::kPathAccess, path + ": is a folder");
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    const int error = errno;
    const auto number = error == ENOENT || error == ENOTDIR ? failure::kFileNotFound : failure::kPermissionDenied;
    throw Failure(number, path + ": could not be opened (" + std::strerror(error) + ")");
  }
  const auto size = std::filesystem::file_size(file, ignored);
  std::string bytes(static_cast<std::size_t>(std::min<std::uintmax_t>(size, count)), '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(stream.gcount()));
  return bytes;
}

void WriteFile(const std::string& path, const std::string& bytes) {
  std::ofstream stream(ToPath(path), std::ios::binary);
  stream << bytes;
  stream.close();
  if (!stream) throw Failure(failure::kPathAccess, path + ": could not be written");
}

}  // namespace quintara
