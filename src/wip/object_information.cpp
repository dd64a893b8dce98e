#include "access/session/process.h"
#include "access/utils/messages.h"
#include "wip/MainPanel.h"

namespace quintara {
namespace {

constexpr int kWindowOfOneObject = 8;

bool MayView(const Ref<veldora::VdSession>& session, const Ref<veldora::VdObject>& object) {
  const auto user = session->UserMetaInfo()->UserId();
  const auto operation = session->MetaInfo()->Operations(0)->Find("VIEW OBJECT")->OperationId();
  return session->Authorizations()->IsAllowed(user, operation, object);
}

void ShowWindow(const Ref<veldora::VdSession>& session, const Ref<veldora::VdObject>& object) {
  const auto services = session->GetService("VdGUISrv.VdGUIServices")->AsVdGUIServices();
  const auto dialog = services->New(kWindowOfOneObject);
  const auto window = dialog->Window();
  window->SetTitle(Filled(Process().texts.QD_FRMMAINPANEL_INFORMATION));
  window->SetWindowOptionA(1);
  const auto objects = session->ObjectStore()->NewObjects();
  objects->Add(object);
  dialog->Input()->SetObjects(objects);
  window->Show();
}

}  // namespace

void MainPanel::ShowObjectInformation(const Ref<veldora::VdSession>& session, const Ref<veldora::VdObject>& object) {
  if (MayView(session, object)) return ShowWindow(session, object);
  const auto login = session->UserMetaInfo()->Login();
  const auto className = object->ClassInfo()->ClassName();
  Show(Process().texts.QD_FRMMAINPANEL_NOT_ALLOWED_TO_VIEW_OBJECT, box::kCriticalModal, login, className);
}

}  // namespace quintara
