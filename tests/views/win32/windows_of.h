#pragma once

#include <string>

#include "access/contracts/dialog.h"
#include "views/win32/visual_styles.h"

struct _TREEITEM;

namespace quintara::test {

/// The window of a control in that of its dialog; a test that asks for one that isn't there fails.
HWND WindowOf(HWND dialog, const dialog::Layout& layout, const std::string& control);

RECT EdgesOf(HWND window);
POINT MiddleOf(const RECT& edges);

/// The row of a tree with this text, the first one from the top, null for none.
_TREEITEM* RowOf(HWND tree, const std::string& text);
std::string TextOfRow(HWND tree, _TREEITEM* row);
/// Where the text of a row stands, in the pixels of the tree.
RECT PlaceOfRow(HWND tree, _TREEITEM* row);
bool IsOpen(HWND tree, _TREEITEM* row);
/// Presses and lets go a button of the pointer on a place of a window, by messages.
void Click(HWND window, POINT point, bool right = false, WPARAM keys = 0);
void ClickRow(HWND tree, const std::string& text, bool right = false);

}  // namespace quintara::test
