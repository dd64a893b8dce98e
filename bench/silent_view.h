#pragma once

#include <functional>
#include <map>
#include <string>

#include "access/contracts/dialog.h"

namespace quintara::bench {

/// A view that shows nothing to anybody, so that what is measured is the dialog's own work. Its user is `user`, called
/// once it is shown; the pointer is on the node `under`.
class SilentView final : public dialog::View {
 public:
  using User = std::function<void(SilentView& view, dialog::Events& events)>;

  SilentView(const dialog::Layout& layout, dialog::Events& events, User user)
      : events_(events), user_(std::move(user)) {
    boxes_[""] = layout.box;
    for (const auto& control : layout.controls) boxes_[control.name] = control.box;
  }

  dialog::TreeContent* tree = nullptr;
  int selected = 0;
  int under = 1;

  std::string Text(const std::string& control) override { return texts_[control]; }
  void SetText(const std::string& control, const std::string& text) override { texts_[control] = text; }
  bool IsEnabled(const std::string& /*control*/) override { return true; }
  void SetEnabled(const std::string& /*control*/, bool /*enabled*/) override {}
  bool IsChecked(const std::string& /*control*/) override { return false; }
  void SetChecked(const std::string& /*control*/, bool /*checked*/) override {}
  dialog::Box BoxOf(const std::string& control) override { return boxes_[control]; }
  void SetBox(const std::string& control, const dialog::Box& box) override { boxes_[control] = box; }
  dialog::Font FontOf(const std::string& /*control*/) override { return {}; }
  void SetFont(const std::string& /*control*/, const dialog::Font& /*font*/) override {}
  void SetProgress(const std::string& /*control*/, int /*value*/, int /*max*/) override {}
  void SetTree(const std::string& /*control*/, dialog::TreeContent* content) override { tree = content; }
  void TreeChanged(const std::string& /*control*/) override {}
  int NodeAt(const std::string& /*control*/, int /*x*/, int /*y*/) override { return under; }
  int SelectedNode(const std::string& /*control*/) override { return selected; }
  void SelectNode(const std::string& /*control*/, int node) override { selected = node; }
  void EnsureVisible(const std::string& /*control*/, int /*node*/) override {}
  void ShowModal() override {
    if (user_) user_(*this, events_);
  }
  void Hide() override {}
  void ShowOnTop(int /*left*/, int /*top*/, int /*width*/, int /*height*/) override {}
  void Redraw(const std::string& /*control*/) override {}
  void Unload() override { events_.OnUnloaded(); }
  dialog::Box Screen() override { return {0, 0, 15360, 11520}; }

 private:
  dialog::Events& events_;
  User user_;
  std::map<std::string, dialog::Box> boxes_;
  std::map<std::string, std::string> texts_;
};

}  // namespace quintara::bench
