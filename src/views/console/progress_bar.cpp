#include "views/console/progress_bar.h"

#include <algorithm>
#include <exception>
#include <ostream>

#include "views/console/screen_text.h"

namespace quintara {
namespace {

constexpr std::size_t kBarWidth = 24;
constexpr std::size_t kMinimalColumns = 10;
constexpr auto kEraseLine = "\r\x1b[K";

std::string BarText(double fraction, std::string_view what, std::size_t columns) {
  // Written so that a number that is none counts as 0.
  const double done = fraction > 0 ? std::min(fraction, 1.0) : 0.0;
  const auto filled = static_cast<std::size_t>(done * kBarWidth);
  const auto percent = std::to_string(static_cast<int>(done * 100));
  const auto text = "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '.') + "] " +
                    std::string(3 - percent.size(), ' ') + percent + "% " + OneLine(what);
  // The last column stays free: some terminals would begin a new line there.
  return CutToWidth(text, columns - 1);
}

}  // namespace

ProgressBar::ProgressBar(std::ostream& out, int columns)
    : out_(out), columns_(std::max(static_cast<std::size_t>(std::max(columns, 0)), kMinimalColumns)) {}

ProgressBar::~ProgressBar() {
  try {
    Clear();
  } catch (const std::exception&) {
    // A stream that throws has lost its screen; nothing is left to take away.
  }
}

void ProgressBar::Show(double fraction, std::string_view what) {
  Replace(BarText(fraction, what, columns_));
}

void ProgressBar::ShowText(std::string_view what) {
  Replace(CutToWidth(OneLine(what), columns_ - 1));
}

void ProgressBar::Replace(std::string text) {
  if (text == shown_) return;
  shown_ = std::move(text);
  out_ << kEraseLine << shown_ << std::flush;
}

void ProgressBar::Clear() {
  if (shown_.empty()) return;
  shown_.clear();
  out_ << kEraseLine << std::flush;
}

}  // namespace quintara
