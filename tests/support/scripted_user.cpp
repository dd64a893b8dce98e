#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "support/scripted_view.h"

namespace quintara::test {
namespace {

constexpr int kMiddleOfARow = 120;

bool IsReachable(const dialog::TreeContent& tree, int node) {
  for (int at = tree.Parent(node); at != 0; at = tree.Parent(at)) {
    if (!tree.IsExpanded(at)) return false;
  }
  return true;
}

}  // namespace

// The failure alone could be taken for one of the host systems, and be shown by the command under test.
void ScriptedView::Impossible(const std::string& what) const {
  ADD_FAILURE() << layout_.name << ": " << what;
  throw Failure(failure::kInternal, layout_.name + ": " + what);
}

ScriptedView::ControlState& ScriptedView::Usable(const std::string& control, Aspect aspect) {
  const auto found = controls_.find(control);
  if (found == controls_.end() || !Has(found->second, aspect)) Impossible("no \"" + control + "\" of this kind");
  if (!isShown_) Impossible("it isn't shown any more");
  if (!found->second.isEnabled) Impossible("\"" + control + "\" is disabled");
  return found->second;
}

int ScriptedView::NodeOf(const std::string& tree, const std::string& text) const {
  const auto* content = Of(tree).tree;
  if (content == nullptr) Impossible("\"" + tree + "\" has no nodes");
  for (int node = 1; node <= content->Count(); ++node) {
    if (content->Text(node) == text) return node;
  }
  Impossible("no node \"" + text + "\"");
}

void ScriptedView::Press(const std::string& control) {
  auto& pressed = Usable(control, Aspect::kPress);
  if (Has(pressed, Aspect::kChoice)) Choose(pressed);
  events_.OnClick(control);
}

void ScriptedView::Type(const std::string& control, const std::string& text) {
  Usable(control, Aspect::kType).text = text;
}

void ScriptedView::Click(const std::string& tree, int button, int node) {
  auto& state = Usable(tree, Aspect::kTree);
  const int rows = state.tree == nullptr ? 0 : state.tree->Count();
  if (node < 0 || node > rows) Impossible("no node " + std::to_string(node));
  if (node != 0 && !IsReachable(*state.tree, node)) Impossible("a node is closed above " + state.tree->Text(node));
  state.topNode = node;
  const int row = node == 0 ? rows : 0;
  events_.OnMouseDown(tree, button, 0, kMiddleOfARow, row * 2 * kMiddleOfARow + kMiddleOfARow);
  if (isShown_ && button == dialog::button::kLeft && node != 0) {
    state.selectedNode = node;
    events_.OnNodeClick(tree, node);
  }
  if (isShown_) events_.OnMouseUp(tree, button);
}

void ScriptedView::LeftClick(const std::string& tree, const std::string& text) {
  Click(tree, dialog::button::kLeft, NodeOf(tree, text));
}

void ScriptedView::RightClick(const std::string& tree, const std::string& text) {
  Click(tree, dialog::button::kRight, NodeOf(tree, text));
}

void ScriptedView::DoubleClick(const std::string& tree, const std::string& text) {
  LeftClick(tree, text);
  const int node = NodeOf(tree, text);
  Of(tree).tree->SetExpanded(node, !Of(tree).tree->IsExpanded(node));
  LeftClick(tree, text);
}

void ScriptedView::GoTo(const std::string& tree, const std::string& text) {
  auto& state = Usable(tree, Aspect::kTree);
  state.selectedNode = NodeOf(tree, text);
  if (!state.made.clicksTick) events_.OnNodeClick(tree, state.selectedNode);
}

void ScriptedView::Expand(const std::string& tree, const std::string& text, bool expanded) {
  Usable(tree, Aspect::kTree).tree->SetExpanded(NodeOf(tree, text), expanded);
}

void ScriptedView::Drag(const dialog::Box& by) {
  auto box = Usable({}, Aspect::kAny).box;
  if (!layout_.isSizable && (by.width != 0 || by.height != 0)) Impossible("its size can't be changed");
  box.left += by.left;
  box.top += by.top;
  box.width += by.width;
  box.height += by.height;
  Resize(box);
}

void ScriptedView::ReleaseMouse(const std::string& control) {
  Usable(control, Aspect::kBox);
  events_.OnMouseUp(control, dialog::button::kLeft);
}

void ScriptedView::Tick(const std::string& timer) {
  Usable(timer, Aspect::kTimer);
  events_.OnTick(timer);
}

void ScriptedView::Close() {
  Usable({}, Aspect::kAny);
  Gone();
}

ScriptedDialogs::ScriptedDialogs(TestPlatform& platform) : platform_(platform) {
  desktop_->gate = platform.TheGate();
  platform.Native().SetViewMaker([desktop = desktop_, views = views_](const auto& layout, auto& events) {
    desktop->gate->Pass("Platform.NewView", [&] { return layout.name; });
    return views->emplace_back(std::make_shared<ScriptedView>(desktop, layout, events));
  });
}

ScriptedDialogs::~ScriptedDialogs() {
  platform_.Native().SetViewMaker({});
  for (const auto& [dialog, scripts] : desktop_->scripts) {
    EXPECT_TRUE(scripts.empty()) << dialog << " was not shown as often as it has scripts";
  }
}

void ScriptedDialogs::WhenShown(const std::string& dialog, UserScript script) {
  desktop_->scripts[dialog].push_back(std::move(script));
}

int ScriptedDialogs::Made(const std::string& dialog) const {
  const auto isMeant = [&](const auto& view) { return view->MadeFrom().name == dialog; };
  return static_cast<int>(std::ranges::count_if(*views_, isMeant));
}

ScriptedView& ScriptedDialogs::Last(const std::string& dialog) const {
  const auto isMeant = [&](const auto& view) { return view->MadeFrom().name == dialog; };
  const auto found = std::find_if(views_->rbegin(), views_->rend(), isMeant);
  if (found != views_->rend()) return **found;
  ADD_FAILURE() << dialog << " was never made";
  throw Failure(failure::kInternal, dialog + " was never made");
}

}  // namespace quintara::test
