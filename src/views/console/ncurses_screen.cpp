#include "views/console/ncurses_screen.h"

#define NCURSES_NOMACROS 1
#define _XOPEN_SOURCE_EXTENDED 1
#include <curses.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "base/failure.h"
#include "base/text.h"

namespace quintara {
namespace {

constexpr int kEscapeKey = 27;

// What a handler of signals needs, readied while there is time.
struct WayBack {
  std::atomic<bool> isNeeded = false;
  termios modes{};
  std::array<char, 256> bytes{};
  std::size_t length = 0;
};
WayBack wayBack;

void AddToWayBack(const char* capability) {
  const char* text = tigetstr(capability);
  if (text == nullptr || reinterpret_cast<std::intptr_t>(text) == -1) return;
  for (; *text != '\0' && wayBack.length < wayBack.bytes.size(); ++text) wayBack.bytes[wayBack.length++] = *text;
}

int AttributesOf(ScreenStyle style) {
  const auto colour = [](short pair) { return has_colors() ? COLOR_PAIR(pair) : 0; };
  switch (style) {
    case ScreenStyle::kPlain: return A_NORMAL;
    case ScreenStyle::kTitle: return static_cast<int>(A_REVERSE | A_BOLD);
    case ScreenStyle::kCursor: return static_cast<int>(A_REVERSE);
    case ScreenStyle::kLight: return colour(1);
    case ScreenStyle::kDocument: return static_cast<int>(A_BOLD) | colour(2);
    case ScreenStyle::kFaint: return static_cast<int>(A_DIM);
    case ScreenStyle::kField: return static_cast<int>(A_UNDERLINE);
    case ScreenStyle::kMessage: return static_cast<int>(A_BOLD) | colour(3);
  }
  return A_NORMAL;
}

Key::Code CodeOf(wint_t key) {
  switch (key) {
    case KEY_UP: return Key::Code::kUp;
    case KEY_DOWN: return Key::Code::kDown;
    case KEY_LEFT: return Key::Code::kLeft;
    case KEY_RIGHT: return Key::Code::kRight;
    case KEY_PPAGE: return Key::Code::kPageUp;
    case KEY_NPAGE: return Key::Code::kPageDown;
    case KEY_HOME: return Key::Code::kHome;
    case KEY_END: return Key::Code::kEnd;
    case KEY_ENTER: return Key::Code::kEnter;
    case KEY_BACKSPACE: return Key::Code::kBackspace;
    case KEY_DC: return Key::Code::kDelete;
    case KEY_RESIZE: return Key::Code::kResize;
    default: return Key::Code::kOther;
  }
}

Key KeyOf(wint_t character) {
  switch (character) {
    case '\r':
    case '\n': return {Key::Code::kEnter, {}};
    case '\t': return {Key::Code::kTab, {}};
    case '\b':
    case 127: return {Key::Code::kBackspace, {}};
    case kEscapeKey: return {Key::Code::kEscape, {}};
    default: break;
  }
  if (character < ' ') return {};
  Key key{Key::Code::kCharacter, {}};
  AppendCharacter(key.text, static_cast<std::int32_t>(character));
  return key;
}

class NcursesScreen final : public Screen {
 public:
  NcursesScreen() {
    tcgetattr(STDIN_FILENO, &wayBack.modes);
    screen_ = newterm(nullptr, stderr, stdin);
    if (screen_ == nullptr) ThrowUnable();
    if (tigetstr("cup") == nullptr) {
      GiveBack();
      ThrowUnable();
    }
    SetModes();
    wayBack.length = 0;
    for (const auto* capability : {"sgr0", "cnorm", "rmkx", "rmcup"}) AddToWayBack(capability);
    wayBack.isNeeded = true;
  }
  ~NcursesScreen() override { GiveBack(); }

  ScreenSize Size() override {
    return {static_cast<std::size_t>(std::max(getmaxy(stdscr), 1)),
            static_cast<std::size_t>(std::max(getmaxx(stdscr), 1))};
  }

