#pragma once

#include <cstddef>
#include <vector>

#include "access/contracts/dialog.h"

namespace quintara {

/// The nodes of a tree that no closed node hides, a row each, as they stand one below the other.
class TreeRows {
 public:
  /// Takes the tree as it is now.
  void Read(const dialog::TreeContent& content);

  int Count() const { return static_cast<int>(nodes_.size()); }
  /// The node in a row, from 0; 0 where there is none.
  int NodeAt(int row) const;
  /// The row of a node; of a hidden one, that of the closed node which hides it; 0 for no node.
  int RowOf(int node) const;
  /// How many nodes stand above a node.
  int DepthOf(int node) const;

 private:
  std::vector<int> nodes_;
  std::vector<int> rows_;    // by node
  std::vector<int> depths_;  // by node
};

}  // namespace quintara
