#pragma once

#include <vector>

#include "access/contracts/veldora.h"
#include "hosts/vault/embedded_vault.h"

namespace quintara {

/// One line of a structure of the vault.
struct StructureLine {
  int depth = 0;
  int quantity = 1;  ///< instances in the object above
  EmbeddedVault::Listed object;
  bool isCut = false;  ///< it has components that aren't shown, because of the depth
};

/// The structure below an object, parents before children, in its order; at most `depth` levels below the root,
/// negative for all.
std::vector<StructureLine> StructureLines(EmbeddedVault& vault, const Ref<veldora::VdObject>& root, int depth);

}  // namespace quintara
