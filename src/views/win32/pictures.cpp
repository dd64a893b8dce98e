#include "views/win32/pictures.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <sstream>

#include "base/failure.h"

namespace quintara::win32 {
namespace {

using Colour = std::uint32_t;

constexpr int kLeast = 8;
constexpr int kMost = 256;
constexpr int kUnits = 16;   // what lengths below are told in: the picture's edge has so many
constexpr int kSamples = 8;  // of a pixel, in each direction

constexpr Colour kNothing = 0;
constexpr Colour kPaper = 0xFFFFFFFF;
constexpr Colour kGreen = 0xFF14612E;

enum class Fill { kHollow, kHalf, kFull };
enum class Tick { kNone, kEmpty, kSet };

struct Meaning {
  bool isProduct = false;
  Fill fill = Fill::kHollow;
  Tick tick = Tick::kNone;
};

// What a body is drawn with; the sides are those of a cube that is seen from above.
struct Paint {
  Colour edge = 0;
  Colour top = kPaper;
  Colour left = kPaper;
  Colour right = kPaper;
};

Paint PaintOf(Fill fill) {
  switch (fill) {
    case Fill::kHollow: return {.edge = 0xFF6B6B6B};
    case Fill::kHalf: return {.edge = 0xFF8A5200, .left = 0xFFF2A32B, .right = 0xFFDD8A12};
    default: return {.edge = 0xFF0A3570, .top = 0xFF6E9FE3, .left = 0xFF2C6CC8, .right = 0xFF1D519F};
  }
}

struct Point {
  double x = 0;
  double y = 0;
};

// The words of a key: the kind, what becomes of it, and whether it is ticked.
Meaning MeaningOf(const std::string& key) {
  std::istringstream words(key);
  std::string kind, state, tick, more;
  words >> kind >> state >> tick >> more;
  const bool isKnown = (kind == "part" || kind == "product") && (state == "none" || state == "lwt" || state == "doc") &&
                       (tick.empty() || (state == "lwt" && (tick == "no" || tick == "yes"))) &&
                       key == kind + " " + state + (tick.empty() ? "" : " " + tick);
  if (!isKnown) throw Failure(failure::kElementNotFound, "There is no picture \"" + key + "\"");
  return {.isProduct = kind == "product",
          .fill = state == "none"  ? Fill::kHollow
                  : state == "lwt" ? Fill::kHalf
                                   : Fill::kFull,
          .tick = tick.empty()   ? Tick::kNone
                  : tick == "no" ? Tick::kEmpty
                                 : Tick::kSet};
}

double DistanceToSegment(Point point, Point from, Point to) {
  const Point along{to.x - from.x, to.y - from.y};
  const double length = along.x * along.x + along.y * along.y;
  const double part = std::clamp(((point.x - from.x) * along.x + (point.y - from.y) * along.y) / length, 0.0, 1.0);
  return std::hypot(point.x - from.x - part * along.x, point.y - from.y - part * along.y);
}

class Painter {
 public:
  explicit Painter(int size) : size_(size), pixels_{size, std::vector<Colour>(static_cast<std::size_t>(size * size))} {}

  // Lengths in whole pixels keep straight edges sharp.
  int Whole(double units) const { return static_cast<int>(std::lround(units * size_ / kUnits)); }
  int Line() const { return std::max(1, Whole(1)); }

  void Cube(Fill fill);
  void Boxes(Fill fill);
  void Disc(bool isTicked);

  Pixels Take() { return std::move(pixels_); }

 private:
  void Box(int left, int top, int edge, Fill fill);
  void Rectangle(int left, int top, int right, int bottom, Colour colour);
  // `colourAt` has the colour of a point, given what is there already.
  template <typename ColourAt>
  void Cover(const ColourAt& colourAt);
  void Blend(int x, int y, const std::vector<Colour>& samples);

  int size_;
  Pixels pixels_;
};

void Painter::Rectangle(int left, int top, int right, int bottom, Colour colour) {
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) pixels_.colours[static_cast<std::size_t>(y * size_ + x)] = colour;
  }
}

void Painter::Box(int left, int top, int edge, Fill fill) {
  const int line = Line();
  const auto paint = PaintOf(fill);
  const int inner = edge - 2 * line;
  const int above = fill == Fill::kFull ? 0 : inner / 2;
  Rectangle(left, top, left + edge, top + edge, paint.edge);
  Rectangle(left + line, top + line, left + edge - line, top + line + above, kPaper);
  Rectangle(left + line, top + line + above, left + edge - line, top + edge - line, paint.left);
}

