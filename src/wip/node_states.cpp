#include <array>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "wip/MainPanel.h"
#include "wip/node_tags.h"
#include "wip/tree_walk.h"

namespace quintara {
namespace {

std::string StateAfter(std::string_view tag) {
  using namespace node_tag;
  static constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kNext = {{
      {kPartNone, kPartLight},
      {kPartLight, kPartDocument},
      {kPartDocument, kPartNone},
      {kProductNone, kProductLight},
      {kProductLight, kProductDocument},
      {kProductDocument, kProductNone},
  }};
  for (const auto& [now, next] : kNext) {
    if (now == tag) return std::string(next);
  }
  throw Failure(failure::kInvalidCall, "A node of the review tree is in no known state: '" + std::string(tag) + "'");
}

std::string KindOf(const std::string& tag) {
  return tag.substr(0, tag.find(' '));
}

void ReplaceEvery(std::string& text, const std::string& word, const std::string& other) {
  for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + other.size())) {
    text.replace(at, word.size(), other);
  }
}

}  // namespace

void MainPanel::SetState(int node, const std::string& tag) {
  nodes_.SetPicture(node, tag);
  nodes_.SetTag(node, tag);
}

void MainPanel::Tree1_MouseDown(int button, int x, int y) {
  const int node = TheView().NodeAt("Tree1", x, y);
  if (node == 0 || button != dialog::button::kRight) return;
  CycleNodeState(node);
  TheView().TreeChanged("Tree1");
}

void MainPanel::OnMouseDown(const std::string& control, int button, int /*shift*/, int x, int y) {
  if (control == "Tree1") Tree1_MouseDown(button, x, y);
}

// What is below a node that is loaded itself is settled with it.
void MainPanel::CycleNodeState(int node) {
  const int parent = nodes_.Parent(node);
  if (parent != 0 && nodes_.Tag(parent) != node_tag::kProductNone) return;
  auto tag = StateAfter(nodes_.Tag(node));
  SetState(node, tag);
  PropagateNodeState(node, tag);
}

void MainPanel::PropagateNodeState(int node, std::string& tag) {
  for (int at = NextBelow(nodes_, node, node); at != 0; at = NextBelow(nodes_, node, at)) {
    ReplaceEvery(tag, KindOf(tag), KindOf(nodes_.Tag(at)));
    SetState(at, tag);
  }
}

}  // namespace quintara
