#pragma once

#include <string>
#include <vector>

namespace quintara {

/// What stands before each line of a drawn tree, whose nodes have these depths, parents before children.
std::vector<std::string> TreePrefixes(const std::vector<int>& depths, bool utf8);

}  // namespace quintara
