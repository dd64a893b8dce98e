#include "views/console/text_line.h"

#include <algorithm>
#include <string_view>

#include "base/text.h"
#include "views/console/screen_text.h"

namespace quintara {

std::size_t TextLine::Before() const {
  std::size_t before = 0;
  for (auto rest = std::string_view(text_).substr(0, caret_); !rest.empty();) {
    before = caret_ - rest.size();
    TakeCharacter(rest);
  }
  return before;
}

std::size_t TextLine::Behind() const {
  auto rest = std::string_view(text_).substr(caret_);
  if (!rest.empty()) TakeCharacter(rest);
  return text_.size() - rest.size();
}

bool TextLine::Press(const Key& key) {
  switch (key.code) {
    case Key::Code::kCharacter: {
      text_.insert(caret_, key.text);
      caret_ += key.text.size();
      return true;
    }
    case Key::Code::kBackspace: {
      const auto before = Before();
      text_.erase(before, caret_ - before);
      caret_ = before;
      return true;
    }
    case Key::Code::kDelete: text_.erase(caret_, Behind() - caret_); return true;
    case Key::Code::kLeft: caret_ = Before(); return true;
    case Key::Code::kRight: caret_ = Behind(); return true;
    case Key::Code::kHome: caret_ = 0; return true;
    case Key::Code::kEnd: caret_ = text_.size(); return true;
    default: return false;
  }
}

// One column is left for the caret behind the end.
TextLine::Cut TextLine::CutTo(std::size_t columns) const {
  auto front = std::string_view(text_).substr(0, caret_);
  while (!front.empty() && ScreenWidth(front) + 1 > columns) TakeCharacter(front);
  const auto from = caret_ - front.size();
  return {CutToWidth(std::string_view(text_).substr(from), columns), ScreenWidth(front)};
}

}  // namespace quintara
