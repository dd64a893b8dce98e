#pragma once

#include <functional>
#include <optional>
#include <string>

#include "views/console/plain_view.h"

namespace quintara {

/// A dialog without a loop that tells of long work, as one line of the terminal: its bar, if it has one, and the
/// text of its label.
class BarView final : public PlainView {
 public:
  struct Line {
    /// Shows how far the work is, if that is known; its failure ends the work.
    std::function<void(std::optional<double> fraction, const std::string& what)> show;
    std::function<void()> clear;
  };

  BarView(const dialog::Layout& layout, dialog::Events& events, Line line);

  void ShowOnTop(int left, int top, int width, int height) override;
  void Redraw(const std::string& control) override;
  void Hide() override;

 private:
  void Show();

  Line line_;
};

}  // namespace quintara
