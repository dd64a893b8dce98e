#pragma once

#include <string>

namespace quintara {

/// Fails unless `name` is the plain name of a file on every platform that may meet it: no folder in
/// it, no device, no character that one of them refuses, no blank or point at its end. Names that come
/// from elsewhere, out of a vault above all, never become a path without this.
void RequireFileName(const std::string& name);

/// The path of a file of that name in `directory`; fails as `RequireFileName` does.
std::string PathIn(const std::string& directory, const std::string& name);

}  // namespace quintara
