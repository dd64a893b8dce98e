#pragma once

#include <string>
#include <vector>

#include "access/contracts/geometry.h"
#include "access/contracts/zorva.h"
#include "base/ref.h"
#include "quintara/command_context.h"

namespace quintara {

/// What export and pictures take of a product.
struct Scene {
  SceneNode root;
  std::vector<std::string> leftOut;  ///< a line for each component without a file that can be drawn
};

/// The tree of an open product, each node at its position in its parent.
Scene SceneOf(const Ref<zorva::Product>& root);

/// The scene of an argument: a product, or a STEP or light file taken as it stands.
Scene SceneOfArgument(CommandContext& context, const std::string& argument);

}  // namespace quintara
