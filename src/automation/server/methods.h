#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "automation/dispatch/com.h"

namespace quintara::automation {

/// The type library of this module, as it stands in its file. Fails with the system's own result.
ComPtr<ITypeLib> TypeLibrary();
/// A type of it.
ComPtr<ITypeInfo> TypeOf(REFGUID id);

/// An argument of a method. All go by reference.
struct Parameter {
  std::wstring name;
  VARTYPE type;  ///< of what it refers to: an integer, a Boolean, a text or an object
  bool isArray;  ///< of elements of that type
  bool isIn;
  bool isOut;  ///< written back
  bool isOptional;
};

/// A method of a public class.
struct Method {
  DISPID id;
  std::wstring name;
  std::size_t place;  ///< in the table of methods, in bytes
  std::vector<Parameter> parameters;
  VARTYPE result;  ///< `VT_EMPTY` where there is none
};

/// The methods of a public class as the type library declares them.
class Methods {
 public:
  explicit Methods(REFIID interfaceId);

  const std::vector<Method>& All() const noexcept { return all_; }
  /// Nothing where there is none.
  const Method* Find(DISPID id) const;
  /// The id of a method and those of its arguments, by their names, in whatever capitals.
  HRESULT IdsOf(LPOLESTR* names, UINT count, DISPID* ids) const;

 private:
  std::vector<Method> all_;
};

}  // namespace quintara::automation
