#pragma once

#include <string>

#include "access/contracts/veldora_objects.h"
#include "hosts/vault/object_data.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

class ObjectStoreObject final : public Served<"VdObjectStore", veldora::VdObjectStore> {
 public:
  using Served::Served;

  Ref<veldora::VdObject> ObjectById(std::int16_t classId, std::int32_t objectId) override;
  Ref<veldora::VdObject> ObjectFromRecord(const Ref<veldora::VdRecord>& record, int flag) override;
  Ref<veldora::VdObject> LinkObject(std::int16_t linkClassId, std::int16_t firstClassId, std::int32_t firstObjectId,
                                    std::int16_t secondClassId, std::int32_t secondObjectId) override;
  Ref<veldora::VdObject> NewObject(std::int16_t classId) override;
  Ref<veldora::VdObjects> NewObjects() override;
  Ref<veldora::VdQuery> NewQuery() override;
  Ref<veldora::VdQueryDefinition> NewQueryDefinition() override;
  Ref<veldora::VdAliasResults> ObjectsFromRecList(const Ref<veldora::VdRecList>& rows, int flag) override;
  Ref<veldora::VdBehavior> DefaultBehavior() override;
  Ref<veldora::VdMasks> Masks() override;

 private:
  std::shared_ptr<ObjectData> StoredObject(std::int32_t classId, std::int32_t objectId) const;
};

}  // namespace quintara::vault
