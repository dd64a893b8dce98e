#pragma once

#include "automation/dispatch/com.h"

namespace quintara::automation {

/// The maker of objects of a public class: 0x80040111 for an unknown one. What goes wrong in making an object is told
/// as by its methods.
HRESULT GetClassObject(REFCLSID classId, REFIID interfaceId, void** given) noexcept;

}  // namespace quintara::automation
