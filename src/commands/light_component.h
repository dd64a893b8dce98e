#pragma once

#include <string>

#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
#include "base/ref.h"

namespace quintara {

/// Whether the property `TYPE` of a component tells of anything but a document.
bool IsLight(const Ref<zorva::Product>& component);

/// Writes the stamps of a light representation, which lead from `product`, a component or its reference, to its
/// object: `TYPE`, `OBJECT_ID`, `CLASS_ID`, in this order. One that can't be written is left out; a failure of the
/// object goes to the caller, between two of them.
void StampAsLight(const Ref<zorva::Product>& product, const Ref<veldora::VdObject>& object);

/// The newest revision that the vault holds of an object.
struct LatestRevision {
  Ref<veldora::VdObject> object;
  std::string revision = {};
  bool isNew = false;  ///< reads otherwise than the one it was sought for, whichever would sort higher
};
LatestRevision LatestRevisionOf(const Ref<veldora::VdObject>& object);

}  // namespace quintara
