#pragma once

#include <memory>
#include <string>

#include "access/contracts/geometry.h"

namespace quintara {

/// Reads a STEP assembly in a worker and holds what came of it.
std::unique_ptr<SplitAssembly> SplitStepAssembly(const std::string& path, const Progress& progress);

}  // namespace quintara
