#include "automation/driver/boxes.h"

#include <algorithm>
#include <map>

#include "automation/driver/picture.h"
#include "automation/driver/steps.h"

namespace quintara::driver {
namespace {

constexpr int kText = 65'535;
constexpr int kTopmost = 4096;

const std::map<std::string, int>& Answers() {
  static const std::map<std::string, int> answers = {{"ok", 1},     {"cancel", 2}, {"abort", 3}, {"retry", 4},
                                                     {"ignore", 5}, {"yes", 6},    {"no", 7}};
  return answers;
}

bool IsButton(HWND control) {
  return ClassOf(control) == "Button";
}

bool IsSign(HWND control) {
  return ClassOf(control) == "Static" && (GetWindowLongPtrW(control, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
}

std::vector<HWND> ButtonsOf(HWND window) {
  std::vector<HWND> buttons;
  for (const auto control : ControlsOf(window)) {
    if (IsButton(control)) buttons.push_back(control);
  }
  std::ranges::sort(buttons, {}, [](HWND button) { return BoxOf(button).left; });
  return buttons;
}

int StyleOfButtons(const std::vector<int>& buttons) {
  static const std::map<std::vector<int>, int> styles = {{{1}, 0},       {{1, 2}, 1}, {{3, 4, 5}, 2},
                                                         {{6, 7, 2}, 3}, {{6, 7}, 4}, {{4, 2}, 5}};
  const auto found = styles.find(buttons);
  if (found == styles.end()) throw Failed("a message box has buttons that none has");
  return found->second;
}

}  // namespace

std::string MessageBox::Told() const {
  return Quoted(title) + " " + std::to_string(style) + " " + Quoted(text);
}

bool IsMessageBox(HWND window) {
  if (ClassOf(window) != "#32770" || GetDlgItem(window, kText) == nullptr) return false;
  const auto buttons = ButtonsOf(window);
  return !buttons.empty() && std::ranges::all_of(buttons, [](HWND button) {
    const int code = GetDlgCtrlID(button);
    return code >= 1 && code <= 7;
  });
}

HWND FindMessageBox() {
  for (const auto window : TopWindows()) {
    if (IsMessageBox(window)) return window;
  }
  return nullptr;
}

MessageBox ReadMessageBox(HWND window) {
  MessageBox box;
  box.window = window;
  box.title = TextOf(window);
  box.text = TextOf(GetDlgItem(window, kText));
  for (const auto button : ButtonsOf(window)) box.buttons.push_back(GetDlgCtrlID(button));
  // A lone button has the number of Cancel, so that Esc presses it, and answers OK.
  if (box.buttons.size() == 1) box.buttons[0] = 1;
  box.style = StyleOfButtons(box.buttons) + (IsTopmost(window) ? kTopmost : 0);
  for (const auto control : ControlsOf(window)) {
    if (IsSign(control)) box.style += SignIn(BoxOf(control));
  }
  return box;
}

HWND AnswerButton(const MessageBox& box, const std::string& answer) {
  const auto found = Answers().find(answer);
  if (found == Answers().end()) throw Failed("there is no answer " + Quoted(answer));
  const auto buttons = ButtonsOf(box.window);
  for (std::size_t i = 0; i < box.buttons.size() && i < buttons.size(); ++i) {
    if (box.buttons[i] == found->second) return buttons[i];
  }
  throw Failed("the box " + box.Told() + " has no button for " + answer);
}

}  // namespace quintara::driver
