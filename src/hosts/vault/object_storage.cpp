#include "hosts/vault/object_storage.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "access/contracts/veldora_objects.h"
#include "base/failure.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/sequences.h"
#include "hosts/vault/working_copies.h"

namespace quintara::vault {
namespace {

namespace state = veldora::state;

void Set(ObjectData& object, const std::string& attribute, SqlValue value) {
  if (const auto place = object.Info().Find(attribute)) object.Know(*place, std::move(value));
}

// The deposit that FILE_NAME and DIRECTORY ask for, and the path that it was taken from.
struct Taken {
  std::optional<Deposit> deposit;
  std::string path;
};

Taken TakeFile(ObjectData& object, const std::optional<Deposit>& before) {
  auto& core = object.TheCore();
  const auto name = object.Text(attribute::kFileName);
  const auto directory = object.Text(attribute::kDirectory);
  if (const auto cadName = object.Text(attribute::kCadFileName); !cadName.empty()) RequireFileName(cadName);
  if (name.empty()) return {};
  RequireFileName(name);
  if (const auto id = DepositIn(directory)) {
    auto deposit = FindDeposit(core.Data(), *id);
    if (!deposit) throw Failure(failure::kPathNotFound, "The vault's store has no directory \"" + directory + "\"");
    if (deposit->name != name) deposit = MakeDeposit(core, name, deposit->file, deposit->light);
    return {deposit, {}};
  }
  if (directory.empty())
    throw Failure(failure::kPathNotFound, "There is no DIRECTORY to take the file \"" + name + "\" from");
  const auto path = PathIn(directory, name);
  return {DepositFile(core, name, path, before), path};
}

void SetDeposit(ObjectData& object, const std::optional<Deposit>& deposit) {
  if (!deposit) return;
  Set(object, attribute::kDirectory, DirectoryOf(deposit->id));
  Set(object, attribute::kVaultObjectId, std::int64_t{kStoreId});
  Set(object, attribute::kFileId, deposit->id);
  if (object.Text(attribute::kCadFileName).empty())
    Set(object, attribute::kCadFileName, object.Text(attribute::kFileName));
}

void FillMasks(ObjectData& object) {
  if (const auto given = object.Text(attribute::kIdentity); given.empty()) {
    Set(object, attribute::kIdentity, NextMaskValue(object.TheCore(), object.Info(), attribute::kIdentity));
  } else if (IsIdentityTaken(object.TheCore(), object.Info(), given)) {
    throw Failure(failure::kInvalidCall, "There is an object " + object.Info().name + " \"" + given + "\" already");
  }
  if (object.Text(attribute::kRevision).empty()) {
    Set(object, attribute::kRevision, FirstMaskRevision(object.Info(), attribute::kRevision));
  }
}

void Stamp(ObjectData& object, bool created) {
  const auto now = TimeStamp();
  const std::int64_t user = object.TheCore().UserId();
  if (created) {
    Set(object, attribute::kCreated, now);
    Set(object, attribute::kCreatedBy, user);
  }
  Set(object, attribute::kModified, now);
  Set(object, attribute::kModifiedBy, user);
}

void InsertRow(const ObjectData& object, const std::string& identity, const std::optional<Deposit>& deposit) {
  auto& database = object.TheCore().Data();
  const std::int64_t user = object.TheCore().UserId();
  const bool versioned = object.Info().IsVersioned();
  database.Execute(
      "INSERT INTO vd_object (object_id, class_id, identity, version, owner_id, deposit_id) VALUES (?, ?, ?, 1, ?, ?)",
      {std::int64_t{object.Id()}, std::int64_t{object.Info().id}, TextOrNull(identity),
       versioned ? SqlValue(user) : SqlValue(), deposit ? SqlValue(deposit->id) : SqlValue()});
}

constexpr std::array<const char*, 3> kFileAttributes = {attribute::kFileName, attribute::kDirectory,
                                                        attribute::kCadFileName};

bool IsChanged(const ObjectData& object, const std::string& name) {
  const auto place = object.Info().Find(name);
  return place && object.IsChanged(*place);
}

bool ChangesFile(const ObjectData& object) {
  return object.Info().IsVersioned() &&
         std::ranges::any_of(kFileAttributes, [&](const char* name) { return IsChanged(object, name); });
}

// What was known of the file before may be old: taken for new, it would bring an older content back.
void ReadUnchangedOfFile(ObjectData& object) {
  std::vector<std::size_t> places;
  for (const auto* name : kFileAttributes) {
    if (!IsChanged(object, name)) places.push_back(object.Info().PlaceOf(name));
  }
  object.Read(places);
}

// An object whose FILE_NAME was emptied has no file any more.
void ForgetFile(ObjectData& object) {
  for (const auto* name : {attribute::kDirectory, attribute::kVaultObjectId, attribute::kFileId}) Set(object, name, {});
}

Taken TakeChangedFile(ObjectData& object, AttributeValues& values) {
  if (!ChangesFile(object)) return {};
  ReadUnchangedOfFile(object);
  const auto before = DepositOf(object);
  auto taken = TakeFile(object, before);
  if (taken.deposit) {
    SetDeposit(object, taken.deposit);
  } else if (before) {
    ForgetFile(object);
  } else {
    return taken;
  }
  for (const auto* name :
       {attribute::kDirectory, attribute::kVaultObjectId, attribute::kFileId, attribute::kCadFileName}) {
    values[name] = object.Value(object.Info().PlaceOf(name));
  }
  object.TheCore().Data().Execute(
      "UPDATE vd_object SET deposit_id = ? WHERE object_id = ?",
      {taken.deposit ? SqlValue(taken.deposit->id) : SqlValue(), std::int64_t{object.Id()}});
  return taken;
}

void UpdateNow(ObjectData& object) {
  auto& core = object.TheCore();
  RequireChangeable(object);
  AttributeValues values;
  for (std::size_t place = 0; place < object.Info().attributes.size(); ++place) {
    if (object.IsChanged(place)) values[object.Info().attributes[place].name] = object.Value(place);
  }
  const auto taken = TakeChangedFile(object, values);
  Stamp(object, false);
  SetValues(object, values);
  if (!taken.path.empty()) NoteTaken(core, taken.path, object.Id(), taken.deposit->id);
}

int StoredState(Core& core, const ClassInfo& info, std::int32_t id) {
  if (!info.IsVersioned()) return state::kNew;
  return static_cast<int>(IntegerOf(core.Data().QueryOne(
      ColumnType::kInteger, "SELECT \"STATE\" FROM " + Quoted(info.table) + " WHERE \"OBJECT_ID\" = ?",
      {std::int64_t{id}})));
}

}  // namespace

std::optional<ObjectRow> FindRow(Database& database, std::int32_t id) {
  const auto rows = database.Query(
      "itiii", "SELECT class_id, identity, version, owner_id, deposit_id FROM vd_object WHERE object_id = ?",
      {std::int64_t{id}});
  if (rows.empty()) return std::nullopt;
  const auto& row = rows.front();
  return ObjectRow{static_cast<std::int16_t>(IntegerOf(row[0])), TextOf(row[1]), IntegerOf(row[2]),
                   static_cast<std::int32_t>(IntegerOf(row[3])), IntegerOf(row[4])};
}

ObjectRow RowOf(Core& core, const ClassInfo& info, std::int32_t id) {
  const auto row = info.IsLink() ? std::nullopt : FindRow(core.Data(), id);
  if (row && row->classId == info.id) return *row;
  if (id == 0) throw Failure(failure::kInvalidCall, "A new " + info.name + " isn't stored yet");
  throw Failure(failure::kInvalidCall, "The vault has no object " + Described(info, id));
}

ObjectRow RowOf(const ObjectData& object) {
  return RowOf(object.TheCore(), object.Info(), object.Id());
}

std::optional<Deposit> DepositOf(const ObjectData& object) {
  const auto id = RowOf(object).deposit;
  return id == 0 ? std::nullopt : FindDeposit(object.TheCore().Data(), id);
}

int StateOf(const ObjectData& object) {
  return StoredState(object.TheCore(), object.Info(), object.Id());
}

void RequireChangeable(Core& core, const ClassInfo& info, std::int32_t id) {
  const auto row = RowOf(core, info, id);
  const int current = StoredState(core, info, id);
  if (current == state::kCheckedIn || current == state::kReleased) {
    throw Failure(failure::kPermissionDenied, Described(info, id) + " is " +
                                                  (current == state::kCheckedIn ? "checked in" : "released") +
                                                  " and can't be changed");
  }
  if (current == state::kCheckedOut && row.owner != core.UserId()) {
    throw Failure(failure::kPermissionDenied, Described(info, id) + " is checked out by another user");
  }
}

void RequireChangeable(const ObjectData& object) {
  RequireChangeable(object.TheCore(), object.Info(), object.Id());
}

void InsertNow(ObjectData& object) {
  if (object.Info().IsLink()) throw Failure(failure::kInvalidCall, "Links are added with AddLink");
  auto& core = object.TheCore();
  const bool versioned = object.Info().IsVersioned();
  Taken taken;
  if (versioned) {
    FillMasks(object);
    taken = TakeFile(object, std::nullopt);
    SetDeposit(object, taken.deposit);
  }
  object.SetId(NextNumber(core.Data(), sequence::kObject));
  Set(object, attribute::kObjectId, std::int64_t{object.Id()});
  Set(object, attribute::kState, std::int64_t{state::kNew});
  Stamp(object, true);
  InsertRow(object, versioned ? object.Text(attribute::kIdentity) : std::string(), taken.deposit);
  std::vector<SqlValue> values;
  for (std::size_t place = 0; place < object.Info().attributes.size(); ++place) values.push_back(object.Value(place));
  InsertValues(core.Data(), object.Info(), values);
  if (!taken.path.empty()) NoteTaken(core, taken.path, object.Id(), taken.deposit->id);
}

void Insert(ObjectData& object) {
  if (object.Id() != 0) {
    throw Failure(failure::kInvalidCall, Described(object.Info(), object.Id()) + " is in the vault already");
  }
  auto stored = object;
  object.TheCore().InTransaction([&] { InsertNow(stored); });
  object.Become(std::move(stored));
  object.ForgetChanges();
}

void Update(ObjectData& object) {
  if (object.Info().IsLink()) throw Failure(failure::kInvalidCall, "A link has no attributes of its own to store");
  auto stored = object;
  object.TheCore().InTransaction([&] { UpdateNow(stored); });
  object.Become(std::move(stored));
  object.ForgetChanges();
}

void TakeContent(const ObjectData& object, const std::string& path) {
  auto& core = object.TheCore();
  auto values = object;
  values.Read();
  auto name = values.Text(attribute::kFileName);
  if (name.empty()) name = FileNameOf(path);
  const auto deposit = DepositFile(core, name, path, DepositOf(object));
  core.Data().Execute("UPDATE vd_object SET deposit_id = ? WHERE object_id = ?",
                      {deposit.id, std::int64_t{object.Id()}});
  AttributeValues changed = {{attribute::kFileName, name},
                             {attribute::kDirectory, DirectoryOf(deposit.id)},
                             {attribute::kVaultObjectId, std::int64_t{kStoreId}},
                             {attribute::kFileId, deposit.id}};
  if (values.Text(attribute::kCadFileName).empty()) changed[attribute::kCadFileName] = name;
  SetValues(object, changed);
  NoteTaken(core, path, object.Id(), deposit.id);
}

void InsertValues(Database& database, const ClassInfo& info, const std::vector<SqlValue>& values) {
  std::string sql = "INSERT INTO " + Quoted(info.table) + " (" + ColumnList(info) + ") VALUES (?";
  for (std::size_t i = 1; i < values.size(); ++i) sql += ", ?";
  database.Execute(sql + ")", values);
}

void SetValues(const ObjectData& object, const AttributeValues& values) {
  std::string list;
  std::vector<SqlValue> bound;
  const auto add = [&](const std::string& name, SqlValue value) {
    list += (list.empty() ? "" : ", ") + Quoted(name) + " = ?";
    bound.push_back(std::move(value));
  };
  for (const auto& [name, value] : values) add(name, value);
  if (object.Info().Has(attribute::kModified)) {
    add(attribute::kModified, TimeStamp());
    add(attribute::kModifiedBy, std::int64_t{object.TheCore().UserId()});
  }
  if (list.empty()) return;
  bound.emplace_back(std::int64_t{object.Id()});
  object.TheCore().Data().Execute("UPDATE " + Quoted(object.Info().table) + " SET " + list + " WHERE \"OBJECT_ID\" = ?",
                                  bound);
}

void RefreshKept(ObjectData& object) {
  std::vector<std::size_t> places;
  for (const auto* name : {attribute::kState, attribute::kFileName, attribute::kDirectory, attribute::kVaultObjectId,
                           attribute::kFileId, attribute::kCadFileName, attribute::kModified, attribute::kModifiedBy}) {
    if (const auto place = object.Info().Find(name); place && !object.IsChanged(*place)) places.push_back(*place);
  }
  object.Read(places);
}

}  // namespace quintara::vault
