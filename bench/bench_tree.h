#pragma once

#include <string>
#include <vector>

#include "access/contracts/geometry.h"

namespace quintara::bench {

/// How the leaves of a generated tree get their part numbers.
enum class LeafParts { kMany, kNearlyAllTheSame };

/// One node of a generated tree: its parent's number, or -1, stands before it.
struct TreeNode {
  int parent;
  std::string partNumber;
  std::string name;
  PositionMatrix position;
  bool isLeaf;
};

/// A generated product tree, depth 8, in document order.
struct BenchTree {
  std::vector<TreeNode> nodes;
  AssemblyStructure structure;

  std::vector<std::string> LeafInstances() const;    ///< the part number of each leaf instance
  std::vector<std::string> LeafPartNumbers() const;  ///< each part number of a leaf, once
};

/// A tree of `elements` nodes from a seed: assemblies branch `branches` times on seven levels, the
/// leaves stand on the eighth. One node in 6.5 has a part number of its own, or, nearly all the
/// same, 30,000 of the leaves share one.
BenchTree MakeTree(int elements, int branches, LeafParts parts, unsigned seed);

/// A flat product with a child at the origin for each part number.
AssemblyStructure FlatProduct(const std::vector<std::string>& partNumbers);

}  // namespace quintara::bench
