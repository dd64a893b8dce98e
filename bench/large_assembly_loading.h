#pragma once

#include <string>

namespace quintara::bench {

// Each of these is what one process does that is measured from its start to its end. They throw where the result isn't
// whole, and leave what they loaded in memory when they give back.

/// Loads the whole large assembly from its STEP file with Open CASCADE, with names and colours and nothing else.
void LoadWholeFromStep(const std::string& path);
/// The same from its binary document.
void LoadWholeFromBinary(const std::string& path);
/// Opens a WIP in the CAD host and loads the meshes of its components, each in its place.
void LoadWipWithMeshes(const std::string& path, int components);

/// Not measured: that each component of a WIP stands where Open CASCADE has its instance in the binary document.
void CheckPlaces(const std::string& wip, const std::string& binary, int components);

}  // namespace quintara::bench
