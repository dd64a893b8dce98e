#include "geometry/saving.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "base/failure.h"
#include "base/text.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void FailToWrite(const std::string& path, int error) {
  const bool forbidden = error == EACCES || error == EPERM || error == EROFS;
  const auto number = forbidden         ? failure::kPermissionDenied
                      : error == ENOSPC ? failure::kDiskFull
                                        : failure::kPathAccess;
  throw Failure(number, path + ": could not be written (" + std::strerror(error) + ")");
}

// Whoever reads of a failure knows the file that was asked for, not the one beside it.
std::string Renamed(std::string text, const std::string& from, const std::string& to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

class FolderBeside {
 public:
  explicit FolderBeside(const std::string& path) {
    const auto parent = ToPath(path).parent_path();
    name_ = FromPath((parent.empty() ? fs::path(".") : parent) / ".quintara-XXXXXX");
    if (mkdtemp(name_.data()) == nullptr) FailToWrite(path, errno);
  }
  FolderBeside(const FolderBeside&) = delete;
  FolderBeside& operator=(const FolderBeside&) = delete;
  ~FolderBeside() {
    std::error_code ignored;
    fs::remove_all(ToPath(name_), ignored);
  }

  std::string FileFor(const std::string& path) const { return FromPath(ToPath(name_) / ToPath(path).filename()); }

 private:
  std::string name_;
};

}  // namespace

void SaveBeside(const std::string& path, const std::function<void(const std::string& newPath)>& write) {
  const FolderBeside folder(path);
  const auto newPath = folder.FileFor(path);
  try {
    write(newPath);
  } catch (const Failure& error) {
    throw Failure(error.Number(), Renamed(error.Description(), newPath, path));
  }
  std::error_code error;
  fs::rename(ToPath(newPath), ToPath(path), error);
  if (error) FailToWrite(path, error.value());
}

NamelessFile::NamelessFile() {
  std::error_code none;
  const auto folder = fs::temp_directory_path(none);
  if (none) throw Failure(failure::kPathNotFound, "There is no folder for temporary files: " + none.message());
  auto name = FromPath(folder / "quintara-XXXXXX");
  file_ = mkostemp(name.data(), O_CLOEXEC);
  if (file_ < 0) FailToWrite(name, errno);
  unlink(name.c_str());
}

NamelessFile::~NamelessFile() {
  close(file_);
}

std::string NamelessFile::Path() const {
  return "/proc/self/fd/" + std::to_string(file_);
}

}  // namespace quintara
