#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

class SettingsGenerations : public testing::TestWithParam<std::string>, public VaultBase {
 protected:
  SettingsGenerations() : VaultBase({}) {
    auto plan = Plan();
    plan.settings = SettingsColumns::OfGeneration(GetParam());
    InitVault(plan, *files);
    Open();
  }
  Ref<veldora::VdQuery> Section(const std::string& section) const {
    const auto query = Store()->NewQuery();
    query->Definition()->From()->Add(ClassId("Admin Setting"), "F");
    query->Definition()->Where()->Add("", GetParam() + "SECTION", "=", Variant(section), 0, "F");
    query->RunWithBehavior(Behavior());
    return query;
  }
};

TEST_P(SettingsGenerations, TheUserTableTellsItsGeneration) {
  const auto attributes = Session()->MetaInfo()->ClassByTable("TDMX_USER_SETTING")->Attributes();

  for (const auto* column : {"ID", "USER_ID", "SECTION", "SUBJECT", "VALUE_1", "VALUE_LONG"}) {
    EXPECT_TRUE(attributes->Find(GetParam() + column)) << column;
  }
  for (const std::string prefix : {"TDM_", "TDMX_"}) {
    EXPECT_EQ(static_cast<bool>(attributes->Find(prefix + "ID")), prefix == GetParam()) << prefix;
  }
}

TEST_P(SettingsGenerations, ThereIsARowForEachSettingReadAtStart) {
  std::map<std::string, std::string> found;
  for (const auto* section : {"COMMON", "QD"}) {
    const auto rows = Section(section)->Result();
    for (int i = 0; i < rows->RecordCount(); ++i) {
      const auto record = rows->GetRecord(i);
      found[record->ValueAsString(GetParam() + "SUBJECT")] = record->ValueAsString(GetParam() + "VALUE_1");
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
  const auto id = setting->ClassInfo()->Attributes()->ItemByName(GetParam() + "ID");
  setting->Record()->ValuateFromString(GetParam() + "ID", Store()->Masks()->MaskOf(id)->NextValue());
  setting->Record()->ValuateFromString(GetParam() + "USER_ID", "3");
  setting->Record()->ValuateFromString(GetParam() + "SECTION", "MINE");

  setting->AddToVault(Behavior());

  const auto record = Again(setting)->Record();
  EXPECT_EQ(record->ValueAsInteger(GetParam() + "USER_ID"), 3);
  EXPECT_EQ(record->ValueAsString(GetParam() + "SECTION"), "MINE");
  EXPECT_NE(record->ValueAsString(GetParam() + "ID"), "");
}

TEST_P(SettingsGenerations, ASettingIsUpdated) {
  const auto rows = Section("QD");
  const auto setting = Store()->ObjectFromRecord(rows->Result()->GetRecord(0), 0)->Clone();
  setting->Retrieve();
  setting->Record()->ValuateFromString(GetParam() + "VALUE_2", "two");

  setting->Update(Behavior());

  EXPECT_EQ(TextOf(setting, GetParam() + "VALUE_2"), "two");
}

INSTANTIATE_TEST_SUITE_P(AllThree, SettingsGenerations, testing::Values("TDM_", "TDMX_", "CN_"),
                         [](const auto& generation) {
                           return generation.param.substr(0, generation.param.size() - 1);
                         });

}  // namespace
}  // namespace quintara::test
