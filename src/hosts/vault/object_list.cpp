#include "hosts/vault/object_list.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/arrays.h"
#include "base/failure.h"
#include "hosts/vault/object.h"
#include "hosts/vault/rec_list.h"

namespace quintara::vault {

ObjectListObject::ObjectListObject(std::shared_ptr<Core> core, const std::vector<Ref<veldora::VdObject>>& objects,
                                   std::string alias)
    : Served(std::move(core)), objects_(objects.begin(), objects.end()), alias_(std::move(alias)) {}

int ObjectListObject::Count() {
  Pass<"Count">();
  return static_cast<int>(objects_.size());
}

Ref<veldora::VdObject> ObjectListObject::Item(int index) {
  Pass<"Item">([&] { return std::to_string(index); });
  return ElementAt(objects_, index);
}

Ref<veldora::VdRecList> ObjectListObject::Records() {
  Pass<"Records">();
  auto table = std::make_shared<Table>();
  table->sought = alias_;
  table->aliases = {alias_};
  const auto front = alias_.empty() ? std::string() : alias_ + ".";
  for (const auto* name : {attribute::kObjectId, attribute::kClassId}) {
    table->columns.push_back({front + name, veldora::column_type::kInteger, 4});
  }
  for (const auto& object : objects_) {
    const auto& data = DataOf(object);
    auto row = std::make_shared<TableRow>();
    row->cells = {data->Id(), static_cast<std::int32_t>(data->Info().id)};
    row->objects.emplace_back(alias_, data);
    table->rows.push_back(std::move(row));
  }
  return MakeRef<RecListObject>(core_, std::move(table));
}

void ObjectListObject::Add(const Ref<veldora::VdObject>& object) {
  Pass<"Add">();
  objects_.push_back(object);
}

void ObjectListObject::Remove(int index) {
  Pass<"Remove">([&] { return std::to_string(index); });
  ElementAt(objects_, index);
  objects_.erase(objects_.begin() + index);
}

void ObjectListObject::SetAttributeNames(const std::string& names) {
  Pass<"SetAttributeNames">([&] { return names; });
  attributes_ = SplitNames(names, ',');
}

void ObjectListObject::RetrieveAll() {
  Pass<"RetrieveAll">();
  std::map<std::int16_t, std::vector<ObjectData*>> byClass;
  for (const auto& object : objects_) {
    const auto& data = DataOf(object);
    byClass[data->Info().id].push_back(data.get());
  }
  for (const auto& [classId, objects] : byClass) {
    std::vector<std::size_t> places;
    for (const auto& name : attributes_) places.push_back(objects.front()->Info().PlaceOf(name));
    if (!places.empty()) ReadTogether(*core_, objects, places);
  }
}

Ref<veldora::VdObjects> ObjectListObject::AsVdObjects() {
  return Ref<veldora::VdObjects>(shared_from_this());
}

AliasResultsObject::AliasResultsObject(std::shared_ptr<Core> core, std::shared_ptr<Table> table)
    : Served(std::move(core)), table_(std::move(table)) {}

std::vector<Ref<veldora::VdObject>> AliasResultsObject::OfAlias(const std::string& wanted) const {
  if (std::ranges::find(table_->aliases, wanted) == table_->aliases.end()) {
    throw Failure(failure::kInvalidCall, "The result has no alias \"" + wanted + "\"");
  }
  std::vector<Ref<veldora::VdObject>> objects;
  for (const auto& row : table_->rows) {
    for (const auto& [alias, data] : row->objects) {
      if (alias == wanted) objects.push_back(ObjectOf(*data));
    }
  }
  return objects;
}

Ref<veldora::VdObjects> AliasResultsObject::ObjectsOf(const std::string& alias) {
  Pass<"ObjectsOf">([&] { return alias; });
  return MakeRef<ObjectListObject>(core_, OfAlias(alias), alias);
}

Ref<veldora::VdAliasResults> AliasResultsObject::AsVdAliasResults() {
  return Ref<veldora::VdAliasResults>(shared_from_this());
}

}  // namespace quintara::vault
