#pragma once

#include <string>

#include "access/contracts/geometry.h"
#include "hosts/cad/cad_host.h"

namespace quintara {

/// Makes the light representation of the part or product file at `path` anew, beside it under its name and
/// ".lwt". Does nothing for any other file, and for a product without a component that can be drawn. Components
/// whose files are missing make it fail: a mesh without them would pass for the whole.
void RenewLightOf(const std::string& path, CadHost& host, Geometry& geometry, const Progress& progress);

}  // namespace quintara
