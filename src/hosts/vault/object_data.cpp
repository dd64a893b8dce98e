#include "hosts/vault/object_data.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <unordered_map>

#include "base/failure.h"
#include "base/text.h"

namespace quintara::vault {
namespace {

std::string Columns(const ClassInfo& info, const std::vector<std::size_t>& places) {
  std::string list;
  for (const auto place : places) list += (list.empty() ? "" : ", ") + Quoted(info.attributes[place].name);
  return list;
}

std::string Types(const ClassInfo& info, const std::vector<std::size_t>& places) {
  std::string types;
  for (const auto place : places) types += info.attributes[place].isInteger ? 'i' : 't';
  return types;
}

}  // namespace

Variant AsVariant(const AttributeInfo& attribute, const SqlValue& value) {
  if (!attribute.isInteger) return TextOf(value);
  const auto number = IntegerOf(value);
  if (!std::in_range<std::int32_t>(number)) throw Failure(failure::kOverflow);
  return static_cast<std::int32_t>(number);
}

SqlValue ValueOf(const AttributeInfo& attribute, const std::string& text) {
  if (text.empty()) return {};
  if (attribute.isInteger) return std::int64_t{Variant(text).ToInteger32()};
  if (!IsUtf8(text) || text.find('\0') != text.npos) {
    throw Failure(failure::kInvalidCall, "The value for " + attribute.name + " is no text");
  }
  return text;
}

std::string Described(const ClassInfo& info, std::int32_t id) {
  return info.name + " " + std::to_string(id);
}

ObjectData::ObjectData(std::shared_ptr<Core> core, const ClassInfo& info, std::int32_t id)
    : core_(std::move(core)),
      info_(&info),
      id_(id),
      values_(info.attributes.size()),
      known_(info.attributes.size(), id == 0),
      changed_(info.attributes.size(), false) {
  Know(info.PlaceOf(attribute::kClassId), std::int64_t{info.id});
  if (id != 0) Know(info.PlaceOf(attribute::kObjectId), std::int64_t{id});
}

const SqlValue& ObjectData::Value(std::size_t place) {
  if (!known_[place]) {
    std::vector<std::size_t> unknown;
    for (const auto one : AllPlaces()) {
      if (!known_[one]) unknown.push_back(one);
    }
    Read(unknown);
  }
  return values_[place];
}

Variant ObjectData::VariantOf(const std::string& name) {
  const auto place = info_->PlaceOf(name);
  return AsVariant(info_->attributes[place], Value(place));
}

std::string ObjectData::Text(const std::string& name) {
  return VariantOf(name).ToText();
}

std::int64_t ObjectData::Integer(const std::string& name) {
  return IntegerOf(Value(info_->PlaceOf(name)));
}

void ObjectData::RequireSettable(const std::string& name) const {
  constexpr std::array<std::string_view, 9> kKept = {
      attribute::kObjectId, attribute::kClassId,   attribute::kState,    attribute::kVaultObjectId, attribute::kFileId,
      attribute::kCreated,  attribute::kCreatedBy, attribute::kModified, attribute::kModifiedBy};
  const bool identity = info_->IsVersioned() && (name == attribute::kIdentity || name == attribute::kRevision);
  if (info_->IsLink() || std::ranges::find(kKept, name) != kKept.end() || (identity && id_ != 0)) {
    throw Failure(failure::kPermissionDenied,
                  "The vault itself keeps the attribute " + name + " of " + Described(*info_, id_));
  }
}

void ObjectData::SetText(const std::string& name, const std::string& text) {
  const auto place = info_->PlaceOf(name);
  RequireSettable(name);
  values_[place] = ValueOf(info_->attributes[place], text);
  known_[place] = true;
  changed_[place] = true;
}

void ObjectData::Know(std::size_t place, SqlValue value) {
  values_[place] = std::move(value);
  known_[place] = true;
  changed_[place] = false;
}

void ObjectData::Read() {
  Read(AllPlaces());
}

void ObjectData::Read(const std::vector<std::size_t>& places) {
  if (places.empty()) return;
  if (id_ == 0) throw Failure(failure::kInvalidCall, "A new " + info_->name + " isn't stored yet");
  const auto rows = core_->Data().Query(
      Types(*info_, places),
      "SELECT " + Columns(*info_, places) + " FROM " + Quoted(info_->table) + " WHERE \"OBJECT_ID\" = ?",
      {std::int64_t{id_}});
  if (rows.empty()) throw Failure(failure::kInvalidCall, "The vault has no " + Described(*info_, id_));
  for (std::size_t i = 0; i < places.size(); ++i) Know(places[i], rows.front()[i]);
}

void ObjectData::Init() {
  if (id_ != 0) return;
  for (const auto place : AllPlaces()) Know(place, {});
  Know(info_->PlaceOf(attribute::kClassId), std::int64_t{info_->id});
}

std::vector<std::size_t> ObjectData::AllPlaces() const {
  std::vector<std::size_t> places(values_.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  return places;
}

void ReadTogether(Core& core, const std::vector<ObjectData*>& objects, const std::vector<std::size_t>& places) {
  if (objects.empty()) return;
  // Two lengths of the list make two statements.
  const std::size_t together = objects.size() == 1 ? 1 : 200;
  const auto& info = objects.front()->Info();
  std::string sql =
      "SELECT \"OBJECT_ID\", " + Columns(info, places) + " FROM " + Quoted(info.table) + " WHERE \"OBJECT_ID\" IN (?";
  for (std::size_t i = 1; i < together; ++i) sql += ",?";
  sql += ")";
  for (std::size_t first = 0; first < objects.size(); first += together) {
    const auto last = std::min(first + together, objects.size());
    // The last id fills the list up.
    std::vector<SqlValue> ids(together, std::int64_t{objects[last - 1]->Id()});
    for (auto i = first; i < last; ++i) ids[i - first] = std::int64_t{objects[i]->Id()};
    std::unordered_map<std::int64_t, SqlRow> rows;
    for (auto& row : core.Data().Query("i" + Types(info, places), sql, ids)) rows[IntegerOf(row[0])] = std::move(row);
    for (auto i = first; i < last; ++i) {
      const auto row = rows.find(objects[i]->Id());
      if (row == rows.end())
        throw Failure(failure::kInvalidCall, "The vault has no " + Described(info, objects[i]->Id()));
      for (std::size_t at = 0; at < places.size(); ++at) {
        if (!objects[i]->IsChanged(places[at])) objects[i]->Know(places[at], row->second[at + 1]);
      }
    }
  }
}

}  // namespace quintara::vault
