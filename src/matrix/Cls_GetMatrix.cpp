#include "matrix/Cls_GetMatrix.h"

#include <cstddef>
#include <optional>

#include "access/session/process.h"
#include "access/utils/behaviors.h"
#include "access/utils/messages.h"
#include "matrix/Cls_Matrice.h"
#include "matrix/matrix_storing.h"
#include "matrix/vault_part.h"
#include "services/Cls_Init.h"

namespace quintara {
namespace {

constexpr auto kCheckIn = "CheckIn";
constexpr auto kRelease = "Release";
constexpr auto kWip = "WIP~~";
constexpr std::size_t kCouplesAtFirst = 3;

// A product whose matrix is to be written, so far as product and operation allow it.
struct Subject {
  KeptOptions options;
  Ref<veldora::VdBehavior> behavior;
  Ref<zorva::Product> root;
  std::string partNumber;
  Ref<veldora::VdObject> lastRevision;
};

std::nullopt_t Tell(CatalogueText<0>& text) {
  Show(text, box::kCriticalModal);
  return std::nullopt;
}

Ref<zorva::Product> ActiveProduct() {
  const auto& zorva = Process().gZorva;
  if (!Utils().HasActiveDocument(zorva)) return nullptr;
  return zorva->ActiveDocument()->AsProductDocument()->Product();
}

// Nothing where there is no matrix to write, which has been told unless it's the ordinary case.
std::optional<Subject> Examine(const std::string& operation, const Ref<veldora::VdObject>& product) {
  auto& globals = Process();
  auto& texts = globals.texts;
  if (operation != kCheckIn && operation != kRelease) return Tell(texts.QD_GETMATRIX_INCORRECT_OPERATION);
  Subject subject{KeptOptions(globals.gSession), StructureBehavior(globals.gSession), {}, {}, {}};
  product->Refresh();
  product->Retrieve();
  if (!Utils().IsTheRoot(globals.gSession, product, subject.behavior)) return std::nullopt;
  subject.root = ActiveProduct();
  if (!subject.root) return Tell(texts.QD_GETMATRIX_CANT_RETRIEVE_ZORVA_ACTIVEDOCUMENT);
  subject.partNumber = product->Record()->ValueAsString(globals.gAttrPartNumber);
  if (subject.partNumber.find(kWip) != std::string::npos) return std::nullopt;
  subject.lastRevision = product->GetVersion(veldora::version::kLast);
  if (!subject.lastRevision) return Tell(texts.QD_GETMATRIX_RETRIEVE_LAST_REVISION);
  subject.lastRevision->Refresh();
  const int state = subject.lastRevision->Record()->ValueAsInteger(globals.STATE);
  if (operation == kCheckIn && !IsChangeable(state)) return Tell(texts.QD_GETMATRIX_OBJECT_NOT_CHECKOUT);
  return subject;
}

}  // namespace

Cls_GetMatrix::Cls_GetMatrix() : Array_PN_IN_Couple(kCouplesAtFirst) {}

void Cls_GetMatrix::Run(const std::string& Operation, const Ref<veldora::VdObject>& ZORVAProduct,
                        bool CalledFromGlobalRefresh) {
  ErrorState ofTheReport;
  Attempt(ofTheReport, [&] {
    Reported("Cls_GetMatrix.Run", box::kCritical, false, [&] {
      if (StartCommand()) Generate(Operation, ZORVAProduct, CalledFromGlobalRefresh);
      return true;
    });
  });
  *this = Cls_GetMatrix();
}

void Cls_GetMatrix::Generate(const std::string& operation, const Ref<veldora::VdObject>& product,
                             bool calledFromGlobalRefresh) {
  const auto subject = Examine(operation, product);
  if (!subject) return;
  const auto& globals = Process();
  bool exists = false;
  bool isWanted = false;
  Ref<veldora::VdObject> matrix;
  Utils().IsMatrixAlreadyExist(subject->root, subject->lastRevision, exists, isWanted, matrix, globals.gMatrixType,
                               calledFromGlobalRefresh);
  if (!isWanted) return;
  const MatrixFile file(subject->partNumber, globals.gMatrixType);
  if (exists) matrix = PrepareMatrix(matrix, file.path, subject->options);
  if (exists && !matrix) return;
  if (!WriteFile(subject->root, file.path)) return;
  if (exists) {
    UpdateMatrix(matrix, file, subject->behavior);
  } else {
    matrix = AddMatrix(subject->lastRevision, file, subject->behavior);
  }
  if (operation == kCheckIn) {
    Utils().CheckInObject(globals.gSession, matrix);
  } else {
    Utils().ReleaseObject(globals.gSession, matrix);
  }
}

bool Cls_GetMatrix::WriteFile(const Ref<zorva::Product>& root, const std::string& path) {
  if (Process().gMatrixType == MatrixType::Excel) return GenerateWorkbook(root, path);
  Cls_Matrice matrice;
  if (matrice.CreateXMLFile(root, path)) return true;
  return CheckChildrenForMerge(root) && matrice.MergeXMLMatrix(root, path);
}

// What can't be merged is told before the merge is begun, which says nothing of it.
bool Cls_GetMatrix::CheckChildrenForMerge(const Ref<zorva::Product>& Product) {
  const auto& session = Process().gSession;
  auto& texts = Process().texts;
  if (!Utils().RetrieveVDObject(session, Product)) return false;
  const auto children = Product->Products();
  for (const int i : Counting(1, children->Count())) {
    const auto child = children->Item(i);
    const auto object = Utils().RetrieveVDObject(session, child);
    if (!object) {
      Tell(texts.QD_GETMATRIX_CANT_BE_MERGED_ONE_PRODUCT_UNLOADED);
      return false;
    }
    if (IsVaultPart(session, object)) continue;
    if (!Utils().IsMatrixAlreadyExistAsInformation(child, object, MatrixType::XML)) {
      Tell(texts.QD_GETMATRIX_ONE_CHILD_MATRIX_CANT_BE_RETRIEVE);
      return false;
    }
  }
  return true;
}

}  // namespace quintara
