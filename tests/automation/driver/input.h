#pragma once

#include <chrono>
#include <string>

#include "automation/driver/desktop.h"

/// Pointer and keyboard, as a user moves them. Each returns when the program that got the input has taken it out of
/// its queue, or has ended, or after `time`.
namespace quintara::driver {

enum class Button { kLeft, kRight };

/// Fails where something else than that window, or what it contains, stands at the point. Without a `time` it returns
/// at once.
void Click(HWND window, POINT point, Button button, int times, std::chrono::milliseconds time);
/// From one point to another with the left button down.
void Drag(POINT from, POINT to, std::chrono::milliseconds time);
/// A key by its name, with others held down: "Tab", "Alt+C", "Shift+Tab", "F3".
void PressKey(const std::string& name, std::chrono::milliseconds time);
void TypeText(const std::string& text, std::chrono::milliseconds time);

}  // namespace quintara::driver
