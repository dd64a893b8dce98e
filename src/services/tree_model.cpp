#include "services/tree_model.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <utility>

#include "base/failure.h"

namespace quintara {
namespace {

constexpr std::size_t kMostNodes = std::numeric_limits<std::int16_t>::max();

}  // namespace

std::size_t TreeModel::PlaceHash::operator()(const Place& place) const noexcept {
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U;
  return std::hash<std::string_view>()(place.piece) ^
         static_cast<std::size_t>(static_cast<std::uint64_t>(place.parent) * kSpread);
}

TreeModel::TreeModel(std::vector<std::string> pictures, std::string separator)
    : pictures_(std::move(pictures)), separator_(std::move(separator)) {
  pictures_.insert(pictures_.begin(), std::string());
}

void TreeModel::Clear() {
  places_.clear();
  nodes_.clear();
  lastRoot_ = 0;
}

int TreeModel::Add(int parent, const std::string& piece, const std::string& text) {
  if (parent != 0) At(parent);
  const int scope = separator_.empty() ? 0 : parent;
  if (places_.contains({scope, piece})) throw Failure(failure::kDuplicateKey);
  if (nodes_.size() == kMostNodes) throw Failure(failure::kOverflow);
  nodes_.push_back({.piece = piece, .text = text, .parent = parent});
  places_.insert({scope, nodes_.back().piece});
  const int added = Count();
  int& last = parent == 0 ? lastRoot_ : At(parent).lastChild;
  if (last != 0) {
    At(last).next = added;
  } else if (parent != 0) {
    At(parent).firstChild = added;
  }
  last = added;
  if (parent != 0) ++At(parent).childCount;
  return added;
}

int TreeModel::Count() const {
  return static_cast<int>(nodes_.size());
}

const std::string& TreeModel::Text(int node) const {
  return At(node).text;
}

const std::string& TreeModel::Picture(int node) const {
  return pictures_[At(node).picture];
}

int TreeModel::Parent(int node) const {
  return At(node).parent;
}

int TreeModel::FirstChild(int node) const {
  return At(node).firstChild;
}

int TreeModel::Next(int node) const {
  return At(node).next;
}

bool TreeModel::IsExpanded(int node) const {
  return At(node).isExpanded;
}

void TreeModel::SetExpanded(int node, bool expanded) {
  At(node).isExpanded = expanded;
}

std::string TreeModel::Key(int node) const {
  if (separator_.empty()) return Piece(node);
  std::vector<int> path;
  for (int at = node; at != 0; at = Parent(at)) path.push_back(at);
  std::string key;
  for (auto at = path.rbegin(); at != path.rend(); ++at) {
    if (!key.empty()) key += separator_;
    key += Piece(*at);
  }
  return key;
}

const std::string& TreeModel::Piece(int node) const {
  return At(node).piece;
}

int TreeModel::ChildCount(int node) const {
  return At(node).childCount;
}

const std::string& TreeModel::Tag(int node) const {
  return At(node).tag;
}

void TreeModel::SetTag(int node, const std::string& tag) {
  At(node).tag = tag;
}

void TreeModel::SetPicture(int node, const std::string& picture) {
  auto& changed = At(node);
  const auto found = std::ranges::find(pictures_, picture);
  if (found == pictures_.end()) throw Failure(failure::kElementNotFound);
  changed.picture = static_cast<std::size_t>(found - pictures_.begin());
}

TreeModel::Node& TreeModel::At(int node) {
  return const_cast<Node&>(std::as_const(*this).At(node));
}

const TreeModel::Node& TreeModel::At(int node) const {
  if (node < 1 || node > Count()) throw Failure(failure::kSubscriptOutOfRange);
  return nodes_[static_cast<std::size_t>(node) - 1];
}

}  // namespace quintara
