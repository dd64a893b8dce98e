// What gives scripts the running objects of other programs, where the script host has no GetObject: the object
// "QuintaraTest.RunningObjects" with the one method Find(name).

#include <array>
#include <string>

#include "automation/dispatch/com.h"

namespace {

using quintara::automation::ComPtr;

constexpr CLSID kClass = {0x4c1c0e5b, 0x8a5f, 0x4b7e, {0x9f, 0x0e, 0x63, 0x1d, 0x1e, 0x0c, 0x5a, 0x27}};
constexpr auto kProgramKey = L"Software\\Classes\\QuintaraTest.RunningObjects";
constexpr auto kClassesKey = L"Software\\Classes\\CLSID\\";
constexpr DISPID kFind = 1;

HINSTANCE module = nullptr;
LONG living = 0;

class RunningObjects final : public IDispatch {
 public:
  RunningObjects() { InterlockedIncrement(&living); }
  RunningObjects(const RunningObjects&) = delete;
  RunningObjects& operator=(const RunningObjects&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** given) override {
    *given = nullptr;
    if (asked != IID_IUnknown && asked != IID_IDispatch) return E_NOINTERFACE;
    *given = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  ULONG STDMETHODCALLTYPE Release() override {
    const auto left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    *ids = _wcsicmp(*names, L"Find") == 0 ? kFind : DISPID_UNKNOWN;
    return count == 1 && *ids == kFind ? S_OK : DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO*,
                                   UINT*) override {
    if (id != kFind) return DISP_E_MEMBERNOTFOUND;
    if (parameters->cArgs != 1) return DISP_E_BADPARAMCOUNT;
    VARIANT name;
    VariantInit(&name);
    auto outcome = VariantChangeType(&name, parameters->rgvarg, 0, VT_BSTR);
    if (SUCCEEDED(outcome)) outcome = Find(V_BSTR(&name), result);
    VariantClear(&name);
    return outcome;
  }

 private:
  ~RunningObjects() { InterlockedDecrement(&living); }

  static HRESULT Find(const wchar_t* name, VARIANT* result) {
    CLSID id{};
    ComPtr<IUnknown> found;
    ComPtr<IDispatch> object;
    auto outcome = CLSIDFromProgID(name, &id);
    if (SUCCEEDED(outcome)) outcome = GetActiveObject(id, nullptr, &found);
    if (SUCCEEDED(outcome)) outcome = found.As(&object);
    if (FAILED(outcome) || !result) return outcome;
    V_VT(result) = VT_DISPATCH;
    V_DISPATCH(result) = object.Detach();
    return S_OK;
  }

  LONG references_ = 1;
};

class Factory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** given) override {
    *given = asked == IID_IUnknown || asked == IID_IClassFactory ? static_cast<IClassFactory*>(this) : nullptr;
    return *given ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID asked, void** given) override {
    *given = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    ComPtr<RunningObjects> made;
    made.Attach(new RunningObjects);
    return made->QueryInterface(asked, given);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

std::wstring ClassKey() {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(kClass, text.data(), static_cast<int>(text.size()));
  return std::wstring(kClassesKey) + text.data();
}

bool Write(const std::wstring& key, const std::wstring& value) {
  return RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, REG_SZ, value.c_str(),
                         static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE own, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) module = own;
  return TRUE;
}

extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID id, REFIID asked, LPVOID* given) {
  static Factory factory;
  if (id != kClass) return CLASS_E_CLASSNOTAVAILABLE;
  return factory.QueryInterface(asked, given);
}

extern "C" HRESULT WINAPI DllCanUnloadNow() {
  return living == 0 ? S_OK : S_FALSE;
}

extern "C" HRESULT WINAPI DllRegisterServer() {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
  const auto key = ClassKey();
  const bool isWritten = Write(std::wstring(kProgramKey) + L"\\CLSID", key.substr(key.rfind(L'\\') + 1)) &&
                         Write(key + L"\\InprocServer32", path.data());
  return isWritten ? S_OK : E_FAIL;
}

extern "C" HRESULT WINAPI DllUnregisterServer() {
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, ClassKey().c_str());
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, kProgramKey);
  return S_OK;
}
