#include "matrix/position_arithmetic.h"

#include <algorithm>
#include <cstddef>

#include "base/failure.h"

namespace quintara {
namespace {

constexpr std::size_t kOrigin = 9;

template <std::size_t... Extents>
bool AreTwelve(std::span<const double, Extents>... arrays) {
  return ((arrays.size() == PositionMatrix().size()) && ...);
}

}  // namespace

void Compose(std::span<const double> child, std::span<const double> parent, std::span<double> result) {
  if (!AreTwelve(child, parent, std::span<const double>(result))) throw Failure(failure::kSubscriptOutOfRange);
  for (std::size_t row = 0; row < kOrigin; row += 3) {
    for (std::size_t column = 0; column < 3; ++column) {
      result[row + column] = (child[row] * parent[column] + child[row + 1] * parent[column + 3]) +
                             child[row + 2] * parent[column + 6];
    }
  }
  for (std::size_t column = 0; column < 3; ++column) {
    result[kOrigin + column] = ((parent[kOrigin + column] + child[kOrigin] * parent[column]) +
                                child[kOrigin + 1] * parent[column + 3]) +
                               child[kOrigin + 2] * parent[column + 6];
  }
}

PositionMatrix Compose(const PositionMatrix& child, const PositionMatrix& parent) {
  PositionMatrix result;
  Compose(std::span<const double>(child), std::span<const double>(parent), std::span<double>(result));
  return result;
}

}  // namespace quintara
