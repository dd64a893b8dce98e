#include "hosts/office/read_plan.h"

#include <algorithm>

namespace quintara::office {
namespace {

constexpr int kLongGap = 1000;

// The columns of a row from the first to the last in use; none while `first` is 0.
struct Extent {
  int first = 0;
  int last = 0;
};

std::vector<Extent> ExtentsOf(const std::vector<CellArea>& areas) {
  std::vector<Extent> rows;
  for (const auto& area : areas) {
    if (static_cast<int>(rows.size()) < area.LastRow()) rows.resize(static_cast<std::size_t>(area.LastRow()));
    for (int row = area.row; row <= area.LastRow(); ++row) {
      auto& extent = rows[static_cast<std::size_t>(row - 1)];
      extent.first = extent.first == 0 ? area.column : std::min(extent.first, area.column);
      extent.last = std::max(extent.last, area.LastColumn());
    }
  }
  return rows;
}

std::size_t Size(const CellArea& area) {
  return static_cast<std::size_t>(area.rows) * static_cast<std::size_t>(area.columns);
}

}  // namespace

std::vector<CellArea> BlocksToRead(const std::vector<CellArea>& areas, std::size_t cells) {
  std::vector<CellArea> blocks;
  int row = 0;
  for (const auto& extent : ExtentsOf(areas)) {
    ++row;
    if (extent.first == 0) continue;
    const CellArea next = {row, extent.first, 1, extent.last - extent.first + 1};
    const bool joins =
        !blocks.empty() && row - blocks.back().LastRow() <= kLongGap && Size(Union(blocks.back(), next)) <= cells;
    if (joins) {
      blocks.back() = Union(blocks.back(), next);
    } else {
      blocks.push_back(next);
    }
  }
  return blocks;
}

}  // namespace quintara::office
