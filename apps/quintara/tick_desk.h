#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "views/console/console_dialogs.h"

namespace quintara {

/// Where the dialog is answered that offers light components for replacement: by patterns, or, without any, by someone
/// at the terminal. A pattern ("*", "?", capitals ignored) is compared with the part number of a component that can be
/// ticked, its instance name, the last piece of that, and the path of part numbers from the root, parted by "/";
/// "part:" or "product:" in front restricts it to one of that class. It must outlive the dialog.
class TickDesk {
 public:
  /// Answers the dialogs of `dialogs` from now on.
  TickDesk(std::vector<std::string> patterns, ConsoleDialogs& dialogs);
  ~TickDesk();
  TickDesk(const TickDesk&) = delete;
  TickDesk& operator=(const TickDesk&) = delete;

  /// The pattern for which there was nothing to tick; then nothing was ticked, and the dialog was cancelled.
  const std::optional<std::string>& Unmatched() const { return unmatched_; }

 private:
  class Dialog;

  std::vector<std::string> patterns_;
  ConsoleDialogs& dialogs_;
  std::optional<std::string> unmatched_;
};

}  // namespace quintara
