#include "quintara/review_nodes.h"

#include <cstdint>

#include "base/attempt.h"
#include "base/failure.h"
#include "base/text.h"
#include "base/variant.h"
#include "services/tree_model.h"
#include "wip/node_tags.h"

namespace quintara {
namespace {

// A node's key ends in the object's id and its class's.
IntegrationVault::Identity IdentityOf(const std::string& piece) {
  const auto ids = Split(piece, '_');
  if (ids.size() != 2) throw Failure(failure::kTypeMismatch, "'" + piece + "' is no key of a review tree");
  return {Variant(ids[1]).ToInteger16(), Variant(ids[0]).ToInteger32()};
}

}  // namespace

std::vector<ReviewNode> ReviewNodesOf(const dialog::TreeContent& tree, const PartNumberOfObject& partNumberOf) {
  const auto* model = dynamic_cast<const TreeModel*>(&tree);
  if (model == nullptr) throw Failure(failure::kTypeMismatch, "this is no review tree");
  std::vector<ReviewNode> nodes(1);
  for (int node = 1; node <= tree.Count(); ++node) {
    const auto identity = IdentityOf(model->Piece(node));
    nodes.push_back({identity, partNumberOf(identity), tree.Text(node), tree.Parent(node),
                     tree.Picture(node).starts_with("product ")});
  }
  return nodes;
}

Choice ChoiceOf(const dialog::TreeContent& tree, int node) {
  const auto& picture = tree.Picture(node);
  if (picture == node_tag::kPartLight || picture == node_tag::kProductLight) return Choice::kLight;
  if (picture == node_tag::kPartDocument || picture == node_tag::kProductDocument) return Choice::kDocument;
  return Choice::kNone;
}

bool IsLocked(const dialog::TreeContent& tree, int node) {
  const int parent = tree.Parent(node);
  return parent != 0 && tree.Picture(parent) != node_tag::kProductNone;
}

std::vector<AskedComponent> AskedComponents(const dialog::TreeContent& tree, const std::vector<ReviewNode>& nodes) {
  std::vector<AskedComponent> asked;
  for (int node = 1; node <= tree.Count(); ++node) {
    const auto choice = ChoiceOf(tree, node);
    const bool isFromAbove =
        nodes.at(static_cast<std::size_t>(node)).parent != 0 && ChoiceOf(tree, tree.Parent(node)) != Choice::kNone;
    if (choice == Choice::kNone || isFromAbove) continue;
    const auto& marked = nodes.at(static_cast<std::size_t>(node));
    asked.push_back({marked.identity, marked.partNumber, choice == Choice::kLight});
  }
  return asked;
}

}  // namespace quintara
