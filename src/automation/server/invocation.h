#pragma once

#include "automation/dispatch/com.h"
#include "automation/server/methods.h"

namespace quintara::automation {

/// Stands in an object's place where a method hasn't written a result by reference; it is never asked for anything.
IDispatch* Unwritten() noexcept;

/// A late-bound call: turns what the caller gave into the arguments of the method, calls it through the object's table
/// of methods, and writes back those that are written. `object` is the interface that `methods` describes.
HRESULT InvokeMethod(IDispatch* object, const Methods& methods, DISPID id, WORD flags, DISPPARAMS& given,
                     VARIANT* result, EXCEPINFO* details, UINT* faulty) noexcept;

}  // namespace quintara::automation
