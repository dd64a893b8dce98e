#pragma once

#include <array>

namespace quintara {

/// Where an instance stands in its parent, twelve numbers: the X axis (index 0 to 2), the Y axis
/// (3 to 5), the Z axis (6 to 8) and the origin (9 to 11), each in the parent's frame, in the CAD
/// host's units. Never normalised, rounded or checked.
using PositionMatrix = std::array<double, 12>;

inline constexpr PositionMatrix kIdentityPosition = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

}  // namespace quintara
