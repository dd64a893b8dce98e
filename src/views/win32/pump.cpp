#include "views/win32/pump.h"

namespace quintara::win32 {
namespace {

thread_local Pump* innermost = nullptr;

struct Search {
  HWND dialog;
  std::vector<HWND>* found;
};

BOOL CALLBACK NoteOther(HWND window, LPARAM search) {
  const auto& sought = *reinterpret_cast<const Search*>(search);
  const bool isUsable = IsWindowVisible(window) != 0 && IsWindowEnabled(window) != 0;
  if (isUsable && window != sought.dialog) sought.found->push_back(window);
  return TRUE;
}

}  // namespace

Pump::Pump() : outer_(innermost) {
  innermost = this;
}

Pump::~Pump() {
  innermost = outer_;
}

void Pump::Fail(const std::exception_ptr& failure) {
  if (innermost != nullptr) innermost->Take(failure);
}

void Pump::Take(const std::exception_ptr& failure) {
  if (failure_ == nullptr) failure_ = failure;
}

// The end of the thread is meant for whoever runs it.
bool Pump::HandleOne(HWND dialog) {
  MSG message{};
  if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == 0) return false;
  if (message.message == WM_QUIT) {
    PostQuitMessage(static_cast<int>(message.wParam));
    isQuitting_ = true;
    return false;
  }
  if (dialog != nullptr && IsDialogMessageW(dialog, &message) != 0) return true;
  TranslateMessage(&message);
  DispatchMessageW(&message);
  return true;
}

void Pump::Wait() {
  MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

void Pump::Rethrow() const {
  if (failure_ != nullptr) std::rethrow_exception(failure_);
}

OthersDisabled::OthersDisabled(HWND window) {
  Search search{window, &windows_};
  EnumThreadWindows(GetCurrentThreadId(), NoteOther, reinterpret_cast<LPARAM>(&search));
  for (const auto other : windows_) EnableWindow(other, FALSE);
}

OthersDisabled::~OthersDisabled() {
  for (const auto other : windows_) {
    if (IsWindow(other) != 0) EnableWindow(other, TRUE);
  }
}

}  // namespace quintara::win32
