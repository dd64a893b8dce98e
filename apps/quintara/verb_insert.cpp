#include "commands/Cls_InsertFromVD.h"
#include "commands/Cls_InsertLWT.h"
#include "quintara/component_verbs.h"
#include "quintara/documents.h"
#include "quintara/object_arguments.h"
#include "quintara/session_start.h"

namespace quintara {

void RunInsert(CommandContext& context, const InsertOptions& options) {
  StartSession(context);
  const auto object = ObjectArgument(context, options.object);
  const auto document = OpenWip(context, options.product);
  const auto root = document->Product();
  const int before = root->Products()->Count();

  Cls_InsertLWT().Run(object, options.document ? "PRODUCT" : "LWT");

  if (root->Products()->Count() == before) {
    return context.Complain(Called(object) + " was not inserted in '" + root->PartNumber() + "'");
  }
  SaveChanges(context, document, options.dryRun);
}

void RunCheckInsert(CommandContext& context, const CheckInsertOptions& options) {
  StartSession(context);
  const auto object = ObjectArgument(context, options.object);
  OpenWip(context, options.product);
  Cls_InsertFromVD().Run(object);
}

}  // namespace quintara
