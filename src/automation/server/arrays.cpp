#include "automation/server/arrays.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>

#include "automation/dispatch/text16.h"
#include "automation/dispatch/value.h"
#include "automation/server/interface.h"
#include "base/failure.h"

namespace quintara::automation {
namespace {

void Require(HRESULT result) {
  if (FAILED(result)) throw Failure(failure::kTypeMismatch);
}

struct Bounds {
  LONG first = 0;
  LONG last = -1;

  std::size_t Size() const { return static_cast<std::size_t>(std::int64_t{last} - first + 1); }
};

Bounds BoundsOf(SAFEARRAY* array, UINT dimension) {
  Bounds bounds;
  Require(SafeArrayGetLBound(array, dimension, &bounds.first));
  Require(SafeArrayGetUBound(array, dimension, &bounds.last));
  return bounds;
}

// The data of an array, which stays where it is meanwhile.
class Data {
 public:
  explicit Data(SAFEARRAY* array) : array_(array) { Require(SafeArrayAccessData(array, &data_)); }
  ~Data() { SafeArrayUnaccessData(array_); }
  Data(const Data&) = delete;
  Data& operator=(const Data&) = delete;

  template <class Element>
  std::span<const Element> As(std::size_t size) const {
    return {static_cast<const Element*>(data_), size};
  }

 private:
  SAFEARRAY* array_;
  void* data_ = nullptr;
};

// The only dimension of an array.
Bounds BoundsOf(SAFEARRAY* array) {
  if (!array) return {};
  if (SafeArrayGetDim(array) != 1) throw Failure(failure::kTypeMismatch);
  return BoundsOf(array, 1);
}

VARTYPE TypeOf(SAFEARRAY* array) {
  VARTYPE type = VT_EMPTY;
  if (array) Require(SafeArrayGetVartype(array, &type));
  return type;
}

Value ElementAt(SAFEARRAY* array, VARTYPE type, LONG* indices) {
  if (type == VT_RECORD || type == VT_DECIMAL) throw Failure(failure::kTypeMismatch);
  Value element;
  auto& raw = element.Raw();
  if (type == VT_VARIANT) {
    Require(SafeArrayGetElement(array, indices, &raw));
  } else {
    // The values of all other types stand at the same place.
    Require(SafeArrayGetElement(array, indices, &raw.byref));
    raw.vt = type;
  }
  return element;
}

template <class Convert>
auto Converted(SAFEARRAY* array, Convert&& convert) {
  const auto bounds = BoundsOf(array);
  const auto type = TypeOf(array);
  std::vector<decltype(convert(std::declval<Value>()))> elements;
  elements.reserve(bounds.Size());
  for (std::int64_t i = bounds.first; i <= bounds.last; ++i) {
    auto index = static_cast<LONG>(i);
    elements.push_back(convert(ElementAt(array, type, &index)));
  }
  return elements;
}

std::uint8_t ToByte(const Variant& value) {
  const int number = value.ToInteger16();
  if (number < 0 || number > std::numeric_limits<std::uint8_t>::max()) throw Failure(failure::kOverflow);
  return static_cast<std::uint8_t>(number);
}

PN_IN_Couple CoupleOf(std::span<const Variant> fields) {
  if (fields.size() != 3) throw Failure(failure::kTypeMismatch);
  return {fields[0].ToText(), fields[1].ToText(), fields[2].ToInteger16()};
}

PN_IN_Couple CoupleIn(const Value& value) {
  const auto& array = Behind(value.Raw());
  if (!(array.vt & VT_ARRAY)) throw Failure(failure::kTypeMismatch);
  return CoupleOf(VariantsIn(array.vt & VT_BYREF ? *array.pparray : array.parray));
}

std::vector<PN_IN_Couple> CouplesInRecords(SAFEARRAY* array) {
  const auto size = BoundsOf(array).Size();
  if (SafeArrayGetElemsize(array) != sizeof(::PN_IN_Couple)) throw Failure(failure::kTypeMismatch);
  const Data data(array);
  std::vector<PN_IN_Couple> couples;
  for (const auto& record : data.As<::PN_IN_Couple>(size)) {
    couples.push_back({FromBstr(record.PartNumber), FromBstr(record.InstanceName), record.Row});
  }
  return couples;
}

std::vector<PN_IN_Couple> CouplesInRows(SAFEARRAY* array) {
  const auto rows = BoundsOf(array, 1);
  const auto columns = BoundsOf(array, 2);
  const auto type = TypeOf(array);
  std::vector<PN_IN_Couple> couples;
  for (std::int64_t row = rows.first; row <= rows.last; ++row) {
    std::vector<Variant> fields;
    for (std::int64_t column = columns.first; column <= columns.last; ++column) {
      std::array indices{static_cast<LONG>(row), static_cast<LONG>(column)};
      fields.push_back(ToVariant(ElementAt(array, type, indices.data()).Raw(), nullptr));
    }
    couples.push_back(CoupleOf(fields));
  }
  return couples;
}

}  // namespace

std::vector<Variant> VariantsIn(SAFEARRAY* array) {
  return Converted(array, [](const Value& element) { return ToVariant(element.Raw(), nullptr); });
}

std::vector<Variant> VariantsFromZero(SAFEARRAY* array) {
  const auto bounds = BoundsOf(array);
  if (bounds.Size() != 0 && bounds.first != 0) throw Failure(failure::kSubscriptOutOfRange);
  return VariantsIn(array);
}

std::vector<std::uint8_t> BytesIn(SAFEARRAY* array) {
  return Converted(array, [](const Value& element) { return ToByte(ToVariant(element.Raw(), nullptr)); });
}

std::vector<PN_IN_Couple> CouplesIn(SAFEARRAY* array) {
  if (array && SafeArrayGetDim(array) == 2) return CouplesInRows(array);
  if (TypeOf(array) == VT_RECORD) return CouplesInRecords(array);
  return Converted(array, CoupleIn);
}

SAFEARRAY* NewArray(const std::vector<std::uint8_t>& bytes) {
  auto* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (!array) throw Failure(failure::kOutOfMemory);
  std::ranges::copy(bytes, static_cast<std::uint8_t*>(array->pvData));
  return array;
}

}  // namespace quintara::automation
