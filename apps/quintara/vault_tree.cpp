#include "quintara/vault_tree.h"

#include "quintara/interruption.h"

namespace quintara {

std::vector<StructureLine> StructureLines(EmbeddedVault& vault, const Ref<veldora::VdObject>& root, int depth) {
  struct Waiting {
    std::size_t object;
    int quantity;
    int depth;
  };
  const auto structure = vault.WholeStructure(root);
  std::vector<StructureLine> lines;
  std::vector<Waiting> stack{{0, 1, 0}};
  while (!stack.empty()) {
    // What many assemblies share is shown in each of them, which can come to far more lines than objects.
    ThrowIfInterrupted();
    const auto next = stack.back();
    stack.pop_back();
    const auto& held = structure[next.object];
    const bool isCut = next.depth == depth && !held.components.empty();
    lines.push_back({next.depth, next.quantity, held.object, isCut});
    if (isCut) continue;
    for (auto child = held.components.rbegin(); child != held.components.rend(); ++child) {
      stack.push_back({child->first, child->second, next.depth + 1});
    }
  }
  return lines;
}

}  // namespace quintara
