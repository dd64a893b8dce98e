#include "wip/Cls_Application.h"

#include <memory>

#include "access/session/process.h"
#include "access/utils/messages.h"
#include "positioning/Cls_AllInstances.h"
#include "services/Cls_Init.h"
#include "wip/MainPanel.h"

namespace quintara {
namespace {

constexpr int kForAnyState = -1;

Ref<veldora::VdObject> FirstOf(const Ref<veldora::VdRecList>& selection) {
  const auto record = selection->GetRecord(0);
  auto object = Process().gSession->ObjectStore()->ObjectFromRecord(record, kForAnyState)->Clone();
  object->Retrieve();
  return object;
}

bool IsStable(const Ref<veldora::VdRecord>& record) {
  const auto state = record->ValueAsInteger(Process().STATE);
  return state == veldora::state::kCheckedIn || state == veldora::state::kReleased;
}

void Review(const Ref<veldora::VdObject>& object) {
  const auto panel = std::make_shared<MainPanel>();
  panel->SetData(object);
  panel->ShowModal();
}

void Position() {
  Cls_AllInstances().Run();
  Utils().ExecuteZorvaScript("RetrieveMatrix", "UpdateDisplay");
  Show(Process().texts.QD_APPLICATION_WIP_CREATION_SUCCESSFUL, box::kInformationModal);
}

void ReleaseGlobals() {
  auto& globals = Process();
  globals.gClsUtils = nullptr;
  globals.gClsInit = nullptr;
  globals.gClsAdminSettings = nullptr;
}

}  // namespace

void Cls_Application::Run(const Ref<veldora::VdRecList>& FirstRec) {
  const auto end =
      Reported("Cls_Application.Run", box::kCritical, End::kCutShort, [&] { return ReviewAndPosition(FirstRec); });
  if (end == End::kNotStarted) return;
  if (end == End::kNormal) ReleaseGlobals();
  Process().gSkipPositioning = false;
}

Cls_Application::End Cls_Application::ReviewAndPosition(const Ref<veldora::VdRecList>& selection) {
  if (!StartCommand()) return End::kNotStarted;
  auto& globals = Process();
  if (selection->RecordCount() >= 2) {
    Show(globals.texts.QD_APPLICATION_SELECTION_IS_EMPTY, box::kInformationModal);
    return End::kCutShort;
  }
  const auto object = FirstOf(selection);
  globals.gCurrentObjectId = object->ObjectId();
  globals.gCurrentClassId = object->ClassId();
  if (const auto record = object->Record(); !IsStable(record)) {
    Show(globals.texts.QD_APPLICATION_MUST_BE_CHECKIN_OR_RELEASED, box::kInformation,
         record->ValueAsString(globals.gAttrPartNumber));
    return End::kCutShort;
  }
  globals.gWIPCancelled = true;
  Review(object);
  if (!globals.gWIPCancelled) Position();
  return End::kNormal;
}

}  // namespace quintara
