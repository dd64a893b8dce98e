#pragma once

#include <memory>
#include <vector>

#include "access/contracts/dialog.h"
#include "views/win32/picture_list.h"
#include "views/win32/tree_window.h"
#include "views/win32/visual_styles.h"

namespace quintara::win32 {

/// A control of a dialog, and what became of it. What is set is kept in `control`, but for the text of a text box.
struct ViewItem {
  dialog::Control control;
  int number = 0;  ///< the toolkit's
  HWND window = nullptr;
  WNDPROC former = nullptr;  ///< what handled its messages before
  dialog::Font font = {};
  RECT place = {};                            ///< in pixels within the dialog
  std::unique_ptr<TreeWindow> tree = {};      ///< of a tree
  std::unique_ptr<PictureList> picture = {};  ///< of a picture
};

using ViewItems = std::vector<ViewItem>;

bool HasText(dialog::Kind kind);
bool HasFont(dialog::Kind kind);
bool HasBox(dialog::Kind kind);

/// Makes the window of a control in a dialog, hidden nowhere and without a place. `beginsGroup`: the first of radio
/// buttons that stand together; `isReached`: the one of them that Tab comes to. Nothing for a timer.
HWND MakeWindow(HWND dialog, const ViewItem& item, bool beginsGroup, bool isReached);

/// Fills a bar at once, where the desktop would let it grow slowly.
void FillBar(HWND bar, int value, int max);

}  // namespace quintara::win32
