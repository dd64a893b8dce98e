#include "quintara/stored_matrix.h"

#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "hosts/vault/embedded_vault.h"

namespace quintara {
namespace {

using veldora::VdObject;

StoredMatrix NewestOf(const Ref<VdObject>& linked) {
  const auto& process = Process();
  const auto document = Utils().LastVersion(linked);
  const auto record = document->Record();
  return {{document->ClassId(), document->ObjectId()},
          record->ValueAsString(process.gAttrDescription),
          record->ValueAsString(process.REVISION),
          record->ValueAsInteger(process.STATE),
          record->ValueAsString(process.DIRECTORY)};
}

}  // namespace

std::optional<StoredMatrix> FindStoredMatrix(const Ref<VdObject>& product) {
  const auto& process = Process();
  const auto newest = Utils().LastVersion(product);
  const auto description = newest->Record()->ValueAsString(process.gAttrPartNumber) + " Matrix";
  const auto fileType = Utils().IndiceFileType(process.gSession, "xml");
  Ref<veldora::VdObjects> linked;
  Utils().RetrieveAllObjectsLinked(process.gSession, newest, process.gClassDocuments, process.gClassDocLink, linked);
  for (int i = 0, count = linked ? linked->Count() : 0; i < count; ++i) {
    const auto record = linked->Item(i)->Record();
    if (record->ValueAsString(process.gAttrDescription) != description) continue;
    if (record->ValueAsInteger(process.FILE_TYPE) == fileType) return NewestOf(linked->Item(i));
  }
  return std::nullopt;
}

std::string Called(const StoredMatrix& matrix) {
  return "'" + matrix.description + "' (revision " + matrix.revision + ", " + StateName(matrix.state) + ")";
}

std::string ChangeText(const std::optional<StoredMatrix>& before, const std::optional<StoredMatrix>& after) {
  if (!after) return "none";
  if (!before) return "created";
  if (*before == *after) return "unchanged";
  // Taken to be changed, and then left as it was: nothing takes it back.
  const bool isTaken = after->state == veldora::state::kNew || after->state == veldora::state::kCheckedOut;
  return isTaken && before->directory == after->directory ? "not written" : "updated";
}

}  // namespace quintara
