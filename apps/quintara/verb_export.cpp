#include "quintara/documents.h"
#include "quintara/product_tree.h"
#include "quintara/scene_of.h"
#include "quintara/verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {

void RunExport(CommandContext& context, const ExportOptions& options) {
  const bool isStep = HasExtension(options.output, ".stp") || HasExtension(options.output, ".step");
  if (!isStep && !HasExtension(options.output, ".glb")) {
    throw WrongUse("'" + options.output + "' is neither a STEP (.stp, .step) nor a glTF file (.glb)");
  }
  const auto scene = SceneOfArgument(context, options.product);
  const auto target = TargetPath(options.output, options.replace);
  if (options.dryRun) {
    context.Print("nothing written, as asked: '" + target + "'");
    return;
  }
  auto& geometry = context.TheGeometry();
  const auto remarks = isStep ? geometry.WriteStep(scene.root, target, context.ProgressBarOn())
                              : geometry.WriteGltf(scene.root, target, context.ProgressBarOn());
  for (const auto& line : scene.leftOut) context.Complain(line);
  for (const auto& line : remarks) context.Complain(line);
  context.Print("wrote '" + target + "'");
}

}  // namespace quintara
