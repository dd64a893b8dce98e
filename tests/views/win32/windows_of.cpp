#include "views/win32/windows_of.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "base/text16_windows.h"

namespace quintara::test {

HWND WindowOf(HWND dialog, const dialog::Layout& layout, const std::string& control) {
  for (std::size_t place = 0; place < layout.controls.size(); ++place) {
    const auto& made = layout.controls[place];
    if (made.name != control) continue;
    const bool isButton = made.kind == dialog::Kind::kButton;
    if (isButton && made.shortcut == "Enter") return GetDlgItem(dialog, IDOK);
    if (isButton && made.shortcut == "Esc") return GetDlgItem(dialog, IDCANCEL);
    return GetDlgItem(dialog, 100 + static_cast<int>(place));
  }
  ADD_FAILURE() << layout.name << " has no control " << control;
  return nullptr;
}

RECT EdgesOf(HWND window) {
  const win32::OwnPixels pixels;
  RECT edges{};
  GetWindowRect(window, &edges);
  return edges;
}

POINT MiddleOf(const RECT& edges) {
  return {(edges.left + edges.right) / 2, (edges.top + edges.bottom) / 2};
}

std::string TextOfRow(HWND tree, HTREEITEM row) {
  wchar_t text[300] = {};
  TVITEMW item{};
  item.mask = TVIF_HANDLE | TVIF_TEXT;
  item.hItem = row;
  item.pszText = text;
  item.cchTextMax = 300;
  SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  return Narrow(text);
}

HTREEITEM RowOf(HWND tree, const std::string& text) {
  auto row = TreeView_GetRoot(tree);
  while (row != nullptr && TextOfRow(tree, row) != text) row = TreeView_GetNextVisible(tree, row);
  return row;
}

RECT PlaceOfRow(HWND tree, HTREEITEM row) {
  RECT place{};
  EXPECT_TRUE(TreeView_GetItemRect(tree, row, &place, TRUE));
  return place;
}

bool IsOpen(HWND tree, HTREEITEM row) {
  return (TreeView_GetItemState(tree, row, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
}

void Click(HWND window, POINT point, bool right, WPARAM keys) {
  const auto place = MAKELPARAM(point.x, point.y);
  SendMessageW(window, right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, keys | (right ? MK_RBUTTON : MK_LBUTTON), place);
  if (IsWindow(window) != 0) SendMessageW(window, right ? WM_RBUTTONUP : WM_LBUTTONUP, keys, place);
}

void ClickRow(HWND tree, const std::string& text, bool right) {
  const auto row = RowOf(tree, text);
  ASSERT_NE(row, nullptr) << text;
  Click(tree, MiddleOf(PlaceOfRow(tree, row)), right);
}

}  // namespace quintara::test
