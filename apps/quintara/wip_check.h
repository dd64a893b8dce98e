#pragma once

#include <optional>
#include <string>
#include <vector>

#include "access/contracts/position_matrix.h"
#include "quintara/matrix_instances.h"
#include "quintara/review_nodes.h"

namespace quintara {

/// A component of a work in progress.
struct WipComponent {
  std::string partNumber;
  std::string name;
  PositionMatrix position = kIdentityPosition;
};

/// The instances that tell where the components of a work in progress belong, those missing included.
SoughtInstances SoughtFor(const std::vector<AskedComponent>& asked, const std::vector<WipComponent>& components);

/// Compares a work in progress with what was asked for: a line for each part number of which components are missing,
/// and for each component that is still at the origin though the matrix places it elsewhere, or nowhere. Without
/// `instances`, those sought in the matrix, nothing is known of places.
std::vector<std::string> Shortcomings(const std::vector<AskedComponent>& asked, bool allInstances,
                                      const std::vector<WipComponent>& components,
                                      const std::optional<std::vector<MatrixInstance>>& instances);

}  // namespace quintara
