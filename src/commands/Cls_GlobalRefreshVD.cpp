#include "commands/Cls_GlobalRefreshVD.h"

#include <utility>

#include "access/contracts/zorva.h"
#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "access/utils/messages.h"
#include "base/file_names.h"
#include "base/text.h"
#include "commands/refresh_settings.h"
#include "matrix/Cls_GetMatrix.h"
#include "services/Cls_Init.h"

namespace quintara {
namespace {

using veldora::HIXDocument;
using veldora::VdObject;
using veldora::VdRecList;
namespace state = veldora::state;

constexpr int kForAnyState = -1;

struct Identity {
  std::int32_t objectId;
  std::int16_t classId;
};

Identity IdentityOf(const Ref<VdObject>& object) {
  const auto objectId = object->ObjectId();
  return {objectId, object->ClassId()};
}

Ref<VdObject> FirstOf(const Ref<VdRecList>& selection) {
  const auto record = selection->GetRecord(0);
  auto object = Process().gSession->ObjectStore()->ObjectFromRecord(record, kForAnyState)->Clone();
  object->Retrieve();
  // One that doesn't tell who it is ends the command here, where nothing has been changed yet.
  IdentityOf(object);
  return object;
}

bool IsStable(const Ref<veldora::VdRecord>& record) {
  const auto current = record->ValueAsInteger(Process().STATE);
  return current == state::kCheckedIn || current == state::kReleased;
}

bool AreChildrenStable(const Ref<VdObject>& object) {
  Ref<veldora::VdObjects> children;
  Utils().GetAllChildren(Process().gSession, object, children, nullptr, Process().CAD_REF_FILE_NAME);
  return Utils().AcceptGlobalRefresh(children);
}

// A product without a file isn't told here: its check-out fails, or the opening of the folder.
std::string RootPath(const std::string& fileName) {
  const auto& folder = Process().gWorkDirectory;
  return fileName.empty() ? FromPath(ToPath(folder) / "") : PathIn(folder, fileName);
}

void WriteMatrix(const Ref<VdObject>& object) {
  Cls_GetMatrix().Run("CheckIn", object, true);
}

void RefreshDisplay() {
  if (Process().gZorva) Process().gZorva->SetRefreshDisplay(true);
}

}  // namespace

/// The part of a refresh in which the user's settings are other ones.
class Cls_GlobalRefreshVD::Silenced {
 public:
  /// False, with the settings as they are by then, where the session can't be reloaded.
  bool Refresh(const Ref<VdObject>& object, const std::string& path) {
    OverwriteSettings();
    if (!Reload()) return false;
    const auto identity = IdentityOf(object);
    const auto handle = Process().gHIX->DocumentHandle(identity.classId, identity.objectId);
    Process().gHIX->CheckOutDocument(handle);
    settings_.PutBackFirst(config_);
    const auto document = Reopened(handle, path);
    WriteMatrix(Process().gSession->ObjectStore()->ObjectById(identity.classId, identity.objectId));
    Commit(document);
    settings_.PutBackOthers(config_);
    if (Process().gZorva) Process().gZorva->SetDisplayFileAlerts(alerts_);
    Reload();
    return true;
  }

  /// What a failure asks for.
  void Restore() {
    settings_.PutBackAfterFailure(Process().gSession->Config());
    Reload();
  }

 private:
  void OverwriteSettings() {
    config_ = Process().gSession->Config();
    settings_.Read(config_);
    settings_.Overwrite(config_);
    const auto& zorva = Process().gZorva;
    if (!zorva) return;
    alerts_ = zorva->DisplayFileAlerts();
    zorva->SetDisplayFileAlerts(false);
  }

  static bool Reload() { return ReloadSession(Process().gSession, Process().gHIX, false); }

  static Ref<zorva::Document> Reopened(const Ref<HIXDocument>& handle, const std::string& path) {
    handle->Document()->Close();
    return Process().gZorva->Documents()->Open(path);
  }

  static void Commit(const Ref<zorva::Document>& document) {
    const auto& engine = Process().gHIX;
    const auto handle = engine->DocumentHandleOf(document);
    engine->CommitStep1(handle);
    engine->CommitStep2(handle);
  }

  Ref<veldora::VdConfig> config_;
  RefreshSettings settings_;
  bool alerts_ = false;
};

void Cls_GlobalRefreshVD::Run(const Ref<VdRecList>& FirstRec) {
  ErrorState failure;
  Untold untold;
  if (!Attempt(failure, [&] { untold = RefreshSelected(FirstRec); })) untold = failure;
  if (!untold) return;
  ErrorState ignored;
  Attempt(ignored, [&] { CloseWaiting(); });
  Attempt(ignored, [&] {
    Show(Process().texts.COMMON_UNEXPECTED_ERROR, box::kCritical, "Cls_GlobalRefreshVD.Run", untold->description);
  });
  Attempt(ignored, [&] { Leave(); });
}

Cls_GlobalRefreshVD::Untold Cls_GlobalRefreshVD::RefreshSelected(const Ref<VdRecList>& selection) {
  if (!StartCommand()) return std::nullopt;
  auto& texts = Process().texts;
  const auto refuse = [&](CatalogueText<0>& text) {
    Show(text, box::kInformationModal);
    Leave();
    return std::nullopt;
  };
  if (selection->RecordCount() != 1) return refuse(texts.QD_GLOBALREFRESH_SELECT_ONE_OBJECT);
  const auto object = FirstOf(selection);
  if (const auto record = object->Record(); !IsStable(record)) {
    // The display isn't refreshed here.
    Show(texts.QD_APPLICATION_MUST_BE_CHECKIN_OR_RELEASED, box::kInformationModal,
         record->ValueAsString(Process().gAttrPartNumber));
    return std::nullopt;
  }
  if (!AreChildrenStable(object)) return refuse(texts.QD_GLOBALREFRESH_CHILDREN_MUST_BE_IN_CHECKIN_OR_RELEASED);
  return RefreshOne(object, RootPath(object->Record()->ValueAsString(Process().CAD_REF_FILE_NAME)));
}

Cls_GlobalRefreshVD::Untold Cls_GlobalRefreshVD::RefreshOne(const Ref<VdObject>& selected, const std::string& path) {
  ShowWaiting();
  const auto object = selected->LinkedVersion(veldora::version::kTraversal);
  Silenced silenced;
  ErrorState failure;
  bool isDone = false;
  Attempt(failure, [&] {
    if (!silenced.Refresh(object, path)) return;
    CloseWaiting();
    RefreshDisplay();
    Show(Process().texts.QD_GLOBALREFRESH_SUCCESSFUL, box::kInformationModal);
    isDone = true;
  });
  if (isDone) return std::nullopt;
  // The user is to know what went wrong first.
  ErrorState ignored;
  Attempt(ignored, [&] { silenced.Restore(); });
  return failure;
}

void Cls_GlobalRefreshVD::ShowWaiting() {
  waiting_ = std::make_shared<frmWaiting>();
  waiting_->Initiate();
  ThePlatform().Yield();
}

void Cls_GlobalRefreshVD::CloseWaiting() {
  if (waiting_) waiting_->Unload();
  ThePlatform().Yield();
}

void Cls_GlobalRefreshVD::Leave() {
  if (const auto waiting = std::exchange(waiting_, nullptr)) waiting->Unload();
  RefreshDisplay();
}

}  // namespace quintara
