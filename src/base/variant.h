#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "base/ref.h"

namespace quintara {

class AnyObject;

/// A value whose kind is only known at run time, as the hosts give and take them: empty, a
/// Boolean, a 16-bit or 32-bit integer, a double, a text, or an object. The conversions are those of
/// automation scripts: they raise failure 13 "Type mismatch" where the value can't be read as what
/// is asked for, and 6 "Overflow" where it doesn't fit.
class Variant {
 public:
  Variant() = default;
  Variant(bool value) : value_(value) {}
  Variant(std::int16_t value) : value_(value) {}
  Variant(std::int32_t value) : value_(value) {}
  Variant(double value) : value_(value) {}
  Variant(std::string value) : value_(std::move(value)) {}
  Variant(const char* value) : value_(std::string(value)) {}
  Variant(Ref<AnyObject> value) : value_(std::move(value)) {}

  bool IsEmpty() const noexcept { return Holds<std::monostate>(); }
  bool IsBoolean() const noexcept { return Holds<bool>(); }
  bool IsInteger() const noexcept { return Holds<std::int16_t>() || Holds<std::int32_t>(); }
  bool IsDouble() const noexcept { return Holds<double>(); }
  bool IsText() const noexcept { return Holds<std::string>(); }
  bool IsObject() const noexcept { return Holds<Ref<AnyObject>>(); }

  /// Numbers round to the nearest whole one, halves to the even one. Empty is 0, True is -1, a text
  /// is read as a number.
  std::int16_t ToInteger16() const;
  std::int32_t ToInteger32() const;
  double ToDouble() const;
  /// Any number but 0 is True; of texts "True" and "False", capitals ignored, and numbers.
  bool ToBoolean() const;
  /// Empty is the empty text, a Boolean "True" or "False", a double its shortest decimal text.
  std::string ToText() const;
  /// Nothing for a variant that holds nothing as an object; failure 13 for any other value, the
  /// empty one included.
  Ref<AnyObject> ToObject() const;

  /// Equal in kind and value: the integer 1 is neither the double 1 nor the text "1".
  friend bool operator==(const Variant& left, const Variant& right) noexcept { return left.value_ == right.value_; }

 private:
  template <class T>
  bool Holds() const noexcept {
    return std::holds_alternative<T>(value_);
  }

  std::variant<std::monostate, bool, std::int16_t, std::int32_t, double, std::string, Ref<AnyObject>> value_;
};

}  // namespace quintara
