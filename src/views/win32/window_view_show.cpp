#include "views/win32/window_view.h"

#include <utility>

#include "base/attempt.h"
#include "base/failure.h"
#include "views/win32/desktop.h"

namespace quintara::win32 {
namespace {

// The dialog that the user is at now, on this thread.
thread_local HWND modal = nullptr;

}  // namespace

HWND WindowView::ShownModally() {
  return modal;
}

void WindowView::Deliver(const Event& event) {
  const auto self = weak_from_this().lock();
  if (!self || !isReady_ || !isLoaded_) return;
  const FormerPixels pixels(hostAwareness_);
  ++atWork_;
  try {
    event(events_);
  } catch (...) {
    Fail(std::current_exception());
  }
  --atWork_;
  if (!isLoaded_ && atWork_ == 0 && pump_ == nullptr) Destroy();
}

void WindowView::DeliverFromUser(const Event& event) {
  if (std::exchange(isAnswering_, true)) return;
  const auto self = weak_from_this().lock();
  Deliver(event);
  isAnswering_ = false;
}

void WindowView::Fail(const std::exception_ptr& failure) {
  if (pump_ != nullptr) pump_->Take(failure);
  Pump::Fail(failure);
  ErrorState ignored;
  if (pump_ == nullptr) Attempt(ignored, [&] { Unload(); });
}

HWND WindowView::Owner() {
  isOverDialog_ = modal != nullptr;
  if (isOverDialog_) return modal;
  return CanBeAnswered() ? GetActiveWindow() : nullptr;
}

// The owner may let go of the view while it is shown.
void WindowView::ShowModal() {
  const auto self = shared_from_this();
  ItemNamed({});
  if (isShown_) throw Failure(failure::kInvalidCall, "The dialog '" + layout_.name + "' is shown already");
  Pump pump;
  const auto outerPump = std::exchange(pump_, &pump);
  const auto outerModal = std::exchange(modal, window_);
  Appear();
  while (isShown_ && !pump.IsOver()) {
    if (!pump.HandleOne(window_) && isShown_ && !pump.IsOver()) Pump::Wait();
  }
  modal = outerModal;
  ErrorState ignored;
  if (pump.IsOver()) Attempt(ignored, [&] { Unload(); });
  pump_ = outerPump;
  if (!isLoaded_ && atWork_ == 0) Destroy();
  pump.Rethrow();
}

void WindowView::Appear() {
  const OwnPixels pixels;
  for (auto& item : items_) {
    if (item.tree) item.tree->Look();
  }
  isShown_ = true;
  others_.emplace(window_);
  StartTimers();
  ShowWindow(window_, SW_SHOW);
  NoteBorders();
  SetForegroundWindow(window_);
  if (const auto first = GetNextDlgTabItem(window_, nullptr, FALSE)) SetFocus(first);
}

void WindowView::Hide() {
  ItemNamed({});
  Disappear();
}

// The others come back first, since the desktop would look for the next window among other programs' else.
void WindowView::Disappear() {
  isShown_ = false;
  StopTimers();
  others_.reset();
  if (window_ != nullptr) ShowWindow(window_, SW_HIDE);
}

// Whoever calls this doesn't let messages through afterwards.
void WindowView::ShowOnTop(int left, int top, int width, int height) {
  const OwnPixels pixels;
  ItemNamed({});
  isShown_ = true;
  StartTimers();
  constexpr int kUnit = Scale::kTwipsOfPixel;
  Resize({left * kUnit, top * kUnit, width * kUnit, height * kUnit},
         [&] { PlaceWindow(HWND_TOPMOST, SWP_SHOWWINDOW); });
  Redraw({});
}

void WindowView::Unload() {
  if (!isLoaded_) return;
  const auto self = shared_from_this();
  Disappear();
  for (auto& item : items_) {
    if (item.tree) item.tree->Forget();
  }
  isLoaded_ = false;
  events_.OnUnloaded();
  if (atWork_ == 0 && pump_ == nullptr) Destroy();
}

void WindowView::Destroy() {
  const auto gone = std::exchange(window_, nullptr);
  isReady_ = false;
  if (gone == nullptr) return;
  for (auto& item : items_) {
    if (item.tree) item.tree->RemoveRows();
  }
  LetGo(gone);
  DestroyWindow(gone);
}

// The controls answer for themselves again, and give back what they hold: this may be gone by then.
void WindowView::LetGo(HWND window) {
  for (auto& item : items_) {
    if (item.former == nullptr) continue;
    SetWindowLongPtrW(item.window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(std::exchange(item.former, nullptr)));
  }
  SetWindowLongPtrW(window, DWLP_USER, 0);
}

// The toolkit takes it away, perhaps with its owner.
void WindowView::OnDestroyed() {
  for (auto& item : items_) {
    if (item.tree) item.tree->RemoveRows();
    if (item.tree) item.tree->Forget();
  }
  isShown_ = false;
  others_.reset();
  LetGo(std::exchange(window_, nullptr));
  Deliver([this](dialog::Events& events) {
    isLoaded_ = false;
    events.OnUnloaded();
  });
}

void WindowView::StartTimers() {
  for (const auto& item : items_) {
    if (item.control.kind != dialog::Kind::kTimer || item.control.interval <= 0) continue;
    SetTimer(window_, static_cast<UINT_PTR>(item.number), static_cast<UINT>(item.control.interval), nullptr);
  }
}

void WindowView::StopTimers() {
  for (const auto& item : items_) {
    if (item.control.kind == dialog::Kind::kTimer) KillTimer(window_, static_cast<UINT_PTR>(item.number));
  }
}

}  // namespace quintara::win32
