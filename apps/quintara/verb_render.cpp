#include "quintara/documents.h"
#include "quintara/product_tree.h"
#include "quintara/scene_of.h"
#include "quintara/verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

constexpr int kWidthOfOne = 700;
constexpr std::size_t kMostViews = 8;

void Check(const RenderOptions& options) {
  if (!HasExtension(options.output, ".png")) throw WrongUse("'" + options.output + "' is no picture file (.png)");
  if (options.products.size() > kMostViews) {
    throw WrongUse("a picture shows up to " + std::to_string(kMostViews) + " products, not " +
                   std::to_string(options.products.size()));
  }
  if (options.captions.size() > options.products.size()) {
    throw WrongUse("there are more captions than products: '" + options.captions.back() + "'");
  }
}

}  // namespace

void RunRender(CommandContext& context, const RenderOptions& options) {
  Check(options);
  std::vector<PictureView> views;
  for (const auto& product : options.products) {
    auto scene = SceneOfArgument(context, product);
    for (const auto& line : scene.leftOut) context.Complain(line);
    const auto at = views.size();
    views.push_back(
        {at < options.captions.size() ? options.captions[at] : scene.root.partNumber, std::move(scene.root)});
  }
  const auto target = TargetPath(options.output, options.replace);
  if (options.dryRun) {
    context.Print("nothing written, as asked: '" + target + "'");
    return;
  }
  const int width = options.width > 0 ? options.width : kWidthOfOne * static_cast<int>(views.size());
  context.TheGeometry().WritePicture(views, target, width, options.height);
  context.Print("wrote '" + target + "'");
}

}  // namespace quintara
