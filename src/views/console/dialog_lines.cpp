#include "views/console/dialog_lines.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "views/console/screen_text.h"

namespace quintara {
namespace {

using dialog::Kind;

constexpr std::size_t kIndent = 2;

// A screen without Unicode gets "?" for what it lacks.
std::string Shown(std::string_view text, const ScreenKind& kind) {
  auto line = OneLine(text);
  if (kind.hasUtf8) return line;
  std::string plain;
  for (std::string_view rest = line; !rest.empty();) {
    const auto character = TakeCharacter(rest);
    plain += character.bytes.size() == 1 ? character.bytes : "?";
  }
  return plain;
}

std::string Padded(std::string text, std::size_t columns) {
  const auto width = ScreenWidth(text);
  if (width < columns) text.append(columns - width, ' ');
  return text;
}

std::size_t WidthOf(const ScreenLine& line) {
  std::size_t width = 0;
  for (const auto& span : line) width += ScreenWidth(span.text);
  return width;
}

ScreenLine Cut(const ScreenLine& line, std::size_t columns) {
  ScreenLine cut;
  for (const auto& span : line) {
    cut.push_back({CutToWidth(span.text, columns), span.style});
    columns -= ScreenWidth(cut.back().text);
  }
  return cut;
}

// The last word of a picture's key says what was chosen.
std::string_view StateOf(std::string_view picture) {
  return picture.substr(picture.find_last_of(' ') + 1);
}

struct Mark {
  std::string_view state;
  const char* utf8;
  const char* ascii;
  ScreenStyle style;
};

constexpr Mark kMarks[] = {
    {"none", "○", ".", ScreenStyle::kPlain},   {"lwt", "◐", "L", ScreenStyle::kLight},
    {"doc", "●", "D", ScreenStyle::kDocument}, {"no", "☐", "_", ScreenStyle::kPlain},
    {"yes", "☑", "X", ScreenStyle::kLight},
};
constexpr Mark kUnknown{"", " ", " ", ScreenStyle::kPlain};

const Mark& MarkOf(std::string_view picture) {
  const auto* const found = std::ranges::find(kMarks, StateOf(picture), &Mark::state);
  return found == std::end(kMarks) ? kUnknown : *found;
}

std::string Sign(const Mark& mark, const ScreenKind& kind) {
  return kind.hasUtf8 ? mark.utf8 : mark.ascii;
}

const ViewItem* LabelNear(const ViewItems& items, const dialog::Control& control) {
  const ViewItem* nearest = nullptr;
  const auto distance = [&](const ViewItem& label) { return std::abs(label.control.box.top - control.box.top); };
  for (const auto& item : items) {
    const bool isLabel = item.control.kind == Kind::kLabel && item.control.container == control.container;
    if (isLabel && (nearest == nullptr || distance(item) < distance(*nearest))) nearest = &item;
  }
  return nearest;
}

// The lines below the tree, one after the other.
class Panel {
 public:
  Panel(const ViewItems& items, const ScreenKind& kind) : items_(items), kind_(kind) {}

  void AddTextBox(const dialog::Control& box, const std::optional<TypedIn>& typedIn) {
    const auto* label = LabelNear(items_, box);
    if (label != nullptr) used_.push_back(label);
    const auto caption = label == nullptr ? std::string() : Shown(label->control.text, kind_) + " ";
    const auto key = KeyOf(box);
    const auto width = ScreenWidth(key) + ScreenWidth(caption);
    const auto left = kind_.columns > width + 1 ? kind_.columns - width : 1;
    TextLine::Cut cut{CutToWidth(box.text, left), 0};
    if (typedIn && typedIn->control == box.name) {
      cut = typedIn->line->CutTo(left);
      result_.cursor = ScreenPoint{result_.lines.size(), width + cut.caret};
    }
    AddLine({{key, ScreenStyle::kFaint}, {caption}, {Padded(Shown(cut.text, kind_), left), ScreenStyle::kField}});
  }

  // One key serves for all of them.
  void AddRadioButtons(const std::string& container) {
    ScreenLine line{{{}, ScreenStyle::kFaint}};
    for (const auto& item : items_) {
      if (item.control.name == container && !container.empty())
        line.push_back({Shown(item.control.text, kind_) + "  "});
    }
    for (const auto& item : items_) {
      if (item.control.kind != Kind::kRadioButton || item.control.container != container) continue;
      if (line.front().text.empty()) line.front().text = KeyOf(item.control);
      line.push_back({std::string(item.control.isChecked ? "(*) " : "( ) ") + Shown(item.control.text, kind_) + "  "});
    }
    AddLine(line);
  }

  // In the order in which the labels stand.
  void AddLegend(bool hasTree) {
    std::vector<std::pair<const ViewItem*, const Mark*>> entries;
    for (const auto& item : items_) {
      if (item.control.kind != Kind::kPicture || item.control.picture.empty()) continue;
      const auto* label = LabelNear(items_, item.control);
      if (label == nullptr || std::ranges::find(used_, label) != used_.end()) continue;
      used_.push_back(label);
      entries.emplace_back(label, &MarkOf(item.control.picture));
    }
    if (entries.empty()) return;
    std::ranges::stable_sort(entries, {}, [](const auto& entry) { return entry.first->control.box.top; });
    ScreenLine line;
    if (hasTree) line.push_back({"Space  ", ScreenStyle::kFaint});
    for (const auto& [label, mark] : entries) {
      line.push_back({Sign(*mark, kind_) + " " + Shown(label->control.text, kind_) + "  ", mark->style});
    }
    AddLine(line);
  }