  void Draw(const std::vector<ScreenLine>& lines, const std::optional<ScreenPoint>& cursor) override {
    werase(stdscr);
    for (std::size_t row = 0; row < lines.size(); ++row) {
      wmove(stdscr, static_cast<int>(row), 0);
      for (const auto& span : lines[row]) {
        wattrset(stdscr, AttributesOf(span.style));
        waddnstr(stdscr, span.text.c_str(), static_cast<int>(span.text.size()));
      }
    }
    wattrset(stdscr, A_NORMAL);
    curs_set(cursor ? 1 : 0);
    if (cursor) wmove(stdscr, static_cast<int>(cursor->row), static_cast<int>(cursor->column));
    wayBack.isNeeded = true;
    wrefresh(stdscr);
  }

  std::optional<Key> ReadKey(int milliseconds) override {
    if (auto key = TakeKey()) return key;
    pollfd input{STDIN_FILENO, POLLIN, 0};
    const int ready = poll(&input, 1, milliseconds);
    if (ready < 0 && errno != EINTR) ThrowGone();
    auto key = TakeKey();
    // A terminal that is gone is always ready, and has nothing.
    if (ready > 0 && !key && !IsStillThere()) ThrowGone();
    return key;
  }

  void Suspend() override {
    if (isendwin()) return;
    endwin();
    wayBack.isNeeded = false;
  }

 private:
  [[noreturn]] static void ThrowUnable() {
    const char* name = std::getenv("TERM");
    throw Failure(failure::kDeviceError, std::string("the terminal '") + (name == nullptr ? "" : name) +
                                             "' can't show a dialog: its cursor can't be moved");
  }
  [[noreturn]] static void ThrowGone() { throw Failure(failure::kDeviceError, "the terminal is gone"); }

  static void SetModes() {
    constexpr int kEscapeDelay = 25;  // milliseconds in which the rest of an arrow's bytes must come
    cbreak();
    noecho();
    nonl();
    set_escdelay(kEscapeDelay);
    keypad(stdscr, true);
    nodelay(stdscr, true);
    DefineArrows();
    if (!has_colors()) return;
    start_color();
    use_default_colors();
    init_pair(1, COLOR_CYAN, -1);
    init_pair(2, COLOR_GREEN, -1);
    init_pair(3, COLOR_YELLOW, -1);
  }

  // Some terminals send the other of the two common forms.
  static void DefineArrows() {
    constexpr std::array kKeys{KEY_UP, KEY_DOWN, KEY_RIGHT, KEY_LEFT};
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
      for (const auto* start : {"\x1b[", "\x1bO"}) {
        define_key((start + std::string(1, static_cast<char>('A' + i))).c_str(), kKeys[i]);
      }
    }
  }

  // The rest of a key that the terminal's description doesn't know: it isn't Esc.
  static bool SwallowRest() {
    wint_t key = 0;
    if (wget_wch(stdscr, &key) != OK) return false;
    if (key == 'O') wget_wch(stdscr, &key);
    if (key != '[') return true;
    while (wget_wch(stdscr, &key) == OK && (key < '@' || key > '~')) {
    }
    return true;
  }

  static std::optional<Key> TakeKey() {
    wint_t key = 0;
    switch (wget_wch(stdscr, &key)) {
      case OK: return key == kEscapeKey && SwallowRest() ? Key() : KeyOf(key);
      case KEY_CODE_YES: return Key{CodeOf(key), {}};
      default: return std::nullopt;
    }
  }

  static bool IsStillThere() {
    termios modes{};
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return tcgetattr(STDIN_FILENO, &modes) == 0 &&
           (poll(&input, 1, 0) <= 0 || (input.revents & (POLLHUP | POLLERR)) == 0);
  }

  void GiveBack() {
    Suspend();
    wayBack.isNeeded = false;
    delscreen(screen_);
  }

  SCREEN* screen_ = nullptr;
};

}  // namespace

std::unique_ptr<Screen> OpenTerminal() {
  return std::make_unique<NcursesScreen>();
}

void GiveTerminalBackAtOnce() noexcept {
  if (!wayBack.isNeeded.exchange(false)) return;
  const auto written = write(STDERR_FILENO, wayBack.bytes.data(), wayBack.length);
  static_cast<void>(written);
  tcsetattr(STDIN_FILENO, TCSANOW, &wayBack.modes);
}

}  // namespace quintara
