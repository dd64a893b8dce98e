#include "views/win32/user.h"

#include <gtest/gtest.h>

#include <fstream>
#include <utility>

#include "base/text.h"
#include "base/text16_windows.h"

namespace quintara::test {
namespace {

constexpr auto kStep = "a step";
constexpr DWORD kPatience = 20'000;
constexpr UINT kTick = 10;

User* user = nullptr;

struct Search {
  std::wstring title;
  bool isShown;
  HWND found = nullptr;
};

BOOL CALLBACK FindByTitle(HWND window, LPARAM search) {
  auto& sought = *reinterpret_cast<Search*>(search);
  wchar_t title[300] = {};
  GetWindowTextW(window, title, 300);
  if ((sought.isShown && IsWindowVisible(window) == 0) || title != sought.title) return TRUE;
  sought.found = window;
  return FALSE;
}

BOOL CALLBACK CloseIt(HWND window, LPARAM /*nothing*/) {
  if (IsWindowVisible(window) != 0 && IsWindowEnabled(window) != 0) PostMessageW(window, WM_CLOSE, 0, 0);
  return TRUE;
}

void Send(INPUT input) {
  SendInput(1, &input, sizeof input);
}

}  // namespace

User::User() : timer_(SetTimer(nullptr, 0, kTick, OnTimer)), since_(GetTickCount()) {
  user = this;
}

// What was waited for may have ended the dialog.
User::~User() {
  KillTimer(nullptr, timer_);
  user = nullptr;
  while (next_ < steps_.size() && steps_[next_].what != kStep && steps_[next_].isDone()) ++next_;
  if (next_ < steps_.size()) ADD_FAILURE() << "The user never came to: " << steps_[next_].what;
}

User& User::Do(std::function<void()> step) {
  steps_.push_back({kStep, [step = std::move(step)] {
                      step();
                      return true;
                    }});
  return *this;
}

User& User::Until(const std::string& what, std::function<bool()> isThere) {
  steps_.push_back({what, std::move(isThere)});
  return *this;
}

void CALLBACK User::OnTimer(HWND /*window*/, UINT /*message*/, UINT_PTR /*timer*/, DWORD /*time*/) {
  if (user == nullptr || user->isBusy_) return;
  try {
    user->DoNext();
  } catch (const std::exception& failure) {
    user->GiveUp(failure.what());
  }
}

// A step may wait itself until a dialog that it opens is closed: further ones go on meanwhile.
void User::DoNext() {
  if (hasGivenUp_) {
    EnumThreadWindows(GetCurrentThreadId(), CloseIt, 0);
    return;
  }
  if (next_ == steps_.size()) return;
  const auto at = next_;
  auto& step = steps_[at];
  if (step.what == kStep) {
    since_ = GetTickCount();
    ++next_;
    step.isDone();
    return;
  }
  isBusy_ = true;
  const bool isDone = step.isDone();
  isBusy_ = false;
  if (isDone) {
    since_ = GetTickCount();
    ++next_;
  } else if (GetTickCount() - since_ > kPatience) {
    GiveUp("There never was " + step.what);
  }
}

void User::GiveUp(const std::string& what) {
  ADD_FAILURE() << what;
  isBusy_ = false;
  hasGivenUp_ = true;
  next_ = steps_.size();
}

HWND ShownDialog(const std::string& title) {
  Search search{Wide(title), true};
  EnumThreadWindows(GetCurrentThreadId(), FindByTitle, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND MadeDialog(const std::string& title) {
  Search search{Wide(title), false};
  EnumThreadWindows(GetCurrentThreadId(), FindByTitle, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

bool WaitFor(const std::function<bool()>& isThere) {
  const auto start = GetTickCount();
  while (!isThere()) {
    if (GetTickCount() - start > kPatience) return false;
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    MsgWaitForMultipleObjectsEx(0, nullptr, kTick, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  }
  return true;
}

std::string WindowText(HWND window) {
  wchar_t text[1000] = {};
  GetWindowTextW(window, text, 1000);
  return Narrow(text);
}

void MovePointer(POINT screen) {
  const win32::OwnPixels pixels;
  SetCursorPos(screen.x, screen.y);
}

void PressPointer(bool right) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN;
  Send(input);
}

void ReleasePointer(bool right) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP;
  Send(input);
}

void PressKey(WORD key, WORD with) {
  const auto send = [](WORD one, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = one;
    input.ki.dwFlags = flags;
    Send(input);
  };
  if (with != 0) send(with, 0);
  send(key, 0);
  send(key, KEYEVENTF_KEYUP);
  if (with != 0) send(with, KEYEVENTF_KEYUP);
}

void KeepPicture(const RECT& screen, const std::string& name) {
  const auto* folder = _wgetenv(L"QUINTARA_PICTURES");
  if (folder == nullptr) return;
  GdiFlush();
  const win32::OwnPixels pixels;
  const int width = screen.right - screen.left;
  const int height = screen.bottom - screen.top;
  BITMAPINFO information{};
  information.bmiHeader = {sizeof(BITMAPINFOHEADER), width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
  const auto desktop = GetDC(nullptr);
  const auto memory = CreateCompatibleDC(desktop);
  void* bits = nullptr;
  const auto bitmap = CreateDIBSection(desktop, &information, DIB_RGB_COLORS, &bits, nullptr, 0);
  const auto before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width, height, desktop, screen.left, screen.top, SRCCOPY);
  GdiFlush();
  const auto row = static_cast<DWORD>((width * 3 + 3) / 4 * 4);
  BITMAPFILEHEADER head{0x4D42, static_cast<DWORD>(54 + row * static_cast<DWORD>(height)), 0, 0, 54};
  std::ofstream file(ToPath(Narrow(folder) + "/" + name + ".bmp"), std::ios::binary);
  file.write(reinterpret_cast<const char*>(&head), sizeof head);
  file.write(reinterpret_cast<const char*>(&information.bmiHeader), sizeof information.bmiHeader);
  file.write(static_cast<const char*>(bits), static_cast<std::streamsize>(row) * height);
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, desktop);
}

void KeepPicture(HWND window, const std::string& name) {
  const win32::OwnPixels pixels;
  RECT edges{};
  GetWindowRect(window, &edges);
  KeepPicture(edges, name);
}

}  // namespace quintara::test
