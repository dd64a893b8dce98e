#include "quintara/tree_lines.h"

#include <cstddef>

namespace quintara {
namespace {

struct TreeLines {
  const char* branch;
  const char* lastBranch;
  const char* trunk;
  const char* nothing;
};
constexpr TreeLines kUtf8Lines{"├── ", "└── ", "│   ", "    "};
constexpr TreeLines kAsciiLines{"|-- ", "`-- ", "|   ", "    "};

}  // namespace

std::vector<std::string> TreePrefixes(const std::vector<int>& depths, bool utf8) {
  const auto& lines = utf8 ? kUtf8Lines : kAsciiLines;
  std::vector<std::string> prefixes(depths.size());
  // From the last line up it is known which levels go on below.
  std::vector<char> goesOn;
  for (std::size_t i = depths.size(); i-- > 0;) {
    const auto depth = static_cast<std::size_t>(depths[i]);
    goesOn.resize(depth + 1);
    for (std::size_t level = 1; level < depth; ++level) prefixes[i] += goesOn[level] ? lines.trunk : lines.nothing;
    if (depth > 0) prefixes[i] += goesOn[depth] ? lines.branch : lines.lastBranch;
    goesOn[depth] = 1;
  }
  return prefixes;
}

}  // namespace quintara
