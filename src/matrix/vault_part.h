#pragma once

#include "access/contracts/veldora.h"
#include "base/ref.h"

namespace quintara {

/// True for an object of the class of parts: a leaf of a merged matrix, whatever the CAD host has loaded
/// below it. What is of another class is an assembly, which has a matrix of its own.
bool IsVaultPart(const Ref<veldora::VdSession>& session, const Ref<veldora::VdObject>& object);

}  // namespace quintara
