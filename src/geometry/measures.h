#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace quintara {

/// What can be measured of the faces of a part or light file. Volume and area are those of exact geometry, 0 for
/// meshes.
struct FileMeasures {
  std::size_t faces;
  std::size_t triangles;
  double volume;
  double area;
  std::array<double, 6> box;  ///< least X, Y, Z, then greatest; without geometry all 0
};

/// Loads a `.stp`, `.step` or `.lwt` file and measures it, in this very process, which a damaged file
/// may crash.
FileMeasures MeasureFile(const std::string& path);

/// How many colours the pixels of a part of a picture have, each counted once.
std::size_t CountColours(const std::string& picture, int left, int top, int width, int height);

}  // namespace quintara
