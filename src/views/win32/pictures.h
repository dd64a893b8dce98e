#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The pictures that stand before the nodes of the dialogs' trees and in their legends, drawn anew for each size. What
/// a picture says is told by shapes, the colours only repeat it: a part is one cube, a product three boxes; what is
/// left out is hollow, what comes in as a light representation half full, as a document full. Where a node can be
/// ticked, a disc in the corner is empty or bears a tick.
namespace quintara::win32 {

/// A square of pixels, rows from the top, each 0xAARRGGBB; the colours are not multiplied by the opacity.
struct Pixels {
  int size = 0;
  std::vector<std::uint32_t> colours = {};

  std::uint32_t At(int x, int y) const { return colours[static_cast<std::size_t>(y * size + x)]; }
  bool operator==(const Pixels&) const = default;
};

/// The picture of a key such as "part lwt yes", `size` pixels wide and high, from 8 to 256. Fails with 35601 for a key
/// that has no picture, with 5 for another size.
Pixels DrawPicture(const std::string& key, int size);

}  // namespace quintara::win32
