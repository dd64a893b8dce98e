#include "positioning/matrix_sheets.h"

namespace quintara::test {
namespace {

void PutNode(const Node& node, int level, int& row, const PutCell& put) {
  put(1, row, level, node.partNumber);
  for (int i = 0; i < 12; ++i) put(1, row, 15 + i, node.position[static_cast<std::size_t>(i)]);
  put(2, row, 1, node.partNumber);
  put(2, row, 2, double(row));
  put(2, row, 3, double(level));
  put(2, row, 4, node.name);
  ++row;
  for (const auto& child : node.children) PutNode(child, level + 1, row, put);
}

}  // namespace

void PutMatrix(const Node& root, const PutCell& put) {
  int row = 1;
  PutNode(root, 1, row, put);
}

}  // namespace quintara::test
