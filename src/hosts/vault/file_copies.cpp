#include "hosts/vault/file_copies.h"

#include <filesystem>
#include <map>
#include <system_error>
#include <utility>
#include <vector>

#include "base/attempt.h"
#include "base/failure.h"
#include "base/text.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/life_cycle.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/sha256.h"
#include "hosts/vault/working_copies.h"

namespace quintara::vault {
namespace {

struct Held {
  std::int32_t id;
  std::int16_t classId;
  std::string identity;
  std::int64_t version;
  std::int64_t deposit;
  std::string name;
};

std::vector<Held> HeldBy(const ObjectData& root) {
  auto& core = root.TheCore();
  const auto rows = core.Data().Query(
      "iitii",
      "WITH RECURSIVE held(id) AS (SELECT CAST(? AS INTEGER) UNION SELECT l.to_object FROM vd_link l JOIN held h "
      "ON l.from_object = h.id AND l.\"CLASS_ID\" = ?) SELECT o.object_id, o.class_id, o.identity, o.version, "
      "o.deposit_id "
      "FROM vd_object o JOIN held ON held.id = o.object_id WHERE o.deposit_id IS NOT NULL ORDER BY o.object_id",
      {std::int64_t{root.Id()}, std::int64_t{core.TheSchema().StructureLink().id}});
  std::vector<Held> held;
  for (const auto& row : rows) {
    held.push_back({static_cast<std::int32_t>(IntegerOf(row[0])),
                    static_cast<std::int16_t>(IntegerOf(row[1])),
                    TextOf(row[2]),
                    IntegerOf(row[3]),
                    IntegerOf(row[4]),
                    {}});
  }
  return held;
}

void ReadNames(const ObjectData& root, std::vector<Held>& held) {
  std::map<std::int16_t, std::vector<std::size_t>> byClass;
  for (std::size_t i = 0; i < held.size(); ++i) byClass[held[i].classId].push_back(i);
  for (const auto& [classId, places] : byClass) {
    const auto& info = root.TheCore().TheSchema().ClassById(classId);
    std::vector<ObjectData> objects;
    for (const auto i : places) objects.emplace_back(root.SharedCore(), info, held[i].id);
    std::vector<ObjectData*> pointers;
    for (auto& object : objects) pointers.push_back(&object);
    ReadTogether(root.TheCore(), pointers, {info.PlaceOf(attribute::kCadFileName)});
    for (std::size_t i = 0; i < places.size(); ++i) held[places[i]].name = objects[i].Text(attribute::kCadFileName);
  }
}

// File systems may take names that differ in case for one.
std::map<std::string, Held> ByName(const ObjectData& root, const std::vector<Held>& held) {
  std::map<std::string, Held> chosen;
  for (const auto& one : held) {
    RequireFileName(one.name);
    const auto [place, first] = chosen.try_emplace(Capitals(one.name), one);
    if (first) continue;
    const auto& info = root.TheCore().TheSchema().ClassById(one.classId);
    if (place->second.identity != one.identity || place->second.classId != one.classId) {
      throw Failure(failure::kInvalidCall, Described(info, one.id) + " and another component of " +
                                               Described(root.Info(), root.Id()) + " have the same file name \"" +
                                               one.name + "\"");
    }
    // The root's own revision is the one that was asked for.
    if (place->second.id != root.Id() && (one.id == root.Id() || one.version > place->second.version))
      place->second = one;
  }
  return chosen;
}

// What a copy of the structure writes, and where: all but the working copies that are there.
std::vector<std::pair<std::string, Held>> ToBring(const ObjectData& object) {
  auto& core = object.TheCore();
  core.RequireRight(operation::kCopyFile, object.Info());
  if (!DepositOf(object)) throw Failure(failure::kFileNotFound, Described(object.Info(), object.Id()) + " has no file");
  auto held = HeldBy(object);
  ReadNames(object, held);
  std::vector<std::pair<std::string, Held>> wanted;
  for (const auto& [capitals, one] : ByName(object, held)) {
    const auto path = PathIn(core.Options().workDirectory, one.name);
    if (!IsWorkingCopy(core, path)) wanted.emplace_back(path, one);
  }
  return wanted;
}

}  // namespace

void CopyFileOf(const ObjectData& object, const std::string& name, const std::string& directory, bool withLight) {
  auto& core = object.TheCore();
  const auto deposit = DepositOf(object);
  core.RequireRight(operation::kCopyFile, object.Info());
  if (!deposit) throw Failure(failure::kFileNotFound, Described(object.Info(), object.Id()) + " has no file");
  const auto path = PathIn(directory, name);
  const auto file = core.Store().Read(deposit->file);
  const bool light = withLight && deposit->light;
  const auto lightFile = light ? core.Store().Read(*deposit->light) : std::string();
  core.Files().WriteWhole(path, file);
  if (light) core.Files().WriteWhole(PathIn(directory, name + ".lwt"), lightFile);
  NoteCopy(core, path, object.Id(), deposit->id);
}

bool CopyStoredFile(Core& core, const std::string& vaultDirectory, const std::string& fileName,
                    const std::string& directory, const std::string& name) {
  const auto path = PathIn(directory, name);
  const auto id = DepositIn(vaultDirectory);
  const auto deposit = id ? FindDeposit(core.Data(), *id) : std::nullopt;
  const bool main = deposit && deposit->name == fileName;
  const bool light = deposit && deposit->light && deposit->LightName() == fileName;
  if (!main && !light) return false;
  const auto objects = core.Data().Query("ii",
                                         "SELECT object_id, class_id FROM vd_object WHERE deposit_id = ? ORDER BY "
                                         "CASE WHEN owner_id = ? THEN 0 ELSE 1 END, version DESC, object_id",
                                         {deposit->id, std::int64_t{core.UserId()}});
  if (!objects.empty()) {
    core.RequireRight(operation::kCopyFile, core.TheSchema().ClassById(static_cast<int>(IntegerOf(objects[0][1]))));
  }
  std::string bytes;
  try {
    bytes = core.Store().Read(main ? deposit->file : *deposit->light);
  } catch (const Failure& failure) {
    if (failure.Number() == failure::kFileNotFound) return false;
    throw;
  }
  core.Files().WriteWhole(path, bytes);
  if (main && !objects.empty()) NoteCopy(core, path, static_cast<std::int32_t>(IntegerOf(objects[0][0])), deposit->id);
  return true;
}

void CopyStructure(const ObjectData& object) {
  auto& core = object.TheCore();
  std::vector<std::pair<std::string, Held>> copied;
  const auto wanted = ToBring(object);
  ErrorState error;
  const bool complete = Attempt(error, [&] {
    for (const auto& [path, one] : wanted) {
      core.Files().WriteWhole(path, core.Store().Read(FindDeposit(core.Data(), one.deposit)->file));
      copied.emplace_back(path, one);
    }
  });
  // Noted together: a transaction for each file would cost more than its copy.
  core.InTransaction([&] {
    for (const auto& [path, one] : copied) NoteCopy(core, path, one.id, one.deposit);
  });
  if (!complete) throw Failure(error.number, error.description);
}

std::vector<std::string> FilesToReplace(const ObjectData& object) {
  auto& core = object.TheCore();
  std::vector<std::string> paths;
  for (const auto& [path, one] : ToBring(object)) {
    std::error_code ignored;
    if (!std::filesystem::exists(ToPath(path), ignored)) continue;
    const auto deposit = FindDeposit(core.Data(), one.deposit);
    if (Sha256Text(core.Files().Read(path)) != deposit->file.sha256) paths.push_back(path);
  }
  return paths;
}

}  // namespace quintara::vault
