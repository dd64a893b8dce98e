#pragma once

#include "services/tree_model.h"

namespace quintara {

/// The node behind `node` in the walk over the tree below and including `top`, parents before children, that doesn't
/// go below `node`; 0 at its end.
inline int NextBeside(const TreeModel& nodes, int top, int node) {
  for (; node != top; node = nodes.Parent(node)) {
    if (const int next = nodes.Next(node); next != 0) return next;
  }
  return 0;
}

/// The same, going below it.
inline int NextBelow(const TreeModel& nodes, int top, int node) {
  const int child = nodes.FirstChild(node);
  return child != 0 ? child : NextBeside(nodes, top, node);
}

}  // namespace quintara
