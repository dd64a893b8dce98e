#pragma once

#include <string>

#include "geometry/kernel.h"
#include "geometry/model.h"

namespace quintara {

/// Gives every face of a shape a mesh, as fine as the shape's size asks for.
void Mesh(const TopoDS_Shape& shape);

/// Writes what stands at `label`, meshed before, as binary glTF in millimetres, Z up, with
/// `partNumber` in `asset.extras` and the part number of each node in its own.
void WriteLightFile(const Document& document, const TDF_Label& label, const std::string& partNumber,
                    const std::string& path, const Progress& progress);

/// Reads a light file as one part. Its shape is null when there is no mesh in it. May crash on
/// damaged data: to be called in a worker.
PartShape ReadLightFile(const std::string& path, const Progress& progress);

}  // namespace quintara
