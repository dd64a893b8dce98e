#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "views/console/full_screen.h"
#include "views/console/plain_view.h"
#include "views/console/text_line.h"
#include "views/console/tree_rows.h"

namespace quintara {

/// A modal dialog on the full screen. With a tree it takes all of it: the arrows move the cursor and open and
/// close nodes, Space is the pointer's right button on the cursor's node, the left one where clicks tick. Without one
/// it is a few lines below the dialog that it is modal to, and its text box is typed in at once. Keys press the
/// controls that name them; one of a radio button that is chosen already chooses the next. "q" is as good as Esc.
class FullScreenView final : public PlainView, private ScreenDialog {
 public:
  FullScreenView(const dialog::Layout& layout, dialog::Events& events, std::shared_ptr<FullScreen> screen);

  void SetText(const std::string& control, const std::string& text) override;
  void SetTree(const std::string& control, dialog::TreeContent* content) override;
  void TreeChanged(const std::string& control) override;
  int NodeAt(const std::string& control, int x, int y) override;
  void SelectNode(const std::string& control, int node) override;
  void EnsureVisible(const std::string& control, int node) override;

 private:
  using Clock = std::chrono::steady_clock;
  struct Timer {
    std::string name;
    std::chrono::milliseconds interval;
    Clock::time_point due;
  };
  struct Typing {
    std::string control;
    TextLine line;
    std::string before;
  };

  void Wait() override;
  DialogLines Draw(std::size_t rows, bool isOnTop, const std::vector<std::string>& messages,
                   const ScreenKind& kind) override;

  void StartTimers();
  void Tick();
  int UntilTick() const;

  void Press(const Key& key);
  bool PressInText(const Key& key);
  bool PressInTree(const Key& key);
  bool PressShortcut(const std::string& shortcut);
  bool TypeAnew(const Key& key);
  void StartTyping(const std::string& control);
  void EndTyping(bool keep);
  void Push(const std::string& control);
  void Choose(const std::string& radioButton);

  const TreeRows& Rows();
  void MoveTo(int row);
  void Unfold();
  void Fold();
  void ClickLeft();
  void ClickRight();
  void ScrollTo(int row);

  std::shared_ptr<FullScreen> screen_;
  ViewItem* tree_;  // null for none
  TreeRows rows_;
  bool isRead_ = false;
  int cursor_ = 0;  // a node: stays where it is when nothing is selected any more
  int top_ = 0;
  int height_ = 1;  // of the tree, in rows
  std::optional<Typing> typing_;
  std::vector<Timer> timers_;
};

}  // namespace quintara
