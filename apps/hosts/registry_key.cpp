#include "hosts/registry_key.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/text16_windows.h"

namespace quintara::hosts {
namespace {

class Key {
 public:
  Key(HKEY root, const std::string& path, REGSAM access) {
    if (RegOpenKeyExW(root, Wide(path).c_str(), 0, access, &key_) != ERROR_SUCCESS) key_ = nullptr;
  }
  ~Key() {
    if (key_) RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  explicit operator bool() const noexcept { return key_ != nullptr; }
  HKEY Get() const noexcept { return key_; }

 private:
  HKEY key_ = nullptr;
};

void Require(LSTATUS status, const std::string& path) {
  if (status == ERROR_SUCCESS) return;
  throw Failure(failure::kPathAccess,
                "the registry's key '" + path + "' can't be written: error " + std::to_string(status));
}

std::optional<std::string> TextOfValue(const Key& key, const std::wstring& value) {
  DWORD type = 0;
  DWORD size = 0;
  if (RegQueryValueExW(key.Get(), value.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) return std::nullopt;
  if (type != REG_SZ && type != REG_EXPAND_SZ) return std::nullopt;
  std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
  size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (RegQueryValueExW(key.Get(), value.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size) !=
      ERROR_SUCCESS)
    return std::nullopt;
  return Narrow(text.c_str());
}

}  // namespace

bool HasKey(HKEY root, const std::string& path) {
  return static_cast<bool>(Key(root, path, KEY_READ));
}

std::optional<std::string> TextAt(HKEY root, const std::string& path, const std::string& value) {
  const Key key(root, path, KEY_READ);
  return key ? TextOfValue(key, Wide(value)) : std::nullopt;
}

std::vector<std::pair<std::string, std::string>> TextsAt(const std::string& path) {
  std::vector<std::pair<std::string, std::string>> texts;
  const Key key(HKEY_CURRENT_USER, path, KEY_READ);
  if (!key) return texts;
  std::array<wchar_t, 256> name{};
  for (DWORD i = 0;; ++i) {
    DWORD size = name.size();
    if (RegEnumValueW(key.Get(), i, name.data(), &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    if (const auto text = TextOfValue(key, name.data())) texts.emplace_back(Narrow(name.data()), *text);
  }
  std::ranges::sort(texts);
  return texts;
}

std::vector<std::string> SubkeysOf(const std::string& path) {
  std::vector<std::string> subkeys;
  const Key key(HKEY_CURRENT_USER, path, KEY_READ);
  if (!key) return subkeys;
  std::array<wchar_t, 256> name{};
  for (DWORD i = 0;; ++i) {
    DWORD size = name.size();
    if (RegEnumKeyExW(key.Get(), i, name.data(), &size, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
    subkeys.push_back(Narrow(name.data()));
  }
  return subkeys;
}

bool MakeKey(const std::string& path) {
  HKEY key = nullptr;
  DWORD disposition = 0;
  Require(RegCreateKeyExW(HKEY_CURRENT_USER, Wide(path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                          nullptr, &key, &disposition),
          path);
  RegCloseKey(key);
  return disposition == REG_CREATED_NEW_KEY;
}

void WriteText(const std::string& path, const std::string& value, const std::string& text) {
  const Key key(HKEY_CURRENT_USER, path, KEY_SET_VALUE);
  const auto wide = Wide(text);
  Require(RegSetValueExW(key.Get(), Wide(value).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.c_str()),
                         static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t))),
          path);
}

void EraseValue(const std::string& path, const std::string& value) {
  const Key key(HKEY_CURRENT_USER, path, KEY_SET_VALUE);
  if (key) RegDeleteValueW(key.Get(), Wide(value).c_str());
}

void EraseEmptyKey(const std::string& path) {
  DWORD subkeys = 0;
  DWORD values = 0;
  {
    const Key key(HKEY_CURRENT_USER, path, KEY_READ);
    if (!key || RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr,
                                 nullptr, nullptr, nullptr) != ERROR_SUCCESS)
      return;
  }
  if (subkeys == 0 && values == 0) RegDeleteKeyW(HKEY_CURRENT_USER, Wide(path).c_str());
}

}  // namespace quintara::hosts
