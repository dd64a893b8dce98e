#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "access/host_mocks.h"
#include "base/attempt.h"
#include "services/Cls_AdminSettings.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::InSequence;
using testing::NiceMock;
using testing::Return;
using testing::StrictMock;

constexpr std::int16_t kClassId = 5;

// The class of settings; each of its attributes has a sequence.
class SettingClass : public veldora::VdClass {
 public:
  std::int16_t ClassId() override { return kClassId; }
  std::int16_t QueryClassId() override { return kClassId; }
  std::string ClassName() override { return "Admin Setting"; }
  Ref<veldora::VdAttributes> Attributes() override { return MakeRef<AnyAttributes>(); }
  Ref<veldora::VdAttributes> KeyAttributes() override { return nullptr; }

 private:
  struct AnyAttributes : veldora::VdAttributes {
    int Count() override { return 0; }
    Ref<veldora::VdAttribute> Item(const Variant&) override { return nullptr; }
    Ref<veldora::VdAttribute> ItemByName(const std::string&) override { return nullptr; }
    Ref<veldora::VdAttribute> Find(const std::string&) override { return nullptr; }
  };
};

class MetaInfo : public veldora::VdMetaInfo {
 public:
  Ref<veldora::VdClass> ClassByName(const std::string&) override { return MakeRef<SettingClass>(); }
  Ref<veldora::VdClass> ClassById(std::int16_t) override { return nullptr; }
  Ref<veldora::VdClass> ClassByTable(const std::string&) override { return MakeRef<SettingClass>(); }
  Ref<veldora::VdClasses> Classes() override { return nullptr; }
  Ref<veldora::VdOperation> OperationByName(const std::string&) override { return nullptr; }
  Ref<veldora::VdOperations> Operations(int) override { return nullptr; }
};

class Masks : public veldora::VdMasks {
 public:
  Ref<veldora::VdMask> MaskOf(const Ref<veldora::VdAttribute>&) override { return MakeRef<AnyMask>(); }

 private:
  struct AnyMask : veldora::VdMask {
    std::string NextValue() override { return "7"; }
    std::string FirstRevision() override { return "A"; }
  };
};

struct Column : veldora::VdColumn {
  explicit Column(std::string columnName) : name(std::move(columnName)) {}

  std::string Name() override { return name; }
  int Size() override { return 255; }
  int TypeCode() override { return veldora::column_type::kText; }

  std::string name;
};

struct Columns : veldora::VdColumns {
  explicit Columns(std::vector<std::string> columnNames) : names(std::move(columnNames)) {}

  int Count() override { return static_cast<int>(names.size()); }
  Ref<veldora::VdColumn> Item(int index) override { return MakeRef<Column>(names.at(static_cast<std::size_t>(index))); }
  bool Contains(const std::string& /*name*/) override { return false; }

  std::vector<std::string> names;
};

// A table, or record, of empty cells.
struct Rows : veldora::VdRecList {
  explicit Rows(std::vector<std::string> columnNames = {}) : names(std::move(columnNames)) {}

  Variant Value(const std::string&) override { return {}; }
  std::int32_t ValueAsInteger(const std::string&) override { return 0; }
  std::string ValueAsString(const std::string&) override { return {}; }
  void ValuateFromString(const std::string&, const std::string&) override {}
  Ref<veldora::VdColumns> Header() override { return MakeRef<Columns>(names); }
  int RecordCount() override { return 0; }
  Ref<veldora::VdRecord> GetRecord(int) override { return MakeRef<Rows>(); }
  void AddField(const std::string& name, int, int) override { names.push_back(name); }
  int AddRow() override { return 0; }
  void SetValue(const std::string&, int, const Variant&) override {}
  int ColumnCount() override { return static_cast<int>(names.size()); }
  std::string ColumnName(int column) override { return names.at(static_cast<std::size_t>(column)); }
  std::string ValueAt(const std::string&, int) override { return {}; }
  void SetCell(int, int, const Variant&) override {}

  std::vector<std::string> names;
};

