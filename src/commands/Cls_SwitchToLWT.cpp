#include "commands/Cls_SwitchToLWT.h"

#include <string>

#include "access/contracts/veldora.h"
#include "access/session/process.h"
#include "access/utils/messages.h"
#include "base/text.h"
#include "commands/component_switch.h"
#include "commands/light_component.h"

namespace quintara {
namespace {

using veldora::VdObject;
using zorva::Product;
using zorva::Products;

constexpr auto kLight = "LWT";

// A component without stamps tells it by its file; one whose file can't be told is left alone too.
bool IsLoadedAsLight(const Ref<Product>& component) {
  const auto fullName =
      OrElse(std::string(), [&] { return component->Reference()->Parent()->AsDocument()->FullName(); });
  return fullName.empty() || Capitals(fullName).ends_with(kLight);
}

bool IsLightAlready(const Ref<Product>& component) {
  const auto type = Utils().ReadStringProperty(component, "TYPE", "String");
  return type.empty() ? IsLoadedAsLight(component) : type == kLight;
}

// Each comparison reads it anew, and none spares the next one.
bool IsInUse(const Ref<VdObject>& object) {
  const auto hasState = [&](int state) { return object->Record()->ValueAsInteger(Process().STATE) == state; };
  const bool isNew = hasState(0);
  const bool isCheckedOut = hasState(2);
  const bool isObsolete = hasState(4);
  return isNew || isCheckedOut || isObsolete;
}

// Nothing after a message, the failure of which is passed over as that of the host is. Its words are no text of the
// catalogue.
Ref<Product> Replace(const Ref<Products>& components, const Ref<Product>& component, const std::string& path) {
  ErrorState ignored;
  Ref<Product> light;
  Attempt(ignored, [&] { light = components->ReplaceWithFile(component, path, false); });
  if (light) return light;
  std::string refusal = "ZORVA can not replace the component with a lwt. Try with the parent...";
  Attempt(ignored, [&] { Utils().ShowMessage(refusal, box::kInformationModal, {}); });
  return nullptr;
}

bool Switch(const Ref<Products>& components, const Ref<Product>& component) {
  auto& globals = Process();
  auto& texts = globals.texts;
  const auto refuse = [&](auto& text) {
    Show(text, box::kCriticalModal, component->Name());
    return false;
  };
  if (IsLightAlready(component)) {
    Show(texts.QD_SWITCH_ALREADY_IN_STATE, box::kInformationModal, component->Name(), kLight);
    return false;
  }
  const auto object = Utils().RetrieveVDObject(globals.gSession, component, true);
  if (!object) return refuse(texts.QD_SWITCH_DOES_NOT_EXIST_IN_VELDORA);
  object->Retrieve();
  if (IsInUse(object)) return refuse(texts.QD_SWITCH_NOT_IN_CORRECT_STATE);
  const auto path = Utils().CopyVeldoraObjectLWTToWork(object, globals.gFileSystem);
  if (path.empty()) return refuse(texts.QD_SWITCH_CANT_BE_COPIED_FROM_VAULT);
  const auto light = Replace(components, component, path);
  if (!light) return false;
  StampAsLight(light->Reference(), object);
  return true;
}

}  // namespace

void Cls_SwitchToLWT::Run() {
  Reported("Cls_SwitchToLWT.Run", box::kCriticalModal, true, [] {
    const auto wip = StartSwitching();
    if (!wip) return true;
    const auto components = wip->root->Products();
    ForEachSelected(*wip, [&](const Ref<Product>& component) { return Switch(components, component); });
    return true;
  });
}

}  // namespace quintara
