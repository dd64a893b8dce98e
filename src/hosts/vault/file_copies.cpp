#include "hosts/vault/file_copies.h"

#include <filesystem>
#include <map>
#include <set>
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
  std::set<std::int16_t> classes;
  for (const auto& one : held) classes.insert(one.classId);
  classes.erase(object.Info().id);
  for (const auto classId : classes) core.RequireRight(operation::kCopyFile, core.TheSchema().ClassById(classId));
  ReadNames(object, held);
  std::vector<std::pair<std::string, Held>> wanted;
  for (const auto& [capitals, one] : ByName(object, held)) {
    const auto path = PathIn(core.Options().workDirectory, one.name);
    if (!IsWorkingCopy(core, path)) wanted.emplace_back(path, one);
  }
  return wanted;
}

// The right to one of the objects that have a content is enough; of a content that no object has any
// more nobody can say which class it is of.
void RequireRightToCopy(Core& core, const std::vector<SqlRow>& objects) {
  std::set<std::int64_t> classes;
  for (const auto& row : objects) classes.insert(IntegerOf(row[1]));
  ErrorState refused;
  for (const auto classId : classes) {
    const auto& info = core.TheSchema().ClassById(static_cast<int>(classId));
    if (Attempt(refused, [&] { core.RequireRight(operation::kCopyFile, info); })) return;
  }
  if (!classes.empty()) throw Failure(refused.number, refused.description);
  for (const auto& info : core.TheSchema().Classes()) {
    if (info->IsVersioned()) core.RequireRight(operation::kCopyFile, *info);
  }
}

// A light file that stands beside is renewed with the file: an old one would be taken for a new one of
// the file's.
void Bring(Core& core, const Copy& copy) {
  const auto deposit = *FindDeposit(core.Data(), copy.deposit);
  const auto light = deposit.light ? LightBeside(copy.path, deposit.name) : std::nullopt;
  if (light) core.Files().WriteWhole(*light, core.Store().Read(*deposit.light));
  core.Files().WriteWhole(copy.path, core.Store().Read(deposit.file));
}

}  // namespace

void CopyFileOf(const ObjectData& object, const std::string& name, const std::string& directory, bool withLight) {
  auto& core = object.TheCore();
  const auto deposit = DepositOf(object);
  core.RequireRight(operation::kCopyFile, object.Info());
  if (!deposit) throw Failure(failure::kFileNotFound, Described(object.Info(), object.Id()) + " has no file");
  const auto path = PathIn(directory, name);
  std::vector<Copy> copies = {{path, object.Id(), deposit->id}};
  std::vector<std::string> bytes = {core.Store().Read(deposit->file)};
  if (withLight && deposit->light) {
    copies.push_back({PathIn(directory, name + ".lwt")});
    bytes.push_back(core.Store().Read(*deposit->light));
  }
  WriteAndNote(core, copies, [&](std::size_t i) { core.Files().WriteWhole(copies[i].path, bytes[i]); });
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
  RequireRightToCopy(core, objects);
  std::string bytes;
  try {
    bytes = core.Store().Read(main ? deposit->file : *deposit->light);
  } catch (const Failure& failure) {
    if (failure.Number() == failure::kFileNotFound) return false;
    throw;
  }
  std::vector<Copy> copies = {{path}};
  if (main && !objects.empty()) copies = {{path, static_cast<std::int32_t>(IntegerOf(objects[0][0])), deposit->id}};
  WriteAndNote(core, copies, [&](std::size_t) { core.Files().WriteWhole(path, bytes); });
  return true;
}

void CopyStructure(const ObjectData& object) {
  auto& core = object.TheCore();
  const auto wanted = ToBring(object);
  std::vector<Copy> copies;
  for (const auto& [path, one] : wanted) copies.push_back({path, one.id, one.deposit});
  WriteAndNote(core, copies, [&](std::size_t i) { Bring(core, copies[i]); });
}

std::vector<std::string> FilesToReplace(const ObjectData& object) {
  auto& core = object.TheCore();
  std::vector<std::string> paths;
  for (const auto& [path, one] : ToBring(object)) {
    std::error_code ignored;
    if (!std::filesystem::exists(ToPath(path), ignored)) continue;
    const auto deposit = *FindDeposit(core.Data(), one.deposit);
    if (Sha256Text(core.Files().Read(path)) != deposit.file.sha256) paths.push_back(path);
    const auto light = deposit.light ? LightBeside(path, deposit.name) : std::nullopt;
    if (light && Sha256Text(core.Files().Read(*light)) != deposit.light->sha256) paths.push_back(*light);
  }
  return paths;
}

}  // namespace quintara::vault
