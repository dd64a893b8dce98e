#include <map>

#include "access/utils/Cls_Utils.h"
#include "base/failure.h"
#include "matrix/Cls_Matrice.h"
#include "quintara/documents.h"
#include "quintara/verbs.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

// Placing instances begins with one component for each part number and takes a neighbour away for
// each double; of a product that has its copies already it would take away others.
void RefuseCopies(const Ref<zorva::Product>& root, const std::string& name) {
  std::map<std::string, int> counts;
  const auto products = root->Products();
  for (int i = 1, count = products->Count(); i <= count; ++i) {
    const auto partNumber = Cls_Utils().GetThePartNumber(products->Item(i));
    if (++counts[partNumber] > 1) {
      throw WrongUse("'" + partNumber + "' stands in '" + name +
                     "' more than once: its instances are made already, so place them without --all-instances and "
                     "--first-instances");
    }
  }
}

}  // namespace

void RunPosition(CommandContext& context, const PositionOptions& options) {
  const auto matrix = FindFile(context, options.matrix, "matrix file");
  const auto document = OpenWip(context, options.product);
  const auto root = document->Product();
  const bool makesInstances = options.allInstances || options.firstInstances;
  if (makesInstances) RefuseCopies(root, document->FullName());
  Cls_Matrice matrice;
  const bool placed = makesInstances
                          ? matrice.PositionAllInstances(root, matrix, options.allInstances, document->Selection())
                          : matrice.ProcessXMLFile(root, matrix);
  if (!placed) {
    throw Failure(failure::kInternal,
                  "not every component could be placed; '" + document->FullName() + "' stays as it was");
  }
  const int count = root->Products()->Count();
  context.Print("placed " + std::to_string(count) + (count == 1 ? " component" : " components"));
  SaveChanges(context, document, options.dryRun);
}

}  // namespace quintara
