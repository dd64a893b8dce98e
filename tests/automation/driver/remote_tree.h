#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "automation/driver/desktop.h"
#include "automation/driver/remote_memory.h"

namespace quintara::driver {

/// The tree control of another process.
class RemoteTree {
 public:
  using Item = std::uintptr_t;  ///< 0 is none

  explicit RemoteTree(HWND tree);

  HWND Window() const { return tree_; }
  /// The node of that text, the last word, below nodes of the words before it, each the next one's parent. Fails where
  /// there is none, or several.
  Item Find(const std::vector<std::string>& path);
  /// Opens what is above it, scrolls to it and gives the place of its text on the screen.
  RECT Show(Item item);
  std::string Text(Item item);
  int Picture(Item item);
  bool IsExpanded(Item item);
  Item Selected() const;
  /// Every node whose parents are all open or shut, a line each: two blanks a level, the picture's place, the text.
  std::string Outline();

 private:
  struct Values {
    std::string text = {};
    int picture = 0;
    unsigned state = 0;
  };

  Item Next(unsigned relation, Item item) const;
  Item Following(Item item) const;
  Values Read(Item item);
  bool Matches(Item item, const std::vector<std::string>& path);

  HWND tree_;
  RemoteMemory memory_;
};

}  // namespace quintara::driver
