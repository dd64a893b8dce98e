#include <cmath>
#include <numbers>
#include <random>

#include "quintara/documents.h"
#include "quintara/verbs.h"

namespace quintara {
namespace {

// The library's own distributions may give other numbers elsewhere; this gives the same ones.
double UpToOne(std::mt19937_64& random) {
  return std::ldexp(static_cast<double>(random() >> 11U), -53);
}

// A turn, each as likely as any other, and an origin in a cube around that of the product.
PositionMatrix RandomPosition(std::mt19937_64& random, double distance) {
  const double share = UpToOne(random);
  const double first = 2 * std::numbers::pi * UpToOne(random);
  const double second = 2 * std::numbers::pi * UpToOne(random);
  const double x = std::sqrt(1 - share) * std::sin(first);
  const double y = std::sqrt(1 - share) * std::cos(first);
  const double z = std::sqrt(share) * std::sin(second);
  const double w = std::sqrt(share) * std::cos(second);
  PositionMatrix position{1 - 2 * (y * y + z * z), 2 * (x * y + z * w),     2 * (x * z - y * w),
                          2 * (x * y - z * w),     1 - 2 * (x * x + z * z), 2 * (y * z + x * w),
                          2 * (x * z + y * w),     2 * (y * z - x * w),     1 - 2 * (x * x + y * y)};
  for (std::size_t i = 9; i < position.size(); ++i) position[i] = distance * (2 * UpToOne(random) - 1);
  return position;
}

}  // namespace

void RunScatter(CommandContext& context, const ScatterOptions& options) {
  const auto document = OpenWip(context, options.product);
  const auto products = document->Product()->Products();
  std::mt19937_64 random(options.seed);
  const int count = products->Count();
  for (int i = 1; i <= count; ++i) {
    products->Item(i)->Position()->SetComponents(RandomPosition(random, options.distance));
  }
  context.Print("scattered " + std::to_string(count) + (count == 1 ? " component" : " components"));
  SaveChanges(context, document, options.dryRun);
}

}  // namespace quintara
