#include "hosts/session_window.h"

#include <utility>

#include "base/failure.h"
#include "base/text16_windows.h"

namespace quintara::hosts {
namespace {

constexpr auto kClassName = L"QuintaraHosts";
constexpr auto kTitle = L"Quintara hosts";
constexpr UINT_PTR kTimer = 1;
constexpr UINT kTick = 50;
constexpr int kTicksBetweenRefreshes = 10;
constexpr int kWidth = 560;
constexpr int kHeight = 340;
constexpr int kMargin = 12;
constexpr int kButtonWidth = 96;
constexpr int kButtonHeight = 28;
constexpr int kUsualDpi = 96;

}  // namespace

SessionWindow::SessionWindow(Events events, bool isHidden) : events_(std::move(events)) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = Procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hIcon = LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_APPLICATION));
  description.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  description.lpszClassName = kClassName;
  RegisterClassExW(&description);
  // One that never shows needs no desktop to stand on.
  CreateWindowExW(WS_EX_CONTROLPARENT, kClassName, kTitle, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, kWidth,
                  kHeight, isHidden ? HWND_MESSAGE : nullptr, nullptr, description.hInstance, this);
  if (!window_) throw Failure(failure::kInternal, "the window can't be made");
  SetTimer(window_, kTimer, kTick, nullptr);
  if (isHidden) return;
  SetWindowPos(window_, nullptr, 0, 0, Scaled(kWidth), Scaled(kHeight), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  AddControls();
  Refresh();
  ShowWindow(window_, SW_SHOWNORMAL);
}

SessionWindow::~SessionWindow() {
  if (window_) DestroyWindow(window_);
  if (font_) DeleteObject(font_);
}

int SessionWindow::Scaled(int pixels) const {
  const auto screen = GetDC(window_);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(window_, screen);
  return MulDiv(pixels, dpi, kUsualDpi);
}

void SessionWindow::AddControls() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  font_ = CreateFontIndirectW(&metrics.lfMessageFont);
  const auto instance = GetModuleHandleW(nullptr);
  text_ = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"",
                          WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
                          0, 0, 0, 0, window_, nullptr, instance, nullptr);
  close_ = CreateWindowExW(0, L"BUTTON", L"&Close", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, 0, 0, 0, 0,
                           window_, reinterpret_cast<HMENU>(IDCANCEL), instance, nullptr);
  const int tab = 104;
  SendMessageW(text_, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&tab));
  for (const auto control : {text_, close_}) SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
  Arrange();
}

void SessionWindow::Arrange() const {
  RECT area{};
  GetClientRect(window_, &area);
  const int margin = Scaled(kMargin);
  const int width = Scaled(kButtonWidth);
  const int height = Scaled(kButtonHeight);
  MoveWindow(text_, margin, margin, area.right - 2 * margin, area.bottom - height - 3 * margin, TRUE);
  MoveWindow(close_, area.right - margin - width, area.bottom - margin - height, width, height, TRUE);
}

void SessionWindow::Refresh() {
  std::wstring text;
  for (const auto& [title, told] : events_.show()) text += Wide(title) + L"\t" + Wide(told) + L"\r\n";
  if (text == shown_) return;
  shown_ = std::move(text);
  SetWindowTextW(text_, shown_.c_str());
}

LRESULT CALLBACK SessionWindow::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_NCCREATE) {
    auto* const made = static_cast<SessionWindow*>(reinterpret_cast<CREATESTRUCTW*>(second)->lpCreateParams);
    made->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made));
  }
  auto* const known = reinterpret_cast<SessionWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  return known ? known->On(message, first, second) : DefWindowProcW(window, message, first, second);
}

LRESULT SessionWindow::On(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_TIMER:
      events_.tick();
      if (++ticks_ % kTicksBetweenRefreshes == 0 && text_) Refresh();
      return 0;
    case WM_SIZE:
      if (text_) Arrange();
      return 0;
    case WM_COMMAND:
      if (LOWORD(first) == IDCANCEL) SendMessageW(window_, WM_CLOSE, 0, 0);
      return 0;
    case WM_CLOSE:
      if (events_.mayClose()) PostQuitMessage(0);
      return 0;
    case WM_NCDESTROY: window_ = nullptr; return 0;
    default: return DefWindowProcW(window_, message, first, second);
  }
}

}  // namespace quintara::hosts
