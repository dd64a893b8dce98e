#include "views/console/bar_view.h"

#include <utility>

namespace quintara {

using dialog::Kind;

BarView::BarView(const dialog::Layout& layout, dialog::Events& events, Line line)
    : PlainView(layout, events), line_(std::move(line)) {}

void BarView::ShowOnTop(int left, int top, int width, int height) {
  PlainView::ShowOnTop(left, top, width, height);
  Show();
}

void BarView::Redraw(const std::string& control) {
  PlainView::Redraw(control);
  if (IsShown()) Show();
}

void BarView::Hide() {
  if (IsShown()) line_.clear();
  PlainView::Hide();
}

void BarView::Show() {
  const auto* bar = FirstOf(Kind::kProgressBar);
  const auto* label = FirstOf(Kind::kLabel);
  std::optional<double> fraction;
  if (bar != nullptr) fraction = bar->max == 0 ? 0.0 : static_cast<double>(bar->value) / bar->max;
  line_.show(fraction, label == nullptr ? Text({}) : label->control.text);
}

}  // namespace quintara
