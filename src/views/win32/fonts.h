#pragma once

#include <string>
#include <utility>
#include <vector>

#include "access/contracts/dialog.h"
#include "views/win32/scale.h"
#include "views/win32/visual_styles.h"

namespace quintara::win32 {

/// That of the desktop's own dialogs, but for what makes it larger than layouts are made for.
dialog::Font StandardFont();

/// The fonts of one dialog at one scale, each made once and kept as long as this lives.
class Fonts {
 public:
  explicit Fonts(const Scale& scale) : scale_(scale) {}
  ~Fonts();
  Fonts(const Fonts&) = delete;
  Fonts& operator=(const Fonts&) = delete;

  /// Fails with 380 for a size that is none.
  HFONT Made(const dialog::Font& font);
  /// The name of what is used for a font: its own, whatever the case, or that of what takes its place.
  std::string NameUsed(const dialog::Font& font);
  /// Of a line, in pixels.
  int HeightOf(const dialog::Font& font);

 private:
  Scale scale_;
  std::vector<std::pair<dialog::Font, HFONT>> made_;
};

}  // namespace quintara::win32
