#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "access/contracts/dialog.h"
#include "support/test_platform.h"

namespace quintara::test {

class ScriptedView;

/// What the user does while a dialog is shown.
using UserScript = std::function<void(ScriptedView&)>;

/// The desktop that all scripted views stand on.
struct ScriptedDesktop {
  std::shared_ptr<Gate> gate;
  std::vector<std::string> record;
  std::map<std::string, std::deque<UserScript>> scripts;
  std::vector<std::string> fonts = {"Arial", "MS Sans Serif", "Verdana"};
  dialog::Box screen = {0, 0, 1024 * 15, 768 * 15};
};

/// A dialog whose user is a script. It stands in the middle of the screen at first, its controls have the font
/// "MS Sans Serif" of 8.25 points, the rows of its trees are 240 twips high, and a font that the desktop hasn't is
/// read back as "Arial". Every operation passes the gate, as "View.SetText(MainPanel, lbl, abc)" and so on.
///
/// A script acts through the operations below. Each fails as a test where the user couldn't do that: with a control
/// that is disabled, of another kind or not there, a node whose parent is closed, or when the dialog isn't shown any
/// more. A failure of the presenter comes out of it and is best left to pass.
class ScriptedView final : public dialog::View {
 public:
  struct ControlState {
    dialog::Control made;
    bool isDialog = false;
    std::string text;
    bool isEnabled = true;
    bool isChecked = false;
    dialog::Box box;
    dialog::Font font = {"MS Sans Serif", 8.25, 0, false, false};
    int progress = 0;
    int mostProgress = 0;
    int redraws = 0;
    dialog::TreeContent* tree = nullptr;
    int treeChanges = 0;
    int selectedNode = 0;
    int topNode = 0;  ///< the first row that shows
  };

  ScriptedView(std::shared_ptr<ScriptedDesktop> desktop, const dialog::Layout& layout, dialog::Events& events);

  /// Presses a button, or chooses a radio button.
  void Press(const std::string& control);
  /// Types a text in place of the one that is there.
  void Type(const std::string& control, const std::string& text);
  /// Nodes are named by their text; the first one that has it counts.
  void LeftClick(const std::string& tree, const std::string& text);
  void DoubleClick(const std::string& tree, const std::string& text);
  void RightClick(const std::string& tree, const std::string& text);
  /// Any button of the pointer on the node of an index, or, with 0, below all nodes.
  void Click(const std::string& tree, int button, int node);
  /// Goes to a node from the keyboard.
  void GoTo(const std::string& tree, const std::string& text);
  void Expand(const std::string& tree, const std::string& text, bool expanded);
  /// Drags an edge of the dialog by so many twips, to the right or down, or the whole of it.
  void DragLeft(int by) { Drag({by, 0, -by, 0}); }
  void DragTop(int by) { Drag({0, by, 0, -by}); }
  void DragRight(int by) { Drag({0, 0, by, 0}); }
  void DragBottom(int by) { Drag({0, 0, 0, by}); }
  void Move(int right, int down) { Drag({right, down, 0, 0}); }
  /// Lets the left button go on a control, the dialog itself by default.
  void ReleaseMouse(const std::string& control = {});
  /// Lets the interval of a timer pass.
  void Tick(const std::string& timer);
  /// Closes the dialog by its own close box.
  void Close();

  /// What is there now, also once the dialog is gone; the empty name is the dialog itself.
  const ControlState& Of(const std::string& control) const;
  const dialog::Layout& MadeFrom() const { return layout_; }
  bool IsLoaded() const { return isLoaded_; }
  bool IsShown() const { return isShown_; }
  bool IsOnTop() const { return isOnTop_; }
  /// The node with this text; a test that asks for another one fails.
  int NodeOf(const std::string& tree, const std::string& text) const;

  std::string Text(const std::string& control) override;
  void SetText(const std::string& control, const std::string& text) override;
  bool IsEnabled(const std::string& control) override;
  void SetEnabled(const std::string& control, bool enabled) override;
  bool IsChecked(const std::string& control) override;
  void SetChecked(const std::string& control, bool checked) override;
  dialog::Box BoxOf(const std::string& control) override;
  void SetBox(const std::string& control, const dialog::Box& box) override;
  dialog::Font FontOf(const std::string& control) override;
  void SetFont(const std::string& control, const dialog::Font& font) override;
  void SetProgress(const std::string& control, int value, int max) override;
  void SetTree(const std::string& control, dialog::TreeContent* content) override;
  void TreeChanged(const std::string& control) override;
  int NodeAt(const std::string& control, int x, int y) override;
  int SelectedNode(const std::string& control) override;
  void SelectNode(const std::string& control, int node) override;
  void EnsureVisible(const std::string& control, int node) override;
  void ShowModal() override;
  void Hide() override;
  void ShowOnTop(int left, int top, int width, int height) override;
  void Redraw(const std::string& control) override;
  void Unload() override;
  dialog::Box Screen() override;

 private:
  enum class Aspect { kAny, kText, kFont, kBox, kFrame, kPress, kType, kChoice, kProgress, kTree, kTimer };

  ControlState& Having(const std::string& control, Aspect aspect);
  ControlState& TreeOf(const std::string& control);
  void Read(const std::string& operation, const std::string& detail);
  void Change(const std::string& operation, const std::string& detail);
  void Choose(ControlState& radioButton);
  void Resize(const dialog::Box& box);
  void Drag(const dialog::Box& by);
  void Gone();
  static bool Has(const ControlState& control, Aspect aspect);

  [[noreturn]] void Impossible(const std::string& what) const;
  ControlState& Usable(const std::string& control, Aspect aspect);

  std::shared_ptr<ScriptedDesktop> desktop_;
  dialog::Layout layout_;
  dialog::Events& events_;
  std::map<std::string, ControlState> controls_;
  bool isLoaded_ = true;
  bool isShown_ = false;
  bool isOnTop_ = false;
};

/// Makes the dialogs of a test's platform scripted ones for as long as it lives.
class ScriptedDialogs {
 public:
  explicit ScriptedDialogs(TestPlatform& platform);
  /// A script whose dialog never came up fails the test.
  ~ScriptedDialogs();
  ScriptedDialogs(const ScriptedDialogs&) = delete;
  ScriptedDialogs& operator=(const ScriptedDialogs&) = delete;

  /// What the user does when the dialog of this name is next shown modal; the second script of a name is for the
  /// second time, and so on. A script that leaves its dialog shown, or none, is a loop that nobody ends: it fails
  /// the test, and `ShowModal`.
  void WhenShown(const std::string& dialog, UserScript script);

  /// All that was set, shown and unloaded so far, as "MainPanel.SetText(lbl, abc)" and so on.
  const std::vector<std::string>& Record() const { return desktop_->record; }
  void ForgetRecord() { desktop_->record.clear(); }
  ScriptedDesktop& Desktop() { return *desktop_; }

  /// How often a dialog was made.
  int Made(const std::string& dialog) const;
  /// The latest view of a dialog, gone or not; a test that asks for one that was never made fails.
  ScriptedView& Last(const std::string& dialog) const;

 private:
  TestPlatform& platform_;
  std::shared_ptr<ScriptedDesktop> desktop_ = std::make_shared<ScriptedDesktop>();
  std::shared_ptr<std::vector<std::shared_ptr<ScriptedView>>> views_ =
      std::make_shared<std::vector<std::shared_ptr<ScriptedView>>>();
};

}  // namespace quintara::test
