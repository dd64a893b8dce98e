#include "hosts/vault/file_names.h"

#include <filesystem>
#include <system_error>

#include "base/text.h"

namespace quintara::vault {

std::string NormalPath(const std::string& path) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(ToPath(path), error);
  return FromPath((error ? ToPath(path) : absolute).lexically_normal());
}

std::string FileNameOf(const std::string& path) {
  return FromPath(ToPath(path).filename());
}

}  // namespace quintara::vault
