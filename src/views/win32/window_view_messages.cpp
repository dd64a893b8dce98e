#include "views/win32/window_view.h"

#include <commctrl.h>
#include <windowsx.h>

namespace quintara::win32 {
namespace {

using dialog::Kind;

// Older headers haven't it.
constexpr UINT kDpiChanged = 0x02E0;

int ShiftOf(WPARAM keys) {
  constexpr int kShift = 1;
  constexpr int kControl = 2;
  constexpr int kAlt = 4;
  return ((keys & MK_SHIFT) != 0 ? kShift : 0) + ((keys & MK_CONTROL) != 0 ? kControl : 0) +
         (GetKeyState(VK_MENU) < 0 ? kAlt : 0);
}

// What begins to be pressed or is let go by a message; 0 for another one. A second click that comes soon is one more.
int ButtonDown(UINT message) {
  if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) return dialog::button::kLeft;
  return message == WM_RBUTTONDOWN || message == WM_RBUTTONDBLCLK ? dialog::button::kRight : 0;
}

int ButtonUp(UINT message) {
  if (message == WM_LBUTTONUP) return dialog::button::kLeft;
  return message == WM_RBUTTONUP ? dialog::button::kRight : 0;
}

WindowView* ViewOf(HWND window) {
  return reinterpret_cast<WindowView*>(GetWindowLongPtrW(window, DWLP_USER));
}

}  // namespace

// No failure may pass through the toolkit, which calls this.
std::optional<LRESULT> WindowView::Guarded(const std::function<std::optional<LRESULT>()>& answer) {
  try {
    return answer();
  } catch (...) {
    Fail(std::current_exception());
    return 0;
  }
}

INT_PTR CALLBACK WindowView::DialogProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, second);
    return FALSE;
  }
  auto* view = ViewOf(window);
  const auto self = view == nullptr ? nullptr : view->weak_from_this().lock();
  if (!self || !view->isReady_) return FALSE;
  const auto result = view->Guarded([&] { return view->OnMessage(message, first, second); });
  if (!result) return FALSE;
  if (IsWindow(window) != 0) SetWindowLongPtrW(window, DWLP_MSGRESULT, *result);
  return TRUE;
}

LRESULT CALLBACK WindowView::ControlProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* view = ViewOf(GetParent(window));
  auto* item = view == nullptr ? nullptr : view->ItemOf(window);
  if (item == nullptr) return DefWindowProcW(window, message, first, second);
  const auto former = item->former;
  const auto self = view->weak_from_this().lock();
  if (self && view->isReady_ && view->isLoaded_) {
    if (const auto result = view->Guarded([&] { return view->OnControl(*item, message, first, second); })) {
      return *result;
    }
  }
  return IsWindow(window) != 0 ? CallWindowProcW(former, window, message, first, second) : 0;
}

std::optional<LRESULT> WindowView::OnMessage(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_COMMAND:
      if (HIWORD(first) == BN_CLICKED) OnCommand(LOWORD(first));
      return 0;
    case WM_NOTIFY: return OnNotice(*reinterpret_cast<NMHDR*>(second));
    case WM_TIMER:
      if (const auto* item = ItemNumbered(static_cast<int>(first)); item != nullptr && item->control.isEnabled) {
        Deliver([name = item->control.name](dialog::Events& events) { events.OnTick(name); });
      }
      return 0;
    case WM_CLOSE: DeliverFromUser([this](dialog::Events&) { Unload(); }); return 0;
    case WM_DESTROY: OnDestroyed(); return {};
    case WM_DRAWITEM: DrawPicture(*reinterpret_cast<DRAWITEMSTRUCT*>(second)); return TRUE;
    case TreeWindow::kLook:
      if (auto* item = ItemOf(reinterpret_cast<HWND>(second)); item != nullptr && item->tree) {
        Deliver([&](dialog::Events&) { item->tree->Look(); });
      }
      return 0;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
      DeliverFromUser([&](dialog::Events& events) { events.OnMouseUp({}, ButtonUp(message)); });
      return {};
    default: return OnGeometry(message, first, second);
  }
}

