#include "wip/frmFind.h"

#include <utility>

#include "access/session/process.h"
#include "access/utils/messages.h"
#include "base/arrays.h"
#include "base/text.h"
#include "wip/tree_walk.h"

namespace quintara {

frmFind::frmFind(const TreeModel& nodes, dialog::View& owner, std::string tree)
    : nodes_(nodes), owner_(owner), tree_(std::move(tree)) {}

dialog::Layout frmFind::MakeLayout() const {
  using enum dialog::Kind;
  dialog::Layout layout;
  layout.name = "frmFind";
  layout.box = {0, 0, 6420, 2190};
  layout.controls = {
      {.name = "lblFind", .kind = kLabel, .box = {120, 165, 1650, 255}},
      {.name = "txtInput", .kind = kTextBox, .box = {1860, 120, 2700, 315}},
      {.name = "cmdFind", .kind = kButton, .box = {4680, 90, 1380, 375}, .shortcut = "Enter"},
      {.name = "lblStatus", .kind = kLabel, .box = {120, 570, 4440, 480}},
      {.name = "cmdBack",
       .kind = kButton,
       .box = {1860, 1110, 600, 375},
       .text = "<",
       .isEnabled = false,
       .shortcut = "<"},
      {.name = "cmdNext",
       .kind = kButton,
       .box = {2580, 1110, 600, 375},
       .text = ">",
       .isEnabled = false,
       .shortcut = ">"},
      {.name = "cmdCancel", .kind = kButton, .box = {4680, 1110, 1380, 375}, .shortcut = "Esc"},
  };
  return layout;
}

void frmFind::OnLoad() {
  const auto& texts = Process().texts;
  auto& view = TheView();
  view.SetText("", texts.QD_FIND_CAPTION.text);
  view.SetText("lblFind", texts.QD_FIND_LBLFIND.text);
  view.SetText("cmdFind", texts.QD_FIND_CMDFIND.text);
  view.SetText("cmdCancel", texts.QD_FIND_CMDCANCEL.text);
  ApplyFonts();
}

void frmFind::OnClick(const std::string& control) {
  if (control == "cmdFind") {
    cmdFind_Click();
  } else if (control == "cmdNext") {
    HighlightNode(++Position);
  } else if (control == "cmdBack") {
    HighlightNode(--Position);
  } else if (control == "cmdCancel") {
    cmdCancel_Click();
  }
}

// An empty text leaves the earlier matches as they are, so it is looked at before they are forgotten.
void frmFind::cmdFind_Click() {
  const auto text = TheView().Text("txtInput");
  if (text.empty()) return;
  ResetMatches();
  FindInTree(1, text);
  ShowMatches(text);
}

void frmFind::ShowMatches(const std::string& text) {
  auto& view = TheView();
  const auto count = UpperBound(Occurrences);
  view.SetEnabled("cmdBack", count > 0);
  view.SetEnabled("cmdNext", count > 0);
  if (count == 0) {
    owner_.SelectNode(tree_, 0);
    view.SetText("lblStatus", Filled(Process().texts.QD_FIND_LBLNOOCCURRENCES, text));
    return;
  }
  Occurrences.pop_back();
  view.SetText("lblStatus", Filled(Process().texts.QD_FIND_LBLOCCURRENCES, std::to_string(count), text));
  HighlightNode(++Position);
}

void frmFind::FindInTree(int node, const std::string& text) {
  const auto sought = Capitals(text);
  for (int at = node; at != 0; at = NextBelow(nodes_, node, at)) {
    if (Capitals(nodes_.Text(at)).find(sought) == std::string::npos) continue;
    Occurrences.back() = at;
    Occurrences.emplace_back();
  }
}

void frmFind::HighlightNode(Counter16& position) {
  Reported("frmFind.HighlightNode", box::kCriticalModal, false, [&] {
    const auto last = static_cast<int>(UpperBound(Occurrences));
    if (position > last) position = 0;
    if (position < 0) position = last;
    const int node = ElementAt(Occurrences, int{position});
    nodes_.Key(node);  // fails for a node that isn't there
    owner_.SelectNode(tree_, node);
    owner_.EnsureVisible(tree_, node);
    return true;
  });
}

void frmFind::cmdCancel_Click() {
  TheView().SetText("txtInput", "");
  Process().FoundNode = 0;
  ResetMatches();
  owner_.SelectNode(tree_, 0);
  Unload();
}

void frmFind::ResetMatches() {
  Occurrences.assign(1, 0);
  Position = -1;
}

}  // namespace quintara
