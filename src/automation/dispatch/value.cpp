#include "automation/dispatch/value.h"

#include <algorithm>
#include <limits>

#include "automation/dispatch/text16.h"
#include "base/failure.h"
#include "base/text.h"

namespace quintara::automation {
namespace {

constexpr LCID kNoLocale = LOCALE_INVARIANT;

[[noreturn]] void ThrowMismatch() {
  throw Failure(failure::kTypeMismatch);
}

// Fills a new array of variants.
template <class Element>
VARIANT ArrayOf(std::span<const Element> elements) {
  auto* const array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size()));
  if (!array) throw Failure(failure::kOutOfMemory);
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = VT_ARRAY | VT_VARIANT;
  variant.parray = array;
  auto* const slots = static_cast<VARIANT*>(array->pvData);
  for (std::size_t i = 0; i < elements.size(); ++i) slots[i] = Value(elements[i]).Release();
  return variant;
}

// A value of a kind that ours don't have, as the double it stands for.
double NumberIn(const VARIANT& value) {
  Value number;
  if (FAILED(VariantChangeTypeEx(&number.Raw(), const_cast<VARIANT*>(&value), kNoLocale, 0, VT_R8))) ThrowMismatch();
  return number.Raw().dblVal;
}

Variant WholeNumber(long long value) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (value < Limits::min() || value > Limits::max()) return static_cast<double>(value);
  return static_cast<std::int32_t>(value);
}

// The elements of an array of one dimension, held while they are at hand.
class Elements {
 public:
  explicit Elements(const VARIANT& value) {
    const auto& array = Behind(value);
    if (!(array.vt & VT_ARRAY)) ThrowMismatch();
    array_ = array.vt & VT_BYREF ? *array.pparray : array.parray;
    if (!array_ || SafeArrayGetDim(array_) != 1) ThrowMismatch();
    if (FAILED(SafeArrayGetVartype(array_, &type_)) || FAILED(SafeArrayAccessData(array_, &data_))) ThrowMismatch();
  }
  ~Elements() { SafeArrayUnaccessData(array_); }
  Elements(const Elements&) = delete;
  Elements& operator=(const Elements&) = delete;

  std::size_t Size() const { return array_->rgsabound[0].cElements; }
  VARTYPE Type() const { return type_; }
  template <class Element>
  Element* As() const {
    return static_cast<Element*>(data_);
  }

 private:
  SAFEARRAY* array_ = nullptr;
  VARTYPE type_ = VT_EMPTY;
  void* data_ = nullptr;
};

}  // namespace

