#include "services/settings_store.h"
#include "services/substitutes.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EveryGeneration : public SettingsStore, public testing::WithParamInterface<std::string> {
 protected:
  EveryGeneration() : SettingsStore(SettingsColumns::OfGeneration(GetParam())) {}
  static std::string Column(const std::string& name) { return GetParam() + name; }
};

TEST_P(EveryGeneration, IsToldByItsColumns) {
  EXPECT_TRUE(settings.InitSettings(Session()));

  EXPECT_TRUE(settings.Initialized);
  EXPECT_THAT(FieldsOfStore(), ElementsAre(Column("ID"), Column("USER_ID"), Column("SECTION"), Column("SUBJECT"),
                                           Column("VALUE_"), Column("VALUE_LONG")));
}

TEST_P(EveryGeneration, KeepsASettingOfTheSite) {
  settings.InitSettings(Session());
  ASSERT_TRUE(Set("COLOUR", kAdmin, kAllUsers, {{Column("VALUE_1"), "red"}, {Column("VALUE_2"), "green"}}));

  const auto values = Get("COLOUR", kAdmin);

  ASSERT_EQ(values->RecordCount(), 1);
  EXPECT_EQ(values->ValueAt(Column("VALUE_1"), 0), "red");
  EXPECT_EQ(values->ValueAt(Column("VALUE_2"), 0), "green");
  EXPECT_FALSE(Get("COLOUR", kUser));
}

TEST_P(EveryGeneration, KeepsASettingOfAUser) {
  settings.InitSettings(Session());
  ASSERT_TRUE(Set("COLOUR", kUser, 3, {{Column("VALUE_1"), "red"}}));
  ASSERT_TRUE(Set("COLOUR", kUser, 4, {{Column("VALUE_1"), "blue"}}));

  EXPECT_EQ(Get("COLOUR", kUser, 3)->ValueAt(Column("VALUE_1"), 0), "red");
  EXPECT_EQ(Get("COLOUR", kUser, 4)->ValueAt(Column("VALUE_1"), 0), "blue");
  EXPECT_EQ(Get("COLOUR", kUser, 4)->ValueAt(Column("USER_ID"), 0), "4");
  EXPECT_FALSE(Get("COLOUR", kUser, 5));
  EXPECT_FALSE(Get("COLOUR", kAdmin));
}

TEST_P(EveryGeneration, ChangesASettingThatIsThere) {
  settings.InitSettings(Session());
  Set("COLOUR", kAdmin, kAllUsers, {{Column("VALUE_1"), "red"}, {Column("VALUE_2"), "green"}});

  EXPECT_TRUE(Set("COLOUR", kAdmin, kAllUsers, {{Column("VALUE_1"), "blue"}}));

  const auto values = Get("COLOUR", kAdmin);
  EXPECT_EQ(values->ValueAt(Column("VALUE_1"), 0), "blue");
  EXPECT_EQ(values->ValueAt(Column("VALUE_2"), 0), "green");
  EXPECT_EQ(Section(kAdmin)->RecordCount(), 1);
}

TEST_P(EveryGeneration, GivesTheValueColumnsOfASetting) {
  settings.InitSettings(Session());
  Set("COLOUR", kAdmin, kAllUsers, {});

  std::vector<std::string> expected;
  for (int n = 1; n <= 10; ++n) expected.push_back(Column("VALUE_" + std::to_string(n)));
  expected.push_back(Column("VALUE_LONG"));
  EXPECT_EQ(ColumnsOf(Get("COLOUR", kAdmin)), expected);
  expected.insert(expected.begin(), Column("SUBJECT"));
  EXPECT_EQ(ColumnsOf(Section(kAdmin)), expected);
}

TEST_P(EveryGeneration, NumbersItsNewSettings) {
  settings.InitSettings(Session());
  Set("A", kAdmin, kAllUsers, {});
  Set("B", kAdmin, kAllUsers, {});

  const auto query = Store()->NewQuery();
  query->Definition()->From()->Add(ClassId("Admin Setting"), "F");
  query->Definition()->Where()->Add("", Column("SECTION"), "=", "S", 0, "F");
  query->RunWithBehavior(Behavior());
  const auto id = [&](int row) { return query->Result()->GetRecord(row)->ValueAsString(Column("ID")); };
  EXPECT_NE(id(0), "");
  EXPECT_LT(id(0), id(1));
}

