#include "hosts/vault/records.h"

#include <algorithm>

#include "base/arrays.h"
#include "base/failure.h"

namespace quintara::vault {
namespace {

// A cell or value as an integer: what was never set, or is the empty text, is 0.
std::int32_t AsInteger(const Variant& value) {
  return value.IsText() && value.ToText().empty() ? 0 : value.ToInteger32();
}

// The object and attribute that a name means which no column bears: with an alias in front, or the
// bare name where only one alias can be meant.
std::pair<std::shared_ptr<ObjectData>, std::string> MeantBy(const TableRow& row, const std::string& name) {
  const auto point = name.find('.');
  std::pair<std::shared_ptr<ObjectData>, std::string> meant;
  for (const auto& [alias, object] : row.objects) {
    if (!object) continue;
    const bool named = point != name.npos && alias == name.substr(0, point);
    if (!named && (point != name.npos || !object->Info().Has(name))) continue;
    if (meant.first) throw Failure(failure::kInvalidCall, "\"" + name + "\" may mean several objects of the row");
    meant = {object, named ? name.substr(point + 1) : name};
  }
  if (!meant.first) throw Failure(failure::kInvalidCall, "The row has no attribute \"" + name + "\"");
  return meant;
}

}  // namespace

ColumnObject::ColumnObject(std::shared_ptr<Core> core, ColumnInfo info)
    : Served(std::move(core)), info_(std::move(info)) {}

std::string ColumnObject::Name() {
  Pass<"Name">();
  return info_.name;
}

int ColumnObject::Size() {
  Pass<"Size">();
  return info_.size;
}

int ColumnObject::TypeCode() {
  Pass<"TypeCode">();
  return info_.typeCode;
}

ColumnsObject::ColumnsObject(std::shared_ptr<Core> core, std::vector<ColumnInfo> columns)
    : Served(std::move(core)), columns_(std::move(columns)) {}

int ColumnsObject::Count() {
  Pass<"Count">();
  return static_cast<int>(columns_.size());
}

Ref<veldora::VdColumn> ColumnsObject::Item(int index) {
  Pass<"Item">([&] { return std::to_string(index); });
  return MakeRef<ColumnObject>(core_, ElementAt(columns_, index));
}

bool ColumnsObject::Contains(const std::string& name) {
  Pass<"Contains">([&] { return name; });
  return std::ranges::find(columns_, name, &ColumnInfo::name) != columns_.end();
}

std::vector<ColumnInfo> ColumnsOf(const ClassInfo& info) {
  std::vector<ColumnInfo> columns;
  for (const auto& attribute : info.attributes) {
    columns.push_back({attribute.name,
                       attribute.isInteger ? veldora::column_type::kInteger : veldora::column_type::kText,
                       attribute.size});
  }
  return columns;
}

ObjectRecord::ObjectRecord(std::shared_ptr<ObjectData> object)
    : Served(object->SharedCore()), object_(std::move(object)) {}

Variant ObjectRecord::Value(const std::string& attribute) {
  Pass<"Value">([&] { return attribute; });
  return object_->VariantOf(attribute);
}

std::int32_t ObjectRecord::ValueAsInteger(const std::string& attribute) {
  Pass<"ValueAsInteger">([&] { return attribute; });
  return AsInteger(object_->VariantOf(attribute));
}

std::string ObjectRecord::ValueAsString(const std::string& attribute) {
  Pass<"ValueAsString">([&] { return attribute; });
  return object_->Text(attribute);
}

void ObjectRecord::ValuateFromString(const std::string& attribute, const std::string& text) {
  Pass<"ValuateFromString">([&] { return attribute + ", " + text; });
  object_->SetText(attribute, text);
}

Ref<veldora::VdColumns> ObjectRecord::Header() {
  Pass<"Header">();
  return MakeRef<ColumnsObject>(core_, ColumnsOf(object_->Info()));
}

std::optional<std::size_t> Table::Find(const std::string& column) const {
  const auto found = std::ranges::find(columns, column, &ColumnInfo::name);
  if (found == columns.end()) return std::nullopt;
  return static_cast<std::size_t>(found - columns.begin());
}

std::size_t Table::ColumnOf(const std::string& column) const {
  if (const auto place = Find(column)) return *place;
  throw Failure(failure::kInvalidCall, "The table has no column \"" + column + "\"");
}

TableRecord::TableRecord(std::shared_ptr<Core> core, std::shared_ptr<Table> table, std::shared_ptr<TableRow> row)
    : Served(std::move(core)), table_(std::move(table)), row_(std::move(row)) {}

Variant TableRecord::Value(const std::string& attribute) {
  Pass<"Value">([&] { return attribute; });
  if (const auto column = table_->Find(attribute)) return row_->cells[*column];
  const auto [object, name] = MeantBy(*row_, attribute);
  return object->VariantOf(name);
}

std::int32_t TableRecord::ValueAsInteger(const std::string& attribute) {
  return AsInteger(Value(attribute));
}

std::string TableRecord::ValueAsString(const std::string& attribute) {
  return Value(attribute).ToText();
}

void TableRecord::ValuateFromString(const std::string& attribute, const std::string& text) {
  Pass<"ValuateFromString">([&] { return attribute + ", " + text; });
  if (const auto column = table_->Find(attribute)) {
    const bool integer = table_->columns[*column].typeCode == veldora::column_type::kInteger;
    row_->cells[*column] = integer ? Variant(AsInteger(text)) : Variant(text);
    return;
  }
  const auto [object, name] = MeantBy(*row_, attribute);
  object->SetText(name, text);
}

Ref<veldora::VdColumns> TableRecord::Header() {
  Pass<"Header">();
  return MakeRef<ColumnsObject>(core_, table_->columns);
}

std::shared_ptr<ObjectData> TableRecord::SoughtObject() {
  for (const auto& [alias, object] : row_->objects) {
    if (alias == table_->sought) return object;
  }
  return nullptr;
}

}  // namespace quintara::vault
