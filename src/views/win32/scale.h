#pragma once

#include <cmath>

namespace quintara::win32 {

/// Twips as the pixels of a window. Sizes go up to whole pixels and come back down, places go to the nearest one, so
/// that what comes from pixels becomes the same pixels again, and a size never less than it was.
class Scale {
 public:
  static constexpr int kTwipsOfInch = 1440;
  static constexpr int kTwipsOfPoint = 20;
  /// Of an ordinary screen.
  static constexpr int kTwipsOfPixel = 15;

  /// `shrink`: below 1 where a screen is too small.
  explicit Scale(int pixelsOfInch, double shrink = 1) : pixels_(pixelsOfInch * shrink / kTwipsOfInch) {}

  int SizeInPixels(int twips) const { return static_cast<int>(std::ceil(twips * pixels_ - kLeast)); }
  int PlaceInPixels(int twips) const { return static_cast<int>(std::lround(twips * pixels_)); }
  int SizeInTwips(int pixels) const { return static_cast<int>(std::floor(pixels / pixels_ + kLeast)); }
  int PlaceInTwips(int pixels) const { return static_cast<int>(std::lround(pixels / pixels_)); }
  int PointsInPixels(double points) const { return static_cast<int>(std::lround(points * kTwipsOfPoint * pixels_)); }

 private:
  static constexpr double kLeast = 1e-6;  // less than any fraction that is meant

  double pixels_;  // of a twip
};

}  // namespace quintara::win32
