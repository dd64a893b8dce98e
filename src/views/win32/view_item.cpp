#include "views/win32/view_item.h"

#include <commctrl.h>

#include "base/failure.h"
#include "base/text16_windows.h"
#include "views/win32/desktop.h"

namespace quintara::win32 {
namespace {

using dialog::Kind;

// A label of one line in any font ends in dots when it is too short, a higher one breaks.
constexpr int kTwipsOfTwoLines = 400;

struct Make {
  const wchar_t* windowClass;
  DWORD style;
  DWORD extendedStyle = 0;
};

// Frames let through what lies below them, since they draw nothing but their edges.
Make MakeOf(const dialog::Control& control) {
  switch (control.kind) {
    case Kind::kFrame: return {WC_BUTTONW, BS_GROUPBOX, WS_EX_TRANSPARENT};
    case Kind::kLabel:
      return {WC_STATICW,
              static_cast<DWORD>(control.box.height < kTwipsOfTwoLines ? SS_LEFT | SS_ENDELLIPSIS | SS_CENTERIMAGE
                                                                       : SS_LEFT)};
    case Kind::kTextBox: return {WC_EDITW, WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
    case Kind::kButton:
      return {WC_BUTTONW,
              WS_TABSTOP | static_cast<DWORD>(control.shortcut == "Enter" ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON)};
    case Kind::kRadioButton: return {WC_BUTTONW, BS_AUTORADIOBUTTON};
    case Kind::kPicture: return {WC_STATICW, SS_OWNERDRAW};
    case Kind::kTree:
      return {WC_TREEVIEWW,
              WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP |
                  TVS_NOTOOLTIPS,
              WS_EX_CLIENTEDGE};
    case Kind::kProgressBar: return {PROGRESS_CLASSW, 0};
    default: return {nullptr, 0};
  }
}

}  // namespace

bool HasText(Kind kind) {
  return kind != Kind::kPicture && kind != Kind::kTree && kind != Kind::kProgressBar && kind != Kind::kTimer;
}

bool HasFont(Kind kind) {
  return kind == Kind::kTree || HasText(kind);
}

bool HasBox(Kind kind) {
  return kind != Kind::kTimer;
}

HWND MakeWindow(HWND dialog, const ViewItem& item, bool beginsGroup, bool isReached) {
  const auto& control = item.control;
  const auto make = MakeOf(control);
  if (make.windowClass == nullptr) return nullptr;
  DWORD style = WS_CHILD | WS_VISIBLE | make.style;
  if (beginsGroup) style |= WS_GROUP;
  if (isReached) style |= WS_TABSTOP;
  if (!control.isEnabled) style |= WS_DISABLED;
  const auto number = reinterpret_cast<HMENU>(static_cast<INT_PTR>(item.number));
  const auto window = CreateWindowExW(make.extendedStyle, make.windowClass, Wide(control.text).c_str(), style, 0, 0, 0,
                                      0, dialog, number, OwnModule(), nullptr);
  if (window == nullptr) throw Failure(failure::kOutOfMemory);
  return window;
}

// Only the way back is taken in one step.
void FillBar(HWND bar, int value, int max) {
  SendMessageW(bar, PBM_SETRANGE32, 0, max + 1);
  SendMessageW(bar, PBM_SETPOS, static_cast<WPARAM>(value + 1), 0);
  SendMessageW(bar, PBM_SETPOS, static_cast<WPARAM>(value), 0);
  SendMessageW(bar, PBM_SETRANGE32, 0, max);
}

}  // namespace quintara::win32
