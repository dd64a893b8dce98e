#include "quintara/review_desk.h"

#include <utility>

#include "base/failure.h"
#include "views/console/plain_view.h"

namespace quintara {
namespace {

constexpr auto kPanel = "MainPanel";
constexpr auto kTree = "Tree1";
constexpr auto kName = "txtWIPName";
constexpr auto kAllInstances = "GetAllInstances(0)";
constexpr auto kCreate = "cmdCreateWIP";
constexpr auto kCancel = "cmdCancel";

const dialog::TreeContent& TreeOf(const PlainView& view) {
  const auto* tree = view.Tree(kTree);
  if (tree == nullptr) throw Failure(failure::kObjectNotSet, "the panel has no tree");
  return *tree;
}

}  // namespace

class ReviewDesk::Events final : public dialog::Events {
 public:
  Events(ReviewDesk& desk, dialog::Events& panel) : desk_(desk), panel_(panel) {}
  void SetView(const std::shared_ptr<PlainView>& view) { view_ = view; }

  void OnClick(const std::string& control) override {
    if (control == kCreate && !Ask()) return;
    panel_.OnClick(control);
    if (control == kCreate && desk_.wishes_.whenCreated) desk_.wishes_.whenCreated();
  }
  void OnNodeClick(const std::string& control, int node) override { panel_.OnNodeClick(control, node); }
  void OnMouseDown(const std::string& control, int button, int shift, int x, int y) override {
    panel_.OnMouseDown(control, button, shift, x, y);
  }
  void OnMouseUp(const std::string& control, int button) override { panel_.OnMouseUp(control, button); }
  void OnResize() override { panel_.OnResize(); }
  void OnTick(const std::string& timer) override { panel_.OnTick(timer); }
  void OnUnloaded() override { panel_.OnUnloaded(); }

 private:
  // False when that is all that is to be done.
  bool Ask() {
    const auto view = view_.lock();
    if (Objects(view->Text(kName))) return false;
    const auto& tree = TreeOf(*view);
    desk_.asked_ = AskedComponents(tree, ReviewNodesOf(tree, desk_.partNumberOf_));
    desk_.allInstances_ = view->IsChecked(kAllInstances);
    if (desk_.wishes_.dryRun) view->Unload();
    return !desk_.wishes_.dryRun;
  }

  bool Objects(const std::string& name) {
    const auto objection = desk_.wishes_.objectionTo ? desk_.wishes_.objectionTo(name) : std::string();
    if (!objection.empty()) desk_.dialogs_.TheScreen().Tell(objection);
    return !objection.empty();
  }

  ReviewDesk& desk_;
  dialog::Events& panel_;
  std::weak_ptr<PlainView> view_;
};

class ReviewDesk::Panel final : public PlainView {
 public:
  Panel(ReviewDesk& desk, const dialog::Layout& layout, dialog::Events& events)
      : PlainView(layout, events), desk_(desk) {}

 private:
  void Wait() override {
    const auto& tree = TreeOf(*this);
    const auto nodes = ReviewNodesOf(tree, desk_.partNumberOf_);
    desk_.unmatched_ = UnmatchedPattern(nodes, desk_.wishes_.rules);
    if (desk_.unmatched_) return Unload();
    desk_.reports_ = ApplyRules(tree, nodes, desk_.wishes_.rules, [this](int node) { ClickRight(node); });
    if (desk_.allInstances_) Sink().OnClick(kAllInstances);
    Sink().OnClick(kCreate);
    // Nobody is there to give it another name.
    if (IsShown()) Sink().OnClick(kCancel);
    if (IsShown()) Unload();
  }

  void ClickRight(int node) {
    Sink().OnMouseDown(kTree, dialog::button::kRight, 0, 0, (node - 1) * kRowHeight + kRowHeight / 2);
    Sink().OnMouseUp(kTree, dialog::button::kRight);
  }

  ReviewDesk& desk_;
};

ReviewDesk::ReviewDesk(Wishes wishes, ConsoleDialogs& dialogs, PartNumberOfObject partNumberOf)
    : wishes_(std::move(wishes)),
      dialogs_(dialogs),
      partNumberOf_(std::move(partNumberOf)),
      allInstances_(wishes_.allInstances) {
  dialogs_.SetMaker(kPanel,
                    [this](const dialog::Layout& layout, dialog::Events& events) { return NewView(layout, events); });
}

ReviewDesk::~ReviewDesk() {
  dialogs_.SetMaker(kPanel, {});
}

std::shared_ptr<dialog::View> ReviewDesk::NewView(const dialog::Layout& layout, dialog::Events& events) {
  auto& own = *events_.emplace_back(std::make_unique<Events>(*this, events));
  const auto view =
      wishes_.rules.rules.empty() ? dialogs_.MakeOwn(layout, own) : std::make_shared<Panel>(*this, layout, own);
  own.SetView(view);
  view->SetText(kName, wishes_.name);
  if (wishes_.allInstances) view->SetChecked(kAllInstances, true);
  return view;
}

}  // namespace quintara
