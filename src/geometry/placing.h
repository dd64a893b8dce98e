#pragma once

#include "access/contracts/position_matrix.h"

namespace quintara {

/// What a position asks of a format that knows movements only.
enum class PositionKind {
  kMovement,   ///< axes of length one, at right angles, right-handed
  kMirrored,   ///< the same, left-handed
  kStretched,  ///< any other that has a volume
  kSingular    ///< flat, or not finite
};

PositionKind KindOf(const PositionMatrix& position);

/// Where a child stands in the frame of its parent's parent.
PositionMatrix Placed(const PositionMatrix& child, const PositionMatrix& parent);

/// A position split in two: its axes without the origin, and its origin alone.
PositionMatrix AxesOf(const PositionMatrix& position);
PositionMatrix OriginOf(const PositionMatrix& position);

}  // namespace quintara