// One above two, mirrored about the middle: the upper one's edge is even where the picture's is.
void Painter::Boxes(Fill fill) {
  const int margin = Whole(0.5);
  const int gap = std::max(1, Whole(1));
  int edge = (size_ - 2 * margin - gap) / 2;
  if ((edge - size_) % 2 != 0) --edge;
  Box((size_ - edge) / 2, margin, edge, fill);
  Box(margin, size_ - margin - edge, edge, fill);
  Box(size_ - margin - edge, size_ - margin - edge, edge, fill);
}

// Its upright edges are whole pixels; a sample is told by its distances from the outline and from the edges within.
void Painter::Cube(Fill fill) {
  const double line = Line();
  const int margin = Whole(1.5);
  const double half = size_ / 2.0 - margin;  // of its width
  const double slope = half / 2;             // of an edge that goes back, from its one end to the other
  const double thick = line * std::hypot(half, slope) / half;  // such an edge's, measured upright
  const double middle = size_ / 2.0;
  const double top = Whole(0.5);
  const double bottom = size_ - top;
  const double upright = std::fmod(size_ - line, 2) == 0 ? line : line + 1;
  const auto paint = PaintOf(fill);
  Cover([&](Point point, Colour below) {
    const double aside = std::abs(point.x - middle);
    const double back = slope * aside / half;
    const double inside = std::min(point.y - (top + back), (bottom - back) - point.y);
    if (aside > half || inside < 0) return below;
    const double under = point.y - (top + 2 * slope - back);
    const bool isEdge =
        half - aside < line || inside < thick || std::abs(under) < thick / 2 || (under > 0 && aside < upright / 2);
    if (isEdge) return paint.edge;
    if (under < 0) return paint.top;
    return point.x < middle ? paint.left : paint.right;
  });
}

// Round, so that it isn't taken for another square, with a clear ring that parts it from what it covers.
void Painter::Disc(bool isTicked) {
  const double unit = static_cast<double>(size_) / kUnits;
  const double radius = std::max(3.0, 4.25 * unit);
  const Point middle{size_ - radius, size_ - radius};
  const Point tick[] = {{middle.x - 0.5 * radius, middle.y + 0.05 * radius},
                        {middle.x - 0.12 * radius, middle.y + 0.42 * radius},
                        {middle.x + 0.5 * radius, middle.y - 0.38 * radius}};
  const double stroke = 0.15 * radius + 0.2;
  Cover([&](Point point, Colour below) {
    const double distance = std::hypot(point.x - middle.x, point.y - middle.y);
    if (distance > radius + std::max(1.0, unit)) return below;
    if (distance > radius) return kNothing;
    if (!isTicked) return distance > radius - std::max(1.2, 1.2 * unit) ? kGreen : kPaper;
    const double off = std::min(DistanceToSegment(point, tick[0], tick[1]), DistanceToSegment(point, tick[1], tick[2]));
    return off < stroke ? kPaper : kGreen;
  });
}

template <typename ColourAt>
void Painter::Cover(const ColourAt& colourAt) {
  std::vector<Colour> samples(kSamples * kSamples);
  for (int y = 0; y < size_; ++y) {
    for (int x = 0; x < size_; ++x) {
      const auto below = pixels_.At(x, y);
      for (std::size_t i = 0; i < samples.size(); ++i) {
        const double column = static_cast<double>(i % kSamples);
        const double row = static_cast<double>(i / kSamples);
        samples[i] = colourAt({x + (column + 0.5) / kSamples, y + (row + 0.5) / kSamples}, below);
      }
      Blend(x, y, samples);
    }
  }
}

// A pixel gets the mean of its samples; clear ones count for its opacity, not for its colour.
void Painter::Blend(int x, int y, const std::vector<Colour>& samples) {
  Colour sums[4] = {};
  for (const auto sample : samples) {
    const auto opacity = sample >> 24;
    for (int channel = 0; channel < 3; ++channel) sums[channel] += (sample >> (8 * channel) & 255) * opacity;
    sums[3] += opacity;
  }
  const auto count = static_cast<Colour>(samples.size());
  Colour colour = 0;
  if (sums[3] != 0) {
    for (int channel = 0; channel < 3; ++channel) colour |= (sums[channel] + sums[3] / 2) / sums[3] << (8 * channel);
    colour |= (sums[3] + count / 2) / count << 24;
  }
  pixels_.colours[static_cast<std::size_t>(y * size_ + x)] = colour;
}

}  // namespace

Pixels DrawPicture(const std::string& key, int size) {
  const auto meaning = MeaningOf(key);
  if (size < kLeast || size > kMost) {
    throw Failure(failure::kInvalidCall, "A picture can't be " + std::to_string(size) + " pixels wide");
  }
  Painter painter(size);
  if (meaning.isProduct) {
    painter.Boxes(meaning.fill);
  } else {
    painter.Cube(meaning.fill);
  }
  if (meaning.tick != Tick::kNone) painter.Disc(meaning.tick == Tick::kSet);
  return painter.Take();
}

}  // namespace quintara::win32
