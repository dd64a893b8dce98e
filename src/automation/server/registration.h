#pragma once

#include <functional>
#include <span>
#include <string>

#include "automation/dispatch/com.h"

namespace quintara::automation {

/// Writes the server's classes and its type library below `classes`, a key such as HKEY_CLASSES_ROOT; `path` is that of
/// the module. Without a threading model, so that all objects live on the thread that came first. All is written, or
/// nothing; written again it is as after the first time. Fails with the system's own result.
void RegisterBelow(HKEY classes, const std::wstring& path);

/// The same below the first of several keys where that isn't forbidden. Fails as the last one does.
void RegisterBelowFirst(std::span<const HKEY> classes, const std::wstring& path);

/// Takes away all that `RegisterBelow` wrote. The server's twin of the other word size shares the names of the classes,
/// which stay where `isTwinThere` says, asked when the classes themselves are gone, and the type library's version.
void UnregisterBelow(
    HKEY classes, const std::function<bool()>& isTwinThere = [] { return false; });

/// Registers this module for all users of the machine, or, where that is forbidden and where the environment variable
/// QUINTARA_REGISTER is "user", for this user.
HRESULT RegisterModule() noexcept;
/// Takes both away; only what is this user's where that variable says so.
HRESULT UnregisterModule() noexcept;

}  // namespace quintara::automation
