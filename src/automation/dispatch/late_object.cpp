#include "automation/dispatch/late_object.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "automation/dispatch/failures.h"
#include "automation/dispatch/text16.h"

namespace quintara::automation {
namespace {

WORD FlagsFor(Use use, std::span<const Value> arguments) {
  if (use == Use::kCall) return DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  const bool isObject = !arguments.empty() && arguments.back().Raw().vt == VT_DISPATCH;
  return isObject ? WORD{DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF} : WORD{DISPATCH_PROPERTYPUT};
}

// What all interfaces of an object have in common; it lives as long as the object is held.
IUnknown* IdentityOf(const ComPtr<IDispatch>& object) {
  ComPtr<IUnknown> identity;
  return SUCCEEDED(object.As(&identity)) ? identity.Get() : object.Get();
}

}  // namespace

std::shared_ptr<IdTable> Connection::IdsOf(std::string_view kind) {
  auto& table = kinds_[kind];
  if (!table) table = std::make_shared<IdTable>();
  return table;
}

std::weak_ptr<AnyObject>& Connection::AdapterOf(const ComPtr<IDispatch>& object, std::string_view kind) {
  return adapters_[{IdentityOf(object), kind}];
}

void Connection::Forget(const ComPtr<IDispatch>& object, std::string_view kind) {
  adapters_.erase({IdentityOf(object), kind});
}

LateObject::LateObject(ComPtr<IDispatch> object, std::shared_ptr<Connection> connection, std::string_view kind,
                       bool sharesIds)
    : object_(std::move(object)),
      connection_(connection ? std::move(connection) : std::make_shared<Connection>()),
      kind_(kind),
      ids_(sharesIds ? connection_->IdsOf(kind) : std::make_shared<IdTable>()) {}

HRESULT LateObject::IdOf(std::string_view member, DISPID& id) {
  if (const auto known = ids_->find(member); known != ids_->end()) {
    id = known->second;
    return S_OK;
  }
  auto name = Wide(member);
  auto* text = name.data();
  const auto result = object_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
  if (SUCCEEDED(result)) ids_->emplace(member, id);
  return result;
}

HRESULT LateObject::Ask(DISPID id, Use use, std::span<Value> arguments, Value& result, EXCEPINFO& details) {
  // The last argument comes first. They stay the caller's, so that those by reference can be read afterwards.
  std::vector<VARIANT> reversed;
  reversed.reserve(arguments.size());
  for (const auto& argument : arguments) reversed.push_back(argument.Raw());
  std::ranges::reverse(reversed);
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  if (use == Use::kPut) {
    parameters.rgdispidNamedArgs = &put;
    parameters.cNamedArgs = 1;
  }
  UINT faulty = 0;
  return object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, FlagsFor(use, arguments), &parameters,
                         use == Use::kPut ? nullptr : &result.Raw(), &details, &faulty);
}

Value LateObject::Invoke(std::string_view member, Use use, std::span<Value> arguments) {
  Value given;
  EXCEPINFO details{};
  DISPID id = DISPID_UNKNOWN;
  auto result = IdOf(member, id);
  if (SUCCEEDED(result)) result = Ask(id, use, arguments, given, details);
  if (SUCCEEDED(result)) return given;
  throw FailureOf(result, details, std::string(kind_) + "." + std::string(member));
}

bool LateObject::Has(std::string_view member) {
  DISPID id = DISPID_UNKNOWN;
  return SUCCEEDED(IdOf(member, id));
}

}  // namespace quintara::automation
