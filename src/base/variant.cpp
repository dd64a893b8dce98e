#include "base/variant.h"

#include <cmath>
#include <limits>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"

namespace quintara {
namespace {

template <class Integer>
Integer Rounded(double value) {
  // In the default rounding mode halves go to the even number.
  const double whole = std::nearbyint(value);
  if (whole < std::numeric_limits<Integer>::min() || whole > std::numeric_limits<Integer>::max()) {
    throw Failure(failure::kOverflow);
  }
  return static_cast<Integer>(whole);
}

bool BooleanOf(const std::string& text) {
  const auto capitals = IsUtf8(text) ? Capitals(text) : text;
  if (capitals == "TRUE") return true;
  return capitals != "FALSE" && quintara::ToDouble(text) != 0;
}

struct AsDouble {
  double operator()(std::monostate) const { return 0; }
  double operator()(bool value) const { return value ? -1 : 0; }
  double operator()(std::int16_t value) const { return value; }
  double operator()(std::int32_t value) const { return value; }
  double operator()(double value) const { return value; }
  double operator()(const std::string& value) const { return quintara::ToDouble(value); }
  double operator()(const Ref<AnyObject>& /*value*/) const { throw Failure(failure::kTypeMismatch); }
};

struct AsText {
  std::string operator()(std::monostate) const { return {}; }
  std::string operator()(bool value) const { return value ? "True" : "False"; }
  std::string operator()(std::int16_t value) const { return quintara::ToText(static_cast<long long>(value)); }
  std::string operator()(std::int32_t value) const { return quintara::ToText(static_cast<long long>(value)); }
  std::string operator()(double value) const { return quintara::ToText(value); }
  std::string operator()(const std::string& value) const { return value; }
  std::string operator()(const Ref<AnyObject>& /*value*/) const { throw Failure(failure::kTypeMismatch); }
};

}  // namespace

std::int16_t Variant::ToInteger16() const {
  return Rounded<std::int16_t>(ToDouble());
}

std::int32_t Variant::ToInteger32() const {
  return Rounded<std::int32_t>(ToDouble());
}

double Variant::ToDouble() const {
  return std::visit(AsDouble{}, value_);
}

bool Variant::ToBoolean() const {
  if (const auto* text = std::get_if<std::string>(&value_)) return BooleanOf(*text);
  return ToDouble() != 0;
}

std::string Variant::ToText() const {
  return std::visit(AsText{}, value_);
}

Ref<AnyObject> Variant::ToObject() const {
  if (const auto* object = std::get_if<Ref<AnyObject>>(&value_)) return *object;
  throw Failure(failure::kTypeMismatch);
}

}  // namespace quintara
