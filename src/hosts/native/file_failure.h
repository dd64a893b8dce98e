#pragma once

#include <string>
#include <system_error>

namespace quintara::native {

/// Raises the failure that stands for `error`, met at `path`: 61 for a full disk, 70 without the
/// right, 53 for a missing file, 76 for a missing folder, 75 or 57 for anything else. Where a file
/// was to be renamed, `target` is the new name. The description names both.
[[noreturn]] void ThrowFileFailure(std::error_code error, const std::string& path, const std::string& target = {});

}  // namespace quintara::native
