#pragma once

#include <string>

namespace quintara {

/// Whether two product files hold the same children: the same instance names, files and positions in the same order,
/// under the same part number. Properties don't count. False for a file that can't be read.
bool HoldTheSameChildren(const std::string& left, const std::string& right);

}  // namespace quintara
