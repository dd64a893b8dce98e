#pragma once

#include <string>

#include "geometry/kernel.h"

namespace quintara {

/// Reads a STEP file, with the files that it refers to, into `document`. Fails, naming the file, for
/// what can't be read whole. May crash on damaged data: to be called in a worker.
void ReadStep(const std::string& path, const Document& document, const Progress& progress);

/// Whether edges are written with their curves on the faces beside them too. Readers work these out
/// themselves; facets have so many edges that they make most of a file.
enum class EdgeCurves { kOnFaces, kInSpace };

/// Writes what stands at `label` as STEP AP214, `name` in its head, under a fixed time: equal content
/// gives equal bytes.
void WriteStepFile(const TDF_Label& label, const std::string& name, EdgeCurves curves, const std::string& path,
                   const Progress& progress);

}  // namespace quintara
