#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "access/contracts/dialog.h"

namespace quintara {

/// The nodes of a dialog's tree: a collection numbered from 1, each node with a key that no other
/// one has. There are 32,767 at most; one more is failure 6. An index that isn't there is failure 9, a key
/// that is there already 457, the key of a picture that the tree hasn't 35601; nothing is changed then.
/// Roots follow each other by `Next`, from node 1 on. A new node is closed and has neither tag nor picture.
class TreeModel : public dialog::TreeContent {
 public:
  /// With a separator, a node's key is its parent's key, the separator and its own piece, which doesn't hold
  /// it and alone is kept; without one, the piece is the whole key.
  explicit TreeModel(std::vector<std::string> pictures, std::string separator = {});
  TreeModel(const TreeModel&) = delete;
  TreeModel& operator=(const TreeModel&) = delete;

  void Clear();
  /// Adds a node as the last child of `parent`, 0 for a root, and gives its index.
  int Add(int parent, const std::string& piece, const std::string& text);

  int Count() const override;
  const std::string& Text(int node) const override;
  const std::string& Picture(int node) const override;
  int Parent(int node) const override;
  int FirstChild(int node) const override;
  int Next(int node) const override;
  bool IsExpanded(int node) const override;
  void SetExpanded(int node, bool expanded) override;

  std::string Key(int node) const;
  const std::string& Piece(int node) const;
  int ChildCount(int node) const;
  const std::string& Tag(int node) const;
  void SetTag(int node, const std::string& tag);
  void SetPicture(int node, const std::string& picture);

 private:
  struct Node {
    std::string piece = {};
    std::string text = {};
    std::string tag = {};
    std::size_t picture = 0;  ///< in `pictures_`, whose first one is none
    int parent = 0;
    int firstChild = 0;
    int lastChild = 0;
    int next = 0;
    int childCount = 0;
    bool isExpanded = false;
  };
  // What tells a node's key from all others.
  struct Place {
    int parent;              ///< 0 where pieces are whole keys
    std::string_view piece;  ///< the node's own
    bool operator==(const Place&) const = default;
  };
  struct PlaceHash {
    std::size_t operator()(const Place& place) const noexcept;
  };

  Node& At(int node);
  const Node& At(int node) const;

  std::vector<std::string> pictures_;
  std::string separator_;
  std::deque<Node> nodes_;  // which doesn't move them
  std::unordered_set<Place, PlaceHash> places_;
  int lastRoot_ = 0;
};

}  // namespace quintara
