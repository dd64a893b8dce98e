#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "hosts/vault/object_data.h"

namespace quintara::vault {

/// Notes that the file at `path` is the content `deposit` of an object, copied out or taken in. The
/// note of an object holds for the user, in every process.
void NoteCopy(Core& core, const std::string& path, std::int32_t objectId, std::int64_t deposit);

/// The same for a file that was taken in, where it stands in the work directory: elsewhere nobody goes
/// on working on it.
void NoteTaken(Core& core, const std::string& path, std::int32_t objectId, std::int64_t deposit);

/// The object that was noted for a path, or nothing.
std::optional<std::int32_t> NotedObject(Core& core, const std::string& path);

/// Whether the file at `path` is there and is a working copy: a file of the work directory, copied
/// from or stored as the present content of an object that the user has taken to change it.
bool IsWorkingCopy(Core& core, const std::string& path);

/// Stores the working copy of an object that has changed; True when there was one. Fails when
/// several have changed, each in its own way. In a transaction.
bool StoreWorkingCopy(const ObjectData& object);

}  // namespace quintara::vault
