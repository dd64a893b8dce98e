#include "views/console/plain_view.h"

#include <algorithm>

#include "base/failure.h"

namespace quintara {

using dialog::Kind;

PlainView::PlainView(const dialog::Layout& layout, dialog::Events& events) : layout_(layout), events_(events) {
  const dialog::Font font{"Terminal", 9, 0, false, false};
  for (const auto& control : layout.controls) items_.push_back({.control = control, .font = font});
  dialog::Control self;
  self.kind = Kind::kFrame;
  self.box = layout.box;
  self.text = layout.text;
  items_.push_back({.control = self, .font = font});
}

ViewItem& PlainView::ItemNamed(const std::string& name) {
  if (!isLoaded_) throw Failure(failure::kObjectUnloaded, "The dialog '" + layout_.name + "' is unloaded");
  const auto found = std::ranges::find(items_, name, [](const ViewItem& item) { return item.control.name; });
  if (found != items_.end()) return *found;
  throw Failure(failure::kNoSuchMember, "The dialog '" + layout_.name + "' has no control '" + name + "'");
}

ViewItem& PlainView::ItemOfKind(const std::string& name, Kind kind) {
  auto& item = ItemNamed(name);
  if (item.control.kind == kind) return item;
  throw Failure(failure::kNoSuchMember, "The control '" + name + "' of '" + layout_.name + "' can't do that");
}

ViewItem* PlainView::FirstOf(Kind kind) {
  const auto found = std::ranges::find(items_, kind, [](const ViewItem& item) { return item.control.kind; });
  return found == items_.end() ? nullptr : &*found;
}

const dialog::TreeContent* PlainView::Tree(const std::string& control) const {
  const auto found = std::ranges::find(items_, control, [](const ViewItem& item) { return item.control.name; });
  return found == items_.end() ? nullptr : found->tree;
}

std::string PlainView::Text(const std::string& control) {
  return ItemNamed(control).control.text;
}

void PlainView::SetText(const std::string& control, const std::string& text) {
  ItemNamed(control).control.text = text;
}

bool PlainView::IsEnabled(const std::string& control) {
  return ItemNamed(control).control.isEnabled;
}

void PlainView::SetEnabled(const std::string& control, bool enabled) {
  ItemNamed(control).control.isEnabled = enabled;
}

bool PlainView::IsChecked(const std::string& control) {
  return ItemOfKind(control, Kind::kRadioButton).control.isChecked;
}

void PlainView::SetChecked(const std::string& control, bool checked) {
  auto& chosen = ItemOfKind(control, Kind::kRadioButton).control;
  for (auto& item : items_) {
    const bool isOther = item.control.kind == Kind::kRadioButton && item.control.container == chosen.container;
    if (checked && isOther) item.control.isChecked = false;
  }
  chosen.isChecked = checked;
}

dialog::Box PlainView::BoxOf(const std::string& control) {
  return ItemNamed(control).control.box;
}

void PlainView::SetBox(const std::string& control, const dialog::Box& box) {
  auto& kept = ItemNamed(control).control.box;
  const bool isOtherSize = kept.width != box.width || kept.height != box.height;
  kept = box;
  if (control.empty() && isOtherSize) events_.OnResize();
}

dialog::Font PlainView::FontOf(const std::string& control) {
  return ItemNamed(control).font;
}

void PlainView::SetFont(const std::string& control, const dialog::Font& font) {
  auto& kept = ItemNamed(control).font;
  const auto name = kept.name;
  kept = font;
  kept.name = name;
}

void PlainView::SetProgress(const std::string& control, int value, int max) {
  auto& item = ItemOfKind(control, Kind::kProgressBar);
  item.value = value;
  item.max = max;
}

void PlainView::SetTree(const std::string& control, dialog::TreeContent* content) {
  auto& item = ItemOfKind(control, Kind::kTree);
  item.tree = content;
  item.selected = 0;
}

void PlainView::TreeChanged(const std::string& control) {
  ItemOfKind(control, Kind::kTree);
}

// Without a screen every node has a row of its own, in the order in which they were added.
int PlainView::NodeAt(const std::string& control, int /*x*/, int y) {
  const auto* tree = ItemOfKind(control, Kind::kTree).tree;
  const int node = y < 0 ? 0 : y / kRowHeight + 1;
  return tree != nullptr && node <= tree->Count() ? node : 0;
}

int PlainView::SelectedNode(const std::string& control) {
  return ItemOfKind(control, Kind::kTree).selected;
}

void PlainView::SelectNode(const std::string& control, int node) {
  ItemOfKind(control, Kind::kTree).selected = node;
}

void PlainView::EnsureVisible(const std::string& control, int node) {
  auto* tree = ItemOfKind(control, Kind::kTree).tree;
  if (tree == nullptr || node == 0) return;
  for (int above = tree->Parent(node); above != 0; above = tree->Parent(above)) tree->SetExpanded(above, true);
  TreeChanged(control);
}

// The owner may let go of the view while it is shown.
void PlainView::ShowModal() {
  const auto self = shared_from_this();
  ItemNamed({});
  isShown_ = true;
  try {
    Wait();
  } catch (...) {
    Unload();
    throw;
  }
  isShown_ = false;
}

void PlainView::Hide() {
  isShown_ = false;
}

void PlainView::ShowOnTop(int /*left*/, int /*top*/, int /*width*/, int /*height*/) {
  isShown_ = true;
}

void PlainView::Redraw(const std::string& control) {
  ItemNamed(control);
}

void PlainView::Unload() {
  if (!isLoaded_) return;
  const auto self = shared_from_this();
  Hide();
  isLoaded_ = false;
  events_.OnUnloaded();
}

dialog::Box PlainView::Screen() {
  constexpr int kTwipsOfPixel = 15;
  return {0, 0, 1024 * kTwipsOfPixel, 768 * kTwipsOfPixel};
}

}  // namespace quintara
