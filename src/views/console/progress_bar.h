#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

namespace quintara {

/// One line at the bottom of a terminal that tells how far long work has come. Draws only what
/// differs from what is shown.
class ProgressBar {
 public:
  /// `out` is a terminal of that many columns.
  ProgressBar(std::ostream& out, int columns);
  /// Takes the line away.
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  /// `fraction` runs from 0 to 1; what lies outside, or is no number, counts as the nearer end.
  void Show(double fraction, std::string_view what);
  /// The same for work of unknown length: the text alone.
  void ShowText(std::string_view what);
  /// Takes the line away, so that other text can be written in its place.
  void Clear();

 private:
  void Replace(std::string text);

  std::ostream& out_;
  std::size_t columns_;
  std::string shown_;
};

}  // namespace quintara
