#pragma once

#include <string>

#include "access/contracts/dialog.h"
#include "views/win32/visual_styles.h"

/// What the desktop tells of its screens and windows. All in the pixels of the screens while `OwnPixels` are in force.
namespace quintara::win32 {

/// The module that holds this code.
HINSTANCE OwnModule();

/// What a window's screen has, or of the first screen without one.
int PixelsOfInch(HWND window);

/// The part of the screen of a window that programs may use; of the first screen without one.
RECT WorkAreaOf(HWND window);

struct DesktopFont {
  std::wstring name;
  int height = 0;  ///< as the system has it: below zero for that of the signs
  int pixelsOfInch = 96;
};
/// That of the desktop's own boxes.
DesktopFont MessageFont();

/// What lies between the edges that a window has and those that are seen; newer desktops draw no wide borders, but
/// still have them. Zeros for a window that was never shown.
RECT UnseenBorders(HWND window);

/// No pictures of this dialog are stretched by the system when it comes to another screen.
void RefuseStretching(HWND dialog);

/// While one lives, the thread measures again as it did before `OwnPixels`, for windows that others make.
class FormerPixels {
 public:
  /// `awareness`: what `Now` gave.
  explicit FormerPixels(HANDLE awareness);
  ~FormerPixels();
  FormerPixels(const FormerPixels&) = delete;
  FormerPixels& operator=(const FormerPixels&) = delete;

  static HANDLE Now();

 private:
  HANDLE former_;
};

}  // namespace quintara::win32
