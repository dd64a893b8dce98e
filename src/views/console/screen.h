#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quintara {

/// What a piece of a line looks like.
enum class ScreenStyle { kPlain, kTitle, kCursor, kLight, kDocument, kFaint, kField, kMessage };

struct ScreenSpan {
  std::string text;
  ScreenStyle style = ScreenStyle::kPlain;

  bool operator==(const ScreenSpan&) const = default;
};

/// A line of the screen, no wider than that, without control characters.
using ScreenLine = std::vector<ScreenSpan>;

struct ScreenSize {
  std::size_t rows = 24;
  std::size_t columns = 80;

  bool operator==(const ScreenSize&) const = default;
};

/// Where the terminal's own cursor blinks.
struct ScreenPoint {
  std::size_t row = 0;
  std::size_t column = 0;

  bool operator==(const ScreenPoint&) const = default;
};

/// A key that was pressed.
struct Key {
  enum class Code {
    kCharacter,
    kUp,
    kDown,
    kLeft,
    kRight,
    kPageUp,
    kPageDown,
    kHome,
    kEnd,
    kEnter,
    kEscape,
    kTab,
    kBackspace,
    kDelete,
    kResize,  ///< no key: the screen has another size
    kOther
  };

  Code code = Code::kOther;
  std::string text;  ///< of a character, in UTF-8

  bool operator==(const Key&) const = default;
};

/// A terminal, used as a whole.
class Screen {
 public:
  Screen() = default;
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  /// Gives the terminal back as it was.
  virtual ~Screen() = default;

  virtual ScreenSize Size() = 0;
  /// Shows `lines` from the top, what is below them empty. Without `cursor` none blinks.
  virtual void Draw(const std::vector<ScreenLine>& lines, const std::optional<ScreenPoint>& cursor) = 0;
  /// Waits so long for a key; nothing when none came, also when an interruption came. Fails when the
  /// terminal is gone.
  virtual std::optional<Key> ReadKey(int milliseconds) = 0;
  /// Gives the terminal back until the next `Draw`.
  virtual void Suspend() = 0;
};

}  // namespace quintara
