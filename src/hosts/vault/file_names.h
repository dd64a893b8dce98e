#pragma once

#include <string>

#include "base/file_names.h"

namespace quintara::vault {

/// `path` absolute and normal: the one spelling under which a file is noted.
std::string NormalPath(const std::string& path);

/// The last piece of a path.
std::string FileNameOf(const std::string& path);

}  // namespace quintara::vault
