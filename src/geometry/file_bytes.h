#pragma once

#include <string>

namespace quintara {

/// The whole bytes of a file. Fails, naming it and the reason, when it is missing, is a folder or
/// may not be read.
std::string BytesOfFile(const std::string& path);

/// The same for at most `count` bytes from its beginning.
std::string FirstBytesOfFile(const std::string& path, std::size_t count);

/// Writes a file anew. Fails, naming it, when that can't be done.
void WriteFile(const std::string& path, const std::string& bytes);

}  // namespace quintara
