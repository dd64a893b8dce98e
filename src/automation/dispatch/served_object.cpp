#include <atomic>
#include <exception>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "automation/dispatch/call_watch.h"
#include "automation/dispatch/failures.h"
#include "automation/dispatch/served_kind.h"
#include "automation/dispatch/text16.h"
#include "automation/dispatch/type_description.h"

namespace quintara::automation {
namespace {

class ServedObject;

// All that are out, by what they serve and by what other programs hold of them. An object of another program must never
// be asked whether it is ours: that would be one more call to it for each that comes in.
struct ServedObjectTable {
  std::mutex mutex;
  std::unordered_map<const AnyObject*, ServedObject*> byObject;
  std::unordered_map<const IDispatch*, ServedObject*> byInterface;
};

ServedObjectTable& AllServed() {
  static auto* const all = new ServedObjectTable;
  return *all;
}

class ServedObject final : public IDispatch {
 public:
  ServedObject(Ref<AnyObject> object, const ServedKind& kind) : object_(std::move(object)), kind_(kind) {
    auto& all = AllServed();
    const std::lock_guard lock(all.mutex);
    all.byObject[&*object_] = this;
    all.byInterface[this] = this;
  }
  ServedObject(const ServedObject&) = delete;
  ServedObject& operator=(const ServedObject&) = delete;

  const Ref<AnyObject>& Object() const noexcept { return object_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** given) override {
    if (!given) return E_POINTER;
    *given = nullptr;
    if (asked != IID_IUnknown && asked != IID_IDispatch) return E_NOINTERFACE;
    *given = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const auto left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = DescriptionOf(kind_) ? 1 : 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) override {
    if (!info) return E_POINTER;
    *info = index == 0 ? DescriptionOf(kind_).Detach() : nullptr;
    return *info ? S_OK : DISP_E_BADINDEX;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                          DISPID* ids) override {
    // The names of arguments stand behind that of the member; none of ours are known.
    for (UINT i = 0; i < count; ++i) ids[i] = i == 0 ? kind_.IdOf(Narrow(std::wstring_view(names[0]))) : DISPID_UNKNOWN;
    return count == 1 && ids[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* details, UINT* /*faulty*/) override {
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    bool isKnown = false;
    const auto* const operation = kind_.Find(id, isPut, parameters->cArgs, isKnown);
    if (!operation) {
      const auto* const giver = kind_.FindGiver(id, isPut, parameters->cArgs);
      if (giver) return Forward(*giver, flags, *parameters, result, details);
      return isKnown ? DISP_E_BADPARAMCOUNT : DISP_E_MEMBERNOTFOUND;
    }
    Value value;
    const auto done = Run(*operation, *parameters, value, details);
    if (result && SUCCEEDED(done)) *result = value.Release();
    return done;
  }

 private:
  ~ServedObject() {
    auto& all = AllServed();
    const std::lock_guard lock(all.mutex);
    all.byObject.erase(&*object_);
    all.byInterface.erase(this);
  }

  // The operation takes as many arguments as it needs, from the first one on.
  HRESULT Run(const ServedOperation& operation, const DISPPARAMS& parameters, Value& value, EXCEPINFO* details) {
    // Borrowed from the caller, the last one first.
    const std::vector<VARIANT> arguments(std::reverse_iterator(parameters.rgvarg + parameters.cArgs),
                                         std::reverse_iterator(parameters.rgvarg));
    const WatchedCall call(kind_.Name(), operation.name);
    if (FAILED(call.Result())) return call.Result();
    // It may be let go in the midst of its own operation.
    const auto kept = object_;
    try {
      value = operation.run(*kept, arguments);
      return S_OK;
    } catch (const std::exception& error) {
      return Tell(error, details);
    }
  }

  // What `giver` gives is asked for its value with the arguments that are left.
  HRESULT Forward(const ServedOperation& giver, WORD flags, const DISPPARAMS& parameters, VARIANT* result,
                  EXCEPINFO* details) {
    Value given;
    if (const auto done = Run(giver, parameters, given, details); FAILED(done)) return done;
    if (!given.Raw().pdispVal) return Tell(Failure(failure::kObjectNotSet), details);
    auto rest = parameters;
    rest.cArgs -= static_cast<UINT>(giver.arity);
    return given.Raw().pdispVal->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, flags, &rest, result, details,
                                        nullptr);
  }

  HRESULT Tell(const std::exception& error, EXCEPINFO* details) const {
    if (!details) return DISP_E_EXCEPTION;
    *details = {};
    details->scode = ResultOf(error);
    details->bstrDescription = NewBstr(error.what());
    details->bstrSource = NewBstr(kind_.Name());
    return DISP_E_EXCEPTION;
  }

  Ref<AnyObject> object_;
  const ServedKind& kind_;
  std::atomic<ULONG> references_ = 0;
};

}  // namespace

ComPtr<IDispatch> Serve(const Ref<AnyObject>& object, const ServedKind& kind) {
  if (!object) return nullptr;
  {
    auto& all = AllServed();
    const std::lock_guard lock(all.mutex);
    if (const auto known = all.byObject.find(&*object); known != all.byObject.end()) return known->second;
  }
  const WatchedTelling unasked;
  return ComPtr<IDispatch>(new ServedObject(object, KindOf(*object, kind)));
}

std::size_t ServedObjects() {
  auto& all = AllServed();
  const std::lock_guard lock(all.mutex);
  return all.byObject.size();
}

Ref<AnyObject> OwnObject(const ComPtr<IDispatch>& object) {
  auto& all = AllServed();
  const std::lock_guard lock(all.mutex);
  const auto own = all.byInterface.find(object.Get());
  return own == all.byInterface.end() ? Ref<AnyObject>() : own->second->Object();
}

}  // namespace quintara::automation
