#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "automation/driver/desktop.h"

/// What the screen shows.
namespace quintara::driver {

/// Rows from the top, each pixel 0x00RRGGBB.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels = {};
};

RECT WholeScreen();
Picture PictureOf(const RECT& box);
/// As a PNG file.
void Save(const Picture& picture, const std::filesystem::path& file);

/// The styles of message boxes for the signs in them; 0 for another picture.
int SignIn(const RECT& box);

}  // namespace quintara::driver
