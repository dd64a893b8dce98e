#include "base/failure.h"
#include "matrix/Cls_Matrice.h"
#include "quintara/documents.h"
#include "quintara/verbs.h"

namespace quintara {

void RunMatrix(CommandContext& context, const MatrixOptions& options) {
  const auto document = OpenProduct(context, options.product);
  const auto root = document->Product();
  const auto wanted =
      options.output.empty() ? context.WorkPathToWrite(root->PartNumber() + " Matrix.xml") : options.output;
  const auto target = TargetPath(wanted, options.replace);
  if (options.dryRun) {
    context.Print("nothing written, as asked: '" + target + "'");
    return;
  }
  if (!Cls_Matrice().CreateXMLFile(root, target)) {
    throw Failure(failure::kInternal, "the matrix of '" + document->FullName() +
                                          "' was not written; each of its components must have a part number");
  }
  context.Print("wrote '" + target + "'");
}

}  // namespace quintara
