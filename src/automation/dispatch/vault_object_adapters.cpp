#include <array>

#include "automation/dispatch/late_bound.h"

namespace quintara::automation {
namespace {

class VdBehaviorAdapter final : public LateBound<veldora::VdBehavior> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdBehavior> Clone() override { return Ask<&veldora::VdBehavior::Clone>(); }
  int OptionA() override { return Ask<&veldora::VdBehavior::OptionA>(); }
  int OptionC() override { return Ask<&veldora::VdBehavior::OptionC>(); }
  void SetOptionA(int value) override { Ask<&veldora::VdBehavior::SetOptionA>(value); }
  void SetOptionB(int value) override { Ask<&veldora::VdBehavior::SetOptionB>(value); }
  void SetOptionC(int value) override { Ask<&veldora::VdBehavior::SetOptionC>(value); }
  void SetOptionD(bool value) override { Ask<&veldora::VdBehavior::SetOptionD>(value); }
  void SetOptionE(int value) override { Ask<&veldora::VdBehavior::SetOptionE>(value); }
};

class VdObjectAdapter final : public LateBound<veldora::VdObject> {
 public:
  using LateBound::LateBound;

  std::int32_t ObjectId() override { return Ask<&veldora::VdObject::ObjectId>(); }
  std::int16_t ClassId() override { return Ask<&veldora::VdObject::ClassId>(); }
  Ref<veldora::VdClass> ClassInfo() override { return Ask<&veldora::VdObject::ClassInfo>(); }
  Ref<veldora::VdRecord> Record() override { return Ask<&veldora::VdObject::Record>(); }
  void InitData() override { Ask<&veldora::VdObject::InitData>(); }
  void Retrieve() override { Ask<&veldora::VdObject::Retrieve>(); }
  void Refresh() override { Ask<&veldora::VdObject::Refresh>(); }
  void RetrieveAttributes(const std::string& names) override { Ask<&veldora::VdObject::RetrieveAttributes>(names); }
  Ref<veldora::VdObject> Clone() override { return Ask<&veldora::VdObject::Clone>(); }
  Ref<veldora::VdObject> GetVersion(int kind) override { return Ask<&veldora::VdObject::GetVersion>(kind); }
  Ref<veldora::VdObject> LinkedVersion(int kind) override { return Ask<&veldora::VdObject::LinkedVersion>(kind); }
  Ref<veldora::VdObjects> Parents(const Ref<veldora::VdQueryDefinition>& definition,
                                  const Ref<veldora::VdBehavior>& behavior) override {
    return Ask<&veldora::VdObject::Parents>(definition, behavior);
  }
  Ref<veldora::VdObjects> Children(const Ref<veldora::VdQueryDefinition>& definition) override {
    return Ask<&veldora::VdObject::Children>(definition);
  }
  Ref<veldora::VdObjects> ChildrenWithBehavior(const Ref<veldora::VdQueryDefinition>& definition,
                                               const Ref<veldora::VdBehavior>& behavior) override {
    return Ask<&veldora::VdObject::ChildrenWithBehavior>(definition, behavior);
  }
  void RemoveLink(const Ref<veldora::VdBehavior>& behavior) override { Ask<&veldora::VdObject::RemoveLink>(behavior); }
  void CopyFileTo(const std::string& name, const std::string& directory) override {
    Ask<&veldora::VdObject::CopyFileTo>(name, directory);
  }
  void AddToVault(const Ref<veldora::VdBehavior>& behavior) override { Ask<&veldora::VdObject::AddToVault>(behavior); }
  void Update(const Ref<veldora::VdBehavior>& behavior) override { Ask<&veldora::VdObject::Update>(behavior); }
  void AddLink(std::int16_t linkClassId, const Ref<veldora::VdObject>& other, const Ref<veldora::VdRecord>& record,
               const Ref<veldora::VdBehavior>& behavior) override {
    Ask<&veldora::VdObject::AddLink>(linkClassId, other, record, behavior);
  }
};

class VdObjectsAdapter final : public LateBound<veldora::VdObjects> {
 public:
  using LateBound::LateBound;

  int Count() override { return Ask<&veldora::VdObjects::Count>(); }
  Ref<veldora::VdObject> Item(int index) override { return Ask<&veldora::VdObjects::Item>(index); }
  Ref<veldora::VdRecList> Records() override { return Ask<&veldora::VdObjects::Records>(); }
  void Add(const Ref<veldora::VdObject>& object) override { Ask<&veldora::VdObjects::Add>(object); }
  void Remove(int index) override { Ask<&veldora::VdObjects::Remove>(index); }
  void SetAttributeNames(const std::string& names) override { Ask<&veldora::VdObjects::SetAttributeNames>(names); }
  void RetrieveAll() override { Ask<&veldora::VdObjects::RetrieveAll>(); }
};

class VdQueryFromAdapter final : public LateBound<veldora::VdQueryFrom> {
 public:
  using LateBound::LateBound;

  void Add(std::int16_t classId, const std::string& alias) override { Ask<&veldora::VdQueryFrom::Add>(classId, alias); }
};

class VdQuerySelectAdapter final : public LateBound<veldora::VdQuerySelect> {
 public:
  using LateBound::LateBound;

