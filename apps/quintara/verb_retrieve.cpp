#include "positioning/Cls_RetrieveMatrix.h"
#include "quintara/documents.h"
#include "quintara/session_start.h"
#include "quintara/wip_verbs.h"

namespace quintara {

void RunRetrieve(CommandContext& context, const RetrieveOptions& options) {
  StartSession(context);
  const auto document = OpenWip(context, options.product);
  Cls_RetrieveMatrix().Run();
  SaveChanges(context, document, options.dryRun);
}

}  // namespace quintara
