#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hosts/vault/object_data.h"

namespace quintara::vault {

/// Copies an object's file to `directory` under `name`, its light representation beside it where it
/// has one and `withLight` says so, and notes the copy. Fails for an object without a file, and for a
/// name that can't be one of a file.
void CopyFileOf(const ObjectData& object, const std::string& name, const std::string& directory, bool withLight);

/// Copies one file of the store; False when there is none of that name there.
bool CopyStoredFile(Core& core, const std::string& vaultDirectory, const std::string& fileName,
                    const std::string& directory, const std::string& name);

/// Copies the files of an object and of all that it holds, at the linked revisions, to the work
/// directory under the names that the CAD host knows them by. A working copy that is there stays. Of
/// two revisions of one object under one name the newer is brought; a name that different objects
/// share fails before anything is written.
void CopyStructure(const ObjectData& object);
/// The files of the work directory that this would replace by other content.
std::vector<std::string> FilesToReplace(const ObjectData& object);

}  // namespace quintara::vault