std::optional<LRESULT> WindowView::OnGeometry(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_SIZE: OnSize(); return {};
    case WM_SIZING: OnSizing(*reinterpret_cast<RECT*>(second), first); return TRUE;
    case WM_WINDOWPOSCHANGING: KeepWithinNumbers(*reinterpret_cast<WINDOWPOS*>(second)); return {};
    case WM_GETMINMAXINFO: {
      // A dialog that its owner wants larger than the screen is so.
      constexpr LONG kAnySize = 32767;
      reinterpret_cast<MINMAXINFO*>(second)->ptMaxTrackSize = {kAnySize, kAnySize};
      return 0;
    }
    case kDpiChanged: OnDpiChanged(*reinterpret_cast<const RECT*>(second)); return 0;
    default: return {};
  }
}

// The toolkit marks a radio button by itself, and tells of one that was marked before as well.
void WindowView::OnCommand(int number) {
  auto* item = ItemNumbered(number);
  if (item == nullptr || !item->control.isEnabled) return;
  const bool isChoice = item->control.kind == Kind::kRadioButton;
  if (item->control.kind != Kind::kButton && !isChoice) return;
  if (isChoice && item->control.isChecked) return;
  if (isChoice) Check(*item, true);
  DeliverFromUser([name = item->control.name](dialog::Events& events) { events.OnClick(name); });
}

std::optional<LRESULT> WindowView::OnNotice(NMHDR& notice) {
  auto* item = ItemOf(notice.hwndFrom);
  if (item == nullptr || !item->tree) return {};
  int chosen = 0;
  const auto result = item->tree->Answer(notice, chosen);
  if (chosen != 0 && !item->control.clicksTick) {
    DeliverFromUser([&](dialog::Events& events) { events.OnNodeClick(item->control.name, chosen); });
  }
  return result;
}

std::optional<LRESULT> WindowView::OnControl(ViewItem& item, UINT message, WPARAM first, LPARAM second) {
  if (ButtonDown(message) != 0) return OnPointer(item, message, first, second);
  if (const int button = ButtonUp(message)) {
    DeliverFromUser([&](dialog::Events& events) { events.OnMouseUp(item.control.name, button); });
    if (item.tree && button == dialog::button::kRight) return 0;
  }
  const bool isSpace = first == VK_SPACE && item.tree && item.control.clicksTick;
  if (isSpace && message == WM_CHAR) return 0;
  if (isSpace && message == WM_KEYDOWN) {
    if (const int node = item.tree->Selected()) {
      DeliverFromUser([&](dialog::Events& events) { events.OnNodeClick(item.control.name, node); });
    }
    return 0;
  }
  return {};
}

// The toolkit would wait for the right button to be let go, and show another node as chosen meanwhile.
LRESULT WindowView::OnPointer(ViewItem& item, UINT message, WPARAM first, LPARAM second) {
  const int button = ButtonDown(message);
  const POINT point{GET_X_LPARAM(second), GET_Y_LPARAM(second)};
  const auto window = item.window;
  const int node = item.tree && button == dialog::button::kLeft ? item.tree->NodeHitBy(point) : 0;
  if (item.tree && GetFocus() != window) SetFocus(window);
  DeliverFromUser([&](dialog::Events& events) {
    events.OnMouseDown(item.control.name, button, ShiftOf(first), scale_.PlaceInTwips(point.x),
                       scale_.PlaceInTwips(point.y));
  });
  if (!isLoaded_ || IsWindow(window) == 0 || (item.tree && button == dialog::button::kRight)) return 0;
  const auto result = CallWindowProcW(item.former, window, message, first, second);
  if (node != 0 && isLoaded_) {
    DeliverFromUser([&](dialog::Events& events) { events.OnNodeClick(item.control.name, node); });
  }
  return result;
}

void WindowView::DrawPicture(const DRAWITEMSTRUCT& request) {
  FillRect(request.hDC, &request.rcItem, GetSysColorBrush(COLOR_3DFACE));
  const auto* item = ItemOf(request.hwndItem);
  if (item == nullptr || !item->picture) return;
  const int size = item->picture->Size();
  const auto& area = request.rcItem;
  item->picture->Draw(request.hDC, item->control.picture,
                      static_cast<int>(area.left + (area.right - area.left - size) / 2),
                      static_cast<int>(area.top + (area.bottom - area.top - size) / 2));
}

}  // namespace quintara::win32
