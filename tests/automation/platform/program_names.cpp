#include "automation/platform/program_names.h"

#include <array>
#include <stdexcept>

#include "automation/dispatch/objects.h"
#include "automation/dispatch/text16.h"

namespace quintara::test {
namespace {

using automation::ComPtr;

constexpr auto kClasses = L"Software\\Classes\\";

std::wstring KeyOf(const std::string& name) {
  return kClasses + Wide(name);
}

void Write(HKEY root, const std::string& name, const std::string& classText) {
  const auto text = Wide(classText);
  const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  HKEY key = nullptr;
  if (RegCreateKeyExW(root, (KeyOf(name) + L"\\CLSID").c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) !=
      ERROR_SUCCESS) {
    throw std::runtime_error("a program name can't be registered");
  }
  RegSetValueExW(key, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
  RegCloseKey(key);
}

}  // namespace

ProgramName::ProgramName(std::string name) : name_(std::move(name)) {
  const auto wide = Wide(name_);
  if (SUCCEEDED(CLSIDFromProgID(wide.c_str(), &class_))) return;
  CoCreateGuid(&class_);
  // Not every system looks up the user's own names.
  for (auto* const root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
    Write(root, name_, ClassText());
    root_ = root;
    CLSID found{};
    if (SUCCEEDED(CLSIDFromProgID(wide.c_str(), &found))) return;
    RegDeleteTreeW(root, KeyOf(name_).c_str());
  }
  throw std::runtime_error("a program name isn't found again");
}

ProgramName::~ProgramName() {
  if (root_) RegDeleteTreeW(root_, KeyOf(name_).c_str());
}

std::string ProgramName::ClassText() const {
  std::array<wchar_t, 64> text{};
  StringFromGUID2(class_, text.data(), int{text.size()});
  return Narrow(text.data());
}

Running::Running(const ProgramName& name, IUnknown* object) {
  if (FAILED(RegisterActiveObject(object, name.Class(), ACTIVEOBJECT_STRONG, &handle_))) {
    throw std::runtime_error("an object can't be made the running one");
  }
}

Running::~Running() {
  RevokeActiveObject(handle_, nullptr);
}

Factory::Factory(const CLSID& id, Maker make) : make_(std::move(make)) {
  if (FAILED(CoRegisterClassObject(id, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &handle_))) {
    throw std::runtime_error("a class can't be served");
  }
}

Factory::~Factory() {
  CoRevokeClassObject(handle_);
}

HRESULT Factory::QueryInterface(REFIID kind, void** given) {
  const bool isKnown = kind == IID_IUnknown || kind == IID_IClassFactory;
  *given = isKnown ? static_cast<IClassFactory*>(this) : nullptr;
  return isKnown ? S_OK : E_NOINTERFACE;
}

HRESULT Factory::CreateInstance(IUnknown* /*outer*/, REFIID kind, void** given) {
  *given = nullptr;
  ++made_;
  return make_(kind, given);
}

Factory::Maker Making(const Ref<AnyObject>& object) {
  return [object](REFIID kind, void** given) { return automation::Outgoing(object)->QueryInterface(kind, given); };
}

HRESULT Mute::QueryInterface(REFIID kind, void** given) {
  *given = kind == IID_IUnknown ? this : nullptr;
  return *given ? S_OK : refusal_;
}

}  // namespace quintara::test
