#pragma once

#include "access/contracts/position_matrix.h"
#include "geometry/model.h"

namespace quintara {

/// The mesh of a part alone, each node carried through the axes and origin of `position`, which may
/// mirror or stretch but isn't singular. Faces without a mesh are left out.
PartShape MovedMesh(const PartShape& part, const PositionMatrix& position);

/// The exact geometry of a part, carried through `position` in the same way.
PartShape MovedGeometry(const PartShape& part, const PositionMatrix& position);

/// A part with every face that is a mesh alone made into plane facets that share their edges.
PartShape Facetted(const PartShape& part);

}  // namespace quintara
