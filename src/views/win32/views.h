#pragma once

#include <memory>
#include <string>

#include "access/contracts/dialog.h"

/// The dialogs and boxes of the desktop, on the calling thread.
namespace quintara::win32 {

/// A native view of one dialog, made hidden; `events` must outlive it until `OnUnloaded`. Fails with 429 where the
/// process has no desktop.
std::shared_ptr<dialog::View> NewView(const dialog::Layout& layout, dialog::Events& events);

/// Shows a message box, modal to the dialog that is shown, if there is one, and waits for its answer, a button code.
int ShowBox(const std::string& text, int style, const std::string& title);

/// Handles all messages that wait, so that windows answer and are drawn.
void CatchUp();

}  // namespace quintara::win32
