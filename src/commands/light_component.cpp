#include "commands/light_component.h"

#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"

namespace quintara {
namespace {

std::string RevisionOf(const Ref<veldora::VdObject>& object) {
  object->Retrieve();
  return object->Record()->ValueAsString(Process().REVISION);
}

}  // namespace

bool IsLight(const Ref<zorva::Product>& component) {
  const auto type = Utils().ReadStringProperty(component, "TYPE", "String");
  return !type.empty() && type != "3D";
}

void StampAsLight(const Ref<zorva::Product>& product, const Ref<veldora::VdObject>& object) {
  Utils().WriteStringProperty(product, "TYPE", "LWT");
  Utils().WriteStringProperty(product, "OBJECT_ID", std::to_string(object->ObjectId()));
  Utils().WriteStringProperty(product, "CLASS_ID", std::to_string(object->ClassId()));
}

LatestRevision LatestRevisionOf(const Ref<veldora::VdObject>& object) {
  const auto present = RevisionOf(object);
  LatestRevision latest{object->LinkedVersion(veldora::version::kLast)->Clone()};
  latest.revision = RevisionOf(latest.object);
  latest.isNew = latest.revision != present;
  return latest;
}

}  // namespace quintara
