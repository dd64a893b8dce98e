#include "commands/Cls_InsertLWT.h"

#include "access/contracts/zorva.h"
#include "access/session/process.h"
#include "access/utils/messages.h"
#include "commands/light_component.h"
#include "services/Cls_Init.h"

namespace quintara {
namespace {

using veldora::VdObject;

constexpr auto kLight = "LWT";
constexpr auto kDocument = "PRODUCT";

// Nothing after a message, which has room for an error.
Ref<AnyObject> TakeActiveDocument() {
  ErrorState failure;
  Ref<AnyObject> document;
  if (Utils().HasActiveDocument(Process().gZorva)) {
    Attempt(failure, [&] { document = Process().gZorva->ActiveDocument(); });
  }
  if (document) return document;
  Show(Process().texts.QD_INSERTWLT_CANT_RETRIEVE_ZORVA_ACTIVEDOCUMENT, box::kCriticalModal, failure.description);
  return nullptr;
}

// That a product is none is no error, so that the one for which the message has room is empty.
bool IsWip(const Ref<zorva::Product>& root) {
  if (Utils().TestWIP(root)) return true;
  Show(Process().texts.QD_INSERTWLT_IS_NOT_WIP, box::kCriticalModal, "");
  return false;
}

bool IsPartOrProduct(const Ref<VdObject>& object) {
  object->Retrieve();
  const auto fileType = object->Record()->ValueAsInteger(Process().FILE_TYPE);
  const auto part = Utils().IndiceFileType(Process().gSession, "ZVAPart");
  const auto product = Utils().IndiceFileType(Process().gSession, "ZVAProduct");
  return fileType == part || fileType == product;
}

std::string BringToWork(const Ref<VdObject>& object, const std::string& mode) {
  if (mode == kLight) return Utils().CopyVeldoraObjectLWTToWork(object, Process().gFileSystem);
  if (mode == kDocument) return Utils().CopyVeldoraObjectToWork(object);
  return {};
}

void AddFile(const Ref<zorva::Products>& components, const std::string& path) {
  const auto& zorva = Process().gZorva;
  const bool alerts = zorva->DisplayFileAlerts();
  zorva->SetDisplayFileAlerts(false);
  components->Application()->Documents()->Read(path);
  components->AddComponentsFromFiles({path}, "All");
  zorva->SetDisplayFileAlerts(alerts);
}

// On the component itself, where those of the commands that replace one are on its reference.
void Stamp(const Ref<VdObject>& object) {
  const auto partNumber = object->Record()->ValueAsString(Process().gAttrPartNumber);
  const auto added = Process().gZorva->ActiveDocument()->GetItem(partNumber)->AsProduct();
  StampAsLight(added, object);
}

void Insert(const Ref<VdObject>& object, const std::string& mode) {
  if (!StartCommand()) return;
  const auto document = TakeActiveDocument();
  if (!document) return;
  const auto root = document->AsProductDocument()->Product();
  if (!IsWip(root)) return;
  const auto components = root->Products();
  if (!IsPartOrProduct(object)) return;
  AddFile(components, BringToWork(object, mode));
  if (mode == kLight) Stamp(object);
}

}  // namespace

void Cls_InsertLWT::Run(const Ref<VdObject>& VaultObject, const std::string& Mode) {
  Reported("Cls_InsertLWT.Run", box::kCriticalModal, true, [&] {
    Insert(VaultObject, Mode);
    return true;
  });
}

}  // namespace quintara
