#include "hosts/vault/working_copies.h"

#include <filesystem>
#include <system_error>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/sha256.h"

namespace quintara::vault {
namespace {

bool IsThere(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(ToPath(path), ignored);
}

bool StandsInWorkDirectory(const Core& core, const std::string& path) {
  const auto work = ToPath(NormalPath(core.Options().workDirectory + "/"));
  return ToPath(path).parent_path() / "" == work / "";
}

// The paths noted for the object's present content, in the order of their names.
std::vector<std::string> NotedPaths(const ObjectData& object, std::int64_t deposit) {
  std::vector<std::string> paths;
  const auto rows = object.TheCore().Data().Query(
      "t", "SELECT path FROM vd_working_copy WHERE object_id = ? AND user_id = ? AND deposit_id = ? ORDER BY path",
      {std::int64_t{object.Id()}, std::int64_t{object.TheCore().UserId()}, deposit});
  for (const auto& row : rows) {
    const auto path = TextOf(row[0]);
    if (StandsInWorkDirectory(object.TheCore(), path) && IsThere(path)) paths.push_back(path);
  }
  return paths;
}

}  // namespace

void NoteCopy(Core& core, const std::string& path, std::int32_t objectId, std::int64_t deposit) {
  core.InTransaction([&] {
    core.Data().Execute(
        "INSERT INTO vd_working_copy (user_id, path, object_id, deposit_id) VALUES (?, ?, ?, ?) ON CONFLICT (user_id, "
        "path) "
        "DO UPDATE SET object_id = excluded.object_id, deposit_id = excluded.deposit_id",
        {std::int64_t{core.UserId()}, NormalPath(path), std::int64_t{objectId}, deposit});
  });
}

void NoteTaken(Core& core, const std::string& path, std::int32_t objectId, std::int64_t deposit) {
  if (StandsInWorkDirectory(core, NormalPath(path))) NoteCopy(core, path, objectId, deposit);
}

std::optional<std::int32_t> NotedObject(Core& core, const std::string& path) {
  const auto id =
      core.Data().QueryOne(ColumnType::kInteger, "SELECT object_id FROM vd_working_copy WHERE user_id = ? AND path = ?",
                           {std::int64_t{core.UserId()}, NormalPath(path)});
  if (IntegerOf(id) == 0) return std::nullopt;
  return static_cast<std::int32_t>(IntegerOf(id));
}

bool IsWorkingCopy(Core& core, const std::string& path) {
  const auto normal = NormalPath(path);
  if (!StandsInWorkDirectory(core, normal) || !IsThere(normal)) return false;
  const auto rows =
      core.Data().Query("i",
                        "SELECT o.object_id FROM vd_working_copy w JOIN vd_object o ON o.object_id = w.object_id "
                        "AND o.deposit_id = w.deposit_id AND o.owner_id = w.user_id WHERE w.user_id = ? AND w.path = ?",
                        {std::int64_t{core.UserId()}, normal});
  return !rows.empty();
}

bool StoreWorkingCopy(const ObjectData& object) {
  auto& core = object.TheCore();
  const auto row = RowOf(object);
  if (row.owner != core.UserId() || row.deposit == 0) return false;
  const auto before = FindDeposit(core.Data(), row.deposit);
  std::string changed;
  std::string digest;
  for (const auto& path : NotedPaths(object, row.deposit)) {
    const auto found = Sha256Text(core.Files().Read(path));
    if (found == before->file.sha256 || found == digest) continue;
    if (!changed.empty()) {
      throw Failure(failure::kInvalidCall, "\"" + changed + "\" and \"" + path + "\" are copies of " +
                                               Described(object.Info(), object.Id()) + ", and both have changed");
    }
    changed = path;
    digest = found;
  }
  if (changed.empty()) return false;
  TakeContent(object, changed);
  return true;
}

}  // namespace quintara::vault
