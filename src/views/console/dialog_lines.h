#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "views/console/screen.h"
#include "views/console/text_line.h"
#include "views/console/tree_rows.h"
#include "views/console/view_item.h"

namespace quintara {

/// What dialogs look like on a screen of characters: a title, the tree, and below it what else the dialog
/// holds, with the key of each control. Nothing here knows a toolkit.

/// Lines, and where the terminal's cursor blinks in them.
struct DialogLines {
  std::vector<ScreenLine> lines;
  std::optional<ScreenPoint> cursor = {};
};

/// What the screen can show.
struct ScreenKind {
  std::size_t columns = 80;
  bool hasUtf8 = false;
};

/// The text box that is being typed in.
struct TypedIn {
  std::string control;
  const TextLine* line = nullptr;
};

/// A line of the title's look, as wide as the screen.
ScreenLine TitleLine(const std::string& title, const ScreenKind& kind);

/// All of a dialog but its title and tree: text boxes, radio buttons, labels, the legend of its pictures,
/// `messages`, and the keys of its buttons.
DialogLines PanelLines(const ViewItems& items, const std::optional<TypedIn>& typedIn,
                       const std::vector<std::string>& messages, const ScreenKind& kind);

/// The part of a tree that a window of `height` rows shows from the row `top` on, the one of the node
/// `cursor` marked. Costs what is shown, however long the tree is.
std::vector<ScreenLine> TreeLines(const dialog::TreeContent& tree, const TreeRows& rows, int top, std::size_t height,
                                  int cursor, const ScreenKind& kind);

}  // namespace quintara
