#include "access/contracts/platform.h"
#include "base/text16_windows.h"
#include "views/win32/views.h"
#include "views/win32/visual_styles.h"
#include "views/win32/window_view.h"

namespace quintara::win32 {
namespace {

int ButtonsOf(int style) {
  constexpr int kButtons = 15;
  return style & kButtons;
}

// What nobody has agreed to isn't done.
int AnswerOfNobody(int style) {
  if (ButtonsOf(style) == box::kYesNo) return answer::kNo;
  return ButtonsOf(style) == box::kOkCancel ? answer::kCancel : answer::kOk;
}

BOOL CALLBACK NoteTopmost(HWND window, LPARAM found) {
  const bool isTopmost = (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
  if (!isTopmost || IsWindowVisible(window) == 0) return TRUE;
  *reinterpret_cast<bool*>(found) = true;
  return FALSE;
}

// A box that nobody sees below the progress dialog would stop the command for good. What is modal to the system stands
// above all else.
bool IsBelowOwnWindow() {
  bool found = false;
  EnumThreadWindows(GetCurrentThreadId(), NoteTopmost, reinterpret_cast<LPARAM>(&found));
  return found;
}

HWND Owner() {
  const auto dialog = WindowView::ShownModally();
  return dialog != nullptr ? dialog : GetActiveWindow();
}

UINT StyleOf(int style) {
  const auto flags = static_cast<UINT>(style) | MB_SETFOREGROUND;
  return IsBelowOwnWindow() ? flags | MB_SYSTEMMODAL : flags;
}

}  // namespace

int ShowBox(const std::string& text, int style, const std::string& title) {
  if (!HasDesktop()) return AnswerOfNobody(style);
  const OwnPixels pixels;
  const VisualStyles styles;
  const int answer = MessageBoxW(Owner(), Wide(text).c_str(), Wide(title).c_str(), StyleOf(style));
  // Esc is OK where there is nothing else, but not every system says so.
  return answer == 0 || ButtonsOf(style) == box::kOkOnly ? AnswerOfNobody(style) : answer;
}

}  // namespace quintara::win32
