#pragma once

#include "access/contracts/veldora.h"
#include "base/ref.h"

namespace quintara {

/// A copy of the session's own policy for walks of a product structure.
inline Ref<veldora::VdBehavior> StructureBehavior(const Ref<veldora::VdSession>& session) {
  auto behavior = session->ObjectStore()->DefaultBehavior()->Clone();
  behavior->SetOptionB(0);
  behavior->SetOptionA(0);
  behavior->SetOptionC(2);
  return behavior;
}

}  // namespace quintara
