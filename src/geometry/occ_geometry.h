#pragma once

#include <memory>

#include "access/contracts/geometry.h"

namespace quintara {

/// The geometry kernel on Open CASCADE.
std::unique_ptr<Geometry> MakeOccGeometry();

}  // namespace quintara
