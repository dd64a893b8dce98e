#pragma once

#include "automation/dispatch/com.h"

namespace quintara::automation {

class ServedKind;

/// What a kind is called and which members it has, for programs that ask before they call. Made once a kind; nothing
/// where the system can't make it.
ComPtr<ITypeInfo> DescriptionOf(const ServedKind& kind);

}  // namespace quintara::automation
