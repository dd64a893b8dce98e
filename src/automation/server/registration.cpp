#include "automation/server/registration.h"

#include <array>
#include <exception>
#include <string_view>

#include "automation/dispatch/failures.h"
#include "automation/server/interface.h"
#include "automation/server/module.h"
#include "automation/server/public_classes.h"
#include "automation/server/registry_changes.h"
#include "base/failure.h"

namespace quintara::automation {
namespace {

constexpr auto kVersion = L"1.0";
constexpr auto kClasses = L"Software\\Classes";
constexpr auto kLibraryName = L"Quintara automation server";
// The system's own, which reads the type library.
constexpr auto kMarshaller = L"{00020424-0000-0000-C000-000000000046}";
#ifdef _WIN64
constexpr auto kWords = L"win64";
constexpr REGSAM kTwinView = KEY_WOW64_32KEY;
#else
constexpr auto kWords = L"win32";
constexpr REGSAM kTwinView = KEY_WOW64_64KEY;
#endif

std::wstring Text(REFGUID id) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

std::wstring ClassKey(const PublicClass& known) {
  return L"CLSID\\" + Text(known.classId);
}
std::wstring InterfaceKey(const PublicClass& known) {
  return L"Interface\\" + Text(known.interfaceId);
}
std::wstring LibraryKey() {
  return L"TypeLib\\" + Text(LIBID_Quintara);
}
std::wstring VersionKey() {
  return LibraryKey() + L"\\" + kVersion;
}

void RegisterClass(RegistryChanges& changes, const PublicClass& known, const std::wstring& path) {
  const auto key = ClassKey(known);
  changes.Set(key, known.ProgramName());
  changes.Set(key + L"\\InprocServer32", path);
  changes.Set(key + L"\\ProgID", known.ProgramName());
  changes.Create(key + L"\\Programmable");
  changes.Set(key + L"\\TypeLib", Text(LIBID_Quintara));
  changes.Set(key + L"\\Version", kVersion);
  changes.Set(known.ProgramName(), known.ProgramName());
  changes.Set(known.ProgramName() + L"\\CLSID", Text(known.classId));
}

void RegisterInterface(RegistryChanges& changes, const PublicClass& known) {
  const auto key = InterfaceKey(known);
  changes.Set(key, L"_" + known.name);
  changes.Set(key + L"\\ProxyStubClsid32", kMarshaller);
  changes.Set(key + L"\\TypeLib", Text(LIBID_Quintara));
  changes.Set(key + L"\\TypeLib", kVersion, L"Version");
}

void RegisterLibrary(RegistryChanges& changes, const std::wstring& path) {
  changes.Set(VersionKey(), kLibraryName);
  changes.Set(VersionKey() + L"\\0\\" + kWords, path);
  changes.Set(VersionKey() + L"\\FLAGS", L"0");
  changes.Set(VersionKey() + L"\\HELPDIR", path.substr(0, path.find_last_of(L'\\')));
}

void UnregisterLibrary(HKEY classes) {
  DeleteKey(classes, VersionKey() + L"\\0\\" + kWords);
  if (HasSubkeys(classes, VersionKey() + L"\\0")) return;
  DeleteKey(classes, VersionKey());
  if (!HasSubkeys(classes, LibraryKey())) DeleteKey(classes, LibraryKey());
}

// Where the classes of the machine or of its user stand, open for whatever is allowed.
class Classes {
 public:
  explicit Classes(HKEY whose) : whose_(whose) {
    RegCreateKeyExW(whose, kClasses, 0, nullptr, 0, MAXIMUM_ALLOWED, nullptr, &key_, nullptr);
  }
  ~Classes() {
    if (key_) RegCloseKey(key_);
  }
  Classes(const Classes&) = delete;
  Classes& operator=(const Classes&) = delete;

  HKEY Key() const noexcept { return key_; }
  bool HasTwin() const {
    return HasKey(whose_, std::wstring(kClasses) + L"\\" + ClassKey(PublicClasses().front()), kTwinView);
  }

 private:
  HKEY whose_;
  HKEY key_ = nullptr;
};

// The functions that a caller registers with take no arguments.
bool IsForUserAlone() noexcept {
  std::array<wchar_t, 8> value{};
  GetEnvironmentVariableW(L"QUINTARA_REGISTER", value.data(), static_cast<DWORD>(value.size()));
  return std::wstring_view(value.data()) == L"user";
}

template <class Body>
HRESULT ResultOfDoing(Body&& body) noexcept {
  try {
    body();
    return S_OK;
  } catch (const std::exception& error) {
    return ResultOf(error);
  }
}

}  // namespace

void RegisterBelow(HKEY classes, const std::wstring& path) {
  RegistryChanges changes(classes);
  RegisterLibrary(changes, path);
  for (const auto& known : PublicClasses()) {
    RegisterInterface(changes, known);
    RegisterClass(changes, known, path);
  }
  changes.Keep();
}

void RegisterBelowFirst(std::span<const HKEY> classes, const std::wstring& path) {
  for (const auto root : classes) {
    try {
      return RegisterBelow(root, path);
    } catch (const Failure& failure) {
      if (failure.Number() != E_ACCESSDENIED || root == classes.back()) throw;
    }
  }
}

void UnregisterBelow(HKEY classes, const std::function<bool()>& isTwinThere) {
  for (const auto& known : PublicClasses()) {
    DeleteKey(classes, ClassKey(known));
    DeleteKey(classes, InterfaceKey(known));
  }
  UnregisterLibrary(classes);
  if (isTwinThere()) return;
  for (const auto& known : PublicClasses()) DeleteKey(classes, known.ProgramName());
}

HRESULT RegisterModule() noexcept {
  const Classes machine(HKEY_LOCAL_MACHINE);
  const Classes user(HKEY_CURRENT_USER);
  const std::array places{machine.Key(), user.Key()};
  return ResultOfDoing([&] { RegisterBelowFirst(std::span(places).subspan(IsForUserAlone() ? 1 : 0), ModulePath()); });
}

HRESULT UnregisterModule() noexcept {
  const std::array places{HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};
  auto result = S_OK;
  for (const auto whose : std::span(places).first(IsForUserAlone() ? 1 : places.size())) {
    const Classes classes(whose);
    const auto done = ResultOfDoing([&] { UnregisterBelow(classes.Key(), [&] { return classes.HasTwin(); }); });
    if (FAILED(done)) result = done;
  }
  return result;
}

}  // namespace quintara::automation
