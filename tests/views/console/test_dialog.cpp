#include "views/console/test_dialog.h"

namespace quintara::test {
namespace {

using dialog::Control;
using dialog::Kind;

}  // namespace

TestTree::TestTree(const std::vector<std::string>& lines) {
  std::vector<int> above{0};
  for (const auto& line : lines) {
    const auto depth = line.find_first_not_of(' ');
    above.resize(depth + 1);
    Add(above.back(), line.substr(depth));
    above.push_back(Count());
  }
}

void TestTree::Add(int parent, const std::string& text) {
  nodes_.push_back({.text = text, .parent = parent});
  const int added = Count();
  auto& last = At(parent).lastChild;
  if (last != 0) {
    At(last).next = added;
  } else if (parent != 0) {
    At(parent).firstChild = added;
  }
  last = added;
}

const std::string& TestTree::Text(int node) const {
  ++textsAsked_;
  return At(node).text;
}

void TestDialog::Note(const std::string& event) {
  events.push_back(event);
  if (answer) answer(event);
}

void TestDialog::OnMouseDown(const std::string& control, int button, int /*shift*/, int x, int y) {
  Note("down " + control + " " + std::to_string(button) + " at " + std::to_string(view->NodeAt(control, x, y)));
}

dialog::Layout PanelLayout() {
  dialog::Layout layout{.name = "Panel", .text = "Create", .box = {0, 0, 9000, 9000}};
  layout.pictures = {"part none", "part lwt", "part doc"};
  layout.controls = {
      Control{.name = "Timer1", .kind = Kind::kTimer, .interval = 0},
      Control{.name = "FrameAll", .kind = Kind::kFrame, .text = "All instances?"},
      Control{.name = "All(0)", .kind = Kind::kRadioButton, .container = "FrameAll", .text = "Yes", .shortcut = "a"},
      Control{.name = "All(1)",
              .kind = Kind::kRadioButton,
              .container = "FrameAll",
              .text = "No",
              .isChecked = true,
              .shortcut = "a"},
      Control{.name = "FrameLegend", .kind = Kind::kFrame, .text = "Legend"},
      Control{.name = "lblNone", .box = {300, 100, 900, 200}, .container = "FrameLegend", .text = "Left out"},
      Control{.name = "lblDoc", .box = {300, 400, 900, 200}, .container = "FrameLegend", .text = "In full"},
      Control{.name = "img_doc",
              .kind = Kind::kPicture,
              .box = {0, 420, 200, 200},
              .container = "FrameLegend",
              .picture = "part doc"},
      Control{.name = "img_none",
              .kind = Kind::kPicture,
              .box = {0, 120, 200, 200},
              .container = "FrameLegend",
              .picture = "part none"},
      Control{.name = "cmdFind", .kind = Kind::kButton, .text = "Find", .shortcut = "/"},
      Control{.name = "lblName", .kind = Kind::kLabel, .text = "Name:"},
      Control{.name = "txtName", .kind = Kind::kTextBox, .shortcut = "n"},
      Control{.name = "cmdCancel", .kind = Kind::kButton, .text = "Cancel", .shortcut = "Esc"},
      Control{.name = "cmdCreate", .kind = Kind::kButton, .text = "Go", .shortcut = "Enter"},
      Control{.name = "Tree1", .kind = Kind::kTree},
  };
  return layout;
}

dialog::Layout SearchLayout() {
  dialog::Layout layout{.name = "Search", .text = "Search"};
  layout.controls = {
      Control{.name = "lblFind", .kind = Kind::kLabel, .text = "What:"},
      Control{.name = "txtInput", .kind = Kind::kTextBox},
      Control{.name = "lblStatus", .kind = Kind::kLabel, .box = {0, 900, 900, 200}},
      Control{.name = "cmdFind", .kind = Kind::kButton, .text = "Find", .shortcut = "Enter"},
      Control{.name = "cmdCancel", .kind = Kind::kButton, .text = "Close", .shortcut = "Esc"},
      Control{.name = "cmdBack", .kind = Kind::kButton, .text = "<", .isEnabled = false, .shortcut = "<"},
      Control{.name = "cmdNext", .kind = Kind::kButton, .text = ">", .isEnabled = false, .shortcut = ">"},
  };
  return layout;
}

}  // namespace quintara::test
