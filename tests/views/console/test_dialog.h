#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "views/console/full_screen_view.h"

namespace quintara::test {

/// A tree whose nodes are given as "depth text", the depth being the number of blanks in front.
class TestTree final : public dialog::TreeContent {
 public:
  explicit TestTree(const std::vector<std::string>& lines = {});
  void Add(int parent, const std::string& text);

  int Count() const override { return static_cast<int>(nodes_.size()) - 1; }
  const std::string& Text(int node) const override;
  const std::string& Picture(int node) const override { return At(node).picture; }
  int Parent(int node) const override { return At(node).parent; }
  int FirstChild(int node) const override { return At(node).firstChild; }
  int Next(int node) const override { return At(node).next; }
  bool IsExpanded(int node) const override { return At(node).isExpanded; }
  void SetExpanded(int node, bool expanded) override { At(node).isExpanded = expanded; }

  void SetPicture(int node, const std::string& picture) { At(node).picture = picture; }
  /// How many texts were asked for so far.
  int TextsAsked() const { return textsAsked_; }

 private:
  struct Node {
    std::string text;
    std::string picture = "part none";
    int parent = 0;
    int firstChild = 0;
    int lastChild = 0;
    int next = 0;
    bool isExpanded = true;
  };
  Node& At(int node) { return nodes_.at(static_cast<std::size_t>(node)); }
  const Node& At(int node) const { return nodes_.at(static_cast<std::size_t>(node)); }

  std::vector<Node> nodes_{1};
  mutable int textsAsked_ = 0;
};

/// Takes down what happens, in the words of a test, and does what the test tells it to do then.
struct TestDialog : dialog::Events {
  std::vector<std::string> events;
  std::function<void(const std::string& event)> answer;
  std::shared_ptr<dialog::View> view;

  void Note(const std::string& event);
  void OnClick(const std::string& control) override { Note("click " + control); }
  void OnNodeClick(const std::string& control, int node) override { Note(control + " " + std::to_string(node)); }
  /// Says which node the view finds at that place.
  void OnMouseDown(const std::string& control, int button, int shift, int x, int y) override;
  void OnMouseUp(const std::string& control, int button) override {
    Note("up " + control + " " + std::to_string(button));
  }
  void OnResize() override { Note("resize"); }
  void OnTick(const std::string& timer) override { Note("tick " + timer); }
  void OnUnloaded() override { Note("unloaded"); }
};

/// A panel with a tree "Tree1", a text box "txtName" (n), radio buttons "All(0)" and "All(1)" (a), buttons "cmdFind"
/// (/), "cmdCreate" (Enter) and "cmdCancel" (Esc), and a legend.
dialog::Layout PanelLayout();
/// A search with a text box "txtInput", a label "lblStatus", buttons "cmdFind" (Enter), "cmdCancel" (Esc), and
/// "cmdBack"
/// (<) and "cmdNext" (>), which are disabled.
dialog::Layout SearchLayout();

}  // namespace quintara::test
