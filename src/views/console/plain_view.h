#pragma once

#include <memory>
#include <string>

#include "access/contracts/dialog.h"
#include "views/console/view_item.h"

namespace quintara {

/// A view that keeps what it is given and shows nothing: what all views of dialogs on a console have in
/// common. A terminal has one font, which takes no other name, and dialogs without places on it.
class PlainView : public dialog::View, public std::enable_shared_from_this<PlainView> {
 public:
  /// `events` must outlive the view, or its unloading.
  PlainView(const dialog::Layout& layout, dialog::Events& events);

  /// The tree that a control shows; null for none.
  const dialog::TreeContent* Tree(const std::string& control) const;

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

 protected:
  /// Waits, in `ShowModal`, until the view isn't shown any more. Here it is over at once.
  virtual void Wait() {}

  dialog::Events& Sink() { return events_; }
  const dialog::Layout& TheLayout() const { return layout_; }
  bool IsShown() const { return isShown_; }
  bool IsLoaded() const { return isLoaded_; }

  ViewItems& Items() { return items_; }
  /// Fails when there is no such control, or none of that kind.
  ViewItem& ItemNamed(const std::string& name);
  ViewItem& ItemOfKind(const std::string& name, dialog::Kind kind);
  /// The first control of that kind; null for none.
  ViewItem* FirstOf(dialog::Kind kind);

  /// How much of the screen one row of a tree takes, in twips.
  static constexpr int kRowHeight = 240;

 private:
  dialog::Layout layout_;
  dialog::Events& events_;
  ViewItems items_;  // the dialog itself comes last, as a frame
  bool isShown_ = false;
  bool isLoaded_ = true;
};

}  // namespace quintara
