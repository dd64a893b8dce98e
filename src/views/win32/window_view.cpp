#include "views/win32/window_view.h"

#include <algorithm>

#include "base/failure.h"
#include "base/text16_windows.h"

namespace quintara::win32 {

using dialog::Kind;

ViewItem& WindowView::ItemNamed(const std::string& name) {
  if (!isLoaded_) throw Failure(failure::kObjectUnloaded, "The dialog '" + layout_.name + "' is unloaded");
  const auto found = std::ranges::find(items_, name, [](const ViewItem& item) { return item.control.name; });
  if (found != items_.end()) return *found;
  throw Failure(failure::kElementNotFound, "The dialog '" + layout_.name + "' has no control '" + name + "'");
}

ViewItem& WindowView::ItemWith(const std::string& name, bool (*has)(Kind)) {
  auto& item = ItemNamed(name);
  if (has(item.control.kind)) return item;
  throw Failure(failure::kNoSuchMember, "The control '" + name + "' of '" + layout_.name + "' can't do that");
}

ViewItem& WindowView::ItemOfKind(const std::string& name, Kind kind) {
  auto& item = ItemNamed(name);
  if (item.control.kind == kind) return item;
  throw Failure(failure::kNoSuchMember, "The control '" + name + "' of '" + layout_.name + "' can't do that");
}

TreeWindow& WindowView::TreeOf(const std::string& control) {
  return *ItemOfKind(control, Kind::kTree).tree;
}

ViewItem* WindowView::ItemOf(HWND window) {
  const auto found = std::ranges::find(items_, window, &ViewItem::window);
  return window == nullptr || found == items_.end() ? nullptr : &*found;
}

ViewItem* WindowView::ItemNumbered(int number) {
  const auto found = std::ranges::find(items_, number, &ViewItem::number);
  return found == items_.end() ? nullptr : &*found;
}

std::string WindowView::Text(const std::string& control) {
  const auto& item = ItemWith(control, HasText);
  if (item.control.kind != Kind::kTextBox) return item.control.text;
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(item.window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(item.window, text.data(), static_cast<int>(text.size()))));
  return Narrow(text);
}

void WindowView::SetText(const std::string& control, const std::string& text) {
  auto& item = ItemWith(control, HasText);
  item.control.text = text;
  const bool isPlain = item.control.kind == Kind::kTextBox || &item == &Itself();
  if (isPlain) SetWindowTextW(item.window, Wide(text).c_str());
  if (!isPlain) ShowCaptions();
}

bool WindowView::IsEnabled(const std::string& control) {
  return ItemNamed(control).control.isEnabled;
}

// The keyboard mustn't stay in a control that is deaf to it.
void WindowView::SetEnabled(const std::string& control, bool enabled) {
  auto& item = ItemNamed(control);
  item.control.isEnabled = enabled;
  if (item.window == nullptr) return;
  if (!enabled && GetFocus() == item.window) SendMessageW(window_, WM_NEXTDLGCTL, 0, FALSE);
  EnableWindow(item.window, enabled ? TRUE : FALSE);
}

bool WindowView::IsChecked(const std::string& control) {
  return ItemOfKind(control, Kind::kRadioButton).control.isChecked;
}

void WindowView::SetChecked(const std::string& control, bool checked) {
  Check(ItemOfKind(control, Kind::kRadioButton), checked);
}

void WindowView::Check(ViewItem& radioButton, bool checked) {
  const auto set = [](ViewItem& item, bool isChecked) {
    if (item.control.isChecked == isChecked) return;
    item.control.isChecked = isChecked;
    SendMessageW(item.window, BM_SETCHECK, isChecked ? BST_CHECKED : BST_UNCHECKED, 0);
  };
  for (auto& other : items_) {
    const bool isOther = other.control.kind == Kind::kRadioButton && &other != &radioButton;
    if (checked && isOther && other.control.container == radioButton.control.container) set(other, false);
  }
  set(radioButton, checked);
}

dialog::Font WindowView::FontOf(const std::string& control) {
  return ItemWith(control, HasFont).font;
}

void WindowView::SetFont(const std::string& control, const dialog::Font& font) {
  const OwnPixels pixels;
  auto& item = ItemWith(control, HasFont);
  const auto name = fonts_->NameUsed(font);
  item.font = font;
  item.font.name = name;
  SetWindowFont(item);
}

void WindowView::SetProgress(const std::string& control, int value, int max) {
  const auto& bar = ItemOfKind(control, Kind::kProgressBar);
  if (value < 0 || value > max) throw Failure(failure::kInvalidPropertyValue);
  FillBar(bar.window, value, max);
}

void WindowView::SetTree(const std::string& control, dialog::TreeContent* content) {
  TreeOf(control).SetContent(content);
}

void WindowView::TreeChanged(const std::string& control) {
  TreeOf(control).Changed();
}

int WindowView::NodeAt(const std::string& control, int x, int y) {
  return TreeOf(control).NodeAt({scale_.PlaceInPixels(x), scale_.PlaceInPixels(y)});
}

int WindowView::SelectedNode(const std::string& control) {
  return TreeOf(control).Selected();
}

void WindowView::SelectNode(const std::string& control, int node) {
  TreeOf(control).Select(node);
}

void WindowView::EnsureVisible(const std::string& control, int node) {
  TreeOf(control).EnsureVisible(node);
}

void WindowView::Redraw(const std::string& control) {
  const auto& item = ItemWith(control, HasBox);
  for (auto& other : items_) {
    if (other.tree && (&other == &item || control.empty())) other.tree->Look();
  }
  RedrawWindow(item.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  GdiFlush();
}

dialog::Box WindowView::Screen() {
  const OwnPixels pixels;
  ItemNamed({});
  return {0, 0, scale_.SizeInTwips(GetSystemMetrics(SM_CXSCREEN)), scale_.SizeInTwips(GetSystemMetrics(SM_CYSCREEN))};
}

}  // namespace quintara::win32
