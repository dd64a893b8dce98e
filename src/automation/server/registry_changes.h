#pragma once

#include <string>
#include <vector>

#include "automation/dispatch/com.h"

namespace quintara::automation {

/// Changes below one key of the registry that are all made or none: what isn't kept is undone, the last one first, and
/// what stood there before is there again.
class RegistryChanges {
 public:
  explicit RegistryChanges(HKEY root) noexcept : root_(root) {}
  ~RegistryChanges();
  RegistryChanges(const RegistryChanges&) = delete;
  RegistryChanges& operator=(const RegistryChanges&) = delete;

  /// Makes a key where there is none, and those above it. Fails with the system's own result and the
  /// key's name.
  void Create(const std::wstring& key);
  /// Gives a value of a key, the default one without a `name`, its text, and makes the key as `Create` does. The same
  /// failures.
  void Set(const std::wstring& key, const std::wstring& text, const std::wstring& name = {});

  /// From now on they stay.
  void Keep() noexcept { undo_.clear(); }

 private:
  struct Step {
    std::wstring key;
    bool isNewKey;  ///< else a changed value
    std::wstring name;
    bool hadValue = false;
    DWORD type = REG_NONE;
    std::vector<unsigned char> bytes;  ///< of the value before
  };

  void CreateOne(const std::wstring& key);

  HKEY root_;
  std::vector<Step> undo_;
};

/// Whether a key is there; `view` may be that of the other word size.
bool HasKey(HKEY root, const std::wstring& key, REGSAM view = 0);
/// Whether anything stands below a key.
bool HasSubkeys(HKEY root, const std::wstring& key);
/// Deletes a key with all that stands below it; nothing happens where there is none. The same failures as above.
void DeleteKey(HKEY root, const std::wstring& key);

}  // namespace quintara::automation
