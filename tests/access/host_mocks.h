#pragma once

#include <gmock/gmock.h>

#include <string>

#include "access/contracts/hix_engine.h"
#include "access/contracts/veldora.h"
#include "access/contracts/zorva.h"

/// Host objects whose answers a test sets, for what no host in good order answers. Without an answer
/// they give nothing, 0 or the empty text.
namespace quintara::test {

class MockProduct : public zorva::Product {
 public:
  MOCK_METHOD(std::string, Name, (), (override));
  MOCK_METHOD(Ref<AnyObject>, Parent, (), (override));
  MOCK_METHOD(Ref<zorva::Products>, Products, (), (override));
  MOCK_METHOD(std::string, PartNumber, (), (override));
  MOCK_METHOD(void, SetPartNumber, (const std::string&), (override));
  MOCK_METHOD(Ref<zorva::Position>, Position, (), (override));
  MOCK_METHOD(Ref<zorva::Product>, Reference, (), (override));
  MOCK_METHOD(Ref<zorva::Parameters>, Parameters, (), (override));
  MOCK_METHOD(Ref<zorva::Parameters>, UserProperties, (), (override));
  MOCK_METHOD(void, ApplyUpdate, (), (override));
  MOCK_METHOD(void, SetWorkMode, (int), (override));
};

class MockParameters : public zorva::Parameters {
 public:
  MOCK_METHOD(int, Count, (), (override));
  MOCK_METHOD(Ref<zorva::Parameter>, Item, (const std::string&), (override));
  MOCK_METHOD(Ref<zorva::Parameter>, CreateString, (const std::string&, const std::string&), (override));
};

class MockEngine : public veldora::HIXEngine {
 public:
  MOCK_METHOD(bool, IsConnected, (), (override));
  MOCK_METHOD(void, Connect, (const std::string&, const std::string&), (override));
  MOCK_METHOD(void, Disconnect, (), (override));
  MOCK_METHOD(Ref<veldora::HIXDocument>, DocumentInfo, (const std::string&), (override));
  MOCK_METHOD(std::int16_t, DocumentClassId, (const Ref<veldora::HIXDocument>&), (override));
  MOCK_METHOD(std::int32_t, DocumentObjectId, (const Ref<veldora::HIXDocument>&), (override));
  MOCK_METHOD(Ref<veldora::HIXDocument>, DocumentHandle, (std::int16_t, std::int32_t), (override));
  MOCK_METHOD(Ref<veldora::HIXDocument>, DocumentHandleOf, (const Ref<zorva::Document>&), (override));
  MOCK_METHOD(void, CheckOutDocument, (const Ref<veldora::HIXDocument>&), (override));
  MOCK_METHOD(void, CommitStep1, (const Ref<veldora::HIXDocument>&), (override));
  MOCK_METHOD(void, CommitStep2, (const Ref<veldora::HIXDocument>&), (override));
};

class MockHandle : public veldora::HIXDocument {
 public:
  MOCK_METHOD(Ref<zorva::Document>, Document, (), (override));
};

class MockSession : public veldora::VdSession {
 public:
  MOCK_METHOD(void, OpenDatabaseConnection, (const std::string&, const std::string&, bool), (override));
  MOCK_METHOD(Ref<veldora::VdUserInfo>, UserMetaInfo, (), (override));
  MOCK_METHOD(void, UserLogin, (const std::string&, const std::string&), (override));
  MOCK_METHOD(void, UserLogoff, (), (override));
  MOCK_METHOD(Ref<veldora::VdDatabase>, Database, (), (override));
  MOCK_METHOD(Ref<veldora::VdMetaInfo>, MetaInfo, (), (override));
  MOCK_METHOD(Ref<veldora::VdConfig>, Config, (), (override));
  MOCK_METHOD(Ref<veldora::VdObjectStore>, ObjectStore, (), (override));
  MOCK_METHOD(std::string, Language, (), (override));
  MOCK_METHOD(Ref<AnyObject>, GetService, (const std::string&), (override));
  MOCK_METHOD(Ref<veldora::VdAuthorizations>, Authorizations, (), (override));
  MOCK_METHOD(std::string, ApplicationName, (), (override));
  MOCK_METHOD(std::string, ClientName, (), (override));
};

class MockObjectStore : public veldora::VdObjectStore {
 public:
  MOCK_METHOD(Ref<veldora::VdObject>, ObjectById, (std::int16_t, std::int32_t), (override));
  MOCK_METHOD(Ref<veldora::VdObject>, ObjectFromRecord, (const Ref<veldora::VdRecord>&, int), (override));
  MOCK_METHOD(Ref<veldora::VdObject>, LinkObject,
              (std::int16_t, std::int16_t, std::int32_t, std::int16_t, std::int32_t), (override));
  MOCK_METHOD(Ref<veldora::VdObject>, NewObject, (std::int16_t), (override));
  MOCK_METHOD(Ref<veldora::VdObjects>, NewObjects, (), (override));
  MOCK_METHOD(Ref<veldora::VdQuery>, NewQuery, (), (override));
  MOCK_METHOD(Ref<veldora::VdQueryDefinition>, NewQueryDefinition, (), (override));
  MOCK_METHOD(Ref<veldora::VdAliasResults>, ObjectsFromRecList, (const Ref<veldora::VdRecList>&, int), (override));
  MOCK_METHOD(Ref<veldora::VdBehavior>, DefaultBehavior, (), (override));
  MOCK_METHOD(Ref<veldora::VdMasks>, Masks, (), (override));
};

class MockObject : public veldora::VdObject {
 public:
  MOCK_METHOD(std::int32_t, ObjectId, (), (override));
  MOCK_METHOD(std::int16_t, ClassId, (), (override));
  MOCK_METHOD(Ref<veldora::VdClass>, ClassInfo, (), (override));
  MOCK_METHOD(Ref<veldora::VdRecord>, Record, (), (override));
  MOCK_METHOD(void, InitData, (), (override));
  MOCK_METHOD(void, Retrieve, (), (override));
  MOCK_METHOD(void, Refresh, (), (override));
  MOCK_METHOD(void, RetrieveAttributes, (const std::string&), (override));
  MOCK_METHOD(Ref<veldora::VdObject>, Clone, (), (override));
  MOCK_METHOD(Ref<veldora::VdObject>, GetVersion, (int), (override));
  MOCK_METHOD(Ref<veldora::VdObject>, LinkedVersion, (int), (override));
  MOCK_METHOD(Ref<veldora::VdObjects>, Parents,
              (const Ref<veldora::VdQueryDefinition>&, const Ref<veldora::VdBehavior>&), (override));
  MOCK_METHOD(Ref<veldora::VdObjects>, Children, (const Ref<veldora::VdQueryDefinition>&), (override));
  MOCK_METHOD(Ref<veldora::VdObjects>, ChildrenWithBehavior,
              (const Ref<veldora::VdQueryDefinition>&, const Ref<veldora::VdBehavior>&), (override));
  MOCK_METHOD(void, RemoveLink, (const Ref<veldora::VdBehavior>&), (override));
  MOCK_METHOD(void, CopyFileTo, (const std::string&, const std::string&), (override));
  MOCK_METHOD(void, AddToVault, (const Ref<veldora::VdBehavior>&), (override));
  MOCK_METHOD(void, Update, (const Ref<veldora::VdBehavior>&), (override));
  MOCK_METHOD(void, AddLink,
              (std::int16_t, const Ref<veldora::VdObject>&, const Ref<veldora::VdRecord>&,
               const Ref<veldora::VdBehavior>&),
              (override));
};

class MockObjects : public veldora::VdObjects {
 public:
  MOCK_METHOD(int, Count, (), (override));
  MOCK_METHOD(Ref<veldora::VdObject>, Item, (int), (override));
  MOCK_METHOD(Ref<veldora::VdRecList>, Records, (), (override));
  MOCK_METHOD(void, Add, (const Ref<veldora::VdObject>&), (override));
  MOCK_METHOD(void, Remove, (int), (override));
  MOCK_METHOD(void, SetAttributeNames, (const std::string&), (override));
  MOCK_METHOD(void, RetrieveAll, (), (override));
};

class MockBehavior : public veldora::VdBehavior {
 public:
  MOCK_METHOD(Ref<veldora::VdBehavior>, Clone, (), (override));
  MOCK_METHOD(int, OptionA, (), (override));
  MOCK_METHOD(int, OptionC, (), (override));
  MOCK_METHOD(void, SetOptionA, (int), (override));
  MOCK_METHOD(void, SetOptionB, (int), (override));
  MOCK_METHOD(void, SetOptionC, (int), (override));
  MOCK_METHOD(void, SetOptionD, (bool), (override));
  MOCK_METHOD(void, SetOptionE, (int), (override));
};

class MockQuery : public veldora::VdQuery {
 public:
  MOCK_METHOD(Ref<veldora::VdQueryDefinition>, Definition, (), (override));
  MOCK_METHOD(void, RunLinkQuery, (), (override));
  MOCK_METHOD(void, RunClassQuery, (), (override));
  MOCK_METHOD(void, RunWithBehavior, (const Ref<veldora::VdBehavior>&), (override));
  MOCK_METHOD(int, RecordCount, (), (override));
  MOCK_METHOD(Ref<veldora::VdRecList>, Result, (), (override));
  MOCK_METHOD(Ref<veldora::VdObjectStore>, ObjectStore, (), (override));
};

class MockDefinition : public veldora::VdQueryDefinition {
 public:
  MOCK_METHOD(Ref<veldora::VdQueryFrom>, From, (), (override));
  MOCK_METHOD(Ref<veldora::VdQuerySelect>, Select, (), (override));
  MOCK_METHOD(Ref<veldora::VdQueryWhere>, Where, (), (override));
};

class MockFrom : public veldora::VdQueryFrom {
 public:
  MOCK_METHOD(void, Add, (std::int16_t, const std::string&), (override));
};

class MockSelect : public veldora::VdQuerySelect {
 public:
  MOCK_METHOD(void, Add, (const std::string&, const std::string&, bool), (override));
};

class MockWhere : public veldora::VdQueryWhere {
 public:
  MOCK_METHOD(void, Add,
              (const std::string&, const std::string&, const std::string&, const Variant&, int, const std::string&),
              (override));
};

}  // namespace quintara::test
