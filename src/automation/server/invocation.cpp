#include "automation/server/invocation.h"

#include <algorithm>
#include <exception>
#include <span>
#include <utility>
#include <vector>

#include "automation/server/errors.h"
#include "automation/server/script_values.h"
#include "base/failure.h"

namespace quintara::automation {
namespace {

// What stops a call before the method is reached.
struct Refusal {
  HRESULT result;
  std::size_t argument = 0;
};

class UnwrittenObject final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID /*asked*/, void** /*given*/) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/, LCID /*locale*/,
                                          DISPID* /*ids*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID /*id*/, REFIID /*reserved*/, LCID /*locale*/, WORD /*flags*/,
                                   DISPPARAMS* /*given*/, VARIANT* /*result*/, EXCEPINFO* /*details*/,
                                   UINT* /*faulty*/) override {
    return E_NOTIMPL;
  }
};

bool IsLeftOut(const VARIANT& given) {
  const auto& found = Behind(given);
  return found.vt == VT_ERROR && found.scode == DISP_E_PARAMNOTFOUND;
}

// The caller's values in the order of the method's arguments, nothing for one that was left out. They stand last
// argument first, those with a name before all others.
std::vector<VARIANT*> InOrder(const Method& method, DISPPARAMS& given) {
  const std::size_t all = given.cArgs;
  const std::size_t named = given.cNamedArgs;
  const auto count = method.parameters.size();
  if (all > count || named > all) throw Refusal{DISP_E_BADPARAMCOUNT};
  std::vector<VARIANT*> values(count);
  for (std::size_t i = 0; i < all - named; ++i) values[i] = &given.rgvarg[all - 1 - i];
  for (std::size_t i = 0; i < named; ++i) {
    const auto place = static_cast<std::size_t>(given.rgdispidNamedArgs[i]);
    if (given.rgdispidNamedArgs[i] < 0 || place >= count || values[place]) {
      throw Refusal{DISP_E_PARAMNOTFOUND, i};
    }
    values[place] = &given.rgvarg[i];
  }
  for (auto*& value : values) {
    if (value && IsLeftOut(*value)) value = nullptr;
  }
  return values;
}

// The arguments of one call.
class Arguments {
 public:
  Arguments(const Method& method, DISPPARAMS& given)
      : parameters_(method.parameters), given_(given), values_(InOrder(method, given)) {
    held_.reserve(values_.size());
    for (std::size_t i = 0; i < values_.size(); ++i) held_.push_back(Take(i));
  }

  /// As the method takes them, references all. One that was left out is none.
  std::vector<VARIANT> References() {
    std::vector<VARIANT> references;
    for (std::size_t i = 0; i < held_.size(); ++i) {
      auto reference = held_[i].Raw();
      if (!values_[i]) {
        reference.vt = VT_BYREF | VT_UI1;
        reference.byref = nullptr;
      } else if (!parameters_[i].isArray) {
        reference = Value::Reference(held_[i]).Release();
      }
      references.push_back(reference);
    }
    return references;
  }

  void WriteBackAll() {
    for (std::size_t i = 0; i < held_.size(); ++i) {
      if (!values_[i] || !parameters_[i].isOut || IsUnwritten(held_[i])) continue;
      try {
        WriteBack(*values_[i], std::move(held_[i]));
      } catch (const Failure& failure) {
        throw RefusalOf(failure, i);
      }
    }
  }

 private:
  static bool IsUnwritten(const Value& value) {
    return value.Raw().vt == VT_DISPATCH && value.Raw().pdispVal == Unwritten();
  }

  Refusal RefusalOf(const Failure& failure, std::size_t index) const {
    const auto result = failure.Number() == failure::kOverflow ? DISP_E_OVERFLOW : DISP_E_TYPEMISMATCH;
    return {result, static_cast<std::size_t>(values_[index] - given_.rgvarg)};
  }

  Value Take(std::size_t index) {
    const auto& parameter = parameters_[index];
    const auto* const value = values_[index];
    if (!value) {
      if (!parameter.isOptional) throw Refusal{DISP_E_PARAMNOTOPTIONAL};
      return {};
    }
    if (!parameter.isIn) return parameter.type == VT_DISPATCH ? Value(ComPtr<IDispatch>(Unwritten())) : Value(false);
    try {
      return ToParameter(*value, parameter);
    } catch (const Failure& failure) {
      throw RefusalOf(failure, index);
    }
  }

  const std::vector<Parameter>& parameters_;
  const DISPPARAMS& given_;
  std::vector<VARIANT*> values_;
  std::vector<Value> held_;
};

HRESULT CallThrough(IDispatch* object, const Method& method, std::vector<VARIANT> arguments, Value& result) {
  if (method.result != VT_EMPTY) {
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = static_cast<VARTYPE>(VT_BYREF | method.result);
    if (method.result == VT_VARIANT) {
      reference.pvarVal = &result.Raw();
    } else {
      result.Raw().vt = method.result;
      reference.byref = &result.Raw().byref;
    }
    arguments.push_back(reference);
  }
  std::vector<VARTYPE> types;
  std::vector<VARIANTARG*> pointers;
  for (auto& argument : arguments) {
    types.push_back(argument.vt);
    pointers.push_back(&argument);
  }
  Value answer;
  const auto called = DispCallFunc(object, method.place, CC_STDCALL, VT_ERROR, static_cast<UINT>(arguments.size()),
                                   types.data(), pointers.data(), &answer.Raw());
  return FAILED(called) ? called : answer.Raw().scode;
}

HRESULT Run(IDispatch* object, const Method& method, DISPPARAMS& given, VARIANT* result, EXCEPINFO* details) {
  Arguments arguments(method, given);
  Value value;
  const auto answer = CallThrough(object, method, arguments.References(), value);
  if (FAILED(answer)) TakeError(answer, details);
  arguments.WriteBackAll();
  if (FAILED(answer)) return DISP_E_EXCEPTION;
  if (result) *result = value.Release();
  return S_OK;
}

}  // namespace

IDispatch* Unwritten() noexcept {
  static UnwrittenObject object;
  return &object;
}

HRESULT InvokeMethod(IDispatch* object, const Methods& methods, DISPID id, WORD flags, DISPPARAMS& given,
                     VARIANT* result, EXCEPINFO* details, UINT* faulty) noexcept {
  const auto* const method = methods.Find(id);
  if (!method || (flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) == 0) return DISP_E_MEMBERNOTFOUND;
  try {
    return Run(object, *method, given, result, details);
  } catch (const Refusal& refusal) {
    if (faulty) *faulty = static_cast<UINT>(refusal.argument);
    return refusal.result;
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace quintara::automation
