#include "hosts/vault/working_copies.h"

#include <filesystem>
#include <set>
#include <system_error>
#include <vector>

#include "base/attempt.h"
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

// The digests of a file and of the light one beside it; empty when both are what was stored.
std::string ChangedDigests(Core& core, const std::string& path, const Deposit& before) {
  const auto file = Sha256Text(core.Files().Read(path));
  const auto stored = before.light ? before.light->sha256 : std::string();
  const auto beside = LightBeside(path, before.name);
  const auto light = beside ? Sha256Text(core.Files().Read(*beside)) : stored;
  return file == before.file.sha256 && light == stored ? std::string() : file + light;
}

std::optional<Copy> NoteAt(Core& core, const std::string& path) {
  const auto normal = NormalPath(path);
  const auto rows =
      core.Data().Query("ii", "SELECT object_id, deposit_id FROM vd_working_copy WHERE user_id = ? AND path = ?",
                        {std::int64_t{core.UserId()}, normal});
  if (rows.empty()) return std::nullopt;
  return Copy{normal, static_cast<std::int32_t>(IntegerOf(rows[0][0])), IntegerOf(rows[0][1])};
}

bool SayTheSame(const Copy& left, const Copy& right) {
  return left.objectId == right.objectId && left.deposit == right.deposit;
}

// The notes that the writing of `copies` makes wrong.
std::vector<Copy> WrongNotes(Core& core, const std::vector<Copy>& copies) {
  std::vector<Copy> wrong;
  for (const auto& copy : copies) {
    const auto note = NoteAt(core, copy.path);
    if (note && !SayTheSame(*note, copy)) wrong.push_back(*note);
  }
  return wrong;
}

// Most files are copied again and again, and nothing has to be written then.
bool IsNoted(Core& core, const Copy& copy) {
  const auto note = NoteAt(core, copy.path);
  return note && SayTheSame(*note, copy);
}

void ForgetNotes(Core& core, const std::vector<std::string>& paths) {
  if (paths.empty()) return;
  core.InTransaction([&] {
    for (const auto& path : paths) {
      core.Data().Execute("DELETE FROM vd_working_copy WHERE user_id = ? AND path = ?",
                          {std::int64_t{core.UserId()}, path});
    }
  });
}

void NoteAll(Core& core, const std::vector<Copy>& copies) {
  if (copies.empty()) return;
  core.InTransaction([&] {
    for (const auto& copy : copies) NoteCopy(core, copy.path, copy.objectId, copy.deposit);
  });
}

}  // namespace

void WriteAndNote(Core& core, const std::vector<Copy>& copies, const std::function<void(std::size_t)>& write) {
  const auto wrong = WrongNotes(core, copies);
  std::vector<std::string> forgotten;
  for (const auto& note : wrong) forgotten.push_back(note.path);
  ForgetNotes(core, forgotten);
  std::set<std::string> written;
  std::size_t done = 0;
  ErrorState error;
  const bool complete = Attempt(error, [&] {
    for (; done < copies.size(); ++done) {
      write(done);
      written.insert(NormalPath(copies[done].path));
    }
  });
  if (core.IsInTransaction() && !written.empty()) {
    // The files stay as they are now, though the notes come back.
    core.WhenUndone([&core, paths = std::vector(written.begin(), written.end())] { ForgetNotes(core, paths); });
  }
  std::vector<Copy> missing;
  for (std::size_t i = 0; i < done; ++i) {
    if (copies[i].objectId != 0 && !IsNoted(core, copies[i])) missing.push_back(copies[i]);
  }
  for (const auto& note : wrong) {
    if (!written.contains(note.path)) missing.push_back(note);
  }
  NoteAll(core, missing);
  if (!complete) throw Failure(error.number, error.description);
}

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
  const auto note = NoteAt(core, path);
  return note ? std::optional(note->objectId) : std::nullopt;
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

void HandOverNotes(Core& core, std::int32_t fromObject, std::int32_t toObject, std::int64_t deposit) {
  core.Data().Execute("UPDATE vd_working_copy SET object_id = ? WHERE object_id = ? AND user_id = ? AND deposit_id = ?",
                      {std::int64_t{toObject}, std::int64_t{fromObject}, std::int64_t{core.UserId()}, deposit});
}

bool StoreWorkingCopy(const ObjectData& object) {
  auto& core = object.TheCore();
  const auto row = RowOf(object);
  if (row.owner != core.UserId() || row.deposit == 0) return false;
  const auto paths = NotedPaths(object, row.deposit);
  if (paths.empty()) return false;
  const auto before = FindDeposit(core.Data(), row.deposit);
  std::string changed;
  std::string digests;
  for (const auto& path : paths) {
    const auto found = ChangedDigests(core, path, *before);
    if (found.empty() || found == digests) continue;
    if (!changed.empty()) {
      throw Failure(failure::kInvalidCall, "\"" + changed + "\" and \"" + path + "\" are copies of " +
                                               Described(object.Info(), object.Id()) + ", and both have changed");
    }
    changed = path;
    digests = found;
  }
  if (changed.empty()) return false;
  TakeContent(object, changed);
  return true;
}

}  // namespace quintara::vault
