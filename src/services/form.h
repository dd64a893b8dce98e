#pragma once

#include <memory>
#include <string>

#include "access/contracts/dialog.h"

namespace quintara {

/// A dialog as its owner sees it: the base of all presenters. It is loaded at its first use, which makes
/// its view and calls `OnLoad`, before any loop of the view begins; a failure there unloads it again and
/// goes to the caller. While it is loaded it lives, whoever still holds it. It must be made by
/// `std::make_shared`. Unloading drops the view, so that the next use loads it afresh.
class Form : public dialog::Events, public std::enable_shared_from_this<Form> {
 public:
  void Load();
  bool IsLoaded() const { return view_ != nullptr; }
  /// Shows it and waits until it is hidden or unloaded. A failure in one of its events comes out here,
  /// after it was unloaded.
  void ShowModal();
  // These two do nothing when it isn't loaded.
  void Hide();
  void Unload();

  /// What overrides this calls it.
  void OnUnloaded() override;

 protected:
  virtual dialog::Layout MakeLayout() const = 0;
  /// What the dialog does when it is loaded.
  virtual void OnLoad() {}

  /// Loads it if it isn't.
  dialog::View& TheView();
  /// Gives the dialog, and every control with a text or a tree, the font of the settings: its name, and what
  /// else is set (-1 is not). Without a name, or with one that isn't there, nothing is changed. Failures end it in
  /// silence.
  void ApplyFonts();

 private:
  dialog::Layout layout_;
  std::shared_ptr<dialog::View> view_;
};

}  // namespace quintara
