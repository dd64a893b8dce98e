#include "hosts/vault/deposits.h"

#include <charconv>
#include <filesystem>
#include <system_error>

#include "base/text.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/sequences.h"

namespace quintara::vault {
namespace {

constexpr std::string_view kScheme = "store:/";

bool IsFile(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(ToPath(path), ignored);
}

}  // namespace

std::string DirectoryOf(std::int64_t deposit) {
  return std::string(kScheme) + std::to_string(deposit);
}

std::optional<std::int64_t> DepositIn(const std::string& directory) {
  if (!directory.starts_with(kScheme)) return std::nullopt;
  std::int64_t id = 0;
  const char* const end = directory.data() + directory.size();
  const auto read = std::from_chars(directory.data() + kScheme.size(), end, id);
  if (read.ec != std::errc{} || read.ptr != end) return std::nullopt;
  return id;
}

std::optional<Deposit> FindDeposit(Database& database, std::int64_t id) {
  const auto rows = database.Query(
      "ttiti", "SELECT name, sha256, size, light_sha256, light_size FROM vd_deposit WHERE deposit_id = ?", {id});
  if (rows.empty()) return std::nullopt;
  const auto& row = rows.front();
  Deposit deposit{id, TextOf(row[0]), {TextOf(row[1]), IntegerOf(row[2])}, std::nullopt};
  if (!TextOf(row[3]).empty()) deposit.light = FileStore::Content{TextOf(row[3]), IntegerOf(row[4])};
  return deposit;
}

Deposit MakeDeposit(Core& core, const std::string& name, const FileStore::Content& file,
                    const std::optional<FileStore::Content>& light) {
  auto& database = core.Data();
  const auto lightContent = light.value_or(FileStore::Content{});
  const auto there = database.QueryOne(
      ColumnType::kInteger, "SELECT deposit_id FROM vd_deposit WHERE sha256 = ? AND name = ? AND light_sha256 = ?",
      {file.sha256, name, lightContent.sha256});
  if (IntegerOf(there) != 0) return {IntegerOf(there), name, file, light};
  const std::int64_t id = NextNumber(database, sequence::kDeposit);
  database.Execute(
      "INSERT INTO vd_deposit (deposit_id, name, sha256, size, light_sha256, light_size) VALUES (?, ?, ?, ?, ?, ?)",
      {id, name, file.sha256, file.size, lightContent.sha256, lightContent.size});
  return {id, name, file, light};
}

std::optional<std::string> LightBeside(const std::string& path, const std::string& name) {
  const auto vaultName = FromPath(ToPath(path).replace_filename(ToPath(name + ".lwt")));
  if (IsFile(vaultName)) return vaultName;
  if (IsFile(path + ".lwt")) return path + ".lwt";
  return std::nullopt;
}

Deposit DepositFile(Core& core, const std::string& name, const std::string& path,
                    const std::optional<Deposit>& before) {
  RequireFileName(name);
  const auto file = core.Store().Put(core.Files().Read(path));
  std::optional<FileStore::Content> light;
  if (const auto beside = LightBeside(path, name)) {
    light = core.Store().Put(core.Files().Read(*beside));
  } else if (before) {
    light = before->light;
  }
  return MakeDeposit(core, name, file, light);
}

}  // namespace quintara::vault
