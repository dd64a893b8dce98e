#pragma once

#include <string>

namespace quintara {

/// The nearest vault called `quintara.vault` from the current folder upwards; empty for none.
std::string VaultUpwards();

/// The work directory that a user has in the folder of a vault, whether it is there yet or not. Fails for a user whose
/// name is none of a folder, and where there is no current folder.
std::string WorkFolderOf(const std::string& vault, const std::string& user);

/// Makes a work directory that isn't there yet.
void MakeWorkFolder(const std::string& folder);

/// Whether `name` can be the plain name of a file on every platform.
bool IsFileName(const std::string& name);

}  // namespace quintara
