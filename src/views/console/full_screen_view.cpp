#include "views/console/full_screen_view.h"

#include <algorithm>
#include <utility>

namespace quintara {

using dialog::Kind;

FullScreenView::FullScreenView(const dialog::Layout& layout, dialog::Events& events, std::shared_ptr<FullScreen> screen)
    : PlainView(layout, events), screen_(std::move(screen)), tree_(FirstOf(Kind::kTree)) {}

void FullScreenView::SetText(const std::string& control, const std::string& text) {
  PlainView::SetText(control, text);
  if (typing_ && typing_->control == control) typing_->line = TextLine(text);
}

void FullScreenView::SetTree(const std::string& control, dialog::TreeContent* content) {
  PlainView::SetTree(control, content);
  isRead_ = false;
  cursor_ = 0;
  top_ = 0;
}

void FullScreenView::TreeChanged(const std::string& control) {
  PlainView::TreeChanged(control);
  isRead_ = false;
}

int FullScreenView::NodeAt(const std::string& control, int /*x*/, int y) {
  ItemOfKind(control, Kind::kTree);
  return y < 0 ? 0 : Rows().NodeAt(top_ + y / kRowHeight);
}

void FullScreenView::SelectNode(const std::string& control, int node) {
  PlainView::SelectNode(control, node);
  if (node != 0) cursor_ = node;
}

void FullScreenView::EnsureVisible(const std::string& control, int node) {
  PlainView::EnsureVisible(control, node);
  if (node != 0) ScrollTo(Rows().RowOf(node));
}

void FullScreenView::Wait() {
  const FullScreen::Place place(*screen_, *this);
  StartTimers();
  const auto* box = FirstOf(Kind::kTextBox);
  if (tree_ == nullptr && box != nullptr) StartTyping(box->control.name);
  while (IsShown()) {
    Tick();
    if (!IsShown()) break;
    if (const auto key = screen_->NextKey(UntilTick())) Press(*key);
  }
}

DialogLines FullScreenView::Draw(std::size_t rows, bool isOnTop, const std::vector<std::string>& messages,
                                 const ScreenKind& kind) {
  constexpr std::size_t kLeastOfTree = 3;
  const auto typedIn = typing_ ? std::optional(TypedIn{typing_->control, &typing_->line}) : std::nullopt;
  auto panel = isOnTop ? PanelLines(Items(), typedIn, messages, kind) : DialogLines();
  DialogLines all;
  all.lines.push_back(TitleLine(Items().back().control.text, kind));
  if (tree_ != nullptr && tree_->tree != nullptr) {
    const auto free = rows - std::min<std::size_t>(rows, 1);
    const auto height = std::max(free - std::min(free, panel.lines.size()), std::min(free, kLeastOfTree));
    const bool isOther = height_ != static_cast<int>(height);
    height_ = std::max(static_cast<int>(height), 1);
    Rows();
    if (isOther) ScrollTo(rows_.RowOf(cursor_));
    for (auto& line : TreeLines(*tree_->tree, rows_, top_, height, cursor_, kind)) all.lines.push_back(std::move(line));
  }
  if (panel.cursor) all.cursor = ScreenPoint{panel.cursor->row + all.lines.size(), panel.cursor->column};
  all.lines.insert(all.lines.end(), panel.lines.begin(), panel.lines.end());
  return all;
}

void FullScreenView::StartTimers() {
  timers_.clear();
  for (const auto& item : Items()) {
    const std::chrono::milliseconds interval(item.control.interval);
    if (item.control.kind != Kind::kTimer || interval.count() <= 0) continue;
    timers_.push_back({item.control.name, interval, Clock::now() + interval});
  }
}

void FullScreenView::Tick() {
  for (auto& timer : timers_) {
    if (!IsShown() || Clock::now() < timer.due) continue;
    timer.due = Clock::now() + timer.interval;
    if (IsEnabled(timer.name)) Sink().OnTick(timer.name);
  }
}

// Often enough to note an interruption.
int FullScreenView::UntilTick() const {
  auto wait = std::chrono::milliseconds(200);
  for (const auto& timer : timers_) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(timer.due - Clock::now());
    wait = std::clamp(left, std::chrono::milliseconds(0), wait);
  }
  return static_cast<int>(wait.count());
}

void FullScreenView::Press(const Key& key) {
  using Code = Key::Code;
  if (typing_) {
    if (PressInText(key)) return;
  } else if (tree_ != nullptr && PressInTree(key)) {
    return;
  }
  if (key.code == Code::kEnter) PressShortcut("Enter");
  if (key.code == Code::kEscape) PressShortcut("Esc");
  if (key.code == Code::kCharacter && PressShortcut(key.text)) return;
  if (tree_ == nullptr && TypeAnew(key)) return;
  if (key.code == Code::kCharacter && (key.text == "q" || key.text == "Q")) PressShortcut("Esc");
}

// Enter and Esc end the typing; in a dialog that is all typing they are its own as well.
bool FullScreenView::PressInText(const Key& key) {
  auto& line = typing_->line;
  if (line.Press(key)) {
    PlainView::SetText(typing_->control, line.Text());
    return true;
  }
  const bool isEscape = key.code == Key::Code::kEscape;
  if (!isEscape && key.code != Key::Code::kEnter && key.code != Key::Code::kTab) return true;
  EndTyping(!isEscape || tree_ == nullptr);
  return tree_ != nullptr || key.code == Key::Code::kTab;
}

