#include "matrix/position_arithmetic.h"

#include <cfloat>
#include <cstddef>

#include "base/failure.h"

#ifdef __FAST_MATH__
#error "Equal inputs must give equal bits: no reordered arithmetic"
#endif
static_assert(FLT_EVAL_METHOD == 0, "Equal inputs must give equal bits: no wider intermediate results");

namespace quintara {
namespace {

constexpr std::size_t kOrigin = 9;
constexpr std::size_t kCount = PositionMatrix().size();

// `result` overlaps neither input.
void ComposeInto(const double* child, const double* parent, double* __restrict result) {
  for (std::size_t row = 0; row < kOrigin; row += 3) {
    for (std::size_t column = 0; column < 3; ++column) {
      result[row + column] =
          (child[row] * parent[column] + child[row + 1] * parent[column + 3]) + child[row + 2] * parent[column + 6];
    }
  }
  for (std::size_t column = 0; column < 3; ++column) {
    result[kOrigin + column] =
        ((parent[kOrigin + column] + child[kOrigin] * parent[column]) + child[kOrigin + 1] * parent[column + 3]) +
        child[kOrigin + 2] * parent[column + 6];
  }
}

}  // namespace

void Compose(std::span<const double> child, std::span<const double> parent, std::span<double> result) {
  if (child.size() != kCount || parent.size() != kCount || result.size() != kCount) {
    throw Failure(failure::kSubscriptOutOfRange);
  }
  ComposeInto(child.data(), parent.data(), result.data());
}

PositionMatrix Compose(const PositionMatrix& child, const PositionMatrix& parent) {
  PositionMatrix result;
  ComposeInto(child.data(), parent.data(), result.data());
  return result;
}

}  // namespace quintara
