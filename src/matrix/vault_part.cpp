#include "matrix/vault_part.h"

namespace quintara {

bool IsVaultPart(const Ref<veldora::VdSession>& session, const Ref<veldora::VdObject>& object) {
  return object->ClassId() == session->MetaInfo()->ClassByName("ZORVA Part")->ClassId();
}

}  // namespace quintara
