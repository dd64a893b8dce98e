#include "windows/bare_tree.h"

#include "automation/dispatch/com.h"
// Behind the system's own header.
#include <commctrl.h>

#include <string>
#include <vector>

#include "windows/figures.h"

namespace quintara::bench {
namespace {

constexpr std::size_t kFan = 16;

HTREEITEM Insert(HWND tree, HTREEITEM parent, std::size_t number) {
  auto text = L"N" + std::to_wstring(number) + L" - A";
  TVINSERTSTRUCTW row{};
  row.hParent = parent;
  row.hInsertAfter = TVI_LAST;
  row.item.mask = TVIF_TEXT | TVIF_STATE;
  row.item.state = row.item.stateMask = TVIS_EXPANDED;
  row.item.pszText = text.data();
  return reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&row)));
}

}  // namespace

double SecondsToABareTree(int rows) {
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TREEVIEW_CLASSES};
  InitCommonControlsEx(&classes);
  const auto start = Clock::now();
  const auto window =
      CreateWindowExW(0, L"Static", L"bare", WS_OVERLAPPEDWINDOW, 0, 0, 640, 720, nullptr, nullptr, nullptr, nullptr);
  const auto tree = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD | WS_VISIBLE | TVS_HASLINES | TVS_HASBUTTONS, 0, 0,
                                    600, 680, window, nullptr, nullptr, nullptr);
  Demand(window && tree, "a window can't be made");
  SendMessageW(tree, WM_SETREDRAW, FALSE, 0);
  std::vector<HTREEITEM> items = {Insert(tree, TVI_ROOT, 0)};
  for (std::size_t i = 1; i < static_cast<std::size_t>(rows); ++i) {
    items.push_back(Insert(tree, items[(i - 1) / kFan], i));
  }
  SendMessageW(tree, WM_SETREDRAW, TRUE, 0);
  ShowWindow(window, SW_SHOW);
  const double seconds = SecondsSince(start);
  Demand(items.back() != nullptr, "a row can't be made");
  DestroyWindow(window);
  return seconds;
}

}  // namespace quintara::bench
