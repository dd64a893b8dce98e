#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "hosts/vault/deposits.h"
#include "hosts/vault/object_data.h"

namespace quintara::vault {

using AttributeValues = std::map<std::string, SqlValue>;

/// The condition that the object "o" of a statement is the newest revision.
inline constexpr auto kIsNewest =
    "NOT EXISTS (SELECT 1 FROM vd_object n WHERE n.class_id = o.class_id AND n.identity = o.identity AND n.version > "
    "o.version)";

/// What the vault keeps of an object beside its attributes.
struct ObjectRow {
  std::int16_t classId = 0;
  std::string identity;
  std::int64_t version = 0;
  std::int32_t owner = 0;    ///< who may change it; 0 is nobody in particular
  std::int64_t deposit = 0;  ///< 0 without a file
};

/// Nothing for an object that isn't there.
std::optional<ObjectRow> FindRow(Database& database, std::int32_t id);
/// Fails, naming the object, for one that isn't there or was never stored.
ObjectRow RowOf(const ObjectData& object);
ObjectRow RowOf(Core& core, const ClassInfo& info, std::int32_t id);
std::optional<Deposit> DepositOf(const ObjectData& object);

/// The state as it stands in the database; 0 for a class without a life cycle.
int StateOf(const ObjectData& object);
/// Fails unless the user may change the object now: checked in, released, or checked out by another
/// user it can't be.
void RequireChangeable(const ObjectData& object);
void RequireChangeable(Core& core, const ClassInfo& info, std::int32_t id);

/// Stores a new object, its masks and file included, in a transaction of its own.
void Insert(ObjectData& object);
/// The same in the transaction that is under way; `object` is of no use after a failure.
void InsertNow(ObjectData& object);
/// Stores the changed attributes, a new file included, in a transaction of its own.
void Update(ObjectData& object);
/// Makes the file at `path` the object's content, without asking for its state; in a transaction.
void TakeContent(const ObjectData& object, const std::string& path);

/// Writes a row of attribute values as they are; in a transaction.
void InsertValues(Database& database, const ClassInfo& info, const std::vector<SqlValue>& values);
/// Writes these attributes of a stored object, and who did it when; in a transaction.
void SetValues(const ObjectData& object, const AttributeValues& values);

/// Reads again the attributes that the vault itself keeps, but for what was set and not stored.
void RefreshKept(ObjectData& object);

/// Whether an object of the class has this CN_ID.
bool IsIdentityTaken(Core& core, const ClassInfo& info, const std::string& identity);

/// The next value of a class's mask as text, in a transaction; an identity that was given by hand is
/// passed over. Fails for an attribute without a sequence.
std::string NextMaskValue(Core& core, const ClassInfo& info, const std::string& attribute);
/// The revision to begin with; fails for an attribute that is none.
std::string FirstMaskRevision(const ClassInfo& info, const std::string& attribute);

}  // namespace quintara::vault
