#pragma once

#include <string>
#include <vector>

#include "access/contracts/geometry.h"

namespace quintara {

/// Draws scenes side by side into a PNG file, in a worker and on a screen of its own.
void DrawPicture(const std::vector<PictureView>& views, const std::string& path, int width, int height);

}  // namespace quintara
