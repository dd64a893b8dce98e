#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "automation/dispatch/com.h"

namespace quintara::automation {

/// A class that clients create by its name.
struct PublicClass {
  std::wstring name;  ///< without that of the server
  CLSID classId;
  IID interfaceId;
  ComPtr<IUnknown> (*make)();

  std::wstring ProgramName() const { return L"Quintara." + name; }
};

/// All of them. The list lives until the process ends.
const std::vector<PublicClass>& PublicClasses();

/// The class of an object as the list holds it, with the ids of its coclass and of its interface.
template <class Object, class Coclass, class Interface>
PublicClass ClassOf(std::wstring_view name) {
  return {std::wstring(name), __uuidof(Coclass), __uuidof(Interface),
          [] { return ComPtr<IUnknown>(static_cast<IUnknown*>(static_cast<Interface*>(new Object))); }};
}

void AddCommandClasses(std::vector<PublicClass>& all);
void AddServiceClasses(std::vector<PublicClass>& all);
void AddUtilsClass(std::vector<PublicClass>& all);

}  // namespace quintara::automation
