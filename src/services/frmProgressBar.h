#pragma once

#include <cstdint>
#include <string>

#include "services/form.h"

namespace quintara {

/// A bar with a line of text above the windows of all programs, for work of a known number of steps. It is drawn by
/// force, since whoever works doesn't let the user interface catch up. Failures go to the caller.
class frmProgressBar : public Form {
 public:
  /// Shows the dialog, with a bar of so many steps. Failure 380 for fewer than were made already.
  void Initiate(std::int16_t Steps);
  /// Shows a text and makes one step. Past the last one that is failure 380, with the text shown.
  void IncrementBar(const std::string& Text);

 protected:
  dialog::Layout MakeLayout() const override;
  void OnLoad() override;

 private:
  int value_ = 0;
  int max_ = 0;
};

}  // namespace quintara
