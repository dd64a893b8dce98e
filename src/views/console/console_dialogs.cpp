#include "views/console/console_dialogs.h"

#include <algorithm>
#include <utility>

#include "views/console/full_screen_view.h"

namespace quintara {
namespace {

using dialog::Kind;

// What nobody has answered isn't done.
class CancelledView final : public PlainView {
 public:
  using PlainView::PlainView;

 private:
  void Wait() override {
    const auto cancel = std::ranges::find_if(Items(), [](const ViewItem& item) {
      return item.control.kind == Kind::kButton && item.control.shortcut == "Esc" && item.control.isEnabled;
    });
    if (cancel != Items().end()) Sink().OnClick(std::string(cancel->control.name));
    if (IsShown()) Unload();
  }
};

bool CanBeAnswered(const dialog::Control& control) {
  return control.kind == Kind::kButton || control.kind == Kind::kTextBox || control.kind == Kind::kRadioButton ||
         control.kind == Kind::kTree;
}

}  // namespace

ConsoleDialogs::ConsoleDialogs(Surroundings surroundings)
    : around_(std::move(surroundings)), screen_(std::make_shared<FullScreen>(around_.screen)) {}

std::shared_ptr<dialog::View> ConsoleDialogs::Make(const dialog::Layout& layout, dialog::Events& events) {
  const auto found = makers_.find(layout.name);
  if (found != makers_.end() && found->second) return found->second(layout, events);
  return MakeOwn(layout, events);
}

void ConsoleDialogs::SetMaker(const std::string& dialog, Maker maker) {
  makers_[dialog] = std::move(maker);
}

std::shared_ptr<PlainView> ConsoleDialogs::MakeOwn(const dialog::Layout& layout, dialog::Events& events) {
  if (std::ranges::none_of(layout.controls, CanBeAnswered)) {
    return std::make_shared<BarView>(layout, events, around_.line);
  }
  if (around_.canAsk) return std::make_shared<FullScreenView>(layout, events, screen_);
  return std::make_shared<CancelledView>(layout, events);
}

}  // namespace quintara
