#include "hosts/native/file_failure.h"

#include <cerrno>
#include <filesystem>
#include <initializer_list>

#include "base/failure.h"
#include "base/text.h"

namespace quintara::native {
namespace {

bool FolderIsMissing(const std::string& path) {
  const auto folder = ToPath(path).parent_path();
  std::error_code ignored;
  return !folder.empty() && !std::filesystem::is_directory(folder, ignored);
}

bool IsOneOf(std::error_code error, std::initializer_list<std::errc> kinds) {
  for (const auto kind : kinds) {
    if (error == kind) return true;
  }
  return false;
}

bool IsFullQuota([[maybe_unused]] std::error_code error) {
#ifdef EDQUOT
  return error == std::error_code(EDQUOT, std::generic_category());
#else
  return false;
#endif
}

int NumberOf(std::error_code error, const std::string& path, const std::string& target) {
  using enum std::errc;
  if (IsOneOf(error, {no_space_on_device, file_too_large}) || IsFullQuota(error)) return failure::kDiskFull;
  if (IsOneOf(error, {permission_denied, operation_not_permitted, read_only_file_system, text_file_busy})) {
    return failure::kPermissionDenied;
  }
  if (IsOneOf(error, {no_such_file_or_directory, not_a_directory})) {
    return FolderIsMissing(path) || FolderIsMissing(target) ? failure::kPathNotFound : failure::kFileNotFound;
  }
  if (IsOneOf(error, {is_a_directory, file_exists, directory_not_empty, filename_too_long, invalid_argument})) {
    return failure::kPathAccess;
  }
  return failure::kDeviceError;
}

}  // namespace

void ThrowFileFailure(std::error_code error, const std::string& path, const std::string& target) {
  const int number = NumberOf(error, path, target);
  auto text = Failure(number).Description() + ": \"" + path + "\"";
  if (!target.empty()) text += ", to be renamed to \"" + target + "\"";
  throw Failure(number, text + " (" + error.message() + ")");
}

}  // namespace quintara::native
