#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "access/contracts/veldora_records.h"
#include "hosts/vault/object_data.h"
#include "hosts/vault/served.h"

namespace quintara::vault {

struct ColumnInfo {
  std::string name;
  int typeCode = veldora::column_type::kText;
  int size = 255;
};

class ColumnObject final : public Served<"VdColumn", veldora::VdColumn> {
 public:
  ColumnObject(std::shared_ptr<Core> core, ColumnInfo info);

  std::string Name() override;
  int Size() override;
  int TypeCode() override;

 private:
  ColumnInfo info_;
};

class ColumnsObject final : public Served<"VdColumns", veldora::VdColumns> {
 public:
  ColumnsObject(std::shared_ptr<Core> core, std::vector<ColumnInfo> columns);

  int Count() override;
  Ref<veldora::VdColumn> Item(int index) override;
  bool Contains(const std::string& name) override;

 private:
  std::vector<ColumnInfo> columns_;
};

/// The columns of a class.
std::vector<ColumnInfo> ColumnsOf(const ClassInfo& info);

/// A record that stands for objects.
class ObjectSource {
 public:
  virtual ~ObjectSource() = default;

  /// The object sought, or nothing.
  virtual std::shared_ptr<ObjectData> SoughtObject() = 0;
};

/// An object's own attributes.
class ObjectRecord final : public Served<"VdRecord", veldora::VdRecord>, public ObjectSource {
 public:
  explicit ObjectRecord(std::shared_ptr<ObjectData> object);

  Variant Value(const std::string& attribute) override;
  std::int32_t ValueAsInteger(const std::string& attribute) override;
  std::string ValueAsString(const std::string& attribute) override;
  void ValuateFromString(const std::string& attribute, const std::string& text) override;
  Ref<veldora::VdColumns> Header() override;

  std::shared_ptr<ObjectData> SoughtObject() override { return object_; }

 private:
  std::shared_ptr<ObjectData> object_;
};

/// One row of a table: cells, and the objects behind them by alias, which answer what no column holds.
struct TableRow {
  std::vector<Variant> cells;
  std::vector<std::pair<std::string, std::shared_ptr<ObjectData>>> objects;
};

/// What a table and its rows share.
struct Table {
  std::vector<ColumnInfo> columns;
  std::vector<std::shared_ptr<TableRow>> rows;
  std::string sought;                                  ///< the alias whose objects the rows stand for
  std::vector<std::string> aliases = {std::string()};  ///< of the objects of each row

  std::optional<std::size_t> Find(const std::string& column) const;
  std::size_t ColumnOf(const std::string& column) const;
};

class TableRecord final : public Served<"VdRecord", veldora::VdRecord>, public ObjectSource {
 public:
  TableRecord(std::shared_ptr<Core> core, std::shared_ptr<Table> table, std::shared_ptr<TableRow> row);

  Variant Value(const std::string& attribute) override;
  std::int32_t ValueAsInteger(const std::string& attribute) override;
  std::string ValueAsString(const std::string& attribute) override;
  void ValuateFromString(const std::string& attribute, const std::string& text) override;
  Ref<veldora::VdColumns> Header() override;

  std::shared_ptr<ObjectData> SoughtObject() override;

 private:
  std::shared_ptr<Table> table_;
  std::shared_ptr<TableRow> row_;
};

}  // namespace quintara::vault
