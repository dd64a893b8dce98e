#pragma once

#include "access/contracts/dialog.h"

namespace quintara {

/// Where a dialog goes that is shown above all windows, in pixels: its own size in whole pixels, halves to the even
/// number, in the middle of the screen's width and a good deal above the middle of its height.
dialog::Box TopmostPlace(dialog::View& view);

}  // namespace quintara
