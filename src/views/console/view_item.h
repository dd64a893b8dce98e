#pragma once

#include <vector>

#include "access/contracts/dialog.h"

namespace quintara {

/// A control of a view, as it was made, and what became of it. What is set is kept in `control`.
struct ViewItem {
  dialog::Control control;
  dialog::Font font;
  int value = 0;  ///< of a progress bar
  int max = 0;
  dialog::TreeContent* tree = nullptr;
  int selected = 0;  ///< the node
};

using ViewItems = std::vector<ViewItem>;

}  // namespace quintara
