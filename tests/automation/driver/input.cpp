#include "automation/driver/input.h"

#include <array>
#include <map>
#include <thread>
#include <vector>

#include "automation/driver/steps.h"
#include "base/text16_windows.h"

namespace quintara::driver {
namespace {

constexpr WORD kNobodysKey = VK_F24;

// The keys that the number block has too; that one's mean something else together with Shift.
bool IsExtended(WORD code) {
  return (code >= VK_PRIOR && code <= VK_DOWN) || code == VK_DELETE || code == VK_APPS;
}

INPUT Key(WORD code, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = code;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(code, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = IsExtended(code) ? flags | KEYEVENTF_EXTENDEDKEY : flags;
  return input;
}

INPUT Unit(wchar_t unit, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.dwFlags = KEYEVENTF_UNICODE | flags;
  input.ki.wScan = static_cast<WORD>(unit);
  return input;
}

INPUT Mouse(DWORD flags) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  return input;
}

// The screen may still tell of where the pointer was before, so a button tells where it is itself.
INPUT MouseAt(POINT point, DWORD flags) {
  const auto part = [](LONG place, int size) { return static_cast<LONG>(((LONGLONG{place} << 16) + size - 1) / size); };
  auto input = Mouse(flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
  input.mi.dx = part(point.x, GetSystemMetrics(SM_CXSCREEN));
  input.mi.dy = part(point.y, GetSystemMetrics(SM_CYSCREEN));
  return input;
}

void Send(std::vector<INPUT> inputs) {
  const auto count = static_cast<UINT>(inputs.size());
  if (SendInput(count, inputs.data(), sizeof(INPUT)) != count) throw Failed("the system takes no input");
}

DWORD ThreadOf(HWND window) {
  return GetWindowThreadProcessId(window, nullptr);
}

bool IsDown(WORD code) {
  std::array<BYTE, 256> states{};
  GetKeyboardState(states.data());
  return (states[code] & 0x80) != 0;
}

// Messages that are sent overtake input that waits, so a step must not end before its input is used up. Input keeps
// its order: when a key that nobody uses has left the queue of the program, all before it has. While one lives, the
// program's key states can be seen; as they are reset when that begins, it has to begin before the input.
class Watch {
 public:
  explicit Watch(HWND window) : thread_(ThreadOf(window)) {
    isOn_ = thread_ != 0 && AttachThreadInput(GetCurrentThreadId(), thread_, TRUE) != 0;
  }
  ~Watch() {
    if (isOn_) AttachThreadInput(GetCurrentThreadId(), thread_, FALSE);
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  // The system may lose the key when the keyboard comes to another window just then, so it is pressed anew.
  void WaitUntilTaken(std::chrono::milliseconds time) const {
    constexpr std::chrono::milliseconds kAnew(250);
    if (time.count() == 0 || !isOn_ || !Within(time, [&] { return IsInFront() || HasEnded(); }) || HasEnded()) return;
    Within(time, [&] {
      Send({Key(kNobodysKey, 0)});
      const bool isTaken = Within(kAnew, [&] { return IsDown(kNobodysKey) || !IsInFront(); });
      Send({Key(kNobodysKey, KEYEVENTF_KEYUP)});
      return isTaken;
    });
  }

 private:
  bool IsInFront() const { return ThreadOf(GetForegroundWindow()) == thread_; }
  bool HasEnded() const {
    const auto thread = OpenThread(SYNCHRONIZE, FALSE, thread_);
    const bool hasEnded = thread == nullptr || WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
    if (thread != nullptr) CloseHandle(thread);
    return hasEnded;
  }

  DWORD thread_;
  bool isOn_ = false;
};

const std::map<std::string, WORD>& KeyCodes() {
  static const std::map<std::string, WORD> codes = {
      {"Tab", VK_TAB},     {"Enter", VK_RETURN}, {"Esc", VK_ESCAPE},    {"Space", VK_SPACE}, {"Left", VK_LEFT},
      {"Up", VK_UP},       {"Right", VK_RIGHT},  {"Down", VK_DOWN},     {"Home", VK_HOME},   {"End", VK_END},
      {"PgUp", VK_PRIOR},  {"PgDown", VK_NEXT},  {"Delete", VK_DELETE}, {"Back", VK_BACK},   {"Alt", VK_MENU},
      {"Shift", VK_SHIFT}, {"Ctrl", VK_CONTROL}, {"Menu", VK_APPS},
  };
  return codes;
}

WORD CodeOf(const std::string& name) {
  const auto& codes = KeyCodes();
  if (const auto found = codes.find(name); found != codes.end()) return found->second;
  if (name.size() > 1 && name[0] == 'F' && name[1] >= '1' && name[1] <= '9') {
    return static_cast<WORD>(VK_F1 + std::stoi(name.substr(1)) - 1);
  }
  const auto unit = name.size() == 1 ? VkKeyScanW(static_cast<wchar_t>(name[0])) : SHORT{-1};
  if (unit == -1) throw Failed("there is no key " + Quoted(name));
  return static_cast<WORD>(unit & 0xFF);
}

std::vector<std::string> PartsOf(const std::string& name) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (auto plus = name.find('+', 1); plus != std::string::npos; plus = name.find('+', start + 1)) {
    parts.push_back(name.substr(start, plus - start));
    start = plus + 1;
  }
  parts.push_back(name.substr(start));
  return parts;
}

// Two single clicks in one place would be taken for a double click, so the second one comes late enough.
void KeepClicksApart(POINT point) {
  static POINT lastPoint{-1, -1};
  static std::chrono::steady_clock::time_point lastTime;
  const std::chrono::milliseconds apart(GetDoubleClickTime() + 50);
  if (point.x == lastPoint.x && point.y == lastPoint.y) std::this_thread::sleep_until(lastTime + apart);
  lastPoint = point;
  lastTime = std::chrono::steady_clock::now();
}

// A frame around controls lets the pointer through to what lies below it.
bool IsFrame(HWND window) {
  return ClassOf(window) == "Button" && (GetWindowLongPtrW(window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
}

HWND WindowAt(POINT point) {
  const auto uppermost = WindowFromPoint(point);
  auto there = uppermost;
  const auto isPassed = [&] {
    const auto box = BoxOf(there);
    return IsFrame(there) || IsWindowVisible(there) == 0 || PtInRect(&box, point) == 0;
  };
  while (there != nullptr && isPassed()) there = GetWindow(there, GW_HWNDNEXT);
  return there == nullptr ? uppermost : there;
}

std::string Named(HWND window) {
  return window == nullptr ? "nothing" : ClassOf(window) + " " + Quoted(TextOf(window));
}

}  // namespace

void Click(HWND window, POINT point, Button button, int times, std::chrono::milliseconds time) {
  const auto there = WindowAt(point);
  if (there != window && IsChild(window, there) == 0) {
    throw Failed("where " + Named(window) + " should be clicked, " + Named(there) + " stands");
  }
  KeepClicksApart(point);
  const Watch watch(window);
  SetCursorPos(point.x, point.y);
  const bool isLeft = button == Button::kLeft;
  for (int i = 0; i < times; ++i) {
    Send({MouseAt(point, isLeft ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN),
          MouseAt(point, isLeft ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP)});
  }
  watch.WaitUntilTaken(time);
}

void Drag(POINT from, POINT to, std::chrono::milliseconds time) {
  constexpr int kStops = 8;
  const Watch watch(WindowFromPoint(from));
  SetCursorPos(from.x, from.y);
  Send({Mouse(MOUSEEVENTF_LEFTDOWN)});
  watch.WaitUntilTaken(time);
  for (int i = 1; i <= kStops; ++i) {
    SetCursorPos(from.x + (to.x - from.x) * i / kStops, from.y + (to.y - from.y) * i / kStops);
    watch.WaitUntilTaken(time);
  }
  Send({Mouse(MOUSEEVENTF_LEFTUP)});
  watch.WaitUntilTaken(time);
}

void PressKey(const std::string& name, std::chrono::milliseconds time) {
  std::vector<INPUT> inputs;
  const auto parts = PartsOf(name);
  for (const auto& part : parts) inputs.push_back(Key(CodeOf(part), 0));
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) inputs.push_back(Key(CodeOf(*part), KEYEVENTF_KEYUP));
  const Watch watch(GetForegroundWindow());
  Send(inputs);
  watch.WaitUntilTaken(time);
}

void TypeText(const std::string& text, std::chrono::milliseconds time) {
  std::vector<INPUT> inputs;
  for (const auto unit : Wide(text)) {
    inputs.push_back(Unit(unit, 0));
    inputs.push_back(Unit(unit, KEYEVENTF_KEYUP));
  }
  const Watch watch(GetForegroundWindow());
  if (!inputs.empty()) Send(inputs);
  watch.WaitUntilTaken(time);
}

}  // namespace quintara::driver
