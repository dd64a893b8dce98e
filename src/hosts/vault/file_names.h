#pragma once

#include <string>

namespace quintara::vault {

/// Fails unless `name` is the plain name of a file on every platform that may meet it: no folder in
/// it, no device, no character that one of them refuses, no blank or point at its end. Names that come
/// out of the vault are somebody else's: none becomes a path without this.
void RequireFileName(const std::string& name);

/// The path of a file of that name in `directory`.
std::string PathIn(const std::string& directory, const std::string& name);

/// `path` absolute and normal: the one spelling under which a file is noted.
std::string NormalPath(const std::string& path);

/// The last piece of a path.
std::string FileNameOf(const std::string& path);

}  // namespace quintara::vault
