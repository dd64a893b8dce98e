#pragma once

#include <string>
#include <vector>

namespace quintara {

/// The names of worksheet columns by their index from 0 to 256: "A" to "Z", then "AA" to "IW".
std::vector<std::string> ColumnNames();

}  // namespace quintara
