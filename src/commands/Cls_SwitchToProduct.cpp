#include "commands/Cls_SwitchToProduct.h"

#include <string>

#include "access/contracts/veldora.h"
#include "access/session/process.h"
#include "access/utils/messages.h"
#include "base/file_names.h"
#include "commands/component_switch.h"
#include "commands/light_component.h"

namespace quintara {
namespace {

using veldora::VdObject;
using zorva::Product;

constexpr bool kGoOn = true;
constexpr bool kEnd = false;

bool IsInUse(const Ref<VdObject>& object) {
  const auto state = object->Record()->ValueAsInteger(Process().STATE);
  return state == 0 || state == 2 || state == 4;
}

// Where the copy says that it stands isn't what is loaded.
void ReplaceByDocument(const Ref<Product>& root, const Ref<Product>& component, const Ref<VdObject>& object) {
  const auto components = root->Products();
  const auto& globals = Process();
  const auto path = PathIn(globals.gWorkDirectory, object->Record()->ValueAsString(globals.CAD_REF_FILE_NAME));
  components->Application()->Documents()->Read(path);
  components->ReplaceWithFile(component, path, false);
}

bool Switch(const Ref<Product>& root, const Ref<Product>& component) {
  const auto& session = Process().gSession;
  auto& texts = Process().texts;
  const auto refuse = [&](auto& text) { Show(text, box::kCriticalModal, component->Name()); };
  if (!IsLight(component)) {
    Show(texts.QD_SWITCH_ALREADY_IN_STATE, box::kInformationModal, component->Name(), "product");
    return kEnd;
  }
  const auto object = Utils().RetrieveVDObject_FromLWT(session, component);
  if (!object) {
    refuse(texts.QD_SWITCH_DOES_NOT_EXIST_IN_VELDORA);
    return kGoOn;
  }
  object->Retrieve();
  if (IsInUse(object)) {
    refuse(texts.QD_SWITCH_NOT_IN_CORRECT_STATE);
    return kGoOn;
  }
  if (Utils().CopyVeldoraObjectToWork(object).empty()) {
    refuse(texts.QD_SWITCH_CANT_BE_COPIED_FROM_VAULT);
    return kEnd;
  }
  ReplaceByDocument(root, component, object);
  return kGoOn;
}

}  // namespace

void Cls_SwitchToProduct::Run() {
  Reported("Cls_SwitchToProduct.Run", box::kCriticalModal, true, [] {
    const auto wip = StartSwitching();
    if (!wip) return true;
    ForEachSelected(*wip, [&](const Ref<Product>& component) { return Switch(wip->root, component); });
    return true;
  });
}

}  // namespace quintara
