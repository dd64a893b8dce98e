#include "automation/server/class_factory.h"

#include <algorithm>
#include <atomic>
#include <exception>

#include "automation/dispatch/text16.h"
#include "automation/server/errors.h"
#include "automation/server/module.h"
#include "automation/server/public_classes.h"

namespace quintara::automation {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const PublicClass& made) : made_(made) { LockModule(true); }
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** given) override {
    if (!given) return E_POINTER;
    *given = nullptr;
    if (asked != IID_IUnknown && asked != IID_IClassFactory) return E_NOINTERFACE;
    *given = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const auto left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceId, void** given) override {
    if (!given) return E_POINTER;
    *given = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      return made_.make()->QueryInterface(interfaceId, given);
    } catch (const std::exception& error) {
      return LeaveError(error, Narrow(made_.ProgramName()), made_.interfaceId);
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL isLocked) override {
    LockModule(isLocked != FALSE);
    return S_OK;
  }

 private:
  ~ClassFactory() { LockModule(false); }

  const PublicClass& made_;
  std::atomic<ULONG> references_ = 0;
};

}  // namespace

HRESULT GetClassObject(REFCLSID classId, REFIID interfaceId, void** given) noexcept {
  if (!given) return E_POINTER;
  *given = nullptr;
  try {
    const auto& classes = PublicClasses();
    const auto found =
        std::ranges::find_if(classes, [&](const PublicClass& known) { return known.classId == classId; });
    if (found == classes.end()) return CLASS_E_CLASSNOTAVAILABLE;
    return ComPtr<IClassFactory>(new ClassFactory(*found))->QueryInterface(interfaceId, given);
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace quintara::automation