class Client : public veldora::VdApplication, public std::enable_shared_from_this<Client> {
 public:
  Ref<veldora::VdEngine> Engine() override { return nullptr; }
  Ref<veldora::VdRecList> NewRecList() override { return MakeRef<Rows>(); }
  Ref<veldora::VdApplication> AsVdApplication() override { return Ref<veldora::VdApplication>(shared_from_this()); }
};

// What the settings hand to the vault beside names and values: flags, copies and policies.
class SettingsAndVault : public testing::Test {
 protected:
  SettingsAndVault() {
    platform.Native().Register("Veldora.VdApplication", MakeRef<Client>());
    ON_CALL(*session, ObjectStore).WillByDefault(Return(Ref<veldora::VdObjectStore>(store)));
    ON_CALL(*session, MetaInfo).WillByDefault(Return(Ref<veldora::VdMetaInfo>(MakeRef<MetaInfo>())));
    ON_CALL(*store, NewQuery).WillByDefault(Return(Ref<veldora::VdQuery>(query)));
    ON_CALL(*store, DefaultBehavior).WillByDefault(Return(Ref<veldora::VdBehavior>(defaultBehavior)));
    ON_CALL(*store, Masks).WillByDefault(Return(Ref<veldora::VdMasks>(MakeRef<Masks>())));
    ON_CALL(*query, Definition).WillByDefault(Return(Ref<veldora::VdQueryDefinition>(definition)));
    ON_CALL(*definition, From).WillByDefault(Return(Ref<veldora::VdQueryFrom>(from)));
    ON_CALL(*definition, Select).WillByDefault(Return(Ref<veldora::VdQuerySelect>(select)));
    ON_CALL(*definition, Where).WillByDefault(Return(Ref<veldora::VdQueryWhere>(where)));
    ON_CALL(*query, Result).WillByDefault(Return(Ref<veldora::VdRecList>(MakeRef<Rows>())));
    EXPECT_CALL(*defaultBehavior, Clone).WillRepeatedly(Return(Ref<veldora::VdBehavior>(behavior)));
    RecordsHave({});
    ON_CALL(*object, Clone).WillByDefault(Return(Ref<veldora::VdObject>(clone)));
  }
  void TheQueryFinds(int count) { ON_CALL(*query, RecordCount).WillByDefault(Return(count)); }
  void RecordsHave(const std::vector<std::string>& columns) {
    for (const auto& one : {object, clone}) {
      ON_CALL(*one, Record).WillByDefault(Return(Ref<veldora::VdRecord>(MakeRef<Rows>(columns))));
    }
  }
  // As an earlier reading would leave them.
  void NameTheColumns() {
    settings.Initialized = true;
    settings.IdAttribute = "THE_ID";
    settings.UserIdAttribute = "THE_USER";
    settings.SectionAttribute = "THE_SECTION";
    settings.SubjectAttribute = "THE_SUBJECT";
  }
  void TheQueryFindsOneObject() {
    TheQueryFinds(1);
    ON_CALL(*store, ObjectFromRecord).WillByDefault(Return(Ref<veldora::VdObject>(object)));
    ON_CALL(*store, NewObjects).WillByDefault(Return(Ref<veldora::VdObjects>(objects)));
    ON_CALL(*objects, Item).WillByDefault(Return(Ref<veldora::VdObject>(clone)));
  }
  static std::vector<std::string> ColumnsOf(const Ref<veldora::VdRecList>& table) {
    std::vector<std::string> names;
    for (int i = 0; i < table->ColumnCount(); ++i) names.push_back(table->ColumnName(i));
    return names;
  }
  bool Set() { return settings.SetSettingValues(session, "S", "COLOUR", true, -1, MakeRef<Rows>()); }

