#pragma once

#include <memory>
#include <string>

#include "hosts/vault/records.h"

namespace quintara::vault {

class RecListObject final : public Served<"VdRecList", veldora::VdRecList>,
                            public ObjectSource,
                            public std::enable_shared_from_this<RecListObject> {
 public:
  RecListObject(std::shared_ptr<Core> core, std::shared_ptr<Table> table);

  int RecordCount() override;
  Ref<veldora::VdRecord> GetRecord(int row) override;
  void AddField(const std::string& name, int typeCode, int size) override;
  int AddRow() override;
  void SetValue(const std::string& field, int row, const Variant& value) override;
  int ColumnCount() override;
  std::string ColumnName(int column) override;
  std::string ValueAt(const std::string& field, int row) override;
  void SetCell(int column, int row, const Variant& value) override;

  Variant Value(const std::string& attribute) override;
  std::int32_t ValueAsInteger(const std::string& attribute) override;
  std::string ValueAsString(const std::string& attribute) override;
  void ValuateFromString(const std::string& attribute, const std::string& text) override;
  Ref<veldora::VdColumns> Header() override;

  Ref<veldora::VdRecList> AsVdRecList() override;

  std::shared_ptr<ObjectData> SoughtObject() override;
  const std::shared_ptr<Table>& TheTable() const { return table_; }

 private:
  Ref<TableRecord> FirstRow() const;
  void SetAt(std::size_t column, int row, const Variant& value);

  std::shared_ptr<Table> table_;
};

}  // namespace quintara::vault
