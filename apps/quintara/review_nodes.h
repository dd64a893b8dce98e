#pragma once

#include <functional>
#include <string>
#include <vector>

#include "access/contracts/dialog.h"
#include "access/contracts/integration.h"
#include "quintara/component_choice.h"

namespace quintara {

/// A node of the tree in which a product of the vault is reviewed.
struct ReviewNode {
  IntegrationVault::Identity identity;
  std::string partNumber;
  std::string text;
  int parent = 0;
  bool isProduct = false;
};

/// The part number of an object of the vault.
using PartNumberOfObject = std::function<std::string(const IntegrationVault::Identity&)>;

/// The nodes of a review tree by their index, so that the first one is none. Fails for any other tree.
std::vector<ReviewNode> ReviewNodesOf(const dialog::TreeContent& tree, const PartNumberOfObject& partNumberOf);

/// What is chosen on a node at present.
Choice ChoiceOf(const dialog::TreeContent& tree, int node);
/// Whether a choice above it keeps a node as it is.
bool IsLocked(const dialog::TreeContent& tree, int node);

/// A component that was asked for: marked itself, not through one above it.
struct AskedComponent {
  IntegrationVault::Identity identity;
  std::string partNumber;
  bool isLight = false;
};
std::vector<AskedComponent> AskedComponents(const dialog::TreeContent& tree, const std::vector<ReviewNode>& nodes);

}  // namespace quintara
