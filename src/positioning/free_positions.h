#pragma once

#include <string>
#include <vector>

#include "matrix/child_part_numbers.h"
#include "matrix/matrix_workbook.h"
#include "positioning/flat_list.h"

namespace quintara {

/// The instances of a part number in the order of the flat list, without those below an instance whose part number
/// is one of `partNumbers`: such a component stands in its place as a whole. One blank entry where there are none,
/// and nothing at all after a failure, also where an instance has no parent in the tree.
std::vector<ExcelPosition> GetFreePositions(const matrix_workbook::Sheets& sheets, const std::string& partNumber,
                                            const ChildPartNumbers& partNumbers);

}  // namespace quintara
