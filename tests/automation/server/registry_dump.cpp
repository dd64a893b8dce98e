#include "automation/server/registry_dump.h"

#include <algorithm>
#include <iterator>

#include "base/text16_windows.h"

namespace quintara::test {
namespace {

int made = 0;

std::vector<std::wstring> KeysBelow(HKEY key) {
  std::vector<std::wstring> names;
  wchar_t name[256];
  for (DWORD i = 0;; ++i) {
    DWORD size = static_cast<DWORD>(std::size(name));
    if (RegEnumKeyExW(key, i, name, &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) return names;
    names.emplace_back(name, size);
  }
}

std::vector<std::string> ValuesOf(HKEY key, const std::wstring& path) {
  std::vector<std::string> lines;
  wchar_t name[256];
  wchar_t text[2048];
  for (DWORD i = 0;; ++i) {
    DWORD size = static_cast<DWORD>(std::size(name));
    DWORD bytes = sizeof text;
    DWORD type = 0;
    const auto status = RegEnumValueW(key, i, name, &size, nullptr, &type, reinterpret_cast<BYTE*>(text), &bytes);
    if (status == ERROR_NO_MORE_ITEMS) return lines;
    std::wstring value(text, status == ERROR_SUCCESS ? bytes / sizeof(wchar_t) : 0);
    if (!value.empty() && value.back() == L'\0') value.pop_back();
    lines.push_back(Narrow(path + L"|" + std::wstring(name, size) + L"=" + value));
  }
}

}  // namespace

std::vector<std::string> Dump(HKEY key, const std::wstring& path) {
  auto lines = ValuesOf(key, path);
  for (const auto& name : KeysBelow(key)) {
    const auto below = path.empty() ? name : path + L"\\" + name;
    lines.push_back(Narrow(below));
    HKEY opened = nullptr;
    if (RegOpenKeyExW(key, name.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) continue;
    auto all = Dump(opened, below);
    lines.insert(lines.end(), std::move_iterator(all.begin()), std::move_iterator(all.end()));
    RegCloseKey(opened);
  }
  std::ranges::sort(lines);
  return lines;
}

std::vector<std::string> NamesBelow(HKEY key, const std::wstring& path) {
  std::vector<std::string> names;
  HKEY opened = nullptr;
  if (RegOpenKeyExW(key, path.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return names;
  for (const auto& name : KeysBelow(opened)) names.push_back(Narrow(name));
  RegCloseKey(opened);
  std::ranges::sort(names);
  return names;
}

OwnKey::OwnKey()
    : path_(L"Software\\Quintara tests\\" + std::to_wstring(GetCurrentProcessId()) + L"." + std::to_wstring(++made)) {
  RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr);
}

OwnKey::~OwnKey() {
  RegCloseKey(key_);
  RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
  RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\Quintara tests");
}

void OwnKey::Make(const std::wstring& path, bool isVolatile) const {
  HKEY made = nullptr;
  const DWORD options = isVolatile ? REG_OPTION_VOLATILE : REG_OPTION_NON_VOLATILE;
  RegCreateKeyExW(key_, path.c_str(), 0, nullptr, options, KEY_ALL_ACCESS, nullptr, &made, nullptr);
  RegCloseKey(made);
}

void OwnKey::Write(const std::wstring& path, const std::wstring& text) const {
  RegSetKeyValueW(key_, path.c_str(), nullptr, REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

ForbiddenKey::ForbiddenKey() {
  ACL nobody{};
  InitializeAcl(&nobody, sizeof nobody, ACL_REVISION);
  SECURITY_DESCRIPTOR security{};
  InitializeSecurityDescriptor(&security, SECURITY_DESCRIPTOR_REVISION);
  SetSecurityDescriptorDacl(&security, TRUE, &nobody, FALSE);
  for (const auto* const name : {L"CLSID", L"Interface", L"TypeLib"}) {
    key_.Make(name);
    HKEY opened = nullptr;
    RegOpenKeyExW(key_.Get(), name, 0, KEY_ALL_ACCESS, &opened);
    RegSetKeySecurity(opened, DACL_SECURITY_INFORMATION, &security);
    RegCloseKey(opened);
  }
}

}  // namespace quintara::test
