#include <array>

#include "automation/dispatch/late_bound.h"

namespace quintara::automation {
namespace {

class VdColumnAdapter final : public LateBound<veldora::VdColumn> {
 public:
  using LateBound::LateBound;

  int Size() override { return Ask<&veldora::VdColumn::Size>(); }
  int TypeCode() override { return Ask<&veldora::VdColumn::TypeCode>(); }
};

class VdColumnsAdapter final : public LateBound<veldora::VdColumns> {
 public:
  using LateBound::LateBound;

  int Count() override { return Ask<&veldora::VdColumns::Count>(); }
  Ref<veldora::VdColumn> Item(int index) override { return Ask<&veldora::VdColumns::Item>(index); }
  bool Contains(const std::string& name) override { return Ask<&veldora::VdColumns::Contains>(name); }
};

template <class Contract>
class RecordOf : public LateBound<Contract> {
 public:
  using LateBound<Contract>::LateBound;

  Variant Value(const std::string& attribute) override {
    return this->template Ask<&veldora::VdRecord::Value>(attribute);
  }
  std::int32_t ValueAsInteger(const std::string& attribute) override {
    return this->template Ask<&veldora::VdRecord::ValueAsInteger>(attribute);
  }
  std::string ValueAsString(const std::string& attribute) override {
    return this->template Ask<&veldora::VdRecord::ValueAsString>(attribute);
  }
  void ValuateFromString(const std::string& attribute, const std::string& text) override {
    this->template Ask<&veldora::VdRecord::ValuateFromString>(attribute, text);
  }
  Ref<veldora::VdColumns> Header() override { return this->template Ask<&veldora::VdRecord::Header>(); }
};

class VdRecordAdapter final : public RecordOf<veldora::VdRecord> {
 public:
  using RecordOf::RecordOf;
};

class VdRecListAdapter final : public RecordOf<veldora::VdRecList> {
 public:
  using RecordOf::RecordOf;

  int RecordCount() override { return Ask<&veldora::VdRecList::RecordCount>(); }
  Ref<veldora::VdRecord> GetRecord(int row) override { return Ask<&veldora::VdRecList::GetRecord>(row); }
  void AddField(const std::string& name, int typeCode, int size) override {
    Ask<&veldora::VdRecList::AddField>(name, typeCode, size);
  }
  int AddRow() override { return Ask<&veldora::VdRecList::AddRow>(); }
  void SetValue(const std::string& field, int row, const Variant& value) override {
    Ask<&veldora::VdRecList::SetValue>(field, row, value);
  }
  int ColumnCount() override { return Ask<&veldora::VdRecList::ColumnCount>(); }
  std::string ColumnName(int column) override { return Ask<&veldora::VdRecList::ColumnName>(column); }
  std::string ValueAt(const std::string& field, int row) override {
    return Ask<&veldora::VdRecList::ValueAt>(field, row);
  }
  void SetCell(int column, int row, const Variant& value) override {
    Ask<&veldora::VdRecList::SetCell>(column, row, value);
  }
};

}  // namespace

template <>
Ref<veldora::VdColumn> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdColumnAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdColumns> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdColumnsAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdRecord> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdRecordAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdRecList> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdRecListAdapter>(std::move(object), connection);
}

}  // namespace quintara::automation
