#pragma once

#include "services/form.h"

namespace quintara {

/// A fixed text above the windows of all programs, for work of unknown length. Failures go to the caller.
class frmWaiting : public Form {
 public:
  /// Shows the dialog.
  void Initiate();

 protected:
  dialog::Layout MakeLayout() const override;
  void OnLoad() override;
};

}  // namespace quintara
