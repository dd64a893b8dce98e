#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

/// Windows and controls of other programs, as they can be told from outside.
namespace quintara::driver {

/// Asks again and again until `isSo` says yes; false where it never does within that time.
bool Within(std::chrono::milliseconds time, const std::function<bool()>& isSo);

/// Sends a message that a program which hangs can't hold up. Fails where it doesn't answer within five seconds.
LRESULT Ask(HWND window, UINT message, WPARAM first = 0, LPARAM second = 0);

/// Caption or content, with "\n" for line breaks.
std::string TextOf(HWND window);
std::string ClassOf(HWND window);
bool IsTopmost(HWND window);
RECT BoxOf(HWND window);
POINT MiddleOf(const RECT& box);

/// The visible windows that stand by themselves, the uppermost first.
std::vector<HWND> TopWindows();
/// The visible controls of a window, in their order.
std::vector<HWND> ControlsOf(HWND window);
/// The visible window of that title; null for none.
HWND FindWindowOf(const std::string& title);
/// A control by its number ("@12"), by its class and place ("edit:1"), or by its caption without the mark of the
/// mnemonic. Fails where there is none, or several.
HWND FindControl(HWND window, const std::string& name);
/// Has everything drawn that waits for it, but for the windows of programs that are busy.
void DrawAll();
/// For messages about what went wrong: every visible window, or control of one, a line each.
std::string Inventory(const std::vector<HWND>& windows);

}  // namespace quintara::driver
