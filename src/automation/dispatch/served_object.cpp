#include <atomic>
#include <exception>
#include <string>
#include <unordered_map>
#include <vector>

#include "automation/dispatch/failures.h"
#include "automation/dispatch/served_kind.h"
#include "automation/dispatch/text16.h"

namespace quintara::automation {
namespace {

// The question by which an object of ours is known again.
constexpr GUID kOwnObject = {0x6f1d7f4e, 0x2c0b, 0x4a53, {0x9b, 0x1d, 0x5a, 0x0e, 0x8c, 0x37, 0x42, 0x91}};

class ServedObject;
std::unordered_map<const AnyObject*, ServedObject*>& AllServed() {
  static auto* const all = new std::unordered_map<const AnyObject*, ServedObject*>;
  return *all;
}

class ServedObject final : public IDispatch {
 public:
  ServedObject(Ref<AnyObject> object, const ServedKind& kind) : object_(std::move(object)), kind_(kind) {
    AllServed()[&*object_] = this;
  }
  ServedObject(const ServedObject&) = delete;
  ServedObject& operator=(const ServedObject&) = delete;

  const Ref<AnyObject>& Object() const noexcept { return object_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** given) override {
    if (!given) return E_POINTER;
    *given = nullptr;
    if (asked == kOwnObject) {
      *given = this;  // lent, to this program only
      return S_OK;
    }
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
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
    return DISP_E_BADINDEX;
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
    const std::size_t count = parameters->cArgs;
    bool isKnown = false;
    const auto* const operation = kind_.Find(id, isPut, count, isKnown);
    if (!operation) return isKnown ? DISP_E_BADPARAMCOUNT : DISP_E_MEMBERNOTFOUND;
    // Borrowed from the caller, the last one first.
    const std::vector<VARIANT> arguments(std::reverse_iterator(parameters->rgvarg + count),
                                         std::reverse_iterator(parameters->rgvarg));
    // It may be let go in the midst of its own operation.
    const auto kept = object_;
    try {
      auto value = operation->run(*kept, arguments);
      if (result) *result = value.Release();
      return S_OK;
    } catch (const std::exception& error) {
      return Tell(error, details);
    }
  }

 private:
  ~ServedObject() { AllServed().erase(&*object_); }

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
  if (const auto known = AllServed().find(&*object); known != AllServed().end()) return known->second;
  return ComPtr<IDispatch>(new ServedObject(object, KindOf(*object, kind)));
}

Ref<AnyObject> OwnObject(const ComPtr<IDispatch>& object) {
  void* own = nullptr;
  if (!object || FAILED(object->QueryInterface(kOwnObject, &own))) return nullptr;
  return static_cast<ServedObject*>(own)->Object();
}

}  // namespace quintara::automation
