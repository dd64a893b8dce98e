#pragma once

#include <functional>
#include <string>
#include <vector>

#include "automation/dispatch/com.h"

namespace quintara::hosts {

/// The window that shows what a process serves. A hidden one only takes messages, as that to
/// close it. On the thread that it was made on.
class SessionWindow {
 public:
  /// What it shows: a title and a text beside it.
  using Lines = std::vector<std::pair<std::string, std::string>>;

  struct Events {
    std::function<Lines()> show;     ///< asked again and again
    std::function<bool()> mayClose;  ///< False while that would cut something off
    std::function<void()> tick;      ///< each 50 milliseconds
  };

  SessionWindow(Events events, bool isHidden);
  ~SessionWindow();
  SessionWindow(const SessionWindow&) = delete;
  SessionWindow& operator=(const SessionWindow&) = delete;

  HWND Handle() const noexcept { return window_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  LRESULT On(UINT message, WPARAM first, LPARAM second);
  void AddControls();
  void Arrange() const;
  void Refresh();
  int Scaled(int pixels) const;

  Events events_;
  HWND window_ = nullptr;
  HWND text_ = nullptr;
  HWND close_ = nullptr;
  HFONT font_ = nullptr;
  std::wstring shown_;
  int ticks_ = 0;
};

}  // namespace quintara::hosts
