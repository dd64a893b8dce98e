#include "services/settings_store.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(SettingsStore, LetsTheFailureOutThatFollowsAReportedOne) {
  gate->FailOperation("VdClass.Attributes");

  EXPECT_NE(FailureOf([&] { Get("COLOUR", kAdmin); }).Number(), 0);

  EXPECT_EQ(platform.Boxes().size(), 1U);
}

TEST_F(SettingsStore, CannotWriteBeforeItHasRead) {
  EXPECT_NE(FailureOf([&] { Set("COLOUR", kAdmin, kAllUsers, {{"TDMX_VALUE_1", "red"}}); }).Number(), 0);

  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(SettingsStore, CanWriteAfterARead) {
  Get("COLOUR", kAdmin);

  EXPECT_TRUE(Set("COLOUR", kAdmin, kAllUsers, {{"TDMX_VALUE_1", "red"}}));
}

TEST_F(SettingsStore, GivesNothingForASettingThatIsNotThere) {
  EXPECT_FALSE(Get("COLOUR", kAdmin));
  EXPECT_FALSE(Get("COLOUR", kUser));
  EXPECT_FALSE(Section(kAdmin));
  EXPECT_FALSE(Section(kUser));
}

TEST_F(SettingsStore, GivesNothingForASettingThatIsThereTwice) {
  settings.InitSettings(Session());
  AddRow("Admin Setting", "COLOUR");
  EXPECT_TRUE(Get("COLOUR", kAdmin));

  AddRow("Admin Setting", "COLOUR");

  EXPECT_FALSE(Get("COLOUR", kAdmin));
  EXPECT_EQ(Section(kAdmin)->RecordCount(), 2);
}

TEST_F(SettingsStore, RefusesToWriteASettingThatIsThereTwice) {
  settings.InitSettings(Session());
  AddRow("Admin Setting", "COLOUR");
  AddRow("Admin Setting", "COLOUR");
  const auto before = Dump();

  EXPECT_FALSE(Set("COLOUR", kAdmin, kAllUsers, {{"TDMX_VALUE_1", "red"}}));

  EXPECT_THAT(platform.Boxes(), ElementsAre(Told("Only one")));
  EXPECT_EQ(Dump(), before);
}

TEST_F(SettingsStore, ReadsOfTheSiteWithoutRegardToAUser) {
  settings.InitSettings(Session());
  Set("COLOUR", kAdmin, kAllUsers, {{"TDMX_VALUE_1", "red"}});

  EXPECT_TRUE(Get("COLOUR", kAdmin, 3));
  EXPECT_TRUE(Section(kAdmin, 3));
}

TEST_F(SettingsStore, ReadsOfAllUsersWhenNoneIsNamed) {
  settings.InitSettings(Session());
  Set("COLOUR", kUser, 3, {{"TDMX_VALUE_1", "red"}});
  EXPECT_TRUE(Get("COLOUR", kUser, 0));
  EXPECT_TRUE(settings.GetSettingValues(Session(), "S", "COLOUR", kUser));

  Set("COLOUR", kUser, 4, {{"TDMX_VALUE_1", "blue"}});

  EXPECT_FALSE(Get("COLOUR", kUser, 0));
  EXPECT_EQ(settings.GetSettingSection(Session(), "S", kUser)->RecordCount(), 2);
  EXPECT_EQ(Section(kUser, 4)->RecordCount(), 1);
}

TEST_F(SettingsStore, WritesTheOneSettingThatItFindsForAllUsers) {
  settings.InitSettings(Session());
  Set("COLOUR", kUser, 3, {{"TDMX_VALUE_1", "red"}});

  EXPECT_TRUE(Set("COLOUR", kUser, 0, {{"TDMX_VALUE_1", "blue"}}));

  EXPECT_EQ(Get("COLOUR", kUser, 3)->ValueAt("TDMX_VALUE_1", 0), "blue");
}

TEST_F(SettingsStore, WritesANewSettingWithoutAUser) {
  settings.InitSettings(Session());

  EXPECT_TRUE(Set("COLOUR", kUser, 0, {}));

  EXPECT_EQ(Get("COLOUR", kUser)->ValueAt("TDMX_USER_ID", 0), "0");
}

TEST_F(SettingsStore, CannotGiveASettingOfTheSiteAUser) {
  settings.InitSettings(Session());

  EXPECT_NE(FailureOf([&] { Set("COLOUR", kAdmin, 3, {}); }).Number(), 0);

  EXPECT_FALSE(Get("COLOUR", kAdmin));
}

TEST_F(SettingsStore, WritesTheSecondValueAndTheLongOneOfTwoColumns) {
  settings.InitSettings(Session());

  Set("COLOUR", kAdmin, kAllUsers, {{"TDMX_VALUE_2", "green"}, {"TDMX_VALUE_LONG", "a long story"}});

  const auto values = Get("COLOUR", kAdmin);
  EXPECT_EQ(values->ValueAt("TDMX_VALUE_2", 0), "green");
  EXPECT_EQ(values->ValueAt("TDMX_VALUE_LONG", 0), "a long story");
}

TEST_F(SettingsStore, DoesNotReachTheThirdValueOfOneColumn) {
  settings.InitSettings(Session());

  EXPECT_TRUE(Set("COLOUR", kAdmin, kAllUsers, {{"TDMX_VALUE_3", "blue"}}));

  EXPECT_EQ(Get("COLOUR", kAdmin)->ValueAt("TDMX_VALUE_3", 0), "");
}

TEST_F(SettingsStore, SkipsColumnsOfOtherNames) {
  settings.InitSettings(Session());

  EXPECT_TRUE(Set("COLOUR", kAdmin, kAllUsers,
                  {{"TDM_VALUE_1", "old"}, {"NONSENSE", "x"}, {"tdmx_value_1", "y"}, {"TDMX_SUBJECT", "z"}}));

  EXPECT_EQ(Get("COLOUR", kAdmin)->ValueAt("TDMX_VALUE_1", 0), "");
}

TEST_F(SettingsStore, WritesTheFirstRowOnly) {
  settings.InitSettings(Session());
  const auto table = TableOf({{"TDMX_VALUE_1", "red"}});
  table->AddRow();
  table->SetValue("TDMX_VALUE_1", 1, "blue");

  settings.SetSettingValues(Session(), "S", "COLOUR", kAdmin, kAllUsers, table);

  EXPECT_EQ(Get("COLOUR", kAdmin)->ValueAt("TDMX_VALUE_1", 0), "red");
}

TEST_F(SettingsStore, CannotWriteAValueThatTheTableHasNoColumnFor) {
  settings.InitSettings(Session());
  Cells cells;
  for (int n = 1; n <= 11; ++n) cells.emplace_back("TDMX_VALUE_" + std::to_string(n), "x");

  EXPECT_NE(FailureOf([&] { Set("COLOUR", kAdmin, kAllUsers, cells); }).Number(), 0);

  EXPECT_FALSE(Get("COLOUR", kAdmin));
}

TEST_F(SettingsStore, CannotWriteWithoutValues) {
  settings.InitSettings(Session());

  EXPECT_THAT(FailureOf([&] { settings.SetSettingValues(Session(), "S", "COLOUR", kAdmin, kAllUsers, nullptr); }),
              FailsWith(failure::kObjectNotSet));
}

TEST_F(SettingsStore, RefusesANewSettingWhoseIdHasNoSequence) {
  settings.InitSettings(Session());
  settings.IdAttribute = "TDMX_VALUE_10";
  const auto before = Dump();

  EXPECT_FALSE(Set("COLOUR", kUser, 3, {{"TDMX_VALUE_1", "red"}}));

  EXPECT_THAT(platform.Boxes(), ElementsAre(Told("TDMX_VALUE_10 of User Setting has no sequence")));
  EXPECT_EQ(Dump(), before);
}

TEST_F(SettingsStore, GivesTheSettingsOfASectionInTheirOrder) {
  settings.InitSettings(Session());
  Set("B", kAdmin, kAllUsers, {{"TDMX_VALUE_1", "first"}});
  Set("A", kAdmin, kAllUsers, {{"TDMX_VALUE_1", "second"}});
  Set("C", kAdmin, kAllUsers, {{"TDMX_VALUE_1", "third"}});

  const auto section = Section(kAdmin);

  EXPECT_THAT(ColumnOf(section, "TDMX_SUBJECT"), ElementsAre("B", "A", "C"));
  EXPECT_THAT(ColumnOf(section, "TDMX_VALUE_1"), ElementsAre("first", "second", "third"));
}

TEST_F(SettingsStore, KeepsTypesAndSizesOfTheColumns) {
  settings.InitSettings(Session());
  Set("COLOUR", kUser, 3, {});

  const auto header = Get("COLOUR", kUser)->Header();

  for (int i = 0; i < header->Count(); ++i) {
    const bool isNumber = header->Item(i)->Name() == "TDMX_USER_ID";
    const bool isLong = header->Item(i)->Name() == "TDMX_VALUE_LONG";
    EXPECT_EQ(header->Item(i)->TypeCode(), isNumber ? 1 : 2) << header->Item(i)->Name();
    EXPECT_EQ(header->Item(i)->Size(), isNumber ? 4 : isLong ? 4000 : 255) << header->Item(i)->Name();
  }
}

TEST_F(SettingsStore, AsksForRowsOfOneSetting) {
  settings.InitSettings(Session());
  const auto user = std::to_string(ClassId("User Setting"));

  const auto calls = CallsIn([&] { Get("COLOUR", kUser, 3); });

  EXPECT_THAT(CallsOf(calls, "VdMetaInfo.ClassByName"), ElementsAre("VdMetaInfo.ClassByName(User Setting)"));
  EXPECT_THAT(CallsOf(calls, "VdQueryFrom"), ElementsAre("VdQueryFrom.Add(" + user + ", F)"));
  EXPECT_THAT(CallsOf(calls, "VdQueryWhere"),
              ElementsAre("VdQueryWhere.Add(TDMX_SECTION, S, F)", "VdQueryWhere.Add(TDMX_SUBJECT, COLOUR, F)",
                          "VdQueryWhere.Add(TDMX_USER_ID, 3, F)"));
  EXPECT_THAT(CallsOf(calls, "VdQuerySelect"),
              ElementsAre("VdQuerySelect.Add(OBJECT_ID, F)", "VdQuerySelect.Add(CLASS_ID, F)"));
  EXPECT_THAT(CallsOf(calls, "VdBehavior"),
              ElementsAre("VdBehavior.Clone", "VdBehavior.OptionA=(0)", "VdBehavior.OptionE=(0)"));
}

TEST_F(SettingsStore, AsksForRowsOfASection) {
  settings.InitSettings(Session());

  const auto calls = CallsIn([&] { Section(kAdmin, 3); });

  EXPECT_THAT(CallsOf(calls, "VdMetaInfo.ClassByName"), ElementsAre("VdMetaInfo.ClassByName(Admin Setting)"));
  EXPECT_THAT(CallsOf(calls, "VdQueryWhere"), ElementsAre("VdQueryWhere.Add(TDMX_SECTION, S, F)"));
  EXPECT_THAT(CallsOf(calls, "VdQuerySelect"),
              ElementsAre("VdQuerySelect.Add(OBJECT_ID, F)", "VdQuerySelect.Add(CLASS_ID, F)"));
}

TEST_F(SettingsStore, AsksForTheSubjectOfWhatItWrites) {
  settings.InitSettings(Session());

  const auto calls = CallsIn([&] { Set("COLOUR", kAdmin, kAllUsers, {}); });

  EXPECT_THAT(CallsOf(calls, "VdQuerySelect"), ElementsAre("VdQuerySelect.Add(TDMX_SUBJECT, F)"));
  EXPECT_THAT(CallsOf(calls, "VdBehavior"),
              ElementsAre("VdBehavior.Clone", "VdBehavior.OptionA=(0)", "VdBehavior.OptionE=(0)"));
  EXPECT_THAT(
      CallsOf(calls, "VdRecord.ValuateFromString"),
      ElementsAre(testing::StartsWith("VdRecord.ValuateFromString(TDMX_ID, "),
                  "VdRecord.ValuateFromString(TDMX_SUBJECT, COLOUR)", "VdRecord.ValuateFromString(TDMX_SECTION, S)"));
}

TEST_F(SettingsStore, WritesTheUserBetweenTheNamesAndTheValuesOfANewSetting) {
  settings.InitSettings(Session());

  const auto calls = CallsIn([&] { Set("COLOUR", kUser, 1, {{"TDMX_VALUE_LONG", "long"}, {"TDMX_VALUE_1", "red"}}); });

  EXPECT_THAT(
      CallsOf(calls, "VdRecord.ValuateFromString"),
      ElementsAre(testing::StartsWith("VdRecord.ValuateFromString(TDMX_ID, "),
                  "VdRecord.ValuateFromString(TDMX_SUBJECT, COLOUR)", "VdRecord.ValuateFromString(TDMX_SECTION, S)",
                  "VdRecord.ValuateFromString(TDMX_USER_ID, 1)", "VdRecord.ValuateFromString(TDMX_VALUE_1, red)",
                  "VdRecord.ValuateFromString(TDMX_VALUE_LONG, long)"));
}

TEST_F(SettingsStore, WritesNothingButTheValuesOfASettingThatIsThere) {
  settings.InitSettings(Session());
  Set("COLOUR", kUser, 3, {});

  const auto calls = CallsIn([&] { Set("COLOUR", kUser, 3, {{"TDMX_VALUE_1", "red"}}); });

  EXPECT_THAT(CallsOf(calls, "VdRecord.ValuateFromString"),
              ElementsAre("VdRecord.ValuateFromString(TDMX_VALUE_1, red)"));
}

TEST_F(SettingsStore, LetsFailuresOfReadingAndWritingOut) {
  settings.InitSettings(Session());
  Set("COLOUR", kAdmin, kAllUsers, {});
  gate->FailOperation("VdObject.Retrieve");

  EXPECT_THAT(FailureOf([&] { Get("COLOUR", kAdmin); }), FailsWith(failure::kDeviceError));
  EXPECT_THAT(FailureOf([&] { Section(kAdmin); }), FailsWith(failure::kDeviceError));
  EXPECT_THAT(FailureOf([&] { Set("COLOUR", kAdmin, kAllUsers, {}); }), FailsWith(failure::kDeviceError));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

}  // namespace
}  // namespace quintara::test
