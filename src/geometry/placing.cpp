#include "geometry/placing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quintara {
namespace {

double Dot(const PositionMatrix& m, std::size_t a, std::size_t b) {
  return m[3 * a] * m[3 * b] + m[3 * a + 1] * m[3 * b + 1] + m[3 * a + 2] * m[3 * b + 2];
}

double Determinant(const PositionMatrix& m) {
  return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) + m[2] * (m[3] * m[7] - m[4] * m[6]);
}

// Positions that went through files with seven digits still count as movements.
bool HasUnitAxes(const PositionMatrix& m) {
  constexpr double kTolerance = 1e-6;
  for (std::size_t a = 0; a < 3; ++a) {
    for (std::size_t b = a; b < 3; ++b) {
      if (std::abs(Dot(m, a, b) - (a == b ? 1 : 0)) > kTolerance) return false;
    }
  }
  return true;
}

}  // namespace

PositionKind KindOf(const PositionMatrix& position) {
  constexpr double kFlat = 1e-9;
  constexpr double kSmallest = 1e-27;  // what axes of 1e-9 span
  if (!std::ranges::all_of(position, [](double number) { return std::isfinite(number); }))
    return PositionKind::kSingular;
  const double determinant = Determinant(position);
  const double lengths = std::sqrt(Dot(position, 0, 0) * Dot(position, 1, 1) * Dot(position, 2, 2));
  if (!(std::abs(determinant) > kFlat * lengths) || lengths < kSmallest) return PositionKind::kSingular;
  if (!HasUnitAxes(position)) return PositionKind::kStretched;
  return determinant > 0 ? PositionKind::kMovement : PositionKind::kMirrored;
}

PositionMatrix Placed(const PositionMatrix& child, const PositionMatrix& parent) {
  PositionMatrix placed = OriginOf(parent);
  for (std::size_t row = 0; row < 4; ++row) {
    for (std::size_t column = 0; column < 3; ++column) {
      double sum = row < 3 ? 0 : parent[9 + column];
      for (std::size_t k = 0; k < 3; ++k) sum += child[3 * row + k] * parent[3 * k + column];
      placed[3 * row + column] = sum;
    }
  }
  return placed;
}

PositionMatrix AxesOf(const PositionMatrix& position) {
  auto axes = position;
  std::fill(axes.begin() + 9, axes.end(), 0);
  return axes;
}

PositionMatrix OriginOf(const PositionMatrix& position) {
  auto origin = kIdentityPosition;
  std::copy(position.begin() + 9, position.end(), origin.begin() + 9);
  return origin;
}

}  // namespace quintara
