#include <tuple>

#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

using NewConnection = std::string (*)();

class SettingsGenerations : public testing::TestWithParam<std::tuple<std::string, NewConnection>>, public VaultBase {
 protected:
  SettingsGenerations() : VaultBase(std::get<1>(GetParam())()) {
    auto plan = Plan();
    plan.settings = SettingsColumns::OfGeneration(Prefix());
    InitVault(plan, *files);
    Open();
  }
  const std::string& Prefix() const { return std::get<0>(GetParam()); }
  Ref<veldora::VdQuery> Section(const std::string& section) const {
    const auto query = Store()->NewQuery();
    query->Definition()->From()->Add(ClassId("Admin Setting"), "F");
    query->Definition()->Where()->Add("", Prefix() + "SECTION", "=", Variant(section), 0, "F");
    query->RunWithBehavior(Behavior());
    return query;
  }
};

TEST_P(SettingsGenerations, TheUserTableTellsItsGeneration) {
  const auto attributes = Session()->MetaInfo()->ClassByTable("TDMX_USER_SETTING")->Attributes();

  for (const auto* column : {"ID", "USER_ID", "SECTION", "SUBJECT", "VALUE_1", "VALUE_LONG"}) {
    EXPECT_TRUE(attributes->Find(Prefix() + column)) << column;
  }
  for (const std::string prefix : {"TDM_", "TDMX_"}) {
    EXPECT_EQ(static_cast<bool>(attributes->Find(prefix + "ID")), prefix == Prefix()) << prefix;
  }
}

TEST_P(SettingsGenerations, ThereIsARowForEachSettingReadAtStart) {
  std::map<std::string, std::string> found;
  for (const auto* section : {"COMMON", "QD"}) {
    const auto rows = Section(section)->Result();
    for (int i = 0; i < rows->RecordCount(); ++i) {
      const auto record = rows->GetRecord(i);
      found[record->ValueAsString(Prefix() + "SUBJECT")] = record->ValueAsString(Prefix() + "VALUE_1");
    }
  }

  EXPECT_EQ(found.size(), 9U);
  EXPECT_EQ(found["PART_NUMBER"], "NM_CN_PART_NUMBER");
  EXPECT_EQ(found["CLASS_PRODUCTS"], "ZORVA Product");
  EXPECT_EQ(found["TREE_VIEW_SEPARATOR"], " - ");
  EXPECT_EQ(found["TREE_VIEW"], "NM_CN_PART_NUMBER,REVISION");
  EXPECT_TRUE(Session()->MetaInfo()->Classes()->Find(found["TABLE_DOCUMENTS"]));
  EXPECT_TRUE(Session()->MetaInfo()->Classes()->Find(found["DOC_DOC_LINK"]));
}

TEST_P(SettingsGenerations, ANewSettingIsStoredWithItsNumber) {
  const auto setting = Store()->NewObject(ClassId("User Setting"));
  setting->InitData();
  const auto id = setting->ClassInfo()->Attributes()->ItemByName(Prefix() + "ID");
  setting->Record()->ValuateFromString(Prefix() + "ID", Store()->Masks()->MaskOf(id)->NextValue());
  setting->Record()->ValuateFromString(Prefix() + "USER_ID", "3");
  setting->Record()->ValuateFromString(Prefix() + "SECTION", "MINE");

  setting->AddToVault(Behavior());

  const auto record = Again(setting)->Record();
  EXPECT_EQ(record->ValueAsInteger(Prefix() + "USER_ID"), 3);
  EXPECT_EQ(record->ValueAsString(Prefix() + "SECTION"), "MINE");
  EXPECT_NE(record->ValueAsString(Prefix() + "ID"), "");
}

TEST_P(SettingsGenerations, ASettingIsUpdated) {
  const auto rows = Section("QD");
  const auto setting = Store()->ObjectFromRecord(rows->Result()->GetRecord(0), 0)->Clone();
  setting->Retrieve();
  setting->Record()->ValuateFromString(Prefix() + "VALUE_2", "two");

  setting->Update(Behavior());

  EXPECT_EQ(TextOf(setting, Prefix() + "VALUE_2"), "two");
}

TEST_P(SettingsGenerations, TheColumnsOfASettingCanBeWalkedIntoATable) {
  const auto setting = Store()->ObjectFromRecord(Section("QD")->Result()->GetRecord(0), -1);
  setting->Retrieve();
  const auto header = setting->Record()->Header();
  const auto table = vault->Application()->NewRecList();
  table->AddRow();

  for (int i = 0; i < header->Count(); ++i) {
    const auto column = header->Item(i);
    table->AddField(column->Name(), column->TypeCode(), column->Size());
    table->SetCell(table->ColumnCount() - 1, 0, setting->Record()->Value(column->Name()));
  }

  EXPECT_EQ(table->ColumnCount(), header->Count());
  EXPECT_EQ(table->ValueAt(Prefix() + "SECTION", 0), "QD");
  EXPECT_EQ(table->ValueAt("OBJECT_ID", 0), std::to_string(setting->ObjectId()));
  for (const auto* column :
       {"CLASS_ID", "STATE", "CREATION_DATE", "USER_OBJECT_ID", "USER_ID_MOD", "MODIFICATION_DATE"}) {
    EXPECT_TRUE(table->Header()->Contains(column)) << column;
  }
}

TEST_P(SettingsGenerations, AUsersSettingsAreFoundByUserSectionAndSubject) {
  for (const auto* user : {"3", "4"}) {
    vault->AddObject("User Setting",
                     {{Prefix() + "USER_ID", user}, {Prefix() + "SECTION", "MINE"}, {Prefix() + "SUBJECT", "COLOUR"}},
                     {});
  }
  const auto query = Store()->NewQuery();
  query->Definition()->From()->Add(ClassId("User Setting"), "F");
  query->Definition()->Where()->Add("", Prefix() + "SECTION", "=", Variant("MINE"), 0, "F");
  query->Definition()->Where()->Add("", Prefix() + "SUBJECT", "=", Variant("COLOUR"), 0, "F");
  query->Definition()->Where()->Add("", Prefix() + "USER_ID", "=", Variant(4), 0, "F");

  query->RunWithBehavior(Behavior());

  ASSERT_EQ(query->RecordCount(), 1);
  EXPECT_EQ(query->Result()->GetRecord(0)->ValueAsInteger("F." + Prefix() + "USER_ID"), 4);
}

std::string NameOf(const testing::TestParamInfo<SettingsGenerations::ParamType>& run) {
  const auto& [generation, maker] = run.param;
  const std::string name = maker == &OnSqlite::NewConnection ? OnSqlite::kName : OnPostgres::kName;
  return generation.substr(0, generation.size() - 1) + name;
}

INSTANTIATE_TEST_SUITE_P(AllThree, SettingsGenerations,
                         testing::Combine(testing::Values("TDM_", "TDMX_", "CN_"),
                                          testing::Values(&OnSqlite::NewConnection, &OnPostgres::NewConnection)),
                         NameOf);

}  // namespace
}  // namespace quintara::test
