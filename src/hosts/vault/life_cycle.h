#pragma once

#include <cstdint>
#include <string>

#include "hosts/vault/object_data.h"

namespace quintara::vault {

/// Names of the vault's operations.
namespace operation {
inline constexpr auto kCheckIn = "CHECKIN";
inline constexpr auto kRelease = "APPROVE";
inline constexpr auto kObsolete = "FREEZE";
inline constexpr auto kCheckOut = "CHECKOUT";
inline constexpr auto kNewRelease = "NEWRELEASE";
inline constexpr auto kCopyFile = "CopyFile";
inline constexpr auto kView = "VIEW OBJECT";
}  // namespace operation

/// Each of these runs in a transaction of its own and fails, changing nothing, where the state or the
/// user's rights forbid it.
void CheckOut(ObjectData& object);
/// Stores a changed working copy first.
void CheckIn(ObjectData& object);
void Release(ObjectData& object);
void MakeObsolete(ObjectData& object);
/// The next revision, in state 0, with attributes, file and outgoing links carried over. `fromCheckedIn`
/// lets it begin from state 1 too. Fails for what isn't the newest revision.
ObjectData NewRelease(const ObjectData& object, bool fromCheckedIn);

/// Whether state and rights let the user run the operation now.
bool CanPerform(const ObjectData& object, const std::string& operation);

/// The id of the newest revision; the object's own id for a class without revisions.
std::int32_t NewestRevision(const ObjectData& object);

}  // namespace quintara::vault
