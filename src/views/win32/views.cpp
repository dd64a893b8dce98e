#include "views/win32/views.h"

#include "views/win32/pump.h"
#include "views/win32/window_view.h"

namespace quintara::win32 {

std::shared_ptr<dialog::View> NewView(const dialog::Layout& layout, dialog::Events& events) {
  return WindowView::Make(layout, events);
}

// Some windows ask to be drawn for ever.
void CatchUp() {
  constexpr int kMostMessages = 10'000;
  Pump pump;
  for (int i = 0; i < kMostMessages && !pump.IsOver(); ++i) {
    if (!pump.HandleOne(nullptr)) break;
  }
  pump.Rethrow();
}

}  // namespace quintara::win32
