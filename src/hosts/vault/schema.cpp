#include "hosts/vault/schema.h"

#include "base/failure.h"

namespace quintara::vault {

std::optional<std::size_t> ClassInfo::Find(std::string_view attribute) const {
  const auto found = places_.find(std::string(attribute));
  if (found == places_.end()) return std::nullopt;
  return found->second;
}

std::size_t ClassInfo::PlaceOf(std::string_view attribute) const {
  if (const auto place = Find(attribute)) return *place;
  throw Failure(failure::kInvalidCall,
                "The class \"" + name + "\" has no attribute \"" + std::string(attribute) + "\"");
}

Schema::Schema(Database& database) {
  for (const auto& row :
       database.Query("itti", "SELECT class_id, name, table_name, kind FROM vd_class ORDER BY class_id")) {
    auto info = std::make_unique<ClassInfo>();
    info->id = static_cast<std::int16_t>(IntegerOf(row[0]));
    info->name = TextOf(row[1]);
    info->table = TextOf(row[2]);
    info->kind = static_cast<ClassKind>(IntegerOf(row[3]));
    ReadAttributes(database, *info);
    ReadMasks(database, *info);
    byId_[info->id] = info.get();
    byName_[info->name] = info.get();
    if (info->kind == ClassKind::kStructureLink) structureLink_ = info.get();
    classes_.push_back(std::move(info));
  }
  for (const auto& row : database.Query("it", "SELECT operation_id, name FROM vd_operation")) {
    operations_[TextOf(row[1])] = static_cast<std::int32_t>(IntegerOf(row[0]));
  }
  if (structureLink_ == nullptr) throw Failure(failure::kInvalidFormat, "The vault has no class of structure links");
}

void Schema::ReadAttributes(Database& database, ClassInfo& info) {
  const auto rows = database.Query(
      "tiii", "SELECT name, is_integer, size, is_key FROM vd_attribute WHERE class_id = ? ORDER BY place",
      {std::int64_t{info.id}});
  for (const auto& row : rows) {
    info.places_[TextOf(row[0])] = info.attributes.size();
    info.attributes.push_back(
        {TextOf(row[0]), IntegerOf(row[1]) != 0, static_cast<int>(IntegerOf(row[2])), IntegerOf(row[3]) != 0});
  }
}

void Schema::ReadMasks(Database& database, ClassInfo& info) {
  const auto rows =
      database.Query("ttit", "SELECT attribute, sequence_name, width, first_revision FROM vd_mask WHERE class_id = ?",
                     {std::int64_t{info.id}});
  for (const auto& row : rows) {
    info.masks[TextOf(row[0])] = {TextOf(row[1]), static_cast<int>(IntegerOf(row[2])), TextOf(row[3])};
  }
}

const ClassInfo& Schema::ClassById(int classId) const {
  const auto found = byId_.find(classId);
  if (found != byId_.end()) return *found->second;
  throw Failure(failure::kInvalidCall, "The vault has no class with the id " + std::to_string(classId));
}

const ClassInfo* Schema::FindClass(const std::string& name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

const ClassInfo& Schema::ClassByName(const std::string& name) const {
  if (const auto* info = FindClass(name)) return *info;
  throw Failure(failure::kInvalidCall, "The vault has no class \"" + name + "\"");
}

const ClassInfo* Schema::FindTable(const std::string& table) const {
  for (const auto& info : classes_) {
    if (info->table == table && !info->IsLink()) return info.get();
  }
  return nullptr;
}

std::int32_t Schema::OperationByName(const std::string& name) const {
  const auto found = operations_.find(name);
  if (found != operations_.end()) return found->second;
  throw Failure(failure::kInvalidCall, "The vault has no operation \"" + name + "\"");
}

std::string Schema::OperationName(std::int32_t operationId) const {
  for (const auto& [name, id] : operations_) {
    if (id == operationId) return name;
  }
  throw Failure(failure::kInvalidCall, "The vault has no operation with the id " + std::to_string(operationId));
}

std::string Quoted(const std::string& identifier) {
  return '"' + identifier + '"';
}

std::string ColumnList(const ClassInfo& info, const std::string& alias) {
  std::string list;
  for (const auto& one : info.attributes) {
    if (!list.empty()) list += ", ";
    if (!alias.empty()) list += Quoted(alias) + '.';
    list += Quoted(one.name);
  }
  return list;
}

std::string ColumnTypes(const ClassInfo& info) {
  std::string types;
  for (const auto& one : info.attributes) types += one.isInteger ? 'i' : 't';
  return types;
}

}  // namespace quintara::vault
