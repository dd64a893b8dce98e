#include "support/scripted_view.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"

namespace quintara::test {
namespace {

constexpr int kRowHeight = 240;
constexpr int kTwipsOfPixel = 15;

std::string InTwips(const dialog::Box& box) {
  return std::to_string(box.left) + ", " + std::to_string(box.top) + ", " + std::to_string(box.width) + ", " +
         std::to_string(box.height);
}

std::string InWords(const dialog::Font& font) {
  return font.name + ", " + std::to_string(font.size) + ", " + std::to_string(font.charset) +
         (font.bold ? ", bold" : "") + (font.italic ? ", italic" : "");
}

void CheckNode(const dialog::TreeContent* tree, int node) {
  if (tree == nullptr || node < 1 || node > tree->Count()) throw Failure(failure::kSubscriptOutOfRange);
}

// The node in the row below, 0 for none.
int RowBelow(const dialog::TreeContent& tree, int node) {
  if (tree.IsExpanded(node) && tree.FirstChild(node) != 0) return tree.FirstChild(node);
  int at = node;
  while (at != 0 && tree.Next(at) == 0) at = tree.Parent(at);
  return at == 0 ? 0 : tree.Next(at);
}

}  // namespace

ScriptedView::ScriptedView(std::shared_ptr<ScriptedDesktop> desktop, const dialog::Layout& layout,
                           dialog::Events& events)
    : desktop_(std::move(desktop)), layout_(layout), events_(events) {
  auto& itself = controls_[""];
  itself.isDialog = true;
  itself.text = layout.text;
  itself.box = layout.box;
  itself.box.left = (desktop_->screen.width - layout.box.width) / 2;
  itself.box.top = (desktop_->screen.height - layout.box.height) / 2;
  for (const auto& made : layout.controls) {
    if (controls_.contains(made.name)) throw Failure(failure::kDuplicateKey, "two controls \"" + made.name + "\"");
    const auto container = controls_.find(made.container);
    if (container == controls_.end() || !(made.container.empty() || Has(container->second, Aspect::kFrame))) {
      throw Failure(failure::kElementNotFound, "no frame \"" + made.container + "\"");
    }
    auto& control = controls_[made.name];
    control.made = made;
    control.text = made.text;
    control.isEnabled = made.isEnabled;
    control.box = made.box;
    if (made.isChecked) Choose(control);
  }
}

bool ScriptedView::Has(const ControlState& control, Aspect aspect) {
  using dialog::Kind;
  const auto kind = control.made.kind;
  const auto is = [&](Kind other) { return !control.isDialog && kind == other; };
  switch (aspect) {
    case Aspect::kAny: return true;
    case Aspect::kText: return !is(Kind::kPicture) && !is(Kind::kTree) && !is(Kind::kProgressBar) && !is(Kind::kTimer);
    case Aspect::kFont: return is(Kind::kTree) || Has(control, Aspect::kText);
    case Aspect::kBox: return !is(Kind::kTimer);
    case Aspect::kFrame: return is(Kind::kFrame);
    case Aspect::kPress: return is(Kind::kButton) || is(Kind::kRadioButton);
    case Aspect::kType: return is(Kind::kTextBox);
    case Aspect::kChoice: return is(Kind::kRadioButton);
    case Aspect::kProgress: return is(Kind::kProgressBar);
    case Aspect::kTree: return is(Kind::kTree);
    case Aspect::kTimer: return is(Kind::kTimer);
  }
  return false;
}

ScriptedView::ControlState& ScriptedView::Having(const std::string& control, Aspect aspect) {
  const auto found = controls_.find(control);
  if (!isLoaded_) throw Failure(failure::kObjectUnloaded, layout_.name + " is gone");
  if (found == controls_.end()) {
    throw Failure(failure::kElementNotFound, layout_.name + " has no control \"" + control + "\"");
  }
  if (!Has(found->second, aspect)) {
    throw Failure(failure::kNoSuchMember, "\"" + control + "\" of " + layout_.name + " is of another kind");
  }
  return found->second;
}

ScriptedView::ControlState& ScriptedView::TreeOf(const std::string& control) {
  return Having(control, Aspect::kTree);
}

const ScriptedView::ControlState& ScriptedView::Of(const std::string& control) const {
  const auto found = controls_.find(control);
  if (found == controls_.end()) Impossible("there is no control \"" + control + "\"");
  return found->second;
}

void ScriptedView::Read(const std::string& operation, const std::string& detail) {
  desktop_->gate->Pass("View." + operation, [&] { return layout_.name + (detail.empty() ? "" : ", ") + detail; });
}

void ScriptedView::Change(const std::string& operation, const std::string& detail) {
  Read(operation, detail);
  desktop_->record.push_back(layout_.name + "." + operation + (detail.empty() ? "" : "(" + detail + ")"));
}

std::string ScriptedView::Text(const std::string& control) {
  Read("Text", control);
  return Having(control, Aspect::kText).text;
}

void ScriptedView::SetText(const std::string& control, const std::string& text) {
  Change("SetText", control + ", " + text);
  Having(control, Aspect::kText).text = text;
}

bool ScriptedView::IsEnabled(const std::string& control) {
  Read("IsEnabled", control);
  return Having(control, Aspect::kAny).isEnabled;
}

void ScriptedView::SetEnabled(const std::string& control, bool enabled) {
  Change("SetEnabled", control + (enabled ? ", True" : ", False"));
  Having(control, Aspect::kAny).isEnabled = enabled;
}

bool ScriptedView::IsChecked(const std::string& control) {
  Read("IsChecked", control);
  return Having(control, Aspect::kChoice).isChecked;
}

void ScriptedView::SetChecked(const std::string& control, bool checked) {
  Change("SetChecked", control + (checked ? ", True" : ", False"));
  auto& choice = Having(control, Aspect::kChoice);
  if (checked) {
    Choose(choice);
  } else {
    choice.isChecked = false;
  }
}

void ScriptedView::Choose(ControlState& radioButton) {
  for (auto& [name, other] : controls_) {
    if (other.made.container == radioButton.made.container) other.isChecked = false;
  }
  radioButton.isChecked = true;
}

dialog::Box ScriptedView::BoxOf(const std::string& control) {
  Read("BoxOf", control);
  return Having(control, Aspect::kBox).box;
}

void ScriptedView::SetBox(const std::string& control, const dialog::Box& box) {
  Change("SetBox", control + ", " + InTwips(box));
  auto& state = Having(control, Aspect::kBox);
  if (state.isDialog) {
    Resize(box);
  } else {
    state.box = box;
  }
}

void ScriptedView::Resize(const dialog::Box& box) {
  const auto before = std::exchange(controls_[""].box, box);
  if (before.width != box.width || before.height != box.height) events_.OnResize();
}

dialog::Font ScriptedView::FontOf(const std::string& control) {
  Read("FontOf", control);
  return Having(control, Aspect::kFont).font;
}

void ScriptedView::SetFont(const std::string& control, const dialog::Font& font) {
  Change("SetFont", control + ", " + InWords(font));
  auto& state = Having(control, Aspect::kFont);
  if (font.size <= 0) throw Failure(failure::kInvalidPropertyValue);
  state.font = font;
  if (std::ranges::find(desktop_->fonts, font.name) == desktop_->fonts.end()) state.font.name = desktop_->fonts.front();
}

void ScriptedView::SetProgress(const std::string& control, int value, int max) {
  Change("SetProgress", control + ", " + std::to_string(value) + ", " + std::to_string(max));
  auto& bar = Having(control, Aspect::kProgress);
  if (value < 0 || value > max) throw Failure(failure::kInvalidPropertyValue);
  bar.progress = value;
  bar.mostProgress = max;
}

void ScriptedView::SetTree(const std::string& control, dialog::TreeContent* content) {
  Change("SetTree", control);
  auto& tree = TreeOf(control);
  tree.tree = content;
  tree.selectedNode = tree.topNode = 0;
}

void ScriptedView::TreeChanged(const std::string& control) {
  Read("TreeChanged", control);
  ++TreeOf(control).treeChanges;
}

int ScriptedView::NodeAt(const std::string& control, int x, int y) {
  Read("NodeAt", control + ", " + std::to_string(x) + ", " + std::to_string(y));
  const auto& tree = TreeOf(control);
  if (tree.tree == nullptr || tree.tree->Count() == 0 || x < 0 || y < 0 || x >= tree.box.width) return 0;
  int node = std::max(tree.topNode, 1);
  for (int row = y / kRowHeight; row > 0 && node != 0; --row) node = RowBelow(*tree.tree, node);
  return node;
}

int ScriptedView::SelectedNode(const std::string& control) {
  Read("SelectedNode", control);
  return TreeOf(control).selectedNode;
}

void ScriptedView::SelectNode(const std::string& control, int node) {
  Change("SelectNode", control + ", " + std::to_string(node));
  auto& tree = TreeOf(control);
  if (node != 0) CheckNode(tree.tree, node);
  tree.selectedNode = node;
}

void ScriptedView::EnsureVisible(const std::string& control, int node) {
  Change("EnsureVisible", control + ", " + std::to_string(node));
  auto& tree = TreeOf(control);
  CheckNode(tree.tree, node);
  for (int at = tree.tree->Parent(node); at != 0; at = tree.tree->Parent(at)) tree.tree->SetExpanded(at, true);
  tree.topNode = node;
}

void ScriptedView::ShowModal() {
  Change("ShowModal", {});
  Having({}, Aspect::kAny);
  if (isShown_) throw Failure(failure::kInvalidCall, layout_.name + " is shown already");
  isShown_ = true;
  try {
    auto& scripts = desktop_->scripts[layout_.name];
    if (!scripts.empty()) {
      const auto script = std::move(scripts.front());
      scripts.pop_front();
      script(*this);
    }
    if (isShown_) Impossible("nobody ends the loop");
  } catch (...) {
    if (isLoaded_) Unload();
    throw;
  }
}

void ScriptedView::Hide() {
  Change("Hide", {});
  Having({}, Aspect::kAny);
  isShown_ = isOnTop_ = false;
}

void ScriptedView::ShowOnTop(int left, int top, int width, int height) {
  const dialog::Box pixels = {left, top, width, height};
  Change("ShowOnTop", InTwips(pixels));
  Having({}, Aspect::kAny);
  isShown_ = isOnTop_ = true;
  Resize({left * kTwipsOfPixel, top * kTwipsOfPixel, width * kTwipsOfPixel, height * kTwipsOfPixel});
}

void ScriptedView::Redraw(const std::string& control) {
  Change("Redraw", control);
  ++Having(control, Aspect::kBox).redraws;
}

void ScriptedView::Unload() {
  Change("Unload", {});
  Having({}, Aspect::kAny);
  Gone();
}

void ScriptedView::Gone() {
  isLoaded_ = isShown_ = isOnTop_ = false;
  for (auto& [name, control] : controls_) control.tree = nullptr;
  events_.OnUnloaded();
}

dialog::Box ScriptedView::Screen() {
  Read("Screen", {});
  Having({}, Aspect::kAny);
  return desktop_->screen;
}

}  // namespace quintara::test
