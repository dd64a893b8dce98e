#include "positioning/free_positions.h"

#include <optional>

#include "base/attempt.h"
#include "base/failure.h"

namespace quintara {
namespace {

// Where an instance stands in the tree; of the root's parent the text is empty.
struct TreeCell {
  std::string text;
  Counter16 row;
  Counter16 column;
};

// Fails where the walk can't be done.
TreeCell FindParentCell(const Ref<excel::Worksheet>& tree, Counter16 row, Counter16 column) {
  if (column == 1) return {};
  for (--column; row >= 1; --row) {
    if (auto text = TextAt(tree, row, column); !text.empty()) return {text, row, column};
  }
  throw Failure(failure::kInvalidCall);
}

bool HasLoadedAncestor(const Ref<excel::Worksheet>& tree, const ExcelPosition& instance,
                       const ChildPartNumbers& partNumbers) {
  auto cell = FindParentCell(tree, instance.Row, instance.Column);
  while (!cell.text.empty() && !partNumbers.Contains(cell.text)) cell = FindParentCell(tree, cell.row, cell.column);
  return !cell.text.empty();
}

}  // namespace

std::vector<ExcelPosition> GetFreePositions(const matrix_workbook::Sheets& sheets, const std::string& partNumber,
                                            const ChildPartNumbers& partNumbers) {
  return OrElse(std::vector<ExcelPosition>(), [&] {
    std::vector<ExcelPosition> free;
    for (Counter16 row = 1; FindInList(sheets.list, partNumber, row); ++row) {
      auto entry = EntryAt(sheets.list, row);
      if (!HasLoadedAncestor(sheets.tree, entry, partNumbers)) free.push_back(std::move(entry));
    }
    if (free.empty()) free.emplace_back();
    return free;
  });
}

}  // namespace quintara
