#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <utility>

#include "base/failure.h"

namespace quintara {

/// A signed 16-bit number of rows, children, elements and the like. Whatever leaves its range
/// raises failure 6, "Overflow", and never wraps.
class Counter16 {
 public:
  constexpr Counter16() = default;
  template <std::integral Integer>
  constexpr Counter16(Integer value) : value_(Checked(value)) {}

  constexpr operator int() const noexcept { return value_; }

  constexpr Counter16& operator++() { return *this = Counter16(value_ + 1); }
  constexpr Counter16& operator--() { return *this = Counter16(value_ - 1); }
  constexpr Counter16& operator+=(int step) { return *this = Counter16(value_ + step); }

 private:
  template <std::integral Integer>
  static constexpr std::int16_t Checked(Integer value) {
    if (!std::in_range<std::int16_t>(value)) throw Failure(failure::kOverflow);
    return static_cast<std::int16_t>(value);
  }

  std::int16_t value_ = 0;
};

/// The numbers from `first` to `last`, both included, for a loop whose counter has 16 bits.
/// It tests before it steps, so a `last` of 32,767 is reached and left without an overflow.
class Counting {
 public:
  constexpr Counting(Counter16 first, Counter16 last) : first_(first), end_(last < first ? int{first} : last + 1) {}

  class Iterator {
   public:
    constexpr explicit Iterator(int at) : at_(at) {}
    constexpr int operator*() const noexcept { return at_; }
    constexpr Iterator& operator++() noexcept {
      ++at_;
      return *this;
    }
    constexpr bool operator==(const Iterator&) const = default;

   private:
    int at_;
  };

  constexpr Iterator begin() const { return Iterator(first_); }
  constexpr Iterator end() const { return Iterator(end_); }

 private:
  int first_;
  int end_;
};

}  // namespace quintara