Value::Value(bool value) : Value() {
  variant_.vt = VT_BOOL;
  variant_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Value::Value(std::int16_t value) : Value() {
  variant_.vt = VT_I2;
  variant_.iVal = value;
}

Value::Value(std::int32_t value) : Value() {
  variant_.vt = VT_I4;
  variant_.lVal = value;
}

Value::Value(double value) : Value() {
  variant_.vt = VT_R8;
  variant_.dblVal = value;
}

Value::Value(const std::string& text) : Value() {
  if (!IsUtf8(text)) throw Failure(failure::kInvalidCall, "What is given to another program is no text");
  variant_.bstrVal = NewBstr(text);
  variant_.vt = VT_BSTR;
}

Value::Value(ComPtr<IDispatch> object) : Value() {
  variant_.vt = VT_DISPATCH;
  variant_.pdispVal = object.Detach();
}

Value::Value(const Variant& value) : Value() {
  if (value.IsEmpty()) return;
  if (value.IsBoolean()) {
    *this = Value(value.ToBoolean());
  } else if (value.IsInteger()) {
    const auto whole = value.ToInteger32();
    const auto small = static_cast<std::int16_t>(whole);
    *this = value == Variant(small) ? Value(small) : Value(whole);
  } else if (value.IsDouble()) {
    *this = Value(value.ToDouble());
  } else if (value.IsText()) {
    *this = Value(value.ToText());
  } else {
    *this = Value(Outgoing(value.ToObject()));
  }
}

Value::Value(const std::vector<std::string>& texts) : variant_(ArrayOf(std::span(texts))) {}

Value::Value(std::span<const double> numbers) : variant_(ArrayOf(numbers)) {}

Value Value::Reference(Value& value) noexcept {
  Value reference;
  reference.variant_.vt = static_cast<VARTYPE>(value.variant_.vt | VT_BYREF);
  // All members of the union stand at its beginning.
  reference.variant_.byref = &value.variant_.lVal;
  return reference;
}

const VARIANT& Behind(const VARIANT& value) {
  const auto* current = &value;
  while (current->vt == (VT_BYREF | VT_VARIANT)) current = current->pvarVal;
  return *current;
}

Variant ToVariant(const VARIANT& value, const std::shared_ptr<Connection>& connection) {
  Value direct;
  // Read only, in spite of its declaration.
  if (FAILED(VariantCopyInd(&direct.Raw(), const_cast<VARIANT*>(&value)))) ThrowMismatch();
  const auto& raw = direct.Raw();
  switch (raw.vt) {
    case VT_EMPTY:
    case VT_NULL: return {};
    case VT_BOOL: return raw.boolVal != VARIANT_FALSE;
    case VT_I1: return std::int16_t{raw.cVal};
    case VT_UI1: return std::int16_t{raw.bVal};
    case VT_I2: return std::int16_t{raw.iVal};
    case VT_UI2: return std::int32_t{raw.uiVal};
    case VT_I4: return WholeNumber(raw.lVal);
    case VT_INT: return WholeNumber(raw.intVal);
    case VT_UI4: return WholeNumber(raw.ulVal);
    case VT_UINT: return WholeNumber(raw.uintVal);
    case VT_I8: return WholeNumber(raw.llVal);
    case VT_BSTR: return FromBstr(raw.bstrVal);
    case VT_DISPATCH:
    case VT_UNKNOWN: return Incoming(ObjectIn(raw), connection);
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_DECIMAL:
    case VT_UI8: return NumberIn(raw);
    case VT_ERROR:
      if (raw.scode == DISP_E_PARAMNOTFOUND) return {};
      ThrowMismatch();
    default: ThrowMismatch();
  }
}

ComPtr<IDispatch> ObjectIn(const VARIANT& value) {
  const auto& found = Behind(value);
  const auto object = [&]() -> IUnknown* {
    switch (found.vt) {
      case VT_EMPTY:
      case VT_NULL: return nullptr;
      case VT_DISPATCH: return found.pdispVal;
      case VT_UNKNOWN: return found.punkVal;
      case VT_BYREF | VT_DISPATCH: return *found.ppdispVal;
      case VT_BYREF | VT_UNKNOWN: return *found.ppunkVal;
      default: ThrowMismatch();
    }
  }();
  ComPtr<IDispatch> dispatch;
  if (object && FAILED(object->QueryInterface(IID_PPV_ARGS(&dispatch)))) ThrowMismatch();
  return dispatch;
}

std::vector<double> NumbersIn(const VARIANT& array) {
  const Elements elements(array);
  std::vector<double> numbers(elements.Size());
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    switch (elements.Type()) {
      case VT_R8: numbers[i] = elements.As<double>()[i]; break;
      case VT_R4: numbers[i] = double{elements.As<float>()[i]}; break;
      case VT_VARIANT: numbers[i] = ToVariant(elements.As<VARIANT>()[i], nullptr).ToDouble(); break;
      default: ThrowMismatch();
    }
  }
  return numbers;
}

std::vector<std::string> TextsIn(const VARIANT& array) {
  const Elements elements(array);
  std::vector<std::string> texts(elements.Size());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    switch (elements.Type()) {
      case VT_BSTR: texts[i] = FromBstr(elements.As<BSTR>()[i]); break;
      case VT_VARIANT: texts[i] = ToVariant(elements.As<VARIANT>()[i], nullptr).ToText(); break;
      default: ThrowMismatch();
    }
  }
  return texts;
}

void ReadNumbers(const VARIANT& array, std::span<double> numbers) {
  const auto read = NumbersIn(array);
  if (read.size() != numbers.size()) throw Failure(failure::kSubscriptOutOfRange);
  std::ranges::copy(read, numbers.begin());
}

void WriteNumbers(const VARIANT& array, std::span<const double> numbers) {
  const Elements elements(array);
  if (elements.Size() != numbers.size()) throw Failure(failure::kSubscriptOutOfRange);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    switch (elements.Type()) {
      case VT_R8: elements.As<double>()[i] = numbers[i]; break;
      case VT_R4: elements.As<float>()[i] = static_cast<float>(numbers[i]); break;
      case VT_VARIANT: {
        Value number(numbers[i]);
        std::swap(elements.As<VARIANT>()[i], number.Raw());
        break;
      }
      default: ThrowMismatch();
    }
  }
}

}  // namespace quintara::automation
