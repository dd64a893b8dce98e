#include "hosts/vault/object.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/failure.h"
#include "hosts/vault/file_copies.h"
#include "hosts/vault/life_cycle.h"
#include "hosts/vault/links.h"
#include "hosts/vault/meta_objects.h"
#include "hosts/vault/object_list.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/query.h"
#include "hosts/vault/records.h"

namespace quintara::vault {
namespace {

// The objects at the other ends of links, knowing what the definition selects.
Ref<veldora::VdObjects> ListOf(const ObjectData& from, const std::vector<Link>& links, const QueryPlan& plan) {
  std::vector<Ref<veldora::VdObject>> objects;
  std::map<std::int16_t, std::vector<ObjectData*>> byClass;
  for (const auto& link : links) {
    const auto data = std::make_shared<ObjectData>(from.SharedCore(),
                                                   from.TheCore().TheSchema().ClassById(link.otherClass), link.other);
    byClass[link.otherClass].push_back(data.get());
    objects.push_back(MakeRef<VaultObject>(data));
  }
  for (const auto& [classId, ofClass] : byClass) {
    std::vector<std::size_t> places;
    for (const auto& selection : plan.select) {
      // A selection of the one class may mean nothing to another.
      if (const auto place = ofClass.front()->Info().Find(selection.attribute)) places.push_back(*place);
    }
    if (!places.empty()) ReadTogether(from.TheCore(), ofClass, places);
  }
  return MakeRef<ObjectListObject>(from.SharedCore(), objects, std::string());
}

}  // namespace

VaultObject::VaultObject(std::shared_ptr<ObjectData> data) : Served(data->SharedCore()), data_(std::move(data)) {}

std::string VaultObject::Identity() const {
  return std::to_string(data_->Info().id) + ":" + std::to_string(data_->Id());
}

std::int32_t VaultObject::ObjectId() {
  Pass<"ObjectId">();
  return data_->Id();
}

std::int16_t VaultObject::ClassId() {
  Pass<"ClassId">();
  return data_->Info().id;
}

Ref<veldora::VdClass> VaultObject::ClassInfo() {
  Pass<"ClassInfo">();
  return MakeRef<ClassObject>(core_, data_->Info());
}

Ref<veldora::VdRecord> VaultObject::Record() {
  Pass<"Record">();
  return MakeRef<ObjectRecord>(data_);
}

void VaultObject::InitData() {
  Pass<"InitData">([&] { return Identity(); });
  data_->Init();
}

void VaultObject::Retrieve() {
  Pass<"Retrieve">([&] { return Identity(); });
  data_->Read();
}

void VaultObject::Refresh() {
  Pass<"Refresh">([&] { return Identity(); });
  data_->Read();
}

void VaultObject::RetrieveAttributes(const std::string& names) {
  Pass<"RetrieveAttributes">([&] { return names; });
  std::vector<std::size_t> places;
  for (const auto& name : SplitNames(names, ';')) places.push_back(data_->Info().PlaceOf(name));
  data_->Read(places);
}

Ref<veldora::VdObject> VaultObject::Clone() {
  Pass<"Clone">([&] { return Identity(); });
  return ObjectOf(*data_);
}

Ref<veldora::VdObject> VaultObject::Version(int kind) {
  if (kind == veldora::version::kTraversal) {
    RowOf(*data_);
    return ObjectOf(*data_);
  }
  if (kind == veldora::version::kLast) return ObjectOf(ObjectData(core_, data_->Info(), NewestRevision(*data_)));
  throw Failure(failure::kInvalidCall, "There is no kind of versions " + std::to_string(kind));
}

Ref<veldora::VdObject> VaultObject::GetVersion(int kind) {
  Pass<"GetVersion">([&] { return std::to_string(kind); });
  return Version(kind);
}

Ref<veldora::VdObject> VaultObject::LinkedVersion(int kind) {
  Pass<"LinkedVersion">([&] { return std::to_string(kind); });
  return Version(kind);
}

Ref<veldora::VdObjects> VaultObject::Parents(const Ref<veldora::VdQueryDefinition>& definition,
                                             const Ref<veldora::VdBehavior>& /*behavior*/) {
  Pass<"Parents">([&] { return Identity(); });
  RowOf(*data_);
  const auto& plan = PlanOf(definition);
  RequireSelectable(core_->TheSchema(), plan);
  return ListOf(*data_, ParentsOf(*data_, plan.ClassOf("S")), plan);
}

Ref<veldora::VdObjects> VaultObject::TheChildren(const Ref<veldora::VdQueryDefinition>& definition) {
  RowOf(*data_);
  const auto& plan = PlanOf(definition);
  RequireSelectable(core_->TheSchema(), plan);
  auto links = ChildrenOf(*data_);
  if (const auto wanted = plan.ClassOf("S"); wanted != 0) {
    std::erase_if(links, [&](const Link& link) { return link.otherClass != wanted; });
  }
  return ListOf(*data_, links, plan);
}

Ref<veldora::VdObjects> VaultObject::Children(const Ref<veldora::VdQueryDefinition>& definition) {
  Pass<"Children">([&] { return Identity(); });
  return TheChildren(definition);
}

Ref<veldora::VdObjects> VaultObject::ChildrenWithBehavior(const Ref<veldora::VdQueryDefinition>& definition,
                                                          const Ref<veldora::VdBehavior>& /*behavior*/) {
  Pass<"ChildrenWithBehavior">([&] { return Identity(); });
  return TheChildren(definition);
}

void VaultObject::RemoveLink(const Ref<veldora::VdBehavior>& /*behavior*/) {
  Pass<"RemoveLink">([&] { return Identity(); });
  if (!data_->Info().IsLink())
    throw Failure(failure::kInvalidCall, Described(data_->Info(), data_->Id()) + " is no link");
  vault::RemoveLink(*core_, data_->Id());
}

void VaultObject::CopyFileTo(const std::string& name, const std::string& directory) {
  Pass<"CopyFileTo">([&] { return name + ", " + directory; });
  CopyFileOf(*data_, name, directory, true);
}

void VaultObject::AddToVault(const Ref<veldora::VdBehavior>& /*behavior*/) {
  Pass<"AddToVault">();
  Insert(*data_);
}

void VaultObject::Update(const Ref<veldora::VdBehavior>& /*behavior*/) {
  Pass<"Update">([&] { return Identity(); });
  vault::Update(*data_);
}

void VaultObject::AddLink(std::int16_t linkClassId, const Ref<veldora::VdObject>& other,
                          const Ref<veldora::VdRecord>& /*record*/, const Ref<veldora::VdBehavior>& /*behavior*/) {
  Pass<"AddLink">([&] { return std::to_string(linkClassId); });
  vault::AddLink(*data_, *DataOf(other), core_->TheSchema().ClassById(linkClassId), 1);
}

Ref<veldora::VdObject> VaultObject::AsVdObject() {
  return Ref<veldora::VdObject>(shared_from_this());
}

Ref<veldora::VdObject> ObjectOf(ObjectData data) {
  return MakeRef<VaultObject>(std::make_shared<ObjectData>(std::move(data)));
}

const std::shared_ptr<ObjectData>& DataOf(const Ref<veldora::VdObject>& object) {
  if (!object) throw Failure(failure::kObjectNotSet);
  const auto* own = dynamic_cast<const VaultObject*>(object.Shared().get());
  if (own == nullptr) throw Failure(failure::kTypeMismatch, "Type mismatch: the object belongs to another vault");
  return own->Data();
}

std::vector<std::string> SplitNames(const std::string& text, char separator) {
  std::vector<std::string> names;
  for (std::size_t at = 0; at <= text.size();) {
    const auto end = std::min(text.find(separator, at), text.size());
    const auto first = text.find_first_not_of(' ', at);
    if (first < end) names.push_back(text.substr(first, text.find_last_not_of(' ', end - 1) - first + 1));
    at = end + 1;
  }
  return names;
}

}  // namespace quintara::vault
