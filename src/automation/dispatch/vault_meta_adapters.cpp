#include <array>

#include "automation/dispatch/late_bound.h"

namespace quintara::automation {
namespace {

class VdAttributeAdapter final : public LateBound<veldora::VdAttribute> {
 public:
  using LateBound::LateBound;
};

class VdAttributesAdapter final : public LateBound<veldora::VdAttributes> {
 public:
  using LateBound::LateBound;

  int Count() override { return Ask<&veldora::VdAttributes::Count>(); }
  Ref<veldora::VdAttribute> Item(const Variant& index) override { return Ask<&veldora::VdAttributes::Item>(index); }
  Ref<veldora::VdAttribute> ItemByName(const std::string& name) override {
    return Ask<&veldora::VdAttributes::ItemByName>(name);
  }
  Ref<veldora::VdAttribute> Find(const std::string& name) override { return Ask<&veldora::VdAttributes::Find>(name); }
};

class VdClassAdapter final : public LateBound<veldora::VdClass> {
 public:
  using LateBound::LateBound;

  std::int16_t ClassId() override { return Ask<&veldora::VdClass::ClassId>(); }
  std::int16_t QueryClassId() override { return Ask<&veldora::VdClass::QueryClassId>(); }
  std::string ClassName() override { return Ask<&veldora::VdClass::ClassName>(); }
  Ref<veldora::VdAttributes> Attributes() override { return Ask<&veldora::VdClass::Attributes>(); }
  Ref<veldora::VdAttributes> KeyAttributes() override { return Ask<&veldora::VdClass::KeyAttributes>(); }
};

class VdClassesAdapter final : public LateBound<veldora::VdClasses> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdClass> Find(const std::string& name) override { return Ask<&veldora::VdClasses::Find>(name); }
};

class VdOperationAdapter final : public LateBound<veldora::VdOperation> {
 public:
  using LateBound::LateBound;

  std::int32_t OperationId() override { return Ask<&veldora::VdOperation::OperationId>(); }
};

class VdOperationsAdapter final : public LateBound<veldora::VdOperations> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdOperation> Find(const std::string& name) override { return Ask<&veldora::VdOperations::Find>(name); }
};

class VdMetaInfoAdapter final : public LateBound<veldora::VdMetaInfo> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdClass> ClassByName(const std::string& name) override {
    return Ask<&veldora::VdMetaInfo::ClassByName>(name);
  }
  Ref<veldora::VdClass> ClassById(std::int16_t classId) override {
    return Ask<&veldora::VdMetaInfo::ClassById>(classId);
  }
  Ref<veldora::VdClass> ClassByTable(const std::string& table) override {
    return Ask<&veldora::VdMetaInfo::ClassByTable>(table);
  }
  Ref<veldora::VdClasses> Classes() override { return Ask<&veldora::VdMetaInfo::Classes>(); }
  Ref<veldora::VdOperation> OperationByName(const std::string& name) override {
    return Ask<&veldora::VdMetaInfo::OperationByName>(name);
  }
  Ref<veldora::VdOperations> Operations(int kind) override { return Ask<&veldora::VdMetaInfo::Operations>(kind); }
};

}  // namespace

template <>
Ref<veldora::VdAttribute> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdAttributeAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdAttributes> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdAttributesAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdClass> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdClassAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdClasses> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdClassesAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdOperation> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdOperationAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdOperations> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdOperationsAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdMetaInfo> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdMetaInfoAdapter>(std::move(object), connection);
}

}  // namespace quintara::automation
