#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/vault/object_data.h"

namespace quintara::vault {

/// Notes that the file at `path` is the content `deposit` of an object, copied out or taken in. The
/// note of an object holds for the user, in every process.
void NoteCopy(Core& core, const std::string& path, std::int32_t objectId, std::int64_t deposit);

/// A file that is written out of the store.
struct Copy {
  std::string path;
  std::int32_t objectId = 0;  ///< 0 for a file that isn't to be noted, such as a light one
  std::int64_t deposit = 0;
};

/// Runs `write` with the index of each of `copies`, in their order, and notes them. A failure of it
/// comes out after what was written until then was noted. Whatever is cut off or undone, no note says
/// of a file that was overwritten what it was before: its bytes would be stored as those of another
/// object.
void WriteAndNote(Core& core, const std::vector<Copy>& copies, const std::function<void(std::size_t)>& write);

/// The same for a file that was taken in, where it stands in the work directory: elsewhere nobody goes
/// on working on it.
void NoteTaken(Core& core, const std::string& path, std::int32_t objectId, std::int64_t deposit);

/// The object that was noted for a path, or nothing.
std::optional<std::int32_t> NotedObject(Core& core, const std::string& path);

/// Whether the file at `path` is there and is a working copy: a file of the work directory, copied
/// from or stored as the present content of an object that the user has taken to change it.
bool IsWorkingCopy(Core& core, const std::string& path);

/// What the user's files were copies of goes over to the next revision of the object, whose content is
/// the same; in a transaction.
void HandOverNotes(Core& core, std::int32_t fromObject, std::int32_t toObject, std::int64_t deposit);

/// Stores the working copy of an object that has changed, or whose light file has; True when there was
/// one. Fails when several have changed, each in its own way. In a transaction.
bool StoreWorkingCopy(const ObjectData& object);

}  // namespace quintara::vault
