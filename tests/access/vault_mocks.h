#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "access/host_mocks.h"

/// More host objects whose answers a test sets; see host_mocks.h.
namespace quintara::test {

class MockAttributes : public veldora::VdAttributes {
 public:
  MOCK_METHOD(int, Count, (), (override));
  MOCK_METHOD(Ref<veldora::VdAttribute>, Item, (const Variant&), (override));
  MOCK_METHOD(Ref<veldora::VdAttribute>, ItemByName, (const std::string&), (override));
  MOCK_METHOD(Ref<veldora::VdAttribute>, Find, (const std::string&), (override));
};

class MockClass : public veldora::VdClass {
 public:
  MOCK_METHOD(std::int16_t, ClassId, (), (override));
  MOCK_METHOD(std::int16_t, QueryClassId, (), (override));
  MOCK_METHOD(std::string, ClassName, (), (override));
  MOCK_METHOD(Ref<veldora::VdAttributes>, Attributes, (), (override));
  MOCK_METHOD(Ref<veldora::VdAttributes>, KeyAttributes, (), (override));
};

class MockMetaInfo : public veldora::VdMetaInfo {
 public:
  MOCK_METHOD(Ref<veldora::VdClass>, ClassByName, (const std::string&), (override));
  MOCK_METHOD(Ref<veldora::VdClass>, ClassById, (std::int16_t), (override));
  MOCK_METHOD(Ref<veldora::VdClass>, ClassByTable, (const std::string&), (override));
  MOCK_METHOD(Ref<veldora::VdClasses>, Classes, (), (override));
  MOCK_METHOD(Ref<veldora::VdOperation>, OperationByName, (const std::string&), (override));
  MOCK_METHOD(Ref<veldora::VdOperations>, Operations, (int), (override));
};

class MockRecList : public veldora::VdRecList {
 public:
  MOCK_METHOD(Variant, Value, (const std::string&), (override));
  MOCK_METHOD(std::int32_t, ValueAsInteger, (const std::string&), (override));
  MOCK_METHOD(std::string, ValueAsString, (const std::string&), (override));
  MOCK_METHOD(void, ValuateFromString, (const std::string&, const std::string&), (override));
  MOCK_METHOD(Ref<veldora::VdColumns>, Header, (), (override));
  MOCK_METHOD(int, RecordCount, (), (override));
  MOCK_METHOD(Ref<veldora::VdRecord>, GetRecord, (int), (override));
  MOCK_METHOD(void, AddField, (const std::string&, int, int), (override));
  MOCK_METHOD(int, AddRow, (), (override));
  MOCK_METHOD(void, SetValue, (const std::string&, int, const Variant&), (override));
  MOCK_METHOD(int, ColumnCount, (), (override));
  MOCK_METHOD(std::string, ColumnName, (int), (override));
  MOCK_METHOD(std::string, ValueAt, (const std::string&, int), (override));
  MOCK_METHOD(void, SetCell, (int, int, const Variant&), (override));
};

/// A kind of host object that can be asked for as itself.
#define QUINTARA_AS_ITSELF(Kind)                         \
  Ref<veldora::Kind> As##Kind() override {               \
    return Ref<veldora::Kind>(this->shared_from_this()); \
  }

class MockSessionUtil : public veldora::VdSessionUtil, public std::enable_shared_from_this<MockSessionUtil> {
 public:
  QUINTARA_AS_ITSELF(VdSessionUtil)

  MOCK_METHOD(bool, CanPerform, (const Ref<veldora::VdObject>&, const Ref<veldora::VdOperation>&, int), (override));
  MOCK_METHOD(Ref<veldora::VdObject>, CheckOut, (const Ref<veldora::VdObject>&, const Ref<veldora::VdRecord>&, bool),
              (override));
  MOCK_METHOD(int, CheckIn, (const Ref<veldora::VdObject>&, const Ref<veldora::VdRecord>&, bool), (override));
  MOCK_METHOD(int, Release, (const Ref<veldora::VdObject>&, const Ref<veldora::VdRecord>&, bool), (override));
  MOCK_METHOD(Ref<veldora::VdObject>, NewRelease, (const Ref<veldora::VdObject>&, const Ref<veldora::VdRecord>&, bool),
              (override));
  MOCK_METHOD(int, Obsolete, (const Ref<veldora::VdObject>&, const Ref<veldora::VdRecord>&, bool), (override));
  MOCK_METHOD(void, RunOperation,
              (const Ref<veldora::VdObject>&, const Ref<veldora::VdOperation>&, bool, const Ref<veldora::VdRecList>&,
               const Ref<veldora::VdRecList>&),
              (override));
  MOCK_METHOD(int, CopyVaultFile,
              (std::int32_t, const std::string&, const std::string&, const std::string&, const std::string&),
              (override));
  MOCK_METHOD(void, CopyDocumentFile, (const Ref<veldora::VdObject>&, const std::string&, const std::string&, int),
              (override));
};

class MockConfig : public veldora::VdConfig {
 public:
  MOCK_METHOD(std::string, BaseDirectory, (), (override));
  MOCK_METHOD(std::string, Value, (const std::string&), (override));
  MOCK_METHOD(void, SetValue, (const std::string&, const std::string&), (override));
};

class MockClient : public veldora::VdApplication, public std::enable_shared_from_this<MockClient> {
 public:
  QUINTARA_AS_ITSELF(VdApplication)

  MOCK_METHOD(Ref<veldora::VdEngine>, Engine, (), (override));
  MOCK_METHOD(Ref<veldora::VdRecList>, NewRecList, (), (override));
};

#undef QUINTARA_AS_ITSELF

class MockZorva : public zorva::Application {
 public:
  MOCK_METHOD(Ref<zorva::Documents>, Documents, (), (override));
  MOCK_METHOD(Ref<AnyObject>, ActiveDocument, (), (override));
  MOCK_METHOD(Ref<zorva::ScriptService>, ScriptService, (), (override));
  MOCK_METHOD(bool, DisplayFileAlerts, (), (override));
  MOCK_METHOD(void, SetDisplayFileAlerts, (bool), (override));
  MOCK_METHOD(void, SetRefreshDisplay, (bool), (override));
  MOCK_METHOD(Ref<zorva::Window>, ActiveWindow, (), (override));
};

class MockScriptService : public zorva::ScriptService {
 public:
  MOCK_METHOD(void, ExecuteScript,
              (const std::string&, int, const std::string&, const std::string&, const std::vector<std::string>&),
              (override));
};

}  // namespace quintara::test
