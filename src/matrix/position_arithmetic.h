#pragma once

#include <span>

#include "access/contracts/position_matrix.h"

namespace quintara {

/// Composes the position of an instance with that of its parent: the child's rotation times the
/// parent's, and the child's origin carried through the parent's rotation onto the parent's origin.
/// `child` and `parent`: twelve numbers each, three axis rows and the origin row, in the host's
/// units; `result` is a third array of twelve. Sums run in the order written, the parent's origin
/// first, so equal inputs give equal bits. Failure 9 when an array hasn't twelve elements.
void Compose(std::span<const double> child, std::span<const double> parent, std::span<double> result);

/// The same for whole positions.
PositionMatrix Compose(const PositionMatrix& child, const PositionMatrix& parent);

}  // namespace quintara
