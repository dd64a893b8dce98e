#include "hosts/vault/object_store.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "hosts/vault/behavior.h"
#include "hosts/vault/links.h"
#include "hosts/vault/meta_objects.h"
#include "hosts/vault/object.h"
#include "hosts/vault/object_list.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/query.h"
#include "hosts/vault/rec_list.h"

namespace quintara::vault {
namespace {

class MaskObject final : public Served<"VdMask", veldora::VdMask> {
 public:
  MaskObject(std::shared_ptr<Core> core, const ClassInfo& info, std::string attribute)
      : Served(std::move(core)), class_(&info), attribute_(std::move(attribute)) {}

  std::string NextValue() override {
    Pass<"NextValue">([&] { return attribute_; });
    std::string value;
    core_->InTransaction([&] { value = NextMaskValue(*core_, *class_, attribute_); });
    return value;
  }
  std::string FirstRevision() override {
    Pass<"FirstRevision">([&] { return attribute_; });
    return FirstMaskRevision(*class_, attribute_);
  }

 private:
  const ClassInfo* class_;
  std::string attribute_;
};

class MasksObject final : public Served<"VdMasks", veldora::VdMasks> {
 public:
  using Served::Served;

  Ref<veldora::VdMask> MaskOf(const Ref<veldora::VdAttribute>& attribute) override {
    Pass<"MaskOf">();
    if (!attribute) throw Failure(failure::kObjectNotSet);
    const auto own = std::dynamic_pointer_cast<AttributeObject>(attribute.Shared());
    if (!own) throw Failure(failure::kTypeMismatch, "Type mismatch: the attribute belongs to another vault");
    if (!own->OfClass().masks.contains(own->Info().name)) return nullptr;
    return MakeRef<MaskObject>(core_, own->OfClass(), own->Info().name);
  }
};

bool IsStored(Core& core, const ClassInfo& info, std::int32_t id) {
  const std::string table = info.IsLink() ? "vd_link" : "vd_object";
  const std::string columns =
      info.IsLink() ? "\"OBJECT_ID\" = ? AND \"CLASS_ID\" = ?" : "object_id = ? AND class_id = ?";
  return IntegerOf(core.Data().QueryOne(ColumnType::kInteger, "SELECT COUNT(*) FROM " + table + " WHERE " + columns,
                                        {std::int64_t{id}, std::int64_t{info.id}})) != 0;
}

const ClassInfo* FindClassById(const Schema& schema, std::int32_t classId) {
  for (const auto& info : schema.Classes()) {
    if (info->id == classId) return info.get();
  }
  return nullptr;
}

}  // namespace

std::shared_ptr<ObjectData> ObjectStoreObject::StoredObject(std::int32_t classId, std::int32_t objectId) const {
  const auto* info = FindClassById(core_->TheSchema(), classId);
  if (info == nullptr || !IsStored(*core_, *info, objectId)) return nullptr;
  return std::make_shared<ObjectData>(core_, *info, objectId);
}

Ref<veldora::VdObject> ObjectStoreObject::ObjectById(std::int16_t classId, std::int32_t objectId) {
  Pass<"ObjectById">([&] { return std::to_string(classId) + ", " + std::to_string(objectId); });
  const auto data = StoredObject(classId, objectId);
  return data ? MakeRef<VaultObject>(data) : Ref<veldora::VdObject>();
}

Ref<veldora::VdObject> ObjectStoreObject::ObjectFromRecord(const Ref<veldora::VdRecord>& record, int /*flag*/) {
  Pass<"ObjectFromRecord">();
  auto* source = dynamic_cast<ObjectSource*>(&*record);
  auto data = source == nullptr ? nullptr : source->SoughtObject();
  if (data) return ObjectOf(*data);
  const auto classId = record->ValueAsInteger(attribute::kClassId);
  const auto objectId = record->ValueAsInteger(attribute::kObjectId);
  data = StoredObject(classId, objectId);
  if (data) return MakeRef<VaultObject>(data);
  throw Failure(failure::kInvalidCall, "The vault has no object " + std::to_string(classId) + ":" +
                                           std::to_string(objectId) + ", which a record names");
}

Ref<veldora::VdObject> ObjectStoreObject::LinkObject(std::int16_t linkClassId, std::int16_t firstClassId,
                                                     std::int32_t firstObjectId, std::int16_t secondClassId,
                                                     std::int32_t secondObjectId) {
  Pass<"LinkObject">([&] {
    return std::to_string(linkClassId) + ", " + std::to_string(firstObjectId) + ", " + std::to_string(secondObjectId);
  });
  const auto& linkClass = core_->TheSchema().ClassById(linkClassId);
  if (!linkClass.IsLink())
    throw Failure(failure::kInvalidCall, "The class \"" + linkClass.name + "\" is no class of links");
  if (!StoredObject(firstClassId, firstObjectId) || !StoredObject(secondClassId, secondObjectId)) return nullptr;
  const auto link = FindLink(core_->Data(), linkClassId, firstObjectId, secondObjectId);
  return link ? ObjectOf(ObjectData(core_, linkClass, *link)) : Ref<veldora::VdObject>();
}

Ref<veldora::VdObject> ObjectStoreObject::NewObject(std::int16_t classId) {
  Pass<"NewObject">([&] { return std::to_string(classId); });
  const auto& info = core_->TheSchema().ClassById(classId);
  if (info.IsLink()) throw Failure(failure::kInvalidCall, "Links are added with AddLink");
  return ObjectOf(ObjectData(core_, info, 0));
}

Ref<veldora::VdObjects> ObjectStoreObject::NewObjects() {
  Pass<"NewObjects">();
  return MakeRef<ObjectListObject>(core_, std::vector<Ref<veldora::VdObject>>(), std::string());
}

Ref<veldora::VdQuery> ObjectStoreObject::NewQuery() {
  Pass<"NewQuery">();
  return MakeRef<QueryObject>(core_);
}

Ref<veldora::VdQueryDefinition> ObjectStoreObject::NewQueryDefinition() {
  Pass<"NewQueryDefinition">();
  return MakeRef<QueryDefinitionObject>(core_);
}

Ref<veldora::VdAliasResults> ObjectStoreObject::ObjectsFromRecList(const Ref<veldora::VdRecList>& rows, int /*flag*/) {
  Pass<"ObjectsFromRecList">();
  if (!rows) throw Failure(failure::kObjectNotSet);
  if (const auto own = std::dynamic_pointer_cast<RecListObject>(rows.Shared())) {
    const auto& table = *own->TheTable();
    const bool complete = std::ranges::none_of(table.rows, [](const auto& row) { return row->objects.empty(); });
    if (complete) return MakeRef<AliasResultsObject>(core_, own->TheTable());
  }
  // A table made by hand names its objects by their ids.
  auto table = std::make_shared<Table>();
  for (int i = 0; i < rows->RecordCount(); ++i) {
    auto row = std::make_shared<TableRow>();
    row->objects.emplace_back(std::string(), DataOf(ObjectFromRecord(rows->GetRecord(i), 0)));
    table->rows.push_back(std::move(row));
  }
  return MakeRef<AliasResultsObject>(core_, std::move(table));
}

Ref<veldora::VdBehavior> ObjectStoreObject::DefaultBehavior() {
  Pass<"DefaultBehavior">();
  return MakeRef<BehaviorObject>(core_, core_->defaultBehavior);
}

Ref<veldora::VdMasks> ObjectStoreObject::Masks() {
  Pass<"Masks">();
  return MakeRef<MasksObject>(core_);
}

}  // namespace quintara::vault
