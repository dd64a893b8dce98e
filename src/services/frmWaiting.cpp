#include "services/frmWaiting.h"

#include "access/session/process.h"
#include "services/topmost_place.h"

namespace quintara {
namespace {

constexpr auto kLabel = "Label1";

}  // namespace

void frmWaiting::Initiate() {
  auto& view = TheView();
  view.Hide();
  const auto place = TopmostPlace(view);
  view.ShowOnTop(place.left, place.top, place.width, place.height);
}

dialog::Layout frmWaiting::MakeLayout() const {
  return {.name = "frmWaiting",
          .text = "Please wait...",
          .box = {.width = 4800, .height = 1350},
          .controls = {{.name = kLabel,
                        .kind = dialog::Kind::kLabel,
                        .box = {.left = 240, .top = 300, .width = 4200, .height = 255},
                        .text = "Global Refresh processing..."}}};
}

void frmWaiting::OnLoad() {
  const auto& texts = Process().texts;
  TheView().SetText({}, texts.QD_WAITING_CAPTION.text);
  if (!texts.QD_WAITING_LBL.text.empty()) TheView().SetText(kLabel, texts.QD_WAITING_LBL.text);
  ApplyFonts();
}

}  // namespace quintara
