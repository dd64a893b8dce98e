#pragma once

#include <string>
#include <vector>

#include "automation/driver/desktop.h"

namespace quintara::driver {

/// A message box as it is seen.
struct MessageBox {
  HWND window = nullptr;
  std::string title = {};
  std::string text = {};
  int style = 0;                  ///< the sum of its buttons, its sign and, on top of all windows, 4096
  std::vector<int> buttons = {};  ///< codes of the answers, from left to right

  /// As a step would tell it: title, style, text.
  std::string Told() const;
};

bool IsMessageBox(HWND window);
/// The uppermost box that is there; null for none.
HWND FindMessageBox();
MessageBox ReadMessageBox(HWND window);
/// The button of a box for an answer: "ok", "cancel", "abort", "retry", "ignore", "yes", "no". Fails where it has none.
HWND AnswerButton(const MessageBox& box, const std::string& answer);

}  // namespace quintara::driver
