#pragma once

#include <memory>
#include <string>
#include <vector>

#include "access/contracts/veldora_objects.h"
#include "hosts/vault/object_data.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

class VaultObject final : public Served<"VdObject", veldora::VdObject>,
                          public std::enable_shared_from_this<VaultObject> {
 public:
  explicit VaultObject(std::shared_ptr<ObjectData> data);

  std::int32_t ObjectId() override;
  std::int16_t ClassId() override;
  Ref<veldora::VdClass> ClassInfo() override;
  Ref<veldora::VdRecord> Record() override;
  void InitData() override;
  void Retrieve() override;
  void Refresh() override;
  void RetrieveAttributes(const std::string& names) override;
  Ref<veldora::VdObject> Clone() override;
  Ref<veldora::VdObject> GetVersion(int kind) override;
  Ref<veldora::VdObject> LinkedVersion(int kind) override;
  Ref<veldora::VdObjects> Parents(const Ref<veldora::VdQueryDefinition>& definition,
                                  const Ref<veldora::VdBehavior>& behavior) override;
  Ref<veldora::VdObjects> Children(const Ref<veldora::VdQueryDefinition>& definition) override;
  Ref<veldora::VdObjects> ChildrenWithBehavior(const Ref<veldora::VdQueryDefinition>& definition,
                                               const Ref<veldora::VdBehavior>& behavior) override;
  void RemoveLink(const Ref<veldora::VdBehavior>& behavior) override;
  void CopyFileTo(const std::string& name, const std::string& directory) override;
  void AddToVault(const Ref<veldora::VdBehavior>& behavior) override;
  void Update(const Ref<veldora::VdBehavior>& behavior) override;
  void AddLink(std::int16_t linkClassId, const Ref<veldora::VdObject>& other, const Ref<veldora::VdRecord>& record,
               const Ref<veldora::VdBehavior>& behavior) override;

  Ref<veldora::VdObject> AsVdObject() override;

  const std::shared_ptr<ObjectData>& Data() const { return data_; }

 private:
  Ref<veldora::VdObject> Version(int kind);
  Ref<veldora::VdObjects> TheChildren(const Ref<veldora::VdQueryDefinition>& definition);
  std::string Identity() const;

  std::shared_ptr<ObjectData> data_;
};

Ref<veldora::VdObject> ObjectOf(ObjectData data);
/// The data of one of this vault's objects; failure 91 for nothing, 13 for an object of another host.
const std::shared_ptr<ObjectData>& DataOf(const Ref<veldora::VdObject>& object);

/// The pieces of `text` between `separator`s, without blanks around them; empty ones are left out.
std::vector<std::string> SplitNames(const std::string& text, char separator);

}  // namespace quintara::vault
