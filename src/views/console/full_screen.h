#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "views/console/dialog_lines.h"
#include "views/console/screen.h"

namespace quintara {

/// A dialog on the full screen.
class ScreenDialog {
 public:
  virtual ~ScreenDialog() = default;

  /// What it shows on as many rows as there are, or fewer. Below another one it shows what that leaves free,
  /// and no keys.
  virtual DialogLines Draw(std::size_t rows, bool isOnTop, const std::vector<std::string>& messages,
                           const ScreenKind& kind) = 0;
};

/// The screen that the modal dialogs of a program share, one above the other. It is opened for the first
/// one, and the terminal is given back with the last one.
class FullScreen {
 public:
  struct Surroundings {
    /// Opens the terminal; fails when it can't be used as a whole.
    std::function<std::unique_ptr<Screen>()> open;
    bool hasUtf8 = false;
    /// Called while a key is waited for; its failure ends the dialogs.
    std::function<void()> check = {};
  };

  explicit FullScreen(Surroundings surroundings) : around_(std::move(surroundings)) {}

  bool IsShown() const { return !dialogs_.empty(); }
  /// Gives the terminal back for other text, until a dialog waits for a key again.
  void Suspend();
  /// Shows a text with the dialog on top until a key is pressed; does nothing when none is shown.
  void Tell(const std::string& message);

  /// Shows a dialog above the others for as long as it lives.
  class Place {
   public:
    Place(FullScreen& screen, ScreenDialog& dialog);
    ~Place();
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

   private:
    FullScreen& screen_;
  };

  /// Draws what has changed and waits so long for a key.
  std::optional<Key> NextKey(int milliseconds);

 private:
  DialogLines Compose(const ScreenSize& size) const;

  Surroundings around_;
  std::unique_ptr<Screen> screen_;
  std::vector<ScreenDialog*> dialogs_;
  std::vector<std::string> messages_;
};

}  // namespace quintara