  TestPlatform platform;
  Ref<NiceMock<MockSession>> session = MakeRef<NiceMock<MockSession>>();
  Ref<NiceMock<MockObjectStore>> store = MakeRef<NiceMock<MockObjectStore>>();
  Ref<NiceMock<MockQuery>> query = MakeRef<NiceMock<MockQuery>>();
  Ref<NiceMock<MockDefinition>> definition = MakeRef<NiceMock<MockDefinition>>();
  Ref<NiceMock<MockFrom>> from = MakeRef<NiceMock<MockFrom>>();
  Ref<NiceMock<MockSelect>> select = MakeRef<NiceMock<MockSelect>>();
  Ref<NiceMock<MockWhere>> where = MakeRef<NiceMock<MockWhere>>();
  Ref<StrictMock<MockBehavior>> defaultBehavior = MakeRef<StrictMock<MockBehavior>>();
  Ref<NiceMock<MockBehavior>> behavior = MakeRef<NiceMock<MockBehavior>>();
  Ref<NiceMock<MockObjects>> objects = MakeRef<NiceMock<MockObjects>>();
  Ref<NiceMock<MockObject>> object = MakeRef<NiceMock<MockObject>>();
  Ref<NiceMock<MockObject>> clone = MakeRef<NiceMock<MockObject>>();
  Cls_AdminSettings settings;
};

TEST_F(SettingsAndVault, QueryForEqualNamesOfOneUser) {
  NameTheColumns();
  const InSequence inSequence;
  EXPECT_CALL(*from, Add(kClassId, "F"));
  EXPECT_CALL(*where, Add("", "THE_SECTION", "=", Variant("S"), 0, "F"));
  EXPECT_CALL(*where, Add("", "THE_SUBJECT", "=", Variant("COLOUR"), 0, "F"));
  EXPECT_CALL(*where, Add("", "THE_USER", "=", Variant(std::int32_t{1}), 0, "F"));
  EXPECT_CALL(*select, Add("OBJECT_ID", "F", false));
  EXPECT_CALL(*select, Add("CLASS_ID", "F", false));
  EXPECT_CALL(*query, RunWithBehavior);

  settings.GetSettingValues(session, "S", "COLOUR", false, 1);
}

TEST_F(SettingsAndVault, QueryWithACopyOfThePolicyThatHasTwoOptionsOff) {
  const InSequence inSequence;
  EXPECT_CALL(*behavior, SetOptionA(0));
  EXPECT_CALL(*behavior, SetOptionE(0));
  EXPECT_CALL(*query, RunWithBehavior(Ref<veldora::VdBehavior>(behavior)));

  EXPECT_FALSE(settings.GetSettingValues(session, "S", "COLOUR", true));
}

TEST_F(SettingsAndVault, ReadTheObjectOfTheRowItself) {
  TheQueryFinds(1);
  EXPECT_CALL(*store, ObjectFromRecord(_, -1)).WillOnce(Return(Ref<veldora::VdObject>(object)));
  EXPECT_CALL(*object, Clone).Times(0);
  EXPECT_CALL(*object, Retrieve);

  EXPECT_TRUE(settings.GetSettingValues(session, "S", "COLOUR", true));
}

TEST_F(SettingsAndVault, ReadCopiesOfTheObjectsOfASection) {
  TheQueryFinds(2);
  ON_CALL(*store, NewObjects).WillByDefault(Return(Ref<veldora::VdObjects>(objects)));
  ON_CALL(*objects, Item).WillByDefault(Return(Ref<veldora::VdObject>(clone)));
  EXPECT_CALL(*store, ObjectFromRecord(_, -1)).Times(2).WillRepeatedly(Return(Ref<veldora::VdObject>(object)));
  EXPECT_CALL(*object, Retrieve).Times(0);
  EXPECT_CALL(*clone, Retrieve).Times(2);
  EXPECT_CALL(*objects, Add(Ref<veldora::VdObject>(clone))).Times(2);

  EXPECT_TRUE(settings.GetSettingSection(session, "S", true));
}

