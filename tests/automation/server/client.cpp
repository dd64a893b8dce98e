#include "automation/server/client.h"

#include <algorithm>
#include <stdexcept>

#include "automation/dispatch/text16.h"

namespace quintara::test {
namespace {

std::string Taken(BSTR text) {
  auto told = automation::FromBstr(text);
  SysFreeString(text);
  return told;
}

Value ReferenceTo(void* variable, VARTYPE type) {
  Value reference;
  reference.Raw().vt = static_cast<VARTYPE>(VT_BYREF | type);
  reference.Raw().byref = variable;
  return reference;
}

}  // namespace

Value Passed(const char* text) {
  return Value(std::string(text));
}
Value Passed(const std::string& text) {
  return Value(text);
}
Value Passed(bool value) {
  return Value(value);
}
Value Passed(int value) {
  return Value(std::int32_t{value});
}
Value Passed(double value) {
  return Value(value);
}
Value Passed(LeftOut /*leftOut*/) {
  Value value;
  value.Raw().vt = VT_ERROR;
  value.Raw().scode = DISP_E_PARAMNOTFOUND;
  return value;
}
Value Passed(const ComPtr<IDispatch>& object) {
  return Value(object);
}
Value Passed(std::nullptr_t /*nothing*/) {
  return Value(ComPtr<IDispatch>());
}
Value Passed(Value& variable) {
  Value reference;
  reference.Raw().vt = VT_BYREF | VT_VARIANT;
  reference.Raw().pvarVal = &variable.Raw();
  return reference;
}
Value Passed(Value&& constant) {
  return std::move(constant);
}
Value Passed(BSTR* variable) {
  return ReferenceTo(variable, VT_BSTR);
}
Value Passed(short* variable) {
  return ReferenceTo(variable, VT_I2);
}
Value Passed(LONG* variable) {
  return ReferenceTo(variable, VT_I4);
}
Value Passed(double* variable) {
  return ReferenceTo(variable, VT_R8);
}
Value Passed(IDispatch** variable) {
  return ReferenceTo(variable, VT_DISPATCH);
}

Client::Client(const std::string& className) {
  const auto& classes = automation::PublicClasses();
  const auto found = std::ranges::find(classes, Wide(className), &automation::PublicClass::name);
  if (found == classes.end()) throw std::runtime_error("no class " + className);
  ComPtr<IClassFactory> factory;
  automation::GetClassObject(found->classId, IID_PPV_ARGS(&factory));
  factory->CreateInstance(nullptr, IID_PPV_ARGS(&object_));
}

Outcome Client::CallWith(const std::string& method, CallArguments arguments, WORD flags) const {
  std::vector<std::wstring> texts{Wide(method)};
  texts.insert(texts.end(), arguments.names.begin(), arguments.names.end());
  std::vector<LPOLESTR> names;
  for (auto& text : texts) names.push_back(text.data());
  std::vector<DISPID> ids(names.size());
  Outcome outcome;
  outcome.result = object_->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()), 0, ids.data());
  if (FAILED(outcome.result)) return outcome;

  // The last one comes first, and so do their names.
  std::vector<VARIANT> raw;
  for (const auto& value : arguments.values) raw.push_back(value.Raw());
  std::ranges::reverse(raw);
  std::vector<DISPID> named(ids.rbegin(), ids.rend() - 1);
  DISPPARAMS given{raw.data(), named.data(), static_cast<UINT>(raw.size()), static_cast<UINT>(named.size())};
  EXCEPINFO details{};
  outcome.result = object_->Invoke(ids[0], IID_NULL, 0, flags, &given, &outcome.value.Raw(), &details, &outcome.faulty);
  outcome.code = details.scode;
  outcome.description = Taken(details.bstrDescription);
  outcome.source = Taken(details.bstrSource);
  return outcome;
}

Value ArrayOf(std::vector<Value> elements, LONG first) {
  SAFEARRAYBOUND bound{static_cast<ULONG>(elements.size()), first};
  Value array;
  array.Raw().vt = VT_ARRAY | VT_VARIANT;
  array.Raw().parray = SafeArrayCreate(VT_VARIANT, 1, &bound);
  auto* const slots = static_cast<VARIANT*>(array.Raw().parray->pvData);
  for (std::size_t i = 0; i < elements.size(); ++i) slots[i] = elements[i].Release();
  return array;
}

}  // namespace quintara::test
