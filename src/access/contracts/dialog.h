#pragma once

#include <memory>
#include <string>
#include <vector>

/// What a dialog needs of the desktop, without a toolkit: a layout to make a window from, a view of
/// that window, and the events that come back from it. Whoever owns the rules of a dialog knows only
/// these, and so does whatever shows it. Controls are named; the dialog itself has the empty name, an
/// element of a control array its index behind the name, "GetAllInstances(0)". Operations on a name
/// that isn't in the layout, or of another kind of control, raise a Failure. Texts are UTF-8.
namespace quintara::dialog {

enum class Kind { kFrame, kLabel, kTextBox, kButton, kRadioButton, kPicture, kTree, kProgressBar, kTimer };

/// Where something stands, in twips (1,440 to an inch, 15 to a pixel on an ordinary screen): the
/// dialog's outer edges on the screen, a control's in the dialog or in the frame that holds it.
struct Box {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;

  bool operator==(const Box&) const = default;
};

struct Font {
  std::string name;
  double size = 0;  ///< in points
  int charset = 0;
  bool bold = false;
  bool italic = false;

  bool operator==(const Font&) const = default;
};

/// One control as it is made.
struct Control {
  std::string name;
  Kind kind = Kind::kLabel;
  Box box = {};
  std::string container = {};  ///< the frame that holds it, listed before it; empty for the dialog
  std::string text = {};       ///< until another one is set
  std::string picture = {};    ///< of a picture, its key
  int interval = 0;            ///< of a timer, in milliseconds
  bool isEnabled = true;
  bool isChecked = false;     ///< of a radio button
  std::string shortcut = {};  ///< what presses it where there is no pointer: a character, "Enter" or "Esc"
  bool clicksTick = false;  ///< of a tree: a click ticks a node, so keys go from node to node without one; Space is one
};

/// A dialog as it is made. The order of the controls is that in which the keyboard goes through them.
struct Layout {
  std::string name;  ///< "MainPanel"
  std::string text = {};
  Box box = {};  ///< its size; where it stands is the view's choice
  bool isSizable = false;
  std::vector<std::string> pictures = {};  ///< the keys of the pictures that its tree shows
  std::vector<Control> controls = {};
};

/// The buttons of a pointer.
namespace button {
inline constexpr int kLeft = 1;
inline constexpr int kRight = 2;
}  // namespace button

/// The nodes of a tree as a view reads them. A node is known by its index, from 1 in the order in
/// which they were added; 0 is none.
class TreeContent {
 public:
  virtual ~TreeContent() = default;

  virtual int Count() const = 0;
  virtual const std::string& Text(int node) const = 0;
  virtual const std::string& Picture(int node) const = 0;  ///< empty for none
  virtual int Parent(int node) const = 0;
  virtual int FirstChild(int node) const = 0;
  virtual int Next(int node) const = 0;
  virtual bool IsExpanded(int node) const = 0;
  /// The user has opened or closed a node.
  virtual void SetExpanded(int node, bool expanded) = 0;
};

/// What happens in a view, on the thread of the command. A failure ends the loop of a modal dialog,
/// unloads it and comes out of `ShowModal`.
class Events {
 public:
  virtual ~Events() = default;

  /// A button was pressed, or a radio button chosen, by the user.
  virtual void OnClick(const std::string& /*control*/) {}
  /// A node of a tree was chosen by the user, with the left button or from the keyboard; where clicks tick, clicked.
  virtual void OnNodeClick(const std::string& /*control*/, int /*node*/) {}
  /// A pointer's button went down on a control; `x` and `y` are in twips within it.
  virtual void OnMouseDown(const std::string& /*control*/, int /*button*/, int /*shift*/, int /*x*/, int /*y*/) {}
  /// It was released on a control, or on the dialog itself.
  virtual void OnMouseUp(const std::string& /*control*/, int /*button*/) {}
  /// The dialog has another size, whoever gave it that.
  virtual void OnResize() {}
  virtual void OnTick(const std::string& /*timer*/) {}
  /// The view is gone: unloaded by its owner or by the user, with the window's own close box.
  virtual void OnUnloaded() {}
};

/// A view of one dialog, made hidden.
class View {
 public:
  View() = default;
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  virtual ~View() = default;

  /// Caption or content.
  virtual std::string Text(const std::string& control) = 0;
  virtual void SetText(const std::string& control, const std::string& text) = 0;
  virtual bool IsEnabled(const std::string& control) = 0;
  virtual void SetEnabled(const std::string& control, bool enabled) = 0;
  /// Of a radio button; choosing one lets go of the others in its container. No event follows.
  virtual bool IsChecked(const std::string& control) = 0;
  virtual void SetChecked(const std::string& control, bool checked) = 0;

  /// What was set is read back to the twip, until the user changes it.
  virtual Box BoxOf(const std::string& control) = 0;
  /// Of the dialog, a new size is followed by `OnResize`.
  virtual void SetBox(const std::string& control, const Box& box) = 0;
  /// A name that isn't there is read back as the one that is used in its place.
  virtual Font FontOf(const std::string& control) = 0;
  virtual void SetFont(const std::string& control, const Font& font) = 0;

  /// A bar that is `value` of `max` full.
  virtual void SetProgress(const std::string& control, int value, int max) = 0;

  /// The tree's nodes from now on; `content` must outlive the view or the next call.
  virtual void SetTree(const std::string& control, dialog::TreeContent* content) = 0;
  /// Nodes were added, or have another text, picture or opening. Cheap: it is drawn when the user
  /// interface next catches up.
  virtual void TreeChanged(const std::string& control) = 0;
  /// The node under a point, in twips within the control; 0 for none.
  virtual int NodeAt(const std::string& control, int x, int y) = 0;
  /// 0 for none.
  virtual int SelectedNode(const std::string& control) = 0;
  virtual void SelectNode(const std::string& control, int node) = 0;
  /// Opens what is above a node, and scrolls to it.
  virtual void EnsureVisible(const std::string& control, int node) = 0;

  /// Shows it and waits until it is hidden or unloaded. Modal to the dialog that is shown, if there is one.
  virtual void ShowModal() = 0;
  virtual void Hide() = 0;
  /// Shows it above the windows of all programs, at that place and size in pixels of an ordinary screen, and goes on.
  virtual void ShowOnTop(int left, int top, int width, int height) = 0;
  /// Draws a control at once.
  virtual void Redraw(const std::string& control) = 0;
  /// Takes the window away. `OnUnloaded` comes before this returns, and no operation serves any more.
  virtual void Unload() = 0;

  /// The screen's size in twips, in `width` and `height`.
  virtual Box Screen() = 0;
};

}  // namespace quintara::dialog
