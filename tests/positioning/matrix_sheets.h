#pragma once

#include <functional>

#include "base/variant.h"
#include "matrix/matrix_fixture.h"

namespace quintara::test {

/// Writes one cell of a workbook: worksheet, row and column, from 1.
using PutCell = std::function<void(int sheet, int row, int column, const Variant& value)>;

/// Writes the two worksheets of the matrix of a tree, independently of the writer in use.
void PutMatrix(const Node& root, const PutCell& put);

}  // namespace quintara::test