TEST_P(EveryGeneration, IsLookedAtOnce) {
  Get("COLOUR", kAdmin);

  const auto calls = CallsIn([&] {
    Get("COLOUR", kAdmin);
    Section(kAdmin);
    settings.InitSettings(Session());
  });

  EXPECT_THAT(CallsOf(calls, "VdMetaInfo.ClassByTable"), IsEmpty());
  EXPECT_THAT(CallsOf(calls, "VdAttributes.Find"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Of, EveryGeneration, testing::Values("TDM_", "TDMX_", "CN_"), [](const auto& generation) {
  return generation.param.substr(0, generation.param.size() - 1);
});

class OldIdWithNewerUser : public SettingsStore {
 protected:
  OldIdWithNewerUser()
      : SettingsStore({"TDM_ID", "TDMX_USER_ID", "TDMX_SECTION", "CN_SUBJECT", "CN_V", "TDM_VALUE_LONG"}) {}
};

TEST_F(OldIdWithNewerUser, TakesTheUserColumnOfTheOldGeneration) {
  settings.InitSettings(Session());

  EXPECT_EQ(settings.UserIdAttribute, "TDM_USER_ID");
}

TEST_F(OldIdWithNewerUser, TakesEachOtherColumnForItself) {
  settings.InitSettings(Session());

  EXPECT_THAT(FieldsOfStore(),
              ElementsAre("TDM_ID", "TDM_USER_ID", "TDMX_SECTION", "CN_SUBJECT", "CN_VALUE_", "TDM_VALUE_LONG"));
}

TEST_F(SettingsStore, TestsTheColumnsInTheirOrder) {
  const auto calls = CallsIn([&] { settings.InitSettings(Session()); });

  EXPECT_THAT(CallsOf(calls, "VdMetaInfo.ClassByTable"),
              ElementsAre("VdMetaInfo.ClassByTable(TDMX_USER_SETTING)", "VdMetaInfo.ClassByTable(TDMX_ADMIN_SETTING)"));
  std::vector<std::string> tested;
  for (const auto* name : {"TDM_ID", "TDMX_ID", "TDM_ID", "TDMX_USER_ID", "TDM_SECTION", "TDMX_SECTION", "TDM_SUBJECT",
                           "TDMX_SUBJECT", "TDM_VALUE_1", "TDMX_VALUE_1", "TDM_VALUE_LONG", "TDMX_VALUE_LONG"}) {
    tested.push_back("VdAttributes.Find(" + std::string(name) + ")");
  }
  EXPECT_EQ(CallsOf(calls, "VdAttributes.Find"), tested);
}

// A session whose vault lacks one table.
class WithoutTable : public HandingOn {
 public:
  WithoutTable(const Ref<veldora::VdSession>& session, std::string table)
      : HandingOn(session), meta_(MakeRef<Meta>(session->MetaInfo(), std::move(table))) {}

  Ref<veldora::VdMetaInfo> MetaInfo() override { return meta_; }

 private:
  class Meta : public veldora::VdMetaInfo {
   public:
    Meta(Ref<veldora::VdMetaInfo> meta, std::string table) : meta_(std::move(meta)), table_(std::move(table)) {}

    Ref<veldora::VdClass> ClassByName(const std::string& name) override { return meta_->ClassByName(name); }
    Ref<veldora::VdClass> ClassById(std::int16_t classId) override { return meta_->ClassById(classId); }
    Ref<veldora::VdClass> ClassByTable(const std::string& table) override {
      return table == table_ ? Ref<veldora::VdClass>() : meta_->ClassByTable(table);
    }
    Ref<veldora::VdClasses> Classes() override { return meta_->Classes(); }
    Ref<veldora::VdOperation> OperationByName(const std::string& name) override { return meta_->OperationByName(name); }
    Ref<veldora::VdOperations> Operations(int kind) override { return meta_->Operations(kind); }

   private:
    Ref<veldora::VdMetaInfo> meta_;
    std::string table_;
  };

  Ref<veldora::VdMetaInfo> meta_;
};

TEST_F(SettingsStore, WithoutTheTableOfUsersKnowsNothingAndSaysNothing) {
  EXPECT_FALSE(settings.InitSettings(MakeRef<WithoutTable>(Session(), "TDMX_USER_SETTING")));

  EXPECT_FALSE(settings.Initialized);
  EXPECT_EQ(settings.SectionAttribute, "");
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(SettingsStore, WithoutTheTableOfTheSiteKnowsTheColumnsAndSaysNothing) {
  EXPECT_FALSE(settings.InitSettings(MakeRef<WithoutTable>(Session(), "TDMX_ADMIN_SETTING")));

  EXPECT_FALSE(settings.Initialized);
  EXPECT_EQ(settings.SectionAttribute, "TDMX_SECTION");
  EXPECT_EQ(settings.ValueLongAttribute, "TDMX_VALUE_LONG");
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(SettingsStore, ReadsOnWithTheColumnsThatItKnows) {
  const auto session = MakeRef<WithoutTable>(Session(), "TDMX_ADMIN_SETTING");

  EXPECT_TRUE(settings.GetSettingSection(session, "COMMON", kAdmin));
}

TEST_F(SettingsStore, ReportsAFailureOfItsLooking) {
  gate->FailOperation("VdClass.Attributes");

  EXPECT_FALSE(settings.InitSettings(Session()));

  EXPECT_THAT(platform.Boxes(), ElementsAre(Told("Failure in Cls_AdminSettings.InitSettings: Injected failure")));
  EXPECT_FALSE(settings.Initialized);
}

TEST_F(SettingsStore, ReportsThatItWasGivenNoSession) {
  EXPECT_FALSE(settings.InitSettings(nullptr));

  EXPECT_THAT(platform.Boxes(), ElementsAre(Told("Failure in Cls_AdminSettings.InitSettings: " +
                                                 Failure(failure::kObjectNotSet).Description())));
}

TEST_F(SettingsStore, IsLookedAtAgainAfterAFailure) {
  gate->FailOperation("VdClass.Attributes");
  settings.InitSettings(Session());
  gate->Reset();

  EXPECT_TRUE(settings.InitSettings(Session()));
}

}  // namespace
}  // namespace quintara::test
