#include "apps/hosts/user_classes.h"

#include "automation/dispatch/com.h"
// Needs what that brings.
#include <sddl.h>

#include <string>

#include "base/text16_windows.h"
#include "hosts/served_names.h"

namespace quintara::test {
namespace {

std::wstring UserKey() {
  HANDLE token = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return {};
  alignas(TOKEN_USER) BYTE user[256];
  DWORD size = 0;
  wchar_t* text = nullptr;
  std::wstring key;
  if (GetTokenInformation(token, TokenUser, user, sizeof user, &size) &&
      ConvertSidToStringSidW(reinterpret_cast<TOKEN_USER*>(user)->User.Sid, &text)) {
    key = std::wstring(L"\\Registry\\User\\") + text + L"\\Software\\Classes\\";
    LocalFree(text);
  }
  CloseHandle(token);
  return key;
}

void Link(const std::wstring& name, const std::wstring& userKey) {
  HKEY link = nullptr;
  const auto path = L"Software\\Classes\\" + name;
  if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr, REG_OPTION_CREATE_LINK, KEY_WRITE, nullptr, &link,
                      nullptr) != ERROR_SUCCESS)
    return;
  const auto target = userKey + name;
  RegSetValueExW(link, L"SymbolicLinkValue", 0, REG_LINK, reinterpret_cast<const BYTE*>(target.data()),
                 static_cast<DWORD>(target.size() * sizeof(wchar_t)));
  RegCloseKey(link);
}

// Whether what stands in the user's part alone is found among all classes.
bool AreShown() {
  const std::wstring name = L"QuintaraHosts.Visible";
  const auto path = L"Software\\Classes\\" + name;
  HKEY key = nullptr;
  if (RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr) !=
      ERROR_SUCCESS)
    return true;
  RegCloseKey(key);
  const bool isShown = RegOpenKeyExW(HKEY_CLASSES_ROOT, name.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
  if (isShown) RegCloseKey(key);
  RegDeleteKeyW(HKEY_CURRENT_USER, path.c_str());
  return isShown;
}

}  // namespace

void ShowUserClasses() {
  if (AreShown()) return;
  const auto userKey = UserKey();
  for (const auto& name : hosts::ServedNames()) {
    Link(Wide(name.programName), userKey);
    Link(L"CLSID\\" + Wide(hosts::TextOf(name.clsid)), userKey);
  }
}

}  // namespace quintara::test
