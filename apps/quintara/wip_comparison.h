#pragma once

#include <vector>

#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
#include "base/ref.h"
#include "quintara/review_nodes.h"

namespace quintara {

class CommandContext;

/// Complains of what is missing in a work in progress of `object`, and of what is still at the origin though its matrix
/// places it elsewhere. `root` is its product, which remembers the matrix.
void CompareWithAsked(CommandContext& context, const Ref<zorva::Product>& root,
                      const std::vector<AskedComponent>& asked, bool allInstances,
                      const Ref<veldora::VdObject>& object);

}  // namespace quintara
