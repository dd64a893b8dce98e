#include "quintara/scene_of.h"

#include <algorithm>
#include <utility>

#include "base/attempt.h"
#include "quintara/documents.h"
#include "quintara/product_tree.h"

namespace quintara {
namespace {

PositionMatrix PositionOf(const Ref<zorva::Product>& product) {
  PositionMatrix position = kIdentityPosition;
  product->Position()->GetComponents(position);
  return position;
}

bool CanBeDrawn(const std::string& file) {
  return HasExtension(file, ".stp") || HasExtension(file, ".step") || HasExtension(file, ".lwt");
}

}  // namespace

Scene SceneOf(const Ref<zorva::Product>& root) {
  const auto nodes = NodesOf(root);
  Scene scene;
  std::vector<SceneNode> drawn(nodes.size());
  // From the end, so that each node is complete when it moves into the one above it.
  for (std::size_t i = nodes.size(); i-- > 0;) {
    const auto& node = nodes[i];
    auto& target = drawn[i];
    std::reverse(target.children.begin(), target.children.end());
    target.name = node.name;
    target.partNumber = node.partNumber;
    target.position = PositionOf(node.product);
    if (!node.hasChildren && CanBeDrawn(node.file)) target.file = node.file;
    if (!node.hasChildren && target.file.empty()) {
      scene.leftOut.push_back("'" + node.name + "' has no part or light file and is left out");
    }
    if (i > 0) drawn[node.parent].children.push_back(std::move(target));
  }
  scene.root = std::move(drawn.front());
  std::reverse(scene.leftOut.begin(), scene.leftOut.end());
  return scene;
}

Scene SceneOfArgument(CommandContext& context, const std::string& argument) {
  const auto path = FindDocument(context, argument, Wanted::kProduct);
  if (!CanBeDrawn(path)) return SceneOf(OpenProduct(context, path)->Product());
  const auto name = FileName(path);
  return {{name, OrElse(name, [&] { return PartNumberOfFile(path, context.Files()); }), kIdentityPosition, path, {}},
          {}};
}

}  // namespace quintara