// What the vault keeps for itself, and what a reader has asked for by name.
const std::vector<std::string> kColumns = {"OBJECT_ID",
                                           "CLASS_ID",
                                           "STATE",
                                           "THE_ID",
                                           "CN_ID",
                                           "CREATION_DATE",
                                           "USER_OBJECT_ID",
                                           "USER_ID_MOD",
                                           "MODIFICATION_DATE",
                                           "TDM_SUPPORTED_CLB",
                                           "TDM_DESCRIPTION",
                                           "THE_SECTION",
                                           "THE_SUBJECT",
                                           "THE_USER",
                                           "THE_VALUE_1",
                                           "CN_DESCRIPTION"};

TEST_F(SettingsAndVault, LeaveOutWhatIsNoValueOfASetting) {
  NameTheColumns();
  TheQueryFindsOneObject();
  RecordsHave(kColumns);

  const auto values = settings.GetSettingValues(session, "S", "COLOUR", true);

  EXPECT_THAT(ColumnsOf(values), ElementsAre("THE_USER", "THE_VALUE_1", "CN_DESCRIPTION"));
}

TEST_F(SettingsAndVault, LeaveTheSubjectsInASection) {
  NameTheColumns();
  TheQueryFindsOneObject();
  RecordsHave(kColumns);

  const auto values = settings.GetSettingSection(session, "S", true);

  EXPECT_THAT(ColumnsOf(values), ElementsAre("THE_SUBJECT", "THE_USER", "THE_VALUE_1", "CN_DESCRIPTION"));
}

TEST_F(SettingsAndVault, TakeTheColumnsOfASectionFromItsLastObject) {
  NameTheColumns();
  TheQueryFindsOneObject();
  TheQueryFinds(2);
  RecordsHave({"OF_THE_LAST"});
  const auto first = MakeRef<NiceMock<MockObject>>();
  ON_CALL(*first, Record).WillByDefault(Return(Ref<veldora::VdRecord>(MakeRef<Rows>(std::vector<std::string>{"A"}))));
  ON_CALL(*objects, Item(0)).WillByDefault(Return(Ref<veldora::VdObject>(first)));

  const auto values = settings.GetSettingSection(session, "S", true);

  EXPECT_THAT(ColumnsOf(values), ElementsAre("OF_THE_LAST"));
}

TEST_F(SettingsAndVault, OverflowTheCounterOfTheRowsOfASection) {
  TheQueryFinds(32769);
  ON_CALL(*store, NewObjects).WillByDefault(Return(Ref<veldora::VdObjects>(objects)));

  ErrorState state;
  EXPECT_FALSE(Attempt(state, [&] { settings.GetSettingSection(session, "S", true); }));

  EXPECT_EQ(state.number, failure::kOverflow);
}

TEST_F(SettingsAndVault, UpdateACopyUnderThePolicyOfTheQuery) {
  TheQueryFinds(1);
  EXPECT_CALL(*store, ObjectFromRecord(_, 0)).WillOnce(Return(Ref<veldora::VdObject>(object)));
  EXPECT_CALL(*object, Update).Times(0);
  const InSequence inSequence;
  EXPECT_CALL(*clone, Retrieve);
  EXPECT_CALL(*clone, Update(Ref<veldora::VdBehavior>(behavior)));

  EXPECT_TRUE(Set());
}

TEST_F(SettingsAndVault, AddAnObjectWithDefaultsUnderThePolicyOfTheQuery) {
  TheQueryFinds(0);
  const InSequence inSequence;
  EXPECT_CALL(*store, NewObject(kClassId)).WillOnce(Return(Ref<veldora::VdObject>(object)));
  EXPECT_CALL(*object, InitData);
  EXPECT_CALL(*object, AddToVault(Ref<veldora::VdBehavior>(behavior)));

  EXPECT_TRUE(Set());
}

TEST_F(SettingsAndVault, WriteNothingWhereTheSettingIsThereTwice) {
  TheQueryFinds(2);
  EXPECT_CALL(*store, NewObject).Times(0);
  EXPECT_CALL(*store, ObjectFromRecord).Times(0);

  EXPECT_FALSE(Set());
}

}  // namespace
}  // namespace quintara::test
