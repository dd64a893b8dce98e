#pragma once

#include <functional>
#include <iosfwd>
#include <string>

namespace quintara {

/// Message boxes on the console: the text is printed, and on a terminal someone is asked for the
/// buttons. A box with OK alone never waits.
class MessageBoxes {
 public:
  /// Who answers a box with a choice: someone at the terminal, or Yes and OK, or No and Cancel.
  enum class Answers { kAsk, kYes, kNo };

  /// Whether a text tells of success. The style of its box can't tell: failures are shown as information too.
  using IsSuccess = std::function<bool(const std::string& text)>;

  /// Boxes are printed to `out`; answers are read, a line each, from `in`. Without `isSuccess` no text
  /// tells of success.
  MessageBoxes(std::istream& in, std::ostream& out, Answers answers, IsSuccess isSuccess = {});

  /// Shows a box with the styles of `box` and gives a code of `answer`. The end of `in` counts as
  /// No and Cancel.
  int Show(const std::string& text, int style, const std::string& title);

  /// True once a box without a choice has told of something else than success.
  bool FailureShown() const noexcept { return failureShown_; }

 private:
  struct Choice;

  int Ask(const Choice& choice);

  std::istream& in_;
  std::ostream& out_;
  Answers answers_;
  IsSuccess isSuccess_;
  bool failureShown_ = false;
};

}  // namespace quintara
