#include "hosts/desk/places.h"

#include <filesystem>
#include <system_error>

#include "base/attempt.h"
#include "base/failure.h"
#include "base/file_names.h"
#include "base/text.h"
#include "hosts/vault/embedded_vault.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

constexpr auto kVaultName = "quintara.vault";

}  // namespace

std::string VaultUpwards() {
  std::error_code error;
  for (auto folder = fs::current_path(error); !error && !folder.empty(); folder = folder.parent_path()) {
    if (auto vault = FromPath(folder / kVaultName); IsVault(vault)) return vault;
    if (folder == folder.root_path()) break;
  }
  return {};
}

std::string WorkFolderOf(const std::string& vault, const std::string& user) {
  if (!IsFileName(user)) {
    throw Failure(failure::kPathAccess,
                  "the user '" + user + "' can't have a folder of that name; name a work directory with --work");
  }
  std::error_code error;
  const auto folder = fs::absolute(ToPath(vault), error).lexically_normal();
  if (error) throw Failure(failure::kPathNotFound, "the vault '" + vault + "' can't be found: " + error.message());
  return FromPath(folder / "work" / ToPath(user));
}

void MakeWorkFolder(const std::string& folder) {
  std::error_code error;
  fs::create_directories(ToPath(folder), error);
  if (error) {
    throw Failure(failure::kPathAccess, "the work directory '" + folder + "' can't be made: " + error.message());
  }
}

bool IsFileName(const std::string& name) {
  ErrorState refused;
  return Attempt(refused, [&] { RequireFileName(name); });
}

}  // namespace quintara
