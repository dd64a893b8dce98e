#include "automation/driver/driver.h"

#include <commctrl.h>

#include <map>
#include <utility>

#include "automation/driver/boxes.h"
#include "automation/driver/picture.h"
#include "automation/driver/remote_tree.h"
#include "base/text.h"

namespace quintara::driver {
namespace {

bool IsChecked(HWND control) {
  return Ask(control, BM_GETCHECK) == BST_CHECKED;
}

}  // namespace

Driver::Driver(std::ostream& log, std::filesystem::path folder) : log_(log), folder_(std::move(folder)) {}

std::string Driver::Situation() const {
  auto text = "windows:\n" + Inventory(TopWindows());
  if (IsWindow(window_) != 0) text += "controls of the window at hand:\n" + Inventory(ControlsOf(window_));
  return text;
}

void Driver::TakePicture(const std::string& name) const {
  DrawAll();
  Save(PictureOf(WholeScreen()), folder_ / ToPath(name + ".png"));
}

void Driver::WaitUntil(const std::string& what, const std::function<bool()>& isSo) {
  HWND box = nullptr;
  const bool isEnded = Within(time_, [&] {
    if (isSo()) return true;
    box = FindMessageBox();
    return box != nullptr && box != window_;
  });
  if (isEnded && box != nullptr && !isSo()) {
    throw Failed("instead of " + what + ", there is a message box: " + ReadMessageBox(box).Told());
  }
  if (!isEnded) throw Failed("waited in vain for " + what);
}

// A window that another one keeps from being used isn't there yet.
void Driver::WaitForWindow(const std::string& title) {
  window_ = nullptr;
  WaitUntil("the window " + Quoted(title), [&] {
    const auto window = FindWindowOf(title);
    if (window == nullptr || IsWindowEnabled(window) == 0) {
      if (program_.IsStarted() && program_.HasEnded()) throw Failed("the program has ended before");
      return false;
    }
    window_ = window;
    return true;
  });
}

void Driver::WaitUntilGone(const std::string& title) {
  WaitUntil("the window " + Quoted(title) + " to go", [&] { return FindWindowOf(title) == nullptr; });
}

void Driver::WaitForEnd(int code) {
  if (!program_.IsStarted()) throw Failed("no program was started");
  WaitUntil("the program to end", [&] { return program_.HasEnded(); });
  const int ended = program_.ExitCode();
  program_.Forget();
  if (ended != code) throw Failed("the program ended with " + std::to_string(ended));
}

HWND Driver::Control(const std::string& name) {
  if (IsWindow(window_) == 0) throw Failed("there is no window at hand");
  return FindControl(window_, name);
}

HWND Driver::Tree() {
  return Control("SysTreeView32:1");
}

void Driver::Press(const std::string& name) {
  WaitUntil("the control " + Quoted(name) + " to be enabled", [&] {
    const auto control = Control(name);
    return IsWindowEnabled(control) != 0 && IsWindowEnabled(window_) != 0;
  });
  const auto control = Control(name);
  Click(control, MiddleOf(BoxOf(control)), Button::kLeft, 1, time_);
}

void Driver::Close() {
  if (IsWindow(window_) == 0) throw Failed("there is no window at hand");
  PostMessageW(window_, WM_SYSCOMMAND, SC_CLOSE, 0);
}

void Driver::ClickNode(const Words& path, Button button, int times) {
  WaitUntilInFront();
  RemoteTree tree(Tree());
  Click(tree.Window(), MiddleOf(tree.Show(tree.Find(path))), button, times, time_);
}

void Driver::WaitUntilInFront() {
  WaitUntil("the window to be in front", [&] { return GetForegroundWindow() == window_; });
}

void Driver::Key(const std::string& name) {
  WaitUntilInFront();
  PressKey(name, time_);
}

void Driver::Type(const std::string& text) {
  WaitUntilInFront();
  TypeText(text, time_);
}

// A box that has come is looked at again for a while: its sign is drawn after it.
void Driver::ExpectBox(const std::string& title, int style, const std::string& text) {
  MessageBox wanted;
  wanted.title = title;
  wanted.style = style;
  wanted.text = text;
  if (!Within(time_, [] { return FindMessageBox() != nullptr; })) throw Failed("waited in vain for a message box");
  box_ = FindMessageBox();
  const bool isSo = Within(time_ / 6, [&] {
    told_ = ReadMessageBox(box_).Told();
    return told_ == wanted.Told();
  });
  if (!isSo) throw Failed("the message box is " + told_);
}

void Driver::Answer(const std::string& answer) {
  if (box_ == nullptr) throw Failed("no message box was expected before");
  const auto button = AnswerButton(ReadMessageBox(box_), answer);
  Click(button, MiddleOf(BoxOf(button)), Button::kLeft, 1, {});
  const auto box = std::exchange(box_, nullptr);
  if (!Within(time_, [&] { return IsWindow(box) == 0 || IsWindowVisible(box) == 0; })) {
    throw Failed("the message box stays");
  }
  log_ << "box " << told_ << " " << answer << '\n';
}

void Driver::ExpectText(const std::string& name, const std::string& text) {
  std::string found;
  const auto isSo = [&] {
    found = TextOf(name.empty() ? window_ : Control(name));
    return found == text;
  };
  try {
    WaitUntil("the text " + Quoted(text), isSo);
  } catch (const Failed& failed) {
    throw Failed(std::string(failed.what()) + "; it is " + Quoted(found));
  }
}

void Driver::ExpectEnabled(const std::string& name, bool isSo) {
  WaitUntil(Quoted(name) + (isSo ? " to be enabled" : " to be disabled"),
            [&] { return (IsWindowEnabled(Control(name)) != 0) == isSo; });
}

void Driver::ExpectChecked(const std::string& name, bool isSo) {
  WaitUntil(Quoted(name) + (isSo ? " to be checked" : " to be unchecked"),
            [&] { return IsChecked(Control(name)) == isSo; });
}

void Driver::ExpectTopmost() {
  WaitUntil("the window to be on top of all", [&] { return IsTopmost(window_); });
}

void Driver::ExpectFocus(const std::string& name) {
  WaitUntil("the keyboard to be at " + Quoted(name), [&] {
    GUITHREADINFO information{};
    information.cbSize = sizeof information;
    GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &information);
    return information.hwndFocus == Control(name);
  });
}

