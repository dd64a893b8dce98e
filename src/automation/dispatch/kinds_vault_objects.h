#pragma once

#include "access/contracts/veldora_objects.h"
#include "automation/dispatch/kinds.h"

namespace quintara::automation {

template <>
struct Kind<veldora::VdAttribute> : UsualKind {
  static constexpr std::string_view kName = "VdAttribute";
  using Base = AnyObject;
  using Operations = std::tuple<>;
};

template <>
struct Kind<veldora::VdAttributes> : UsualKind {
  static constexpr std::string_view kName = "VdAttributes";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"Count", &veldora::VdAttributes::Count>, Call<"Item", &veldora::VdAttributes::Item>,
                 Call<"ItemByName", &veldora::VdAttributes::ItemByName>, Call<"Find", &veldora::VdAttributes::Find>>;
};

template <>
struct Kind<veldora::VdClass> : UsualKind {
  static constexpr std::string_view kName = "VdClass";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"ClassId", &veldora::VdClass::ClassId>, Call<"QueryClassId", &veldora::VdClass::QueryClassId>,
                 Call<"ClassName", &veldora::VdClass::ClassName>, Call<"Attributes", &veldora::VdClass::Attributes>,
                 Call<"KeyAttributes", &veldora::VdClass::KeyAttributes>>;
};

template <>
struct Kind<veldora::VdClasses> : UsualKind {
  static constexpr std::string_view kName = "VdClasses";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Find", &veldora::VdClasses::Find>>;
};

template <>
struct Kind<veldora::VdOperation> : UsualKind {
  static constexpr std::string_view kName = "VdOperation";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"OperationId", &veldora::VdOperation::OperationId>>;
};

template <>
struct Kind<veldora::VdOperations> : UsualKind {
  static constexpr std::string_view kName = "VdOperations";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Find", &veldora::VdOperations::Find>>;
};

template <>
struct Kind<veldora::VdMetaInfo> : UsualKind {
  static constexpr std::string_view kName = "VdMetaInfo";
  using Base = AnyObject;
  using Operations = std::tuple<
      Call<"ClassByName", &veldora::VdMetaInfo::ClassByName>, Call<"ClassById", &veldora::VdMetaInfo::ClassById>,
      Call<"ClassByTable", &veldora::VdMetaInfo::ClassByTable>, Call<"Classes", &veldora::VdMetaInfo::Classes>,
      Call<"OperationByName", &veldora::VdMetaInfo::OperationByName>,
      Call<"Operations", &veldora::VdMetaInfo::Operations>>;
};

template <>
struct Kind<veldora::VdColumn> : UsualKind {
  static constexpr std::string_view kName = "VdColumn";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Size", &veldora::VdColumn::Size>, Call<"TypeCode", &veldora::VdColumn::TypeCode>>;
};

template <>
struct Kind<veldora::VdColumns> : UsualKind {
  static constexpr std::string_view kName = "VdColumns";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Count", &veldora::VdColumns::Count>, Call<"Item", &veldora::VdColumns::Item>,
                                Call<"Contains", &veldora::VdColumns::Contains>>;
};

template <>
struct Kind<veldora::VdRecord> : UsualKind {
  static constexpr std::string_view kName = "VdRecord";
  static constexpr bool kIsOpen = true;
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"Value", &veldora::VdRecord::Value>, Call<"ValueAsInteger", &veldora::VdRecord::ValueAsInteger>,
                 Call<"ValueAsString", &veldora::VdRecord::ValueAsString>,
                 Call<"ValuateFromString", &veldora::VdRecord::ValuateFromString>,
                 Call<"Header", &veldora::VdRecord::Header>>;
};

template <>
struct Kind<veldora::VdRecList> : UsualKind {
  static constexpr std::string_view kName = "VdRecList";
  static constexpr std::string_view kTelltale = "GetRecord";
  using Base = veldora::VdRecord;
  using Operations =
      std::tuple<Call<"RecordCount", &veldora::VdRecList::RecordCount>,
                 Call<"GetRecord", &veldora::VdRecList::GetRecord>, Call<"AddField", &veldora::VdRecList::AddField>,
                 Call<"AddRow", &veldora::VdRecList::AddRow>, Call<"SetValue", &veldora::VdRecList::SetValue>,
                 Call<"ColumnCount", &veldora::VdRecList::ColumnCount>,
                 Call<"ColumnName", &veldora::VdRecList::ColumnName>, Call<"ValueAt", &veldora::VdRecList::ValueAt>,
                 Call<"SetCell", &veldora::VdRecList::SetCell>>;
};

template <>
struct Kind<veldora::VdBehavior> : UsualKind {
  static constexpr std::string_view kName = "VdBehavior";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"Clone", &veldora::VdBehavior::Clone>, Call<"OptionA", &veldora::VdBehavior::OptionA>,
                 Call<"OptionC", &veldora::VdBehavior::OptionC>, Put<"OptionA", &veldora::VdBehavior::SetOptionA>,
                 Put<"OptionB", &veldora::VdBehavior::SetOptionB>, Put<"OptionC", &veldora::VdBehavior::SetOptionC>,
                 Put<"OptionD", &veldora::VdBehavior::SetOptionD>, Put<"OptionE", &veldora::VdBehavior::SetOptionE>>;
};

template <>
struct Kind<veldora::VdObject> : UsualKind {
  static constexpr std::string_view kName = "VdObject";
  static constexpr std::string_view kTelltale = "GetVersion";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"ObjectId", &veldora::VdObject::ObjectId>, Call<"ClassId", &veldora::VdObject::ClassId>,
                 Call<"ClassInfo", &veldora::VdObject::ClassInfo>, Call<"Record", &veldora::VdObject::Record>,
                 Call<"InitData", &veldora::VdObject::InitData>, Call<"Retrieve", &veldora::VdObject::Retrieve>,
                 Call<"Refresh", &veldora::VdObject::Refresh>,
                 Call<"RetrieveAttributes", &veldora::VdObject::RetrieveAttributes>,
                 Call<"Clone", &veldora::VdObject::Clone>, Call<"GetVersion", &veldora::VdObject::GetVersion>,
                 Call<"LinkedVersion", &veldora::VdObject::LinkedVersion>, Call<"Parents", &veldora::VdObject::Parents>,
                 Call<"Children", &veldora::VdObject::Children>,
                 Call<"ChildrenWithBehavior", &veldora::VdObject::ChildrenWithBehavior>,
                 Call<"RemoveLink", &veldora::VdObject::RemoveLink>, Call<"CopyFileTo", &veldora::VdObject::CopyFileTo>,
                 Call<"AddToVault", &veldora::VdObject::AddToVault>, Call<"Update", &veldora::VdObject::Update>,
                 Call<"AddLink", &veldora::VdObject::AddLink>>;
};

template <>
struct Kind<veldora::VdObjects> : UsualKind {
  static constexpr std::string_view kName = "VdObjects";
  static constexpr std::string_view kTelltale = "RetrieveAll";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Count", &veldora::VdObjects::Count>, Call<"Item", &veldora::VdObjects::Item>,
                                Call<"Records", &veldora::VdObjects::Records>, Call<"Add", &veldora::VdObjects::Add>,
                                Call<"Remove", &veldora::VdObjects::Remove>,
                                Call<"SetAttributeNames", &veldora::VdObjects::SetAttributeNames>,
                                Call<"RetrieveAll", &veldora::VdObjects::RetrieveAll>>;
};

template <>
struct Kind<veldora::VdQueryFrom> : UsualKind {
  static constexpr std::string_view kName = "VdQueryFrom";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Add", &veldora::VdQueryFrom::Add>>;
};

template <>
struct Kind<veldora::VdQuerySelect> : UsualKind {
  static constexpr std::string_view kName = "VdQuerySelect";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Add", &veldora::VdQuerySelect::Add>>;
};

template <>
struct Kind<veldora::VdQueryWhere> : UsualKind {
  static constexpr std::string_view kName = "VdQueryWhere";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"Add", &veldora::VdQueryWhere::Add>>;
};

template <>
struct Kind<veldora::VdQueryDefinition> : UsualKind {
  static constexpr std::string_view kName = "VdQueryDefinition";
  using Base = AnyObject;
  using Operations =
      std::tuple<Call<"From", &veldora::VdQueryDefinition::From>, Call<"Select", &veldora::VdQueryDefinition::Select>,
                 Call<"Where", &veldora::VdQueryDefinition::Where>>;
};

template <>
struct Kind<veldora::VdQuery> : UsualKind {
  static constexpr std::string_view kName = "VdQuery";
  using Base = AnyObject;
  using Operations = std::tuple<
      Call<"Definition", &veldora::VdQuery::Definition>, Call<"RunLinkQuery", &veldora::VdQuery::RunLinkQuery>,
      Call<"RunClassQuery", &veldora::VdQuery::RunClassQuery>,
      Call<"RunWithBehavior", &veldora::VdQuery::RunWithBehavior>, Call<"RecordCount", &veldora::VdQuery::RecordCount>,
      Call<"Result", &veldora::VdQuery::Result>, Call<"ObjectStore", &veldora::VdQuery::ObjectStore>>;
};

template <>
struct Kind<veldora::VdAliasResults> : UsualKind {
  static constexpr std::string_view kName = "VdAliasResults";
  static constexpr std::string_view kTelltale = "ObjectsOf";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"ObjectsOf", &veldora::VdAliasResults::ObjectsOf>>;
};

template <>
struct Kind<veldora::VdMask> : UsualKind {
  static constexpr std::string_view kName = "VdMask";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"NextValue", &veldora::VdMask::NextValue>,
                                Call<"FirstRevision", &veldora::VdMask::FirstRevision>>;
};

template <>
struct Kind<veldora::VdMasks> : UsualKind {
  static constexpr std::string_view kName = "VdMasks";
  using Base = AnyObject;
  using Operations = std::tuple<Call<"MaskOf", &veldora::VdMasks::MaskOf>>;
};

template <>
struct Kind<veldora::VdObjectStore> : UsualKind {
  static constexpr std::string_view kName = "VdObjectStore";
  using Base = AnyObject;
  using Operations = std::tuple<
      Call<"ObjectById", &veldora::VdObjectStore::ObjectById>,
      Call<"ObjectFromRecord", &veldora::VdObjectStore::ObjectFromRecord>,
      Call<"LinkObject", &veldora::VdObjectStore::LinkObject>, Call<"NewObject", &veldora::VdObjectStore::NewObject>,
      Call<"NewObjects", &veldora::VdObjectStore::NewObjects>, Call<"NewQuery", &veldora::VdObjectStore::NewQuery>,
      Call<"NewQueryDefinition", &veldora::VdObjectStore::NewQueryDefinition>,
      Call<"ObjectsFromRecList", &veldora::VdObjectStore::ObjectsFromRecList>,
      Call<"DefaultBehavior", &veldora::VdObjectStore::DefaultBehavior>, Call<"Masks", &veldora::VdObjectStore::Masks>>;
};

}  // namespace quintara::automation
