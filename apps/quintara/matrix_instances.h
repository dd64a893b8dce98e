#pragma once

#include <set>
#include <string>
#include <vector>

#include "access/contracts/position_matrix.h"
#include "matrix/matrix_workbook.h"

namespace quintara {

/// An instance of a matrix, in the frame of the root.
struct MatrixInstance {
  std::string partNumber;
  PositionMatrix position = kIdentityPosition;
};

/// Part numbers whose instances are sought. What stands below an instance of a component is part of that, and isn't
/// looked at.
struct SoughtInstances {
  std::set<std::string, std::less<>> partNumbers;
  std::set<std::string, std::less<>> components;
};

/// The instances in a matrix file. Fails for what is no matrix.
std::vector<MatrixInstance> InstancesInXml(const SoughtInstances& sought, const std::string& matrix);

/// The same in a matrix workbook. Fails for a cell that holds no number where one is needed.
std::vector<MatrixInstance> InstancesInWorkbook(const SoughtInstances& sought, const matrix_workbook::Sheets& sheets);

}  // namespace quintara
