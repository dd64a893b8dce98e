#include <gmock/gmock.h>
#include <objbase.h>

#include <array>
#include <atomic>
#include <thread>

#include "automation/server/client.h"
#include "automation/server/foreign.h"
#include "automation/server/registry_changes.h"
#include "automation/server/registry_dump.h"

namespace quintara::test {
namespace {

/// The server as its clients load it.
class TheServer : public testing::Test {
 protected:
  TheServer() {
    // The first thread to do so is the one on which objects without a threading model live.
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Load();
  }
  ~TheServer() override { Unload(); }

  void Load() { module_ = LoadLibraryW(Wide(QUINTARA_SERVER).c_str()); }
  void Unload() {
    if (module_) FreeLibrary(std::exchange(module_, nullptr));
  }

  template <class Function>
  Function* Exported(const char* name) const {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
  }
  ComPtr<IClassFactory> Factory(REFCLSID classId) const {
    ComPtr<IClassFactory> factory;
    Exported<decltype(DllGetClassObject)>("DllGetClassObject")(classId, IID_PPV_ARGS(&factory));
    return factory;
  }
  Client New(REFCLSID classId) const {
    ComPtr<IDispatch> object;
    Factory(classId)->CreateInstance(nullptr, IID_PPV_ARGS(&object));
    return Client(object);
  }
  HRESULT CanUnload() const { return Exported<HRESULT STDMETHODCALLTYPE()>("DllCanUnloadNow")(); }
  HRESULT Register() const { return Exported<HRESULT STDMETHODCALLTYPE()>("DllRegisterServer")(); }
  HRESULT Unregister() const { return Exported<HRESULT STDMETHODCALLTYPE()>("DllUnregisterServer")(); }

