#pragma once

#include <string>

namespace quintara::bench {

/// Brings a file or a folder to the disk.
void Sync(const std::string& path);

/// As the vault copies: a file is whole and on the disk before it is known.
void CopyDurably(const std::string& from, const std::string& to);
/// Without waiting for the disk.
void CopyOnly(const std::string& from, const std::string& to);

}  // namespace quintara::bench
