#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/failure.h"
#include "views/win32/user.h"
#include "views/win32/views.h"
#include "views/win32/windows_of.h"

namespace quintara::test {

/// The number of the failure that a body throws; 0 for none.
int NumberOf(const std::function<void()>& body);

/// Nodes as a test adds them. The picture of each is "part none".
class SampleNodes : public dialog::TreeContent {
 public:
  int Add(int parent, const std::string& text, bool isExpanded = true);
  void Clear() { nodes_.clear(); }

  int Count() const override { return static_cast<int>(nodes_.size()); }
  const std::string& Text(int node) const override { return At(node).text; }
  const std::string& Picture(int node) const override { return At(node).picture; }
  int Parent(int node) const override { return At(node).parent; }
  int FirstChild(int node) const override { return At(node).firstChild; }
  int Next(int node) const override { return At(node).next; }
  bool IsExpanded(int node) const override { return At(node).isExpanded; }
  void SetExpanded(int node, bool expanded) override { At(node).isExpanded = expanded; }

  void SetText(int node, const std::string& text) { At(node).text = text; }
  void SetPicture(int node, const std::string& picture) { At(node).picture = picture; }

 private:
  struct Node {
    std::string text;
    std::string picture = "part none";
    int parent = 0;
    int firstChild = 0;
    int lastChild = 0;
    int next = 0;
    bool isExpanded = false;
  };

  Node& At(int node) { return nodes_.at(static_cast<std::size_t>(node - 1)); }
  const Node& At(int node) const { return nodes_.at(static_cast<std::size_t>(node - 1)); }

  std::deque<Node> nodes_;
  int lastRoot_ = 0;
};

/// Notes what is told, as "OnClick(cmd)" and so on; ticks aren't, but counted. A test may do more.
class SampleEvents : public dialog::Events {
 public:
  void OnClick(const std::string& control) override;
  void OnNodeClick(const std::string& control, int node) override;
  void OnMouseDown(const std::string& control, int button, int shift, int x, int y) override;
  void OnMouseUp(const std::string& control, int button) override;
  void OnResize() override;
  void OnTick(const std::string& timer) override;
  void OnUnloaded() override;

  std::vector<std::string> calls;
  int ticks = 0;
  int resizes = 0;
  POINT pressedAt{};  ///< in twips
  std::function<void(const std::string&)> click;
  std::function<void()> nodeClick, mouseDown, resize, tick, unloaded;
};

/// A dialog with a control of each kind.
dialog::Layout SampleLayout(const std::string& title);

/// A sample dialog on the desktop.
class SampleDialog {
 public:
  explicit SampleDialog(const std::string& title = "Sample", const std::function<void(dialog::Layout&)>& change = {});
  ~SampleDialog();

  HWND Window() const { return window; }
  HWND Window(const std::string& control) const { return WindowOf(window, layout, control); }
  bool IsGone() const { return IsWindow(window) == 0; }
  /// So many twips of a size, and of a place, in pixels of this dialog, where it isn't made smaller.
  int Size(int twips) const;
  int Place(int twips) const;

  dialog::Layout layout;
  SampleEvents events;
  SampleNodes nodes;
  std::shared_ptr<dialog::View> view;
  HWND window;
};

class OnDesktop : public testing::Test {
 protected:
  /// Shows the dialog, does something with it as a user and closes it.
  void Show(SampleDialog& dialog, const std::function<void()>& act);

  SampleDialog sample;
  dialog::View& View() { return *sample.view; }
  SampleEvents& Events() { return sample.events; }
};

}  // namespace quintara::test