  HMODULE module_ = nullptr;
};

TEST_F(TheServer, ExportsItsFourFunctions) {
  for (const auto* const name : {"DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"}) {
    EXPECT_NE(GetProcAddress(module_, name), nullptr) << name;
  }
}

TEST_F(TheServer, DoesNotKnowAForeignClass) {
  void* given = this;

  const auto result = Exported<decltype(DllGetClassObject)>("DllGetClassObject")(IID_IDispatch, IID_IUnknown, &given);

  EXPECT_EQ(result, CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(given, nullptr);
}

TEST_F(TheServer, IsNoPartOfAnotherObject) {
  const auto factory = Factory(__uuidof(::Cls_Utils));
  ComPtr<IUnknown> made;

  EXPECT_EQ(factory->CreateInstance(factory.Get(), IID_PPV_ARGS(&made)), CLASS_E_NOAGGREGATION);
}

TEST_F(TheServer, AnswersAfterItIsLoaded) {
  EXPECT_EQ(New(__uuidof(::Cls_Utils)).Call("StripFileExtension", "a.b").Given(), Variant("a"));
}

TEST_F(TheServer, MayGoWhenNothingIsInUse) {
  EXPECT_EQ(CanUnload(), S_OK);
}

TEST_F(TheServer, StaysAsLongAsAnObjectLives) {
  {
    const auto object = New(__uuidof(::Cls_Utils));
    EXPECT_EQ(CanUnload(), S_FALSE);
  }

  EXPECT_EQ(CanUnload(), S_OK);
}

TEST_F(TheServer, StaysAsLongAsAFactoryLives) {
  auto factory = Factory(__uuidof(::Cls_Utils));
  EXPECT_EQ(CanUnload(), S_FALSE);

  factory.Reset();

  EXPECT_EQ(CanUnload(), S_OK);
}

TEST_F(TheServer, StaysAsLongAsItIsLocked) {
  Factory(__uuidof(::Cls_Utils))->LockServer(TRUE);
  EXPECT_EQ(CanUnload(), S_FALSE);

  Factory(__uuidof(::Cls_Utils))->LockServer(FALSE);

  EXPECT_EQ(CanUnload(), S_OK);
}

TEST_F(TheServer, IsWholeAgainWhenItIsLoadedAnew) {
  New(__uuidof(::Cls_Utils)).Call("StripFileExtension", "a.b");
  Unload();
  EXPECT_EQ(GetModuleHandleW(L"Quintara.dll"), nullptr);

  Load();

  EXPECT_EQ(New(__uuidof(::Cls_Base64Class)).Call("EncodeString", "Hello").Given(), Variant("SGVsbG8A"));
}

TEST_F(TheServer, UsesObjectsThatThisProgramServes) {
  const auto product = Foreign::Giving("WHEEL");

  EXPECT_EQ(New(__uuidof(::Cls_Utils)).Call("GetThePartNumber", product).Given(), Variant("WHEEL"));
}

/// The server as the system knows it.
class TheRegisteredServer : public TheServer {
 protected:
  TheRegisteredServer() { RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes", 0, KEY_READ, &classes_); }
  ~TheRegisteredServer() override {
    Unregister();
    RegCloseKey(classes_);
  }

  static ComPtr<IDispatch> Create(const wchar_t* name) {
    CLSID id{};
    ComPtr<IDispatch> object;
    if (SUCCEEDED(CLSIDFromProgID(name, &id)))
      CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object));
    return object;
  }
  // All that is registered, by the classes' ids and names.
  std::vector<std::string> Names() const {
    std::vector<std::string> all;
    for (const auto* const path : {L"", L"CLSID", L"Interface", L"TypeLib"}) {
      const auto names = NamesBelow(classes_, path);
      all.insert(all.end(), names.begin(), names.end());
    }
    return all;
  }
  // Lets calls from other threads in until `isDone`.
  static void Serve(const std::atomic<bool>& isDone) {
    while (!isDone) {
      MSG message;
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
  }

  HKEY classes_ = nullptr;
};

TEST_F(TheRegisteredServer, IsCreatedByName) {
  ASSERT_EQ(Register(), S_OK);

  const auto object = Create(L"Quintara.Cls_Utils");

  ASSERT_TRUE(object);
  EXPECT_EQ(Client(object).Call("StripFileExtension", "a.b").Given(), Variant("a"));
}

TEST_F(TheRegisteredServer, CreatesEachPublicClass) {
  Register();

  for (const auto& known : automation::PublicClasses()) EXPECT_TRUE(Create(known.ProgramName().c_str()));
}

TEST_F(TheRegisteredServer, OffersItsTypeLibrary) {
  Register();

  ComPtr<ITypeLib> library;
  EXPECT_EQ(LoadRegTypeLib(LIBID_Quintara, 1, 0, 0, &library), S_OK);
}

TEST_F(TheRegisteredServer, LeavesTheRegistryAsItWas) {
  Unregister();
  const auto before = Names();

  EXPECT_EQ(Register(), S_OK);
  EXPECT_NE(Names(), before);
  EXPECT_EQ(Register(), S_OK);
  EXPECT_EQ(Unregister(), S_OK);

  EXPECT_EQ(Names(), before);
  EXPECT_FALSE(Create(L"Quintara.Cls_Utils"));
}

#ifdef _WIN64
TEST_F(TheRegisteredServer, LeavesTheNamesThatItsTwinNeeds) {
  const std::wstring name = L"Software\\Classes\\Quintara.Cls_Application\\CLSID";
  std::array<wchar_t, 40> id{};
  StringFromGUID2(__uuidof(::Cls_Application), id.data(), static_cast<int>(id.size()));
  const auto twin = std::wstring(L"Software\\Classes\\CLSID\\") + id.data();
  const auto hasName = [&] { return automation::HasKey(HKEY_LOCAL_MACHINE, name); };
  HKEY made = nullptr;
  RegCreateKeyExW(HKEY_LOCAL_MACHINE, twin.c_str(), 0, nullptr, 0, KEY_READ | KEY_WOW64_32KEY, nullptr, &made, nullptr);
  RegCloseKey(made);
  Register();

  Unregister();
  const bool hadName = hasName();
  RegDeleteKeyExW(HKEY_LOCAL_MACHINE, twin.c_str(), KEY_WOW64_32KEY, 0);
  Unregister();

  EXPECT_TRUE(hadName);
  EXPECT_FALSE(hasName());
}
#endif

TEST_F(TheRegisteredServer, IsRegisteredForItsUserAloneWhereToldSo) {
  const std::wstring name = L"Software\\Classes\\Quintara.Cls_Utils";
  SetEnvironmentVariableW(L"QUINTARA_REGISTER", L"user");

  EXPECT_EQ(Register(), S_OK);
  const bool isForUser = automation::HasKey(HKEY_CURRENT_USER, name);
  const bool isForMachine = automation::HasKey(HKEY_LOCAL_MACHINE, name);
  EXPECT_EQ(Unregister(), S_OK);
  SetEnvironmentVariableW(L"QUINTARA_REGISTER", nullptr);

  EXPECT_TRUE(isForUser);
  EXPECT_FALSE(isForMachine);
  EXPECT_FALSE(automation::HasKey(HKEY_CURRENT_USER, name));
}

TEST_F(TheRegisteredServer, IsUnloadedByTheSystem) {
  Register();
  Create(L"Quintara.Cls_Utils").Reset();
  Unregister();
  Unload();

  CoFreeUnusedLibrariesEx(0, 0);

  EXPECT_EQ(GetModuleHandleW(L"Quintara.dll"), nullptr);
  Load();
}

/// An object on its way to another thread.
class OnItsWay {
 public:
  void Send(const ComPtr<IDispatch>& object) {
    CoMarshalInterThreadInterfaceInStream(IID_IDispatch, object.Get(), &way_);
  }
  ComPtr<IDispatch> Received() {
    ComPtr<IDispatch> object;
    CoGetInterfaceAndReleaseStream(way_.Detach(), IID_PPV_ARGS(&object));
    return object;
  }

 private:
  ComPtr<IStream> way_;
};

// What stands for an object of another thread has this interface, the object itself hasn't.
bool IsElsewhere(const ComPtr<IDispatch>& object) {
  ComPtr<IClientSecurity> security;
  return SUCCEEDED(object.As(&security));
}

TEST_F(TheRegisteredServer, IsCalledByTableFromAnotherThread) {
  Register();
  const auto own = Create(L"Quintara.Cls_Utils");
  std::atomic<bool> isDone = false;
  std::string filled;

  std::thread other([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (const auto utils = Client(Create(L"Quintara.Cls_Utils")).As<::_Cls_Utils>()) {
      auto* path = SysAllocString(L"a.b");
      BSTR result = nullptr;
      utils->StripFileExtension(&path, &result);
      filled = automation::FromBstr(path) + " " + automation::FromBstr(result);
      SysFreeString(path);
      SysFreeString(result);
    }
    CoUninitialize();
    isDone = true;
  });
  Serve(isDone);
  other.join();

  EXPECT_EQ(filled, "a.b a");
}

TEST_F(TheRegisteredServer, KeepsTheObjectsOfAllThreadsOnOne) {
  Register();
  const auto own = Create(L"Quintara.Cls_Utils");
  std::atomic<bool> isDone = false;
  Variant fromOther;
  bool isElsewhere = false;
  OnItsWay way;

  std::thread other([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (const auto object = Create(L"Quintara.Cls_Utils")) {
      isElsewhere = IsElsewhere(object);
      fromOther = Client(object).Call("StripFileExtension", "a.b").Given();
      way.Send(object);
    }
    CoUninitialize();
    isDone = true;
  });
  Serve(isDone);
  other.join();

  EXPECT_EQ(fromOther, Variant("a"));
  EXPECT_TRUE(isElsewhere);
  EXPECT_FALSE(IsElsewhere(own));
  EXPECT_FALSE(IsElsewhere(way.Received()));
}

}  // namespace
}  // namespace quintara::test
