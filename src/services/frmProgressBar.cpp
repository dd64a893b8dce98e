#include "services/frmProgressBar.h"

#include "access/session/process.h"
#include "base/failure.h"
#include "services/topmost_place.h"

namespace quintara {
namespace {

constexpr auto kLabel = "lbl";
constexpr auto kBar = "pb1";
constexpr int kWidth = 400;  // in pixels, as the height
constexpr int kHeight = 100;
constexpr int kMaxAsMade = 100;

}  // namespace

void frmProgressBar::Initiate(std::int16_t Steps) {
  auto& view = TheView();
  if (Steps < value_) throw Failure(failure::kInvalidPropertyValue);
  max_ = Steps;
  view.SetProgress(kBar, value_, max_);
  view.Hide();
  const auto place = TopmostPlace(view);
  view.ShowOnTop(place.left, place.top, kWidth, kHeight);
}

void frmProgressBar::IncrementBar(const std::string& Text) {
  auto& view = TheView();
  view.SetText(kLabel, Text);
  view.Redraw(kLabel);
  if (value_ == max_) throw Failure(failure::kInvalidPropertyValue);
  ++value_;
  view.SetProgress(kBar, value_, max_);
  view.Redraw(kBar);
}

dialog::Layout frmProgressBar::MakeLayout() const {
  return {.name = "frmProgressBar",
          .box = {.width = 6000, .height = 1500},
          .controls = {{.name = kLabel,
                        .kind = dialog::Kind::kLabel,
                        .box = {.left = 120, .top = 120, .width = 5640, .height = 255},
                        .text = "Retrieving Root Component..."},
                       {.name = kBar,
                        .kind = dialog::Kind::kProgressBar,
                        .box = {.left = 120, .top = 465, .width = 5640, .height = 375}}}};
}

void frmProgressBar::OnLoad() {
  value_ = 0;
  max_ = kMaxAsMade;
  TheView().SetText({}, Process().texts.QD_PROGRESSBAR_CAPTION.text);
  ApplyFonts();
}

}  // namespace quintara
