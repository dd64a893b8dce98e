#include "hosts/vault/rec_list.h"

#include <utility>

#include "base/arrays.h"
#include "base/failure.h"

namespace quintara::vault {
namespace {

Variant NeverSet(const ColumnInfo& column) {
  return column.typeCode == veldora::column_type::kInteger ? Variant(0) : Variant("");
}

Variant Converted(const ColumnInfo& column, const Variant& value) {
  if (value.IsEmpty() || (value.IsText() && value.ToText().empty())) return NeverSet(column);
  if (column.typeCode == veldora::column_type::kInteger) return value.ToInteger32();
  return value.ToText();
}

}  // namespace

RecListObject::RecListObject(std::shared_ptr<Core> core, std::shared_ptr<Table> table)
    : Served(std::move(core)), table_(std::move(table)) {}

int RecListObject::RecordCount() {
  Pass<"RecordCount">();
  return static_cast<int>(table_->rows.size());
}

Ref<veldora::VdRecord> RecListObject::GetRecord(int row) {
  Pass<"GetRecord">([&] { return std::to_string(row); });
  return MakeRef<TableRecord>(core_, table_, ElementAt(table_->rows, row));
}

void RecListObject::AddField(const std::string& name, int typeCode, int size) {
  Pass<"AddField">([&] { return name; });
  if (typeCode != veldora::column_type::kInteger && typeCode != veldora::column_type::kText) {
    throw Failure(failure::kInvalidCall, "There is no type of columns " + std::to_string(typeCode));
  }
  if (name.empty() || table_->Find(name))
    throw Failure(failure::kInvalidCall, "The table has a column \"" + name + "\" already");
  table_->columns.push_back({name, typeCode, size});
  for (auto& row : table_->rows) row->cells.push_back(NeverSet(table_->columns.back()));
}

int RecListObject::AddRow() {
  Pass<"AddRow">();
  table_->rows.push_back(std::make_shared<TableRow>());
  for (const auto& column : table_->columns) table_->rows.back()->cells.push_back(NeverSet(column));
  return static_cast<int>(table_->rows.size()) - 1;
}

void RecListObject::SetAt(std::size_t column, int row, const Variant& value) {
  ElementAt(table_->rows, row)->cells[column] = Converted(table_->columns[column], value);
}

void RecListObject::SetValue(const std::string& field, int row, const Variant& value) {
  Pass<"SetValue">([&] { return field + ", " + std::to_string(row); });
  SetAt(table_->ColumnOf(field), row, value);
}

int RecListObject::ColumnCount() {
  Pass<"ColumnCount">();
  return static_cast<int>(table_->columns.size());
}

std::string RecListObject::ColumnName(int column) {
  Pass<"ColumnName">([&] { return std::to_string(column); });
  return ElementAt(table_->columns, column).name;
}

std::string RecListObject::ValueAt(const std::string& field, int row) {
  Pass<"ValueAt">([&] { return field + ", " + std::to_string(row); });
  return ElementAt(table_->rows, row)->cells[table_->ColumnOf(field)].ToText();
}

void RecListObject::SetCell(int column, int row, const Variant& value) {
  Pass<"SetCell">([&] { return std::to_string(column) + ", " + std::to_string(row); });
  ElementAt(table_->columns, column);
  SetAt(static_cast<std::size_t>(column), row, value);
}

Ref<TableRecord> RecListObject::FirstRow() const {
  return MakeRef<TableRecord>(core_, table_, ElementAt(table_->rows, 0));
}

Variant RecListObject::Value(const std::string& attribute) {
  return FirstRow()->Value(attribute);
}

std::int32_t RecListObject::ValueAsInteger(const std::string& attribute) {
  return FirstRow()->ValueAsInteger(attribute);
}

std::string RecListObject::ValueAsString(const std::string& attribute) {
  return FirstRow()->ValueAsString(attribute);
}

void RecListObject::ValuateFromString(const std::string& attribute, const std::string& text) {
  FirstRow()->ValuateFromString(attribute, text);
}

Ref<veldora::VdColumns> RecListObject::Header() {
  Pass<"Header">();
  return MakeRef<ColumnsObject>(core_, table_->columns);
}

Ref<veldora::VdRecList> RecListObject::AsVdRecList() {
  return Ref<veldora::VdRecList>(shared_from_this());
}

std::shared_ptr<ObjectData> RecListObject::SoughtObject() {
  return FirstRow()->SoughtObject();
}

}  // namespace quintara::vault
