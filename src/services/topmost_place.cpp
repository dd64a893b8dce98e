#include "services/topmost_place.h"

#include <cmath>

namespace quintara {
namespace {

// These take the screen's twips to the pixels of the window; only the first one is meant to hit the middle.
constexpr double kAcross = 14.85;
constexpr double kDown = 25;
constexpr double kTwipsOfPixel = 15;

int Rounded(double number) {
  return static_cast<int>(std::lrint(number));
}

}  // namespace

dialog::Box TopmostPlace(dialog::View& view) {
  const auto screen = view.Screen();
  const auto box = view.BoxOf({});
  const double width = box.width / kTwipsOfPixel;
  const double height = box.height / kTwipsOfPixel;
  return {Rounded(screen.width / kAcross / 2 - width / 2), Rounded(screen.height / kDown / 2 - height / 2),
          Rounded(width), Rounded(height)};
}

}  // namespace quintara
