#include "automation/driver/desktop.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "automation/driver/steps.h"
#include "base/text16_windows.h"

namespace quintara::driver {
namespace {

constexpr UINT kAnswerMilliseconds = 5'000;
constexpr DWORD kPauseMilliseconds = 10;

BOOL CALLBACK NoteVisible(HWND window, LPARAM list) {
  if (IsWindowVisible(window) != 0) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

std::string WithoutMnemonic(const std::string& caption) {
  std::string text;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    text += caption[i];
  }
  return text;
}

std::string Lower(std::string text) {
  for (char& letter : text) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return text;
}

int NumberIn(const std::string& text, std::size_t from) {
  int number = 0;
  const auto* end = text.data() + text.size();
  const auto result = std::from_chars(text.data() + from, end, number);
  return from < text.size() && result.ec == std::errc() && result.ptr == end ? number : -1;
}

std::vector<HWND> WithNumber(const std::vector<HWND>& controls, int number) {
  std::vector<HWND> found;
  std::ranges::copy_if(controls, std::back_inserter(found), [&](HWND one) { return GetDlgCtrlID(one) == number; });
  return found;
}

std::vector<HWND> AtPlace(const std::vector<HWND>& controls, const std::string& className, int place) {
  std::vector<HWND> found;
  std::ranges::copy_if(controls, std::back_inserter(found),
                       [&](HWND one) { return Lower(ClassOf(one)) == Lower(className); });
  if (place > static_cast<int>(found.size())) return {};
  return {found[static_cast<std::size_t>(place - 1)]};
}

std::vector<HWND> WithCaption(const std::vector<HWND>& controls, const std::string& caption) {
  std::vector<HWND> found;
  std::ranges::copy_if(controls, std::back_inserter(found),
                       [&](HWND one) { return WithoutMnemonic(TextOf(one)) == caption; });
  return found;
}

std::vector<HWND> Candidates(const std::vector<HWND>& controls, const std::string& name) {
  if (name.starts_with('@') && NumberIn(name, 1) >= 0) return WithNumber(controls, NumberIn(name, 1));
  const auto colon = name.rfind(':');
  if (colon != std::string::npos && NumberIn(name, colon + 1) > 0) {
    return AtPlace(controls, name.substr(0, colon), NumberIn(name, colon + 1));
  }
  return WithCaption(controls, name);
}

}  // namespace

bool Within(std::chrono::milliseconds time, const std::function<bool()>& isSo) {
  const auto end = std::chrono::steady_clock::now() + time;
  while (!isSo()) {
    if (std::chrono::steady_clock::now() > end) return false;
    Sleep(kPauseMilliseconds);
  }
  return true;
}

LRESULT Ask(HWND window, UINT message, WPARAM first, LPARAM second) {
  DWORD_PTR answer = 0;
  if (SendMessageTimeoutW(window, message, first, second, SMTO_NORMAL, kAnswerMilliseconds, &answer) == 0) {
    throw Failed("a window doesn't answer");
  }
  return static_cast<LRESULT>(answer);
}

std::string TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH)) + 1, L'\0');
  const auto length = Ask(window, WM_GETTEXT, static_cast<WPARAM>(text.size()), reinterpret_cast<LPARAM>(text.data()));
  text.resize(std::min(text.size(), static_cast<std::size_t>(length)));
  std::erase(text, L'\r');
  return Narrow(text);
}

std::string ClassOf(HWND window) {
  std::array<wchar_t, 128> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return Narrow(name.data());
}

bool IsTopmost(HWND window) {
  return (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

RECT BoxOf(HWND window) {
  RECT box{};
  GetWindowRect(window, &box);
  return box;
}

POINT MiddleOf(const RECT& box) {
  return {(box.left + box.right) / 2, (box.top + box.bottom) / 2};
}

std::vector<HWND> TopWindows() {
  std::vector<HWND> windows;
  EnumWindows(NoteVisible, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

std::vector<HWND> ControlsOf(HWND window) {
  std::vector<HWND> controls;
  EnumChildWindows(window, NoteVisible, reinterpret_cast<LPARAM>(&controls));
  return controls;
}

// The caption that the system keeps, so that a window which hangs, of whatever program, holds nothing up.
HWND FindWindowOf(const std::string& title) {
  const auto wanted = Wide(title);
  for (const auto window : TopWindows()) {
    std::array<wchar_t, 512> caption{};
    GetWindowTextW(window, caption.data(), static_cast<int>(caption.size()));
    if (wanted == caption.data()) return window;
  }
  return nullptr;
}

HWND FindControl(HWND window, const std::string& name) {
  const auto controls = ControlsOf(window);
  const auto found = Candidates(controls, name);
  if (found.size() == 1) return found[0];
  throw Failed((found.empty() ? "there is no control " : "there are several controls ") + Quoted(name) + " among\n" +
               Inventory(controls));
}

void DrawAll() {
  constexpr UINT kSoonMilliseconds = 500;
  for (const auto window : TopWindows()) {
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kSoonMilliseconds, &answer) == 0) continue;
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  }
}

std::string Inventory(const std::vector<HWND>& windows) {
  std::string lines;
  for (const auto window : windows) {
    std::array<wchar_t, 128> caption{};
    GetWindowTextW(window, caption.data(), static_cast<int>(caption.size()));
    lines += "  " + ClassOf(window) + " @" + std::to_string(GetDlgCtrlID(window)) + " " +
             Quoted(Narrow(caption.data())) + (IsWindowEnabled(window) != 0 ? "" : " disabled") + "\n";
  }
  return lines;
}

}  // namespace quintara::driver
