#pragma once

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "automation/dispatch/com.h"
#include "automation/dispatch/objects.h"
#include "base/variant.h"

namespace quintara::automation {

/// A variant of the operating system, freed at its end.
class Value {
 public:
  Value() noexcept { VariantInit(&variant_); }
  Value(Value&& other) noexcept : variant_(std::exchange(other.variant_, Empty())) {}
  Value& operator=(Value&& other) noexcept {
    std::swap(variant_, other.variant_);
    return *this;
  }
  Value(const Value&) = delete;
  Value& operator=(const Value&) = delete;
  ~Value() { VariantClear(&variant_); }

  explicit Value(bool value);
  explicit Value(std::int16_t value);
  explicit Value(std::int32_t value);
  explicit Value(double value);
  /// Failure 5 for what is no UTF-8.
  explicit Value(const std::string& text);
  explicit Value(const Variant& value);
  explicit Value(ComPtr<IDispatch> object);
  /// Arrays of variants, from index 0.
  explicit Value(const std::vector<std::string>& texts);
  explicit Value(std::span<const double> numbers);

  /// `value` by reference, which must outlive this.
  static Value Reference(Value& value) noexcept;

  VARIANT& Raw() noexcept { return variant_; }
  const VARIANT& Raw() const noexcept { return variant_; }
  /// Gives the variant away.
  VARIANT Release() noexcept { return std::exchange(variant_, Empty()); }

 private:
  static VARIANT Empty() noexcept {
    VARIANT variant;
    VariantInit(&variant);
    return variant;
  }

  VARIANT variant_;
};

/// What stands behind references to variants and to values, as it is there.
const VARIANT& Behind(const VARIANT& value);

/// A value of another program as ours: whole numbers that fit keep their kind, all other numbers are doubles, an
/// argument that was left out and the null of a database are empty. Failure 13 for an error and for an array.
Variant ToVariant(const VARIANT& value, const std::shared_ptr<Connection>& connection);

/// The object in a variant: nothing for an empty one too. Failure 13 for what is no object.
ComPtr<IDispatch> ObjectIn(const VARIANT& value);

/// The elements of an array in whatever form it comes: of variants or of the very type, by reference or not, in a
/// variant or bare, from any index. Failure 13 for what is no array of one dimension of such elements.
std::vector<double> NumbersIn(const VARIANT& array);
std::vector<std::string> TextsIn(const VARIANT& array);
/// The same into `numbers`. Failure 9 where there are more or fewer.
void ReadNumbers(const VARIANT& array, std::span<double> numbers);
/// Writes numbers over the elements of an array that came by reference, in its own form. Failure 9 for another size.
void WriteNumbers(const VARIANT& array, std::span<const double> numbers);

}  // namespace quintara::automation