  void AddTicking() {
    ScreenLine line{{"Space  ", ScreenStyle::kFaint}};
    for (const auto* state : {"no", "yes"}) line.push_back({Sign(MarkOf(state), kind_) + " ", MarkOf(state).style});
    AddLine(line);
  }

  void AddLabels() {
    for (const auto& item : items_) {
      const bool isFree = item.control.kind == Kind::kLabel && std::ranges::find(used_, &item) == used_.end();
      if (isFree && !item.control.text.empty()) AddLine({{Shown(item.control.text, kind_)}});
    }
  }

  void AddMessage(const std::string& message) {
    std::vector<ScreenSpan> words;
    for (const auto& word : Split(Shown(message, kind_), ' ')) words.push_back({word + " ", ScreenStyle::kMessage});
    AddWords(words);
  }

  void AddKeys() {
    std::vector<ScreenSpan> words;
    for (const auto& item : items_) {
      if (item.control.kind != Kind::kButton || item.control.shortcut.empty()) continue;
      const auto style = item.control.isEnabled ? ScreenStyle::kPlain : ScreenStyle::kFaint;
      const auto key = item.control.shortcut == item.control.text ? std::string() : KeyOf(item.control);
      words.push_back({key + Shown(item.control.text, kind_) + "  ", style});
    }
    AddWords(words);
  }

  DialogLines Take() { return std::move(result_); }

 private:
  static std::string KeyOf(const dialog::Control& control) {
    return control.shortcut.empty() ? std::string() : control.shortcut + "  ";
  }
  void AddLine(const ScreenLine& line) { result_.lines.push_back(Cut(line, kind_.columns)); }
  void AddWords(const std::vector<ScreenSpan>& words) {
    ScreenLine line;
    for (const auto& word : words) {
      if (!line.empty() && WidthOf(line) + ScreenWidth(word.text) > kind_.columns) AddLine(std::exchange(line, {}));
      line.push_back(word);
    }
    if (!line.empty()) AddLine(line);
  }

  const ViewItems& items_;
  ScreenKind kind_;
  std::vector<const ViewItem*> used_;  // labels that stand beside what they are for
  DialogLines result_;
};

bool IsFirstOfItsContainer(const ViewItems& items, const ViewItem& radio) {
  return &*std::ranges::find_if(items, [&](const ViewItem& item) {
    return item.control.kind == Kind::kRadioButton && item.control.container == radio.control.container;
  }) == &radio;
}

// Far down, the depth is told as a number: the text would have no place else.
std::string Indent(int depth, const ScreenKind& kind) {
  const auto wide = static_cast<std::size_t>(depth) * kIndent;
  if (wide <= kind.columns / 2) return std::string(wide, ' ');
  return ">" + std::to_string(depth) + " ";
}

const char* FoldOf(const dialog::TreeContent& tree, int node, const ScreenKind& kind) {
  if (tree.FirstChild(node) == 0) return "  ";
  if (tree.IsExpanded(node)) return kind.hasUtf8 ? "▾ " : "- ";
  return kind.hasUtf8 ? "▸ " : "+ ";
}

}  // namespace

ScreenLine TitleLine(const std::string& title, const ScreenKind& kind) {
  return {{Padded(CutToWidth(" " + Shown(title, kind), kind.columns), kind.columns), ScreenStyle::kTitle}};
}

DialogLines PanelLines(const ViewItems& items, const std::optional<TypedIn>& typedIn,
                       const std::vector<std::string>& messages, const ScreenKind& kind) {
  Panel panel(items, kind);
  bool hasTree = false;
  for (const auto& item : items) {
    hasTree = hasTree || item.control.kind == Kind::kTree;
    if (item.control.kind == Kind::kTextBox) panel.AddTextBox(item.control, typedIn);
    if (item.control.kind == Kind::kRadioButton && IsFirstOfItsContainer(items, item)) {
      panel.AddRadioButtons(item.control.container);
    }
  }
  panel.AddLegend(hasTree);
  if (std::ranges::any_of(items, [](const ViewItem& item) { return item.control.clicksTick; })) panel.AddTicking();
  panel.AddLabels();
  for (const auto& message : messages) panel.AddMessage(message);
  panel.AddKeys();
  return panel.Take();
}

std::vector<ScreenLine> TreeLines(const dialog::TreeContent& tree, const TreeRows& rows, int top, std::size_t height,
                                  int cursor, const ScreenKind& kind) {
  std::vector<ScreenLine> lines;
  for (int row = top; lines.size() < height; ++row) {
    const int node = rows.NodeAt(row);
    if (node == 0) break;
    const auto& mark = MarkOf(tree.Picture(node));
    const auto text = Indent(rows.DepthOf(node), kind) + FoldOf(tree, node, kind) + Sign(mark, kind) + " " +
                      Shown(tree.Text(node), kind);
    const auto cut = CutToWidth(text, kind.columns);
    if (node == cursor) {
      lines.push_back({{Padded(cut, kind.columns), ScreenStyle::kCursor}});
    } else {
      lines.push_back({{cut, mark.style}});
    }
  }
  lines.resize(height);
  return lines;
}

}  // namespace quintara
