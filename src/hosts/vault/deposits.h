#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "hosts/vault/core.h"

namespace quintara::vault {

/// One content as it was stored: a file under its name and, beside it, its light representation.
struct Deposit {
  std::int64_t id = 0;
  std::string name;
  FileStore::Content file;
  std::optional<FileStore::Content> light;

  std::string LightName() const { return name + ".lwt"; }
};

/// The number of the store, which "VAULT_OBJECT_ID" holds.
inline constexpr std::int32_t kStoreId = 1;

/// What "DIRECTORY" holds for a deposit, and back; nothing for any other text.
std::string DirectoryOf(std::int64_t deposit);
std::optional<std::int64_t> DepositIn(const std::string& directory);

/// Nothing for an id that isn't there.
std::optional<Deposit> FindDeposit(Database& database, std::int64_t id);

/// The deposit of this content, a new one where there is none yet; only within a transaction.
Deposit MakeDeposit(Core& core, const std::string& name, const FileStore::Content& file,
                    const std::optional<FileStore::Content>& light);

/// The light file that would be taken along with the file at `path`: beside it under the name that it
/// has in the vault, or that of the file itself; nothing where neither stands there.
std::optional<std::string> LightBeside(const std::string& path, const std::string& name);

/// Takes the file at `path` in as `name`, with the light representation that stands beside it, else
/// with that of `before`.
Deposit DepositFile(Core& core, const std::string& name, const std::string& path, const std::optional<Deposit>& before);

}  // namespace quintara::vault
