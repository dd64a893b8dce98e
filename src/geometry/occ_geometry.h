#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "access/contracts/geometry.h"

namespace quintara {

/// The geometry kernel on Open CASCADE.
std::unique_ptr<Geometry> MakeOccGeometry();

/// Loads a part or light file, as a CAD program does to show it, and counts its faces. For
/// measuring: it runs in this very process, which a damaged file may crash.
std::size_t CountFaces(const std::string& path);

}  // namespace quintara
