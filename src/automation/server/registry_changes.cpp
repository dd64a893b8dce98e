#include "automation/server/registry_changes.h"

#include <ranges>
#include <span>
#include <string>
#include <utility>

#include "automation/dispatch/text16.h"
#include "base/failure.h"

namespace quintara::automation {
namespace {

void Require(LSTATUS status, const std::wstring& key) {
  if (status == ERROR_SUCCESS) return;
  const auto told = "The registry's key " + Narrow(key) + " can't be changed (" + std::to_string(status) + ")";
  throw Failure(HRESULT_FROM_WIN32(static_cast<DWORD>(status)), told);
}

// A key as it is open.
class OpenKey {
 public:
  OpenKey(HKEY root, const std::wstring& path, REGSAM rights)
      : status_(RegOpenKeyExW(root, path.c_str(), 0, rights, &key_)) {}
  ~OpenKey() {
    if (key_) RegCloseKey(key_);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  LSTATUS Status() const noexcept { return status_; }
  HKEY Get() const noexcept { return key_; }

 private:
  HKEY key_ = nullptr;
  LSTATUS status_;
};

}  // namespace

RegistryChanges::~RegistryChanges() {
  for (const auto& step : undo_ | std::views::reverse) {
    if (step.isNewKey) {
      RegDeleteKeyW(root_, step.key.c_str());
      continue;
    }
    const OpenKey key(root_, step.key, KEY_SET_VALUE);
    if (step.hadValue) {
      RegSetValueExW(key.Get(), step.name.c_str(), 0, step.type, step.bytes.data(),
                     static_cast<DWORD>(step.bytes.size()));
    } else {
      RegDeleteValueW(key.Get(), step.name.c_str());
    }
  }
}

void RegistryChanges::Create(const std::wstring& key) {
  for (auto end = key.find(L'\\'); end != std::wstring::npos; end = key.find(L'\\', end + 1)) {
    CreateOne(key.substr(0, end));
  }
  CreateOne(key);
}

void RegistryChanges::CreateOne(const std::wstring& key) {
  HKEY opened = nullptr;
  DWORD made = 0;
  Require(RegCreateKeyExW(root_, key.c_str(), 0, nullptr, 0, KEY_READ, nullptr, &opened, &made), key);
  RegCloseKey(opened);
  if (made == REG_CREATED_NEW_KEY) undo_.push_back({.key = key, .isNewKey = true, .name = {}, .bytes = {}});
}

void RegistryChanges::Set(const std::wstring& key, const std::wstring& text, const std::wstring& name) {
  Create(key);
  const OpenKey opened(root_, key, KEY_READ | KEY_WRITE);
  Require(opened.Status(), key);
  Step step{.key = key, .isNewKey = false, .name = name, .bytes = {}};
  DWORD size = 0;
  step.hadValue = RegQueryValueExW(opened.Get(), name.c_str(), nullptr, &step.type, nullptr, &size) == ERROR_SUCCESS;
  if (step.hadValue) {
    step.bytes.resize(size);
    Require(RegQueryValueExW(opened.Get(), name.c_str(), nullptr, &step.type, step.bytes.data(), &size), key);
  }
  const auto bytes = std::as_bytes(std::span(text.c_str(), text.size() + 1));
  Require(RegSetValueExW(opened.Get(), name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(bytes.data()),
                         static_cast<DWORD>(bytes.size())),
          key);
  undo_.push_back(std::move(step));
}

bool HasKey(HKEY root, const std::wstring& key, REGSAM view) {
  return OpenKey(root, key, KEY_READ | view).Status() == ERROR_SUCCESS;
}

bool HasSubkeys(HKEY root, const std::wstring& key) {
  const OpenKey opened(root, key, KEY_READ);
  DWORD count = 0;
  return opened.Get() &&
         RegQueryInfoKeyW(opened.Get(), nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr,
                          nullptr, nullptr) == ERROR_SUCCESS &&
         count != 0;
}

void DeleteKey(HKEY root, const std::wstring& key) {
  if (!HasKey(root, key)) return;
  Require(RegDeleteTreeW(root, key.c_str()), key);
}

}  // namespace quintara::automation
