#include <string>

#include "access/contracts/platform.h"
#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"
#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "access/utils/Cls_Utils.h"
#include "access/utils/files.h"
#include "access/utils/messages.h"
#include "base/file_names.h"
#include "base/text.h"

namespace quintara {
namespace {

using veldora::VdObject;

constexpr auto kLightEnding = ".lwt";
constexpr int kMacroProject = 2;

// Where a document's file lies in the vault's store.
struct StoredFile {
  std::int32_t vaultObjectId;
  std::string directory;
  std::string name;
};

StoredFile StoredFileOf(const Ref<veldora::VdRecord>& record) {
  const auto& globals = Process();
  StoredFile file;
  file.vaultObjectId = record->ValueAsInteger(globals.VAULT_OBJECT_ID);
  file.directory = record->ValueAsString(globals.DIRECTORY);
  file.name = record->ValueAsString(globals.FILE_NAME);
  return file;
}

// That the copy gave a file isn't tested: whoever reads it finds out.
std::string CopyLightFile(const Ref<VdObject>& object, const std::string& suffix, const Ref<FileSystemObject>& files) {
  return OrElse(std::string(), [&] {
    const auto& globals = Process();
    const auto record = object->Record();
    const auto stored = StoredFileOf(record);
    const auto name = record->ValueAsString(globals.gAttrPartNumber) + suffix + kLightEnding;
    const auto target = ClearedPath(*files, globals.gWorkDirectory, name);
    globals.gSessionUtil->CopyVaultFile(stored.vaultObjectId, stored.directory, stored.name + kLightEnding,
                                        globals.gWorkDirectory, name);
    return target;
  });
}

}  // namespace

std::string Cls_Utils::CopyVeldoraObjectToWork(const Ref<VdObject>& oVdObject) {
  return Reported("Cls_Utils.CopyVeldoraObjectToWork", box::kCritical, std::string(), [&] {
    const auto& globals = Process();
    const auto operation = globals.gSession->MetaInfo()->OperationByName("CopyFile");
    const auto parameters = ThePlatform().Attach("Veldora.VdApplication")->AsVdApplication()->NewRecList();
    parameters->AddField(globals.OPERATION_ID, veldora::column_type::kInteger, 2);
    parameters->AddRow();
    parameters->SetValue(globals.OPERATION_ID, 0, operation->OperationId());
    const auto name = oVdObject->Record()->ValueAsString(globals.CAD_REF_FILE_NAME);
    const auto target = ClearedPath(*ThePlatform().FileSystem(), globals.gWorkDirectory, name);
    globals.gSessionUtil->RunOperation(oVdObject, operation, true, nullptr, parameters);
    return target;
  });
}

std::string Cls_Utils::CopyVeldoraObjectLWTToWork(const Ref<VdObject>& oVdObject, const Ref<FileSystemObject>& fs) {
  return CopyLightFile(oVdObject, {}, fs);
}

std::string Cls_Utils::CopyVeldoraObjectLWTToWork_Temp(const Ref<VdObject>& oVdObject, const std::string& sTemp,
                                                       const Ref<FileSystemObject>& fs) {
  return CopyLightFile(oVdObject, sTemp, fs);
}

std::string Cls_Utils::CopyVeldoraObjectToWorkAndGetLWT(const Ref<veldora::VdSession>& /*CurrentSession*/,
                                                        const Ref<VdObject>& oVdObject,
                                                        const Ref<FileSystemObject>& fs) {
  return OrElse(std::string(), [&]() -> std::string {
    const auto& globals = Process();
    const auto record = oVdObject->Record();
    const auto stored = StoredFileOf(record);
    const auto cadName = record->ValueAsString(globals.CAD_REF_FILE_NAME);
    if (cadName.empty() && stored.name.empty()) return {};
    const auto extension = fs->GetExtensionName(cadName);
    const auto name = record->ValueAsString(globals.gAttrPartNumber) + "." + extension;
    // The host's own spelling: without an extension the name ends in a point.
    const auto target = FromPath(ToPath(globals.gWorkDirectory) / ToPath(name));
    const auto lightTarget = PathIn(globals.gWorkDirectory, name + kLightEnding);
    DeleteIfThere(*fs, target);
    DeleteIfThere(*fs, lightTarget);
    oVdObject->CopyFileTo(name, globals.gWorkDirectory);
    if (!fs->FileExists(target)) {
      globals.gSessionUtil->CopyVaultFile(stored.vaultObjectId, stored.directory, stored.name, globals.gWorkDirectory,
                                          name);
    }
    return fs->FileExists(target) && fs->FileExists(lightTarget) ? lightTarget : std::string();
  });
}

std::string Cls_Utils::BuildFullName(const Ref<zorva::Product>& ZORVAObject, const Ref<zorva::Product>& ZORVARoot) {
  return Reported("Cls_Utils.BuildFullName", box::kCritical, std::string(), [&] {
    std::string text;
    auto current = ZORVAObject;
    while (current->Name() != ZORVARoot->Name()) {
      text += current->Name() + "\\";
      current = current->Parent()->AsProduct();
    }
    return text + current->Name();
  });
}

std::string Cls_Utils::StripFileExtension(const std::string& FileName) {
  return FileName.substr(0, FileName.rfind('.'));
}

std::string Cls_Utils::GetFileExtension(const std::string& FileName) {
  const auto point = FileName.rfind('.');
  return point == FileName.npos ? std::string() : FileName.substr(point + 1);
}

bool Cls_Utils::ExecuteZorvaScript(const std::string& ModuleName, const std::string& ProcedureName) {
  return Reported("Cls_Utils.ExecuteZorvaScript", box::kCritical, false, [&] {
    const auto& globals = Process();
    const auto library = FromPath(ToPath(globals.gSession->Config()->BaseDirectory()) / "QNTR" / "ProjectQNTR.zvavba");
    const auto service = globals.gZorva->ScriptService();
    if (!service) {
      Show(Process().texts.QD_UTILS_UTILS_ERROR_IN_ZORVA_SCRIPT, box::kCriticalModal);
      return false;
    }
    service->ExecuteScript(library, kMacroProject, ModuleName, ProcedureName, {});
    return true;
  });
}

bool Cls_Utils::HasActiveDocument(const Ref<zorva::Application>& CurrentZorvaApplication) {
  return OrElse(false, [&] {
    if (CurrentZorvaApplication->Documents()->Count() < 1) return false;
    return CurrentZorvaApplication->ActiveDocument()->AsProductDocument() != nullptr;
  });
}

}  // namespace quintara
