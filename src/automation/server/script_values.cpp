#include "automation/server/script_values.h"

#include <utility>

#include "automation/dispatch/text16.h"
#include "base/failure.h"

namespace quintara::automation {
namespace {

[[noreturn]] void ThrowMismatch() {
  throw Failure(failure::kTypeMismatch);
}

// Kept by its owner: a value that isn't freed at its end stands behind the reference.
Value LentArray(const VARIANT& given) {
  const auto& found = Behind(given);
  Value lent;
  lent.Raw().vt = VT_BYREF | VT_ARRAY;
  static SAFEARRAY* nothing = nullptr;
  if (found.vt == VT_EMPTY || found.vt == VT_NULL) {
    lent.Raw().pparray = &nothing;
  } else if ((found.vt & VT_ARRAY) == 0) {
    ThrowMismatch();
  } else {
    // Methods only read arrays.
    lent.Raw().pparray = found.vt & VT_BYREF ? found.pparray : const_cast<SAFEARRAY**>(&found.parray);
  }
  return lent;
}

// The system's values hold an object as that, ours as an adapter for it.
Value Converted(const VARIANT& given, VARTYPE type) {
  if (type == VT_DISPATCH) return Value(ObjectIn(given));
  const auto value = ToVariant(Behind(given), nullptr);
  switch (type) {
    case VT_BOOL: return Value(value.ToBoolean());
    case VT_I2: return Value(value.ToInteger16());
    case VT_I4: return Value(value.ToInteger32());
    case VT_BSTR: return Value(value.ToText());
    default: ThrowMismatch();
  }
}

template <class T>
void Replace(T* place, T value) {
  *place = value;
}

void ReplaceText(BSTR* place, Value& value) {
  SysFreeString(std::exchange(*place, value.Release().bstrVal));
}

template <class Interface>
void ReplaceObject(Interface** place, Value& value) {
  if (auto* const before = std::exchange(*place, value.Release().pdispVal)) before->Release();
}

// Into a variable that has a type.
void WriteTyped(VARIANT& place, Value value) {
  const auto type = static_cast<VARTYPE>(place.vt & ~VT_BYREF);
  if (value.Raw().vt != type && type != VT_UNKNOWN) {
    if (FAILED(VariantChangeTypeEx(&value.Raw(), &value.Raw(), LOCALE_INVARIANT, VARIANT_ALPHABOOL, type))) {
      ThrowMismatch();
    }
  }
  switch (type) {
    case VT_BOOL: return Replace(place.pboolVal, value.Raw().boolVal);
    case VT_UI1: return Replace(place.pbVal, value.Raw().bVal);
    case VT_I2: return Replace(place.piVal, value.Raw().iVal);
    case VT_I4: return Replace(place.plVal, value.Raw().lVal);
    case VT_R4: return Replace(place.pfltVal, value.Raw().fltVal);
    case VT_R8: return Replace(place.pdblVal, value.Raw().dblVal);
    case VT_BSTR: return ReplaceText(place.pbstrVal, value);
    case VT_DISPATCH: return ReplaceObject(place.ppdispVal, value);
    case VT_UNKNOWN: return ReplaceObject(place.ppunkVal, value);
    default: ThrowMismatch();
  }
}

}  // namespace

Value ToParameter(const VARIANT& given, const Parameter& parameter) {
  return parameter.isArray ? LentArray(given) : Converted(given, parameter.type);
}

void WriteBack(VARIANT& given, Value value) {
  auto* place = &given;
  while (place->vt == (VT_BYREF | VT_VARIANT)) place = place->pvarVal;
  if (place->vt & VT_BYREF) {
    WriteTyped(*place, std::move(value));
  } else if (place != &given) {
    std::swap(*place, value.Raw());
  }
}

}  // namespace quintara::automation
