#include "hosts/vault/life_cycle.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "access/contracts/veldora_objects.h"
#include "base/attempt.h"
#include "base/failure.h"
#include "hosts/vault/links.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/sequences.h"
#include "hosts/vault/working_copies.h"

namespace quintara {

std::string StateName(int value) {
  constexpr std::array<const char*, 5> kStateNames = {"new", "checked in", "checked out", "released", "obsolete"};
  return value >= 0 && value < static_cast<int>(kStateNames.size()) ? kStateNames[static_cast<std::size_t>(value)]
                                                                    : "in no state";
}

namespace vault {
namespace {

namespace state = veldora::state;

std::vector<int> StatesFor(const std::string& name, bool fromCheckedIn = false) {
  if (name == operation::kCheckOut) return {state::kCheckedIn};
  if (name == operation::kCheckIn) return {state::kNew, state::kCheckedOut};
  if (name == operation::kRelease) return {state::kNew, state::kCheckedIn, state::kCheckedOut};
  if (name == operation::kObsolete) return {state::kReleased};
  if (fromCheckedIn) return {state::kCheckedIn, state::kReleased};
  return {state::kReleased};
}

bool IsLifeCycle(const std::string& name) {
  return name != operation::kCopyFile && name != operation::kView;
}

void RequirePermitted(const ObjectData& object, const std::string& name, bool fromCheckedIn = false) {
  auto& core = object.TheCore();
  const auto row = RowOf(object);
  core.RequireRight(name, object.Info());
  if (!IsLifeCycle(name)) return;
  if (!object.Info().IsVersioned()) {
    throw Failure(failure::kInvalidCall, "Objects of the class \"" + object.Info().name + "\" have no life cycle");
  }
  const int current = StateOf(object);
  if (std::ranges::count(StatesFor(name, fromCheckedIn), current) == 0) {
    throw Failure(failure::kInvalidCall, Described(object.Info(), object.Id()) + " is " + StateName(current) + ": " +
                                             name + " can't be run on it");
  }
  if (current == state::kCheckedOut && row.owner != core.UserId()) {
    throw Failure(failure::kPermissionDenied,
                  Described(object.Info(), object.Id()) + " is checked out by another user");
  }
}

void Move(ObjectData& object, const std::string& name, int to, bool takes) {
  auto& core = object.TheCore();
  auto moved = object;
  core.InTransaction([&] {
    RequirePermitted(moved, name);
    if (!takes) StoreWorkingCopy(moved);
    SetValues(moved, {{attribute::kState, std::int64_t{to}}});
    core.Data().Execute("UPDATE vd_object SET owner_id = ? WHERE object_id = ?",
                        {takes ? SqlValue(std::int64_t{core.UserId()}) : SqlValue(), std::int64_t{moved.Id()}});
    RefreshKept(moved);
  });
  object.Become(std::move(moved));
}

void RequireNewest(const ObjectData& object) {
  const auto newest = NewestRevision(object);
  if (newest == object.Id()) return;
  throw Failure(failure::kInvalidCall,
                Described(object.Info(), object.Id()) + " has a newer revision, " + Described(object.Info(), newest));
}

void InsertNextRevision(const ObjectData& from, ObjectData& next) {
  auto& core = from.TheCore();
  const auto row = RowOf(from);
  const auto& info = from.Info();
  const std::int64_t id = NextNumber(core.Data(), sequence::kObject);
  next.SetId(static_cast<std::int32_t>(id));
  const auto set = [&](const char* name, SqlValue value) { next.Know(info.PlaceOf(name), std::move(value)); };
  set(attribute::kRevision, NextRevision(next.Text(attribute::kRevision)));
  set(attribute::kObjectId, id);
  set(attribute::kState, std::int64_t{state::kNew});
  const auto now = TimeStamp();
  for (const auto* name : {attribute::kCreated, attribute::kModified}) set(name, now);
  for (const auto* name : {attribute::kCreatedBy, attribute::kModifiedBy}) set(name, std::int64_t{core.UserId()});
  core.Data().Execute(
      "INSERT INTO vd_object (object_id, class_id, identity, version, owner_id, deposit_id) VALUES (?, ?, ?, ?, ?, ?)",
      {id, std::int64_t{info.id}, row.identity, row.version + 1, std::int64_t{core.UserId()},
       row.deposit == 0 ? SqlValue() : SqlValue(row.deposit)});
  std::vector<SqlValue> values;
  for (std::size_t place = 0; place < info.attributes.size(); ++place) values.push_back(next.Value(place));
  InsertValues(core.Data(), info, values);
}

}  // namespace

void CheckOut(ObjectData& object) {
  Move(object, operation::kCheckOut, state::kCheckedOut, true);
}

void CheckIn(ObjectData& object) {
  Move(object, operation::kCheckIn, state::kCheckedIn, false);
}

void Release(ObjectData& object) {
  Move(object, operation::kRelease, state::kReleased, false);
}

void MakeObsolete(ObjectData& object) {
  Move(object, operation::kObsolete, state::kObsolete, false);
}

ObjectData NewRelease(const ObjectData& object, bool fromCheckedIn) {
  auto& core = object.TheCore();
  auto next = object;
  core.InTransaction([&] {
    RequirePermitted(object, operation::kNewRelease, fromCheckedIn);
    RequireNewest(object);
    next.Read();
    InsertNextRevision(object, next);
    CopyOutgoingLinks(core, object.Id(), next.Id());
    if (const auto deposit = RowOf(next).deposit; deposit != 0) {
      HandOverNotes(core, object.Id(), next.Id(), deposit);
    }
  });
  return next;
}

bool CanPerform(const ObjectData& object, const std::string& name) {
  ErrorState refused;
  const bool can = Attempt(refused, [&] {
    RequirePermitted(object, name);
    if (name == operation::kNewRelease) RequireNewest(object);
  });
  // A lost database says nothing about rights.
  if (refused.number == failure::kDeviceError) throw Failure(refused.number, refused.description);
  return can;
}

std::int32_t NewestRevision(const ObjectData& object) {
  const auto row = RowOf(object);
  if (!object.Info().IsVersioned()) return object.Id();
  return static_cast<std::int32_t>(IntegerOf(object.TheCore().Data().QueryOne(
      ColumnType::kInteger,
      "SELECT object_id FROM vd_object WHERE class_id = ? AND identity = ? ORDER BY version DESC LIMIT 1",
      {std::int64_t{row.classId}, row.identity})));
}

}  // namespace vault
}  // namespace quintara
