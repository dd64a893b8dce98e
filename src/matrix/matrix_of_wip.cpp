#include "matrix/matrix_of_wip.h"

#include "access/contracts/veldora.h"
#include "access/session/process.h"
#include "access/utils/messages.h"
#include "base/file_names.h"
#include "base/variant.h"

namespace quintara {
namespace {

constexpr int kNoId = -1;

Variant IdIn(const Ref<zorva::Product>& root, const char* property) {
  return Utils().ReadStringProperty(root, property, "Integer");
}

}  // namespace

MatrixIds MatrixIdsOf(const Ref<zorva::Product>& root, MatrixType type) {
  const bool isXml = type == MatrixType::XML;
  return {IdIn(root, isXml ? "DocXMLCID" : "DocExcelCID").ToInteger16(),
          IdIn(root, isXml ? "DocXMLOID" : "DocExcelOID").ToInteger32(), type};
}

std::optional<MatrixIds> MatrixIdsOf(const Ref<zorva::Product>& root) {
  for (const auto type : {MatrixType::XML, MatrixType::Excel}) {
    const auto ids = MatrixIdsOf(root, type);
    if (ids.classId != kNoId && ids.objectId != kNoId) return ids;
  }
  Show(Process().texts.QD_ALLINSTANCES_NO_MATRIX_FOR_ROOT_IN_VELDORA, box::kCriticalModal);
  return std::nullopt;
}

std::optional<std::string> BringMatrix(const MatrixIds& ids, int styleWithoutDocument, Reading reading) {
  auto& globals = Process();
  const auto document = Utils().GetDocumentFromID(globals.gSession, ids.classId, ids.objectId);
  if (!document) {
    Show(globals.texts.QD_ALLINSTANCES_NO_MATRIX_FOR_ROOT_IN_VELDORA, styleWithoutDocument);
    return std::nullopt;
  }
  if (reading == Reading::kAnew) document->Retrieve();
  if (Utils().CopyMatrixFromDocument(globals.gSession, document, ids.type) != 1) {
    Show(globals.texts.QD_ALLINSTANCES_RETRIEVE_MATRIX_FAILED, box::kCriticalModal);
    return std::nullopt;
  }
  const auto* ending = ids.type == MatrixType::XML ? ".xml" : ".xls";
  auto path = PathIn(globals.gWorkDirectory, document->Record()->ValueAsString(globals.gAttrDescription) + ending);
  if (globals.gFileSystem->FileExists(path)) return path;
  Show(globals.texts.QD_ALLINSTANCES_NO_MATRIX_FOR_FILE, box::kInformationModal, path);
  return std::nullopt;
}

}  // namespace quintara
