#pragma once

#include <string>
#include <vector>

#include "access/contracts/position_matrix.h"
#include "quintara/review_nodes.h"

namespace quintara {

/// An instance of a matrix that stands below none that is a component itself, in the frame of the root.
struct MatrixInstance {
  std::string partNumber;
  PositionMatrix position = kIdentityPosition;
};

/// The instances of a matrix file that components of these part numbers stand for. Fails for what is no matrix.
std::vector<MatrixInstance> InstancesFor(const std::vector<std::string>& partNumbers, const std::string& matrix);

/// A component of a work in progress.
struct WipComponent {
  std::string partNumber;
  std::string name;
  PositionMatrix position = kIdentityPosition;
};

/// Compares a work in progress with what was asked for: a line for each part number of which components are missing,
/// and for each component that is still at the origin though the matrix places it elsewhere. Without the instances of a
/// matrix nothing is known of places.
std::vector<std::string> Shortcomings(const std::vector<AskedComponent>& asked, bool allInstances,
                                      const std::vector<WipComponent>& components,
                                      const std::vector<MatrixInstance>& instances);

}  // namespace quintara
