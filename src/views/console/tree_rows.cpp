#include "views/console/tree_rows.h"

namespace quintara {
namespace {

// The node behind `node` and all below it, in the order of the tree; 0 at the end.
int Behind(const dialog::TreeContent& content, int node) {
  while (node != 0 && content.Next(node) == 0) node = content.Parent(node);
  return node == 0 ? 0 : content.Next(node);
}

int NextOf(const dialog::TreeContent& content, int node) {
  const int child = content.FirstChild(node);
  return child != 0 ? child : Behind(content, node);
}

}  // namespace

void TreeRows::Read(const dialog::TreeContent& content) {
  const auto count = static_cast<std::size_t>(content.Count());
  nodes_.clear();
  rows_.assign(count + 1, 0);
  depths_.assign(count + 1, 0);
  std::vector<char> isHidden(count + 1);
  for (int node = count == 0 ? 0 : 1; node != 0; node = NextOf(content, node)) {
    const auto at = static_cast<std::size_t>(node);
    const int parent = content.Parent(node);
    const auto above = static_cast<std::size_t>(parent);
    if (parent != 0) depths_[at] = depths_[above] + 1;
    isHidden[at] = parent != 0 && (isHidden[above] || !content.IsExpanded(parent));
    rows_[at] = isHidden[at] ? rows_[above] : Count();
    if (!isHidden[at]) nodes_.push_back(node);
  }
}

int TreeRows::NodeAt(int row) const {
  return row >= 0 && row < Count() ? nodes_[static_cast<std::size_t>(row)] : 0;
}

int TreeRows::RowOf(int node) const {
  const auto at = static_cast<std::size_t>(node);
  return node > 0 && at < rows_.size() ? rows_[at] : 0;
}

int TreeRows::DepthOf(int node) const {
  const auto at = static_cast<std::size_t>(node);
  return node > 0 && at < depths_.size() ? depths_[at] : 0;
}

}  // namespace quintara
