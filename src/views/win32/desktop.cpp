#include "views/win32/desktop.h"

namespace quintara::win32 {
namespace {

const char anchor = 0;  // an address of this module

constexpr int kOrdinary = 96;

// Functions that older systems haven't; a program that links them wouldn't start there.
template <class Function>
Function* Optional(const wchar_t* library, const char* name) {
  const auto module = LoadLibraryW(library);
  if (module == nullptr) return nullptr;
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

int PixelsOfInchOfScreen() {
  const auto screen = GetDC(nullptr);
  const int pixels = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return pixels > 0 ? pixels : kOrdinary;
}

HANDLE SetAwareness(HANDLE awareness) {
  static const auto set = Optional<HANDLE WINAPI(HANDLE)>(L"user32.dll", "SetThreadDpiAwarenessContext");
  return set == nullptr || awareness == nullptr ? nullptr : set(awareness);
}

}  // namespace

HINSTANCE OwnModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const wchar_t*>(&anchor), &module);
  return module;
}

int PixelsOfInch(HWND window) {
  static const auto ofWindow = Optional<UINT WINAPI(HWND)>(L"user32.dll", "GetDpiForWindow");
  const UINT pixels = ofWindow == nullptr || window == nullptr ? 0 : ofWindow(window);
  return pixels != 0 ? static_cast<int>(pixels) : PixelsOfInchOfScreen();
}

RECT WorkAreaOf(HWND window) {
  MONITORINFO information{};
  information.cbSize = sizeof information;
  const auto monitor = window == nullptr ? MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY)
                                         : MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY);
  if (GetMonitorInfoW(monitor, &information) != 0) return information.rcWork;
  return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

DesktopFont MessageFont() {
  static const auto forDpi =
      Optional<BOOL WINAPI(UINT, UINT, void*, UINT, UINT)>(L"user32.dll", "SystemParametersInfoForDpi");
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (forDpi != nullptr && forDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, kOrdinary) != 0) {
    return {metrics.lfMessageFont.lfFaceName, metrics.lfMessageFont.lfHeight, kOrdinary};
  }
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) != 0) {
    return {metrics.lfMessageFont.lfFaceName, metrics.lfMessageFont.lfHeight, PixelsOfInchOfScreen()};
  }
  return {L"MS Shell Dlg 2", -11, kOrdinary};
}

RECT UnseenBorders(HWND window) {
  constexpr DWORD kFrameBounds = 9;
  static const auto attribute =
      Optional<HRESULT WINAPI(HWND, DWORD, void*, DWORD)>(L"dwmapi.dll", "DwmGetWindowAttribute");
  RECT whole{};
  RECT seen{};
  if (attribute == nullptr || GetWindowRect(window, &whole) == 0) return {};
  if (FAILED(attribute(window, kFrameBounds, &seen, sizeof seen)) || IsRectEmpty(&seen) != 0) return {};
  const RECT borders{seen.left - whole.left, seen.top - whole.top, whole.right - seen.right,
                     whole.bottom - seen.bottom};
  const bool isInside = borders.left >= 0 && borders.top >= 0 && borders.right >= 0 && borders.bottom >= 0;
  return isInside ? borders : RECT{};
}

void RefuseStretching(HWND dialog) {
  constexpr DWORD kAll = 7;
  static const auto set = Optional<BOOL WINAPI(HWND, DWORD, DWORD)>(L"user32.dll", "SetDialogDpiChangeBehavior");
  if (set != nullptr) set(dialog, kAll, kAll);
}

FormerPixels::FormerPixels(HANDLE awareness) : former_(SetAwareness(awareness)) {}

FormerPixels::~FormerPixels() {
  SetAwareness(former_);
}

HANDLE FormerPixels::Now() {
  static const auto get = Optional<HANDLE WINAPI()>(L"user32.dll", "GetThreadDpiAwarenessContext");
  return get == nullptr ? nullptr : get();
}

}  // namespace quintara::win32
