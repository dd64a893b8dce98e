#pragma once

#include <string>

#include "geometry/model.h"

namespace quintara {

bool IsLightFile(const std::string& path);

/// Loads a `.stp`, `.step` or `.lwt` file as one part; its shape is null when it holds no geometry.
/// Fails for any other file. May crash on damaged data: to be called in a worker.
PartShape LoadPartFile(const std::string& path, const Progress& progress);

}  // namespace quintara