void Driver::ShowTree() {
  log_ << RemoteTree(Tree()).Outline();
}

void Driver::ExpectNode(const Words& path) {
  static_cast<void>(RemoteTree(Tree()).Find(path));
}

void Driver::ExpectPicture(int picture, const Words& path) {
  RemoteTree tree(Tree());
  const auto item = tree.Find(path);
  WaitUntil("the picture " + std::to_string(picture) + " at the node " + Quoted(path.back()),
            [&] { return tree.Picture(item) == picture; });
}

void Driver::ExpectSelected(const Words& path) {
  RemoteTree tree(Tree());
  const auto item = path.empty() ? 0 : tree.Find(path);
  WaitUntil("another node to be selected", [&] { return tree.Selected() == item; });
}

// By the middle of an edge or by the title, or by the lower right corner.
void Driver::DragEdge(const std::string& edge, int right, int down) {
  constexpr int kInside = 2;
  constexpr int kTitle = 12;
  const auto box = BoxOf(window_);
  const auto middle = MiddleOf(box);
  const std::map<std::string, POINT> grips = {
      {"left", {box.left + kInside, middle.y}},
      {"right", {box.right - 1 - kInside, middle.y}},
      {"top", {middle.x, box.top + 1}},
      {"bottom", {middle.x, box.bottom - 1 - kInside}},
      {"corner", {box.right - 1 - kInside, box.bottom - 1 - kInside}},
      {"title", {middle.x, box.top + kTitle}},
  };
  const auto grip = grips.find(edge);
  if (grip == grips.end()) throw Failed("there is no edge " + Quoted(edge));
  Drag(grip->second, {grip->second.x + right, grip->second.y + down}, time_);
}

// Left, top, width and height in pixels; "-" where any will do.
void Driver::ExpectPlace(const Words& numbers) {
  Words found;
  const auto isSo = [&] {
    const auto box = BoxOf(window_);
    found.clear();
    for (const auto number : {box.left, box.top, box.right - box.left, box.bottom - box.top}) {
      found.push_back(std::to_string(number));
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      if (numbers[i] != "-" && numbers[i] != found[i]) return false;
    }
    return true;
  };
  if (Within(time_ / 6, isSo)) return;
  throw Failed("the window's place is " + found[0] + " " + found[1] + " " + found[2] + " " + found[3]);
}

}  // namespace quintara::driver
