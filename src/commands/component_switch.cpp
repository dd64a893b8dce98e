#include "commands/component_switch.h"

#include "access/session/process.h"
#include "access/utils/messages.h"
#include "base/counter16.h"
#include "services/Cls_Init.h"

namespace quintara {

std::optional<ActiveWip> StartSwitching() {
  if (!StartCommand()) return std::nullopt;
  if (!Utils().IsAWIP()) {
    Show(Process().texts.QD_SWITCH_ONLY_AVAILABLE_FOR_WIP, box::kInformationModal);
    return std::nullopt;
  }
  const auto document = Process().gZorva->ActiveDocument()->AsProductDocument();
  return ActiveWip{document, document->Product()};
}

void ForEachSelected(const ActiveWip& wip, const std::function<bool(const Ref<zorva::Product>& component)>& switchOne) {
  const auto selection = wip.document->Selection();
  const auto count = selection->Count();
  if (count == 0) {
    Show(Process().texts.QD_SWITCH_SELECT_AT_LEAST_ONE_OBJECT, box::kInformationModal);
    return;
  }
  for (const int i : Counting(1, count)) {
    if (!switchOne(selection->Item(i)->Value()->AsProduct())) return;
  }
}

}  // namespace quintara
