#pragma once

#include <cstddef>
#include <string>

#include "views/console/screen.h"

namespace quintara {

/// A line of text that is being typed, and the place in it where the next character goes.
class TextLine {
 public:
  /// Goes on behind the end of `text`, which is UTF-8.
  explicit TextLine(std::string text = {}) : text_(std::move(text)), caret_(text_.size()) {}

  const std::string& Text() const { return text_; }
  /// Takes a key that types, deletes or moves; False for any other.
  bool Press(const Key& key);

  /// As much of the text as fits in `columns`, the caret with it, and the column of that.
  struct Cut {
    std::string text;
    std::size_t caret;
  };
  Cut CutTo(std::size_t columns) const;

 private:
  std::size_t Before() const;
  std::size_t Behind() const;

  std::string text_;
  std::size_t caret_;  // in bytes
};

}  // namespace quintara