  void Add(const std::string& attribute, const std::string& alias, bool flag) override {
    Ask<&veldora::VdQuerySelect::Add>(attribute, alias, flag);
  }
};

class VdQueryWhereAdapter final : public LateBound<veldora::VdQueryWhere> {
 public:
  using LateBound::LateBound;

  void Add(const std::string& connective, const std::string& attribute, const std::string& comparison,
           const Variant& value, int flag, const std::string& alias) override {
    Ask<&veldora::VdQueryWhere::Add>(connective, attribute, comparison, value, flag, alias);
  }
};

class VdQueryDefinitionAdapter final : public LateBound<veldora::VdQueryDefinition> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdQueryFrom> From() override { return Ask<&veldora::VdQueryDefinition::From>(); }
  Ref<veldora::VdQuerySelect> Select() override { return Ask<&veldora::VdQueryDefinition::Select>(); }
  Ref<veldora::VdQueryWhere> Where() override { return Ask<&veldora::VdQueryDefinition::Where>(); }
};

class VdQueryAdapter final : public LateBound<veldora::VdQuery> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdQueryDefinition> Definition() override { return Ask<&veldora::VdQuery::Definition>(); }
  void RunLinkQuery() override { Ask<&veldora::VdQuery::RunLinkQuery>(); }
  void RunClassQuery() override { Ask<&veldora::VdQuery::RunClassQuery>(); }
  void RunWithBehavior(const Ref<veldora::VdBehavior>& behavior) override {
    Ask<&veldora::VdQuery::RunWithBehavior>(behavior);
  }
  int RecordCount() override { return Ask<&veldora::VdQuery::RecordCount>(); }
  Ref<veldora::VdRecList> Result() override { return Ask<&veldora::VdQuery::Result>(); }
  Ref<veldora::VdObjectStore> ObjectStore() override { return Ask<&veldora::VdQuery::ObjectStore>(); }
};

class VdAliasResultsAdapter final : public LateBound<veldora::VdAliasResults> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdObjects> ObjectsOf(const std::string& alias) override {
    return Ask<&veldora::VdAliasResults::ObjectsOf>(alias);
  }
};

class VdMaskAdapter final : public LateBound<veldora::VdMask> {
 public:
  using LateBound::LateBound;

  std::string NextValue() override { return Ask<&veldora::VdMask::NextValue>(); }
  std::string FirstRevision() override { return Ask<&veldora::VdMask::FirstRevision>(); }
};

class VdMasksAdapter final : public LateBound<veldora::VdMasks> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdMask> MaskOf(const Ref<veldora::VdAttribute>& attribute) override {
    return Ask<&veldora::VdMasks::MaskOf>(attribute);
  }
};

class VdObjectStoreAdapter final : public LateBound<veldora::VdObjectStore> {
 public:
  using LateBound::LateBound;

  Ref<veldora::VdObject> ObjectById(std::int16_t classId, std::int32_t objectId) override {
    return Ask<&veldora::VdObjectStore::ObjectById>(classId, objectId);
  }
  Ref<veldora::VdObject> ObjectFromRecord(const Ref<veldora::VdRecord>& record, int flag) override {
    return Ask<&veldora::VdObjectStore::ObjectFromRecord>(record, flag);
  }
  Ref<veldora::VdObject> LinkObject(std::int16_t linkClassId, std::int16_t firstClassId, std::int32_t firstObjectId,
                                    std::int16_t secondClassId, std::int32_t secondObjectId) override {
    return Ask<&veldora::VdObjectStore::LinkObject>(linkClassId, firstClassId, firstObjectId, secondClassId,
                                                    secondObjectId);
  }
  Ref<veldora::VdObject> NewObject(std::int16_t classId) override {
    return Ask<&veldora::VdObjectStore::NewObject>(classId);
  }
  Ref<veldora::VdObjects> NewObjects() override { return Ask<&veldora::VdObjectStore::NewObjects>(); }
  Ref<veldora::VdQuery> NewQuery() override { return Ask<&veldora::VdObjectStore::NewQuery>(); }
  Ref<veldora::VdQueryDefinition> NewQueryDefinition() override {
    return Ask<&veldora::VdObjectStore::NewQueryDefinition>();
  }
  Ref<veldora::VdAliasResults> ObjectsFromRecList(const Ref<veldora::VdRecList>& rows, int flag) override {
    return Ask<&veldora::VdObjectStore::ObjectsFromRecList>(rows, flag);
  }
  Ref<veldora::VdBehavior> DefaultBehavior() override { return Ask<&veldora::VdObjectStore::DefaultBehavior>(); }
  Ref<veldora::VdMasks> Masks() override { return Ask<&veldora::VdObjectStore::Masks>(); }
};

}  // namespace

template <>
Ref<veldora::VdBehavior> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdBehaviorAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdObject> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdObjectAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdObjects> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdObjectsAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdQueryFrom> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdQueryFromAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdQuerySelect> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdQuerySelectAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdQueryWhere> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdQueryWhereAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdQueryDefinition> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdQueryDefinitionAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdQuery> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdQueryAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdAliasResults> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdAliasResultsAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdMask> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdMaskAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdMasks> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdMasksAdapter>(std::move(object), connection);
}

template <>
Ref<veldora::VdObjectStore> Adapt(ComPtr<IDispatch> object, const std::shared_ptr<Connection>& connection) {
  return MakeAdapter<VdObjectStoreAdapter>(std::move(object), connection);
}

}  // namespace quintara::automation
