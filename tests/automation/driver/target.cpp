// A window with one of each of what the driver can use. The words of the command line choose what happens.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// The list of its controls comes after it.
#include <commctrl.h>

#include <string>

namespace {

constexpr auto kTitle = L"Driver's target";
enum Number : int { kTree = 10, kText, kAsk, kTick, kStop, kTwin, kCount };

struct Controls {
  HWND tree = nullptr;
  HWND count = nullptr;
  int clicks = 0;
};
Controls controls;

HWND Child(HWND window, const wchar_t* className, const wchar_t* text, DWORD style, RECT box, int number) {
  const auto id = reinterpret_cast<HMENU>(static_cast<INT_PTR>(number));
  return CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, box.left, box.top, box.right, box.bottom,
                         window, id, nullptr, nullptr);
}

HTREEITEM AddNode(HTREEITEM parent, std::wstring text) {
  TVINSERTSTRUCTW node{};
  node.hParent = parent;
  node.hInsertAfter = TVI_LAST;
  node.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
  node.item.pszText = text.data();
  return reinterpret_cast<HTREEITEM>(SendMessageW(controls.tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&node)));
}

void FillTree() {
  const auto root = AddNode(TVI_ROOT, L"Mast");
  for (int i = 1; i <= 40; ++i) {
    const auto shroud = AddNode(root, L"Étai " + std::to_wstring(i));
    if (i <= 2) AddNode(shroud, L"Bolzen");
  }
}

void Create(HWND window) {
  const DWORD tabbed = WS_TABSTOP;
  controls.tree =
      Child(window, WC_TREEVIEWW, L"", tabbed | WS_BORDER | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_NOTOOLTIPS,
            {10, 10, 200, 200}, kTree);
  Child(window, L"EDIT", L"", tabbed | WS_BORDER, {220, 10, 150, 24}, kText);
  Child(window, L"BUTTON", L"&Ask", tabbed, {220, 50, 100, 26}, kAsk);
  Child(window, L"BUTTON", L"Tick", tabbed | BS_AUTOCHECKBOX, {220, 90, 100, 26}, kTick);
  Child(window, L"BUTTON", L"Never", tabbed | WS_DISABLED, {220, 130, 100, 26}, kStop);
  Child(window, L"BUTTON", L"Twin", tabbed, {220, 160, 60, 26}, kTwin);
  Child(window, L"BUTTON", L"Twin", tabbed, {290, 160, 60, 26}, kTwin + 10);
  controls.count = Child(window, L"STATIC", L"0", 0, {220, 200, 100, 20}, kCount);
  FillTree();
}

// Yes asks once more, no and cancel end the program with their code.
void Ask(HWND window) {
  while (MessageBoxW(window, L"Go on?\r\nRéponse:", L"Question", MB_YESNO | MB_ICONQUESTION) == IDYES) {
    MessageBoxW(window, L"As you like", L"Notice", MB_OK | MB_ICONINFORMATION | MB_SYSTEMMODAL);
    if (MessageBoxW(window, L"Plain", L"Choice", MB_OKCANCEL) == IDCANCEL) return;
    MessageBoxW(window, L"\"Stop\"", L"Trouble", MB_ICONERROR);
    MessageBoxW(window, L"C:\\new", L"Care", MB_ICONWARNING);
  }
  PostQuitMessage(7);
}

// A right click on a node gives it the next picture, after a while in which more clicks wait.
void ClickNode(HWND window) {
  TVHITTESTINFO hit{};
  GetCursorPos(&hit.pt);
  ScreenToClient(controls.tree, &hit.pt);
  SendMessageW(controls.tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  Sleep(20);
  TVITEMW item{};
  item.mask = TVIF_IMAGE;
  item.hItem = hit.hItem;
  SendMessageW(controls.tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  ++item.iImage;
  SendMessageW(controls.tree, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  SetWindowTextW(GetDlgItem(window, kCount), std::to_wstring(++controls.clicks).c_str());
}

LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_CREATE: Create(window); return 0;
    case WM_COMMAND:
      if (LOWORD(first) == kAsk) Ask(window);
      return 0;
    case WM_NOTIFY:
      if (reinterpret_cast<const NMHDR*>(second)->code == NM_RCLICK) ClickNode(window);
      return 0;
    case WM_DESTROY: PostQuitMessage(0); return 0;
    default: return DefWindowProcW(window, message, first, second);
  }
}

}  // namespace

int main(int count, char**) {
  InitCommonControls();
  WNDCLASSW own{};
  own.lpfnWndProc = Handle;
  own.hInstance = GetModuleHandleW(nullptr);
  own.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
  own.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  own.lpszClassName = L"DriversTarget";
  RegisterClassW(&own);
  const DWORD above = count > 1 ? WS_EX_TOPMOST : 0;
  const auto window = CreateWindowExW(above, own.lpszClassName, kTitle, WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 420,
                                      280, nullptr, nullptr, own.hInstance, nullptr);
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (IsDialogMessageW(window, &message) != 0) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}