bool FullScreenView::PressInTree(const Key& key) {
  using Code = Key::Code;
  const int row = Rows().RowOf(cursor_);
  switch (key.code) {
    case Code::kUp: MoveTo(row - 1); return true;
    case Code::kDown: MoveTo(cursor_ == 0 ? 0 : row + 1); return true;
    case Code::kPageUp: MoveTo(row - height_); return true;
    case Code::kPageDown: MoveTo(row + height_); return true;
    case Code::kHome: MoveTo(0); return true;
    case Code::kEnd: MoveTo(rows_.Count() - 1); return true;
    case Code::kRight: Unfold(); return true;
    case Code::kLeft: Fold(); return true;
    case Code::kCharacter: {
      if (key.text != " ") return false;
      tree_->control.clicksTick ? ClickLeft() : ClickRight();
      return true;
    }
    default: return false;
  }
}

bool FullScreenView::PressShortcut(const std::string& shortcut) {
  const auto found = std::ranges::find_if(Items(), [&](const ViewItem& item) {
    const auto& control = item.control;
    return control.shortcut == shortcut && (control.isEnabled || control.kind == Kind::kButton);
  });
  if (found == Items().end()) return false;
  const auto name = found->control.name;
  const bool isEnabled = found->control.isEnabled;
  // In a dialog that is all typing the character is meant for the text then.
  if (!isEnabled) return tree_ != nullptr;
  Push(name);
  return true;
}

bool FullScreenView::TypeAnew(const Key& key) {
  using Code = Key::Code;
  const auto* box = FirstOf(Kind::kTextBox);
  if (box == nullptr) return false;
  const bool isTyped = key.code == Code::kCharacter || key.code == Code::kBackspace || key.code == Code::kTab;
  if (!isTyped || !IsShown()) return false;
  StartTyping(box->control.name);
  if (key.code != Code::kTab) PressInText(key);
  return true;
}

void FullScreenView::StartTyping(const std::string& control) {
  const auto text = Text(control);
  typing_ = Typing{control, TextLine(text), text};
}

void FullScreenView::EndTyping(bool keep) {
  const auto typing = std::exchange(typing_, std::nullopt);
  if (!keep) PlainView::SetText(typing->control, typing->before);
}

// Whoever presses something sees the cursor at a node, and means that one.
void FullScreenView::Push(const std::string& control) {
  auto& item = ItemNamed(control);
  if (tree_ != nullptr && tree_->selected == 0 && cursor_ != 0) tree_->selected = cursor_;
  switch (item.control.kind) {
    case Kind::kTextBox: StartTyping(control); break;
    case Kind::kRadioButton: Choose(control); break;
    default: Sink().OnClick(control);
  }
}

void FullScreenView::Choose(const std::string& radioButton) {
  std::vector<std::string> names;
  const auto& container = ItemNamed(radioButton).control.container;
  for (const auto& item : Items()) {
    if (item.control.kind == Kind::kRadioButton && item.control.container == container) {
      names.push_back(item.control.name);
    }
  }
  auto chosen = static_cast<std::size_t>(std::ranges::find(names, radioButton) - names.begin());
  if (IsChecked(radioButton)) chosen = (chosen + 1) % names.size();
  SetChecked(names[chosen], true);
  Sink().OnClick(names[chosen]);
}

const TreeRows& FullScreenView::Rows() {
  if (isRead_ || tree_ == nullptr || tree_->tree == nullptr) return rows_;
  rows_.Read(*tree_->tree);
  isRead_ = true;
  if (cursor_ == 0) cursor_ = tree_->selected;
  const int seen = rows_.NodeAt(rows_.RowOf(cursor_));
  const bool isHidden = cursor_ != 0 && seen != cursor_;
  if (cursor_ == 0 || isHidden) cursor_ = seen;
  // What is closed takes the selection of what it hides.
  if (isHidden && tree_->selected != 0) tree_->selected = seen;
  ScrollTo(rows_.RowOf(cursor_));
  return rows_;
}

void FullScreenView::MoveTo(int row) {
  const int node = rows_.NodeAt(std::clamp(row, 0, std::max(rows_.Count() - 1, 0)));
  if (node == 0) return;
  cursor_ = node;
  tree_->selected = node;
  ScrollTo(rows_.RowOf(node));
  if (!tree_->control.clicksTick) Sink().OnNodeClick(tree_->control.name, node);
}

void FullScreenView::Unfold() {
  if (cursor_ == 0) return;
  auto& content = *tree_->tree;
  const int child = content.FirstChild(cursor_);
  if (child == 0) return;
  if (content.IsExpanded(cursor_)) return MoveTo(rows_.RowOf(child));
  content.SetExpanded(cursor_, true);
  isRead_ = false;
}

void FullScreenView::Fold() {
  if (cursor_ == 0) return;
  auto& content = *tree_->tree;
  if (content.FirstChild(cursor_) != 0 && content.IsExpanded(cursor_)) {
    content.SetExpanded(cursor_, false);
    isRead_ = false;
  } else if (const int parent = content.Parent(cursor_)) {
    MoveTo(rows_.RowOf(parent));
  }
}

void FullScreenView::ClickLeft() {
  if (cursor_ == 0) return;
  tree_->selected = cursor_;
  Sink().OnNodeClick(tree_->control.name, cursor_);
}

void FullScreenView::ClickRight() {
  if (cursor_ == 0) return;
  const int row = Rows().RowOf(cursor_);
  ScrollTo(row);
  const auto name = tree_->control.name;
  const int y = (row - top_) * kRowHeight + kRowHeight / 2;
  Sink().OnMouseDown(name, dialog::button::kRight, 0, 0, y);
  if (IsShown()) Sink().OnMouseUp(name, dialog::button::kRight);
}

void FullScreenView::ScrollTo(int row) {
  top_ = std::min(top_, row);
  top_ = std::max(top_, row - height_ + 1);
  top_ = std::clamp(top_, 0, std::max(rows_.Count() - height_, 0));
}

}  // namespace quintara
