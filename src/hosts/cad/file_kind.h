#pragma once

#include <optional>
#include <string>

namespace quintara::cad {

enum class FileKind { kProduct, kStep, kLight };

/// The kind that the extension of `path` tells, capitals ignored; nothing for any other file.
std::optional<FileKind> KnownKind(const std::string& path);
/// The same; fails, naming `path`, for the empty path and for what is no file of the CAD host.
FileKind KindOf(const std::string& path);

/// The part number in the bytes of a STEP or light file. Fails, naming `path`, for anything else.
std::string StepPartNumber(const std::string& bytes, const std::string& path);
std::string LightPartNumber(const std::string& bytes, const std::string& path);

/// Failure 321, naming the file and what is wrong with it.
[[noreturn]] void ThrowUnreadable(const std::string& path, const std::string& why);

}  // namespace quintara::cad
