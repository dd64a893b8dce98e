#pragma once

#include <concepts>
#include <cstddef>
#include <utility>
#include <vector>

#include "base/failure.h"

namespace quintara {

/// The element at a zero-based index; failure 9, "Subscript out of range", outside the array.
template <class Array, std::integral Index>
auto& ElementAt(Array& array, Index index) {
  if (std::cmp_less(index, 0) || std::cmp_greater_equal(index, array.size())) {
    throw Failure(failure::kSubscriptOutOfRange);
  }
  return array[static_cast<std::size_t>(index)];
}

/// The index of the last element. An array without elements has no bounds: failure 9.
template <class T>
std::size_t UpperBound(const std::vector<T>& array) {
  if (array.empty()) throw Failure(failure::kSubscriptOutOfRange);
  return array.size() - 1;
}

}  // namespace quintara
