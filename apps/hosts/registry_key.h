#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "automation/dispatch/com.h"

namespace quintara::hosts {

/// The registry of the current user, by paths such as "Software\\Classes"; texts are UTF-8. What can't be written
/// fails, naming the key.

/// Whether a key is there, in `root`.
bool HasKey(HKEY root, const std::string& path);
/// The text of a value, the key's own for the empty name; nothing where there is none.
std::optional<std::string> TextAt(HKEY root, const std::string& path, const std::string& value);
/// All texts of a key, in the order of their names.
std::vector<std::pair<std::string, std::string>> TextsAt(const std::string& path);
std::vector<std::string> SubkeysOf(const std::string& path);

/// Makes one key, whose parent is there; False where it was there before.
bool MakeKey(const std::string& path);
void WriteText(const std::string& path, const std::string& value, const std::string& text);
void EraseValue(const std::string& path, const std::string& value);
/// Takes a key away that holds nothing; any other stays.
void EraseEmptyKey(const std::string& path);

}  // namespace quintara::hosts
