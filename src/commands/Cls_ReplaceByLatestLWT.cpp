#include "commands/Cls_ReplaceByLatestLWT.h"

#include <memory>

#include "access/session/process.h"
#include "access/utils/messages.h"
#include "base/arrays.h"
#include "base/counter16.h"
#include "commands/formSelectLWT.h"
#include "commands/light_component.h"
#include "services/Cls_Init.h"

namespace quintara {
namespace {

using zorva::Product;
using zorva::Products;

void ReplaceByLatest(const Ref<Products>& components, const Ref<Product>& component) {
  auto& globals = Process();
  const auto latest = LatestRevisionOf(Utils().RetrieveVDObject_FromLWT(globals.gSession, component));
  if (!latest.isNew) {
    Show(globals.texts.QD_REPLACELWT_NO_REVISION, box::kCriticalModal, component->PartNumber());
    return;
  }
  const auto path = Utils().CopyVeldoraObjectToWorkAndGetLWT(globals.gSession, latest.object, globals.gFileSystem);
  if (path.empty()) {
    Show(globals.texts.QD_REPLACELWT_CANT_BE_COPIED_FROM_VAULT, box::kCriticalModal, component->Name());
    return;
  }
  const auto replacement = components->ReplaceWithFile(component, path, false);
  replacement->ApplyUpdate();
  StampAsLight(replacement->Reference(), latest.object);
}

void ReplaceTicked(const Ref<Products>& components) {
  auto& globals = Process();
  for (const int i : Counting(0, globals.ReplaceCandidateCount - 1)) {
    const auto candidate = ElementAt(globals.ReplaceCandidates, i);
    if (!candidate.Replace) continue;
    if (!IsLight(candidate.Product)) {
      Show(globals.texts.QD_REPLACELWT_LOADED_AS_DOCUMENT, box::kCriticalModal, candidate.Product->Name());
      return;
    }
    ReplaceByLatest(components, candidate.Product);
  }
}

}  // namespace

// Without a handler, unlike the other commands on components.
void Cls_ReplaceByLatestLWT::Run() {
  if (!StartCommand()) return;
  if (!Utils().IsAWIP()) {
    Show(Process().texts.QD_REPLACELWT_IS_NOT_WIP, box::kCriticalModal);
    return;
  }
  const auto root = Process().gZorva->ActiveDocument()->AsProductDocument()->Product();
  const auto components = root->Products();
  std::make_shared<formSelectLWT>(root)->ShowModal();
  ReplaceTicked(components);
}

}  // namespace quintara
