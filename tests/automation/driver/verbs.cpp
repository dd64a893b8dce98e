#include <charconv>
#include <limits>

#include "automation/driver/driver.h"

namespace quintara::driver {
namespace {

constexpr std::size_t kMany = std::numeric_limits<std::size_t>::max();

int Number(const std::string& word) {
  int number = 0;
  const auto* end = word.data() + word.size();
  const auto result = std::from_chars(word.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) throw Failed(Quoted(word) + " is no number");
  return number;
}

}  // namespace

struct Driver::Verb {
  const char* name;
  const char* usage;
  std::size_t least;  // words behind it
  std::size_t most;
  std::function<void(Driver&, const Words&)> act;
};

// NODE is the text of a node of the tree, and before it, where it takes that to tell it, those of its parents.
const std::vector<Driver::Verb>& Driver::Verbs() {
  using Self = Driver&;
  using In = const Words&;
  static const std::vector<Verb> verbs = {
      {"start", "PROGRAM ARGUMENT...: starts a program", 1, kMany, [](Self self, In in) { self.program_.Start(in); }},
      {"ends", "CODE: the program ends with that code", 1, 1, [](Self self, In in) { self.WaitForEnd(Number(in[0])); }},
      {"timeout", "SECONDS: how long each step waits for what it needs (30)", 1, 1,
       [](Self self, In in) { self.time_ = std::chrono::seconds(Number(in[0])); }},
      {"say", "TEXT: writes a line", 1, 1, [](Self self, In in) { self.log_ << in[0] << '\n'; }},
      {"screenshot", "NAME: the screen as NAME.png", 1, 1, [](Self self, In in) { self.TakePicture(in[0]); }},
      {"wait", "TITLE: for a window that can be used; the next steps are about it", 1, 1,
       [](Self self, In in) { self.WaitForWindow(in[0]); }},
      {"gone", "TITLE: no such window is there any more", 1, 1, [](Self self, In in) { self.WaitUntilGone(in[0]); }},
      {"close", ": by the window's own close box", 0, 0, [](Self self, In) { self.Close(); }},
      {"press", "CONTROL: clicks on it", 1, 1, [](Self self, In in) { self.Press(in[0]); }},
      {"left-click", "NODE", 1, kMany, [](Self self, In in) { self.ClickNode(in, Button::kLeft, 1); }},
      {"right-click", "NODE", 1, kMany, [](Self self, In in) { self.ClickNode(in, Button::kRight, 1); }},
      {"double-click", "NODE", 1, kMany, [](Self self, In in) { self.ClickNode(in, Button::kLeft, 2); }},
      {"key", "NAME: Tab, Enter, Esc, Space, Down, F3, Alt+C, ...", 1, 1, [](Self self, In in) { self.Key(in[0]); }},
      {"type", "TEXT", 1, 1, [](Self self, In in) { self.Type(in[0]); }},
      {"drag-edge", "left|right|top|bottom|corner|title RIGHT DOWN: in pixels", 3, 3,
       [](Self self, In in) { self.DragEdge(in[0], Number(in[1]), Number(in[2])); }},
      {"expect-box", "TITLE STYLE TEXT: a message box with the sum of its sign, buttons and 4096 for on top of all", 3,
       3, [](Self self, In in) { self.ExpectBox(in[0], Number(in[1]), in[2]); }},
      {"answer", "ok|cancel|abort|retry|ignore|yes|no: to the message box, whose line is written then", 1, 1,
       [](Self self, In in) { self.Answer(in[0]); }},
      {"expect-text", "CONTROL TEXT: caption or content; of the window where CONTROL is \"\"", 2, 2,
       [](Self self, In in) { self.ExpectText(in[0], in[1]); }},
      {"expect-enabled", "CONTROL", 1, 1, [](Self self, In in) { self.ExpectEnabled(in[0], true); }},
      {"expect-disabled", "CONTROL", 1, 1, [](Self self, In in) { self.ExpectEnabled(in[0], false); }},
      {"expect-checked", "CONTROL", 1, 1, [](Self self, In in) { self.ExpectChecked(in[0], true); }},
      {"expect-unchecked", "CONTROL", 1, 1, [](Self self, In in) { self.ExpectChecked(in[0], false); }},
      {"expect-focus", "CONTROL: has the keyboard", 1, 1, [](Self self, In in) { self.ExpectFocus(in[0]); }},
      {"expect-topmost", ": the window is on top of all", 0, 0, [](Self self, In) { self.ExpectTopmost(); }},
      {"expect-place", "LEFT TOP WIDTH HEIGHT: of the window, in pixels, \"-\" for any", 4, 4,
       [](Self self, In in) { self.ExpectPlace(in); }},
      {"expect-node", "NODE", 1, kMany, [](Self self, In in) { self.ExpectNode(in); }},
      {"expect-picture", "PLACE NODE: of its picture in the tree's list, from 0", 2, kMany,
       [](Self self, In in) {
         self.ExpectPicture(Number(in[0]), {in.begin() + 1, in.end()});
       }},
      {"expect-selected", "NODE, or nothing for none", 0, kMany, [](Self self, In in) { self.ExpectSelected(in); }},
      {"show-tree", ": writes a line for each node, with the place of its picture", 0, 0,
       [](Self self, In) { self.ShowTree(); }},
  };
  return verbs;
}

std::string Driver::Usage() {
  std::string lines;
  for (const auto& verb : Verbs()) {
    lines += "  " + std::string(verb.name) + (*verb.usage == ':' ? "" : " ") + verb.usage + "\n";
  }
  return lines;
}

void Driver::Do(const Step& step) {
  const auto& name = step.words[0];
  for (const auto& verb : Verbs()) {
    if (verb.name != name) continue;
    const Words words(step.words.begin() + 1, step.words.end());
    if (words.size() < verb.least || words.size() > verb.most) {
      throw Failed("it is used so: " + name + " " + verb.usage);
    }
    verb.act(*this, words);
    log_.flush();
    return;
  }
  throw Failed("there is no step " + Quoted(name));
}

}  // namespace quintara::driver
