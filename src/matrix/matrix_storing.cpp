#include "matrix/matrix_storing.h"

#include <exception>

#include "access/session/process.h"
#include "access/utils/files.h"
#include "access/utils/messages.h"
#include "base/file_names.h"

namespace quintara {
namespace {

using veldora::VdObject;
using veldora::VdSessionUtil;
namespace state = veldora::state;

// An operation that makes a document changeable, and what tells that it can't.
struct TakingUp {
  const char* operation;
  Ref<VdObject> (VdSessionUtil::*run)(const Ref<VdObject>& object, const Ref<veldora::VdRecord>& record,
                                      bool invokeScripts);
  CatalogueText<0> Texts::*refusal;
};
constexpr TakingUp kCheckOut = {"CHECKOUT", &VdSessionUtil::CheckOut, &Texts::QD_GETMATRIX_NO_LINKED_MATRIX};
constexpr TakingUp kNewRelease = {"NEWRELEASE", &VdSessionUtil::NewRelease,
                                  &Texts::QD_GETMATRIX_MATRIX_CANT_BE_RELEASED};

// A refusal doesn't keep the operation from being run: the vault has the last word, and where it refuses
// too, the message comes again.
Ref<VdObject> TakeUp(const Ref<VdObject>& document, const TakingUp& way) {
  auto& globals = Process();
  const auto refuse = [&] { Show(globals.texts.*way.refusal, box::kCriticalModal); };
  const auto operation = globals.gSession->MetaInfo()->OperationByName(way.operation);
  auto& util = *globals.gSessionUtil;
  if (!util.CanPerform(document, operation, 0)) refuse();
  Ref<VdObject> taken;
  ErrorState failure;
  if (!Attempt(failure, [&] { taken = (util.*way.run)(document, nullptr, false); })) refuse();
  return taken;
}

Ref<VdObject> InAChangeableState(const Ref<VdObject>& document, const KeptOptions& options) {
  const int current = document->Record()->ValueAsInteger(Process().STATE);
  if (IsChangeable(current)) return document;
  options.Change();
  if (current == state::kReleased) return TakeUp(document, kNewRelease);
  if (current == state::kCheckedIn) return TakeUp(document, kCheckOut);
  return nullptr;
}

void SetFile(const Ref<veldora::VdRecord>& record, const MatrixFile& file) {
  const auto& globals = Process();
  record->ValuateFromString(globals.FILE_NAME, file.name);
  record->ValuateFromString(globals.DIRECTORY, globals.gWorkDirectory);
}

}  // namespace

MatrixFile::MatrixFile(const std::string& partNumber, MatrixType type)
    : title(partNumber + " Matrix"),
      name(title + (type == MatrixType::XML ? ".xml" : ".xls")),
      path(PathIn(Process().gWorkDirectory, name)),
      fileType(type == MatrixType::XML ? "xml" : "Microsoft Excel") {}

KeptOptions::KeptOptions(const Ref<veldora::VdSession>& session)
    : own_(session->ObjectStore()->DefaultBehavior()), optionC_(own_->OptionC()), optionA_(own_->OptionA()) {}

void KeptOptions::Change() const {
  own_->SetOptionC(2);
  own_->SetOptionA(0);
}

void KeptOptions::PutBack() const {
  own_->SetOptionC(optionC_);
  own_->SetOptionA(optionA_);
}

bool IsChangeable(int stateOfObject) {
  return stateOfObject == state::kNew || stateOfObject == state::kCheckedOut || stateOfObject == state::kObsolete;
}

Ref<VdObject> PrepareMatrix(const Ref<VdObject>& matrix, const std::string& path, const KeptOptions& options) {
  DeleteIfThere(*Process().gFileSystem, path);
  const auto newest = Utils().LastVersion(matrix);
  newest->Refresh();
  Ref<VdObject> document;
  try {
    document = InAChangeableState(newest, options);
  } catch (const std::exception&) {
    ErrorState ignored;
    Attempt(ignored, [&] { options.PutBack(); });
    throw;
  }
  options.PutBack();
  return document;
}

void UpdateMatrix(const Ref<VdObject>& document, const MatrixFile& file, const Ref<veldora::VdBehavior>& behavior) {
  document->RetrieveAttributes(Process().FILE_NAME + ";" + Process().DIRECTORY);
  SetFile(document->Record(), file);
  document->Update(behavior);
}

Ref<VdObject> AddMatrix(const Ref<VdObject>& product, const MatrixFile& file,
                        const Ref<veldora::VdBehavior>& behavior) {
  const auto& globals = Process();
  const auto& session = globals.gSession;
  const auto documentClass = Utils().IndiceClasse(session, globals.gClassDocuments);
  const auto fileType = Utils().IndiceFileType(session, file.fileType);
  const auto document = session->ObjectStore()->NewObject(documentClass);
  document->InitData();
  Utils().PopulateObjectMasks(session, document);
  const auto record = document->Record();
  record->ValuateFromString(globals.gAttrDescription, file.title);
  record->ValuateFromString(globals.gAttrPartNumber, file.title);
  record->ValuateFromString(globals.FILE_TYPE, std::to_string(fileType));
  SetFile(record, file);
  document->AddToVault(behavior);
  product->AddLink(Utils().IndiceClasse(session, globals.gClassDocLink), document, nullptr, behavior);
  return document;
}

}  // namespace quintara
