#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "services/Cls_AdminSettings.h"
#include "services/running_hosts.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SettingsOfTheStart : public testing::Test, public RunningHosts {
 protected:
  explicit SettingsOfTheStart(const std::string& generation = "TDMX_")
      : RunningHosts(SettingsColumns::OfGeneration(generation)) {
    RunVault();
    RunZorva();
    Init();
    settings.InitSettings(Session());
  }
  void Set(const std::string& section, const std::string& subject, const std::string& value) {
    const auto values = vault->Application()->NewRecList();
    values->AddField("TDMX_VALUE_1", veldora::column_type::kText, 255);
    values->AddRow();
    values->SetValue("TDMX_VALUE_1", 0, value);
    ASSERT_TRUE(settings.SetSettingValues(Session(), section, subject, true, -1, values));
  }
  // Takes all settings out of a section.
  void Empty(const std::string& section) {
    const auto query = Store()->NewQuery();
    query->Definition()->From()->Add(ClassId("Admin Setting"), "F");
    query->Definition()->Where()->Add("", "TDMX_SECTION", "=", section, 0, "F");
    query->RunWithBehavior(Behavior());
    for (int row = 0; row < query->RecordCount(); ++row) {
      const auto setting = Store()->ObjectFromRecord(query->Result()->GetRecord(row), 0);
      setting->Record()->ValuateFromString("TDMX_SECTION", "ELSEWHERE");
      setting->Update(Behavior());
    }
  }
  // A start that reads the settings.
  static bool ReadAgain() {
    EndInit();
    return Init();
  }

  Cls_AdminSettings settings;
};

TEST_F(SettingsOfTheStart, WithoutAFontNameNone) {
  EXPECT_EQ(Process().gFontName, "");
  EXPECT_EQ(Process().gFontSize, -1);
  EXPECT_EQ(Process().gFontCharset, -1);
  EXPECT_EQ(Process().gFontBold, -1);
  EXPECT_EQ(Process().gFontItalic, -1);
}

TEST_F(SettingsOfTheStart, NameAFont) {
  Set("COMMON", "FONT_NAME", "Arial");
  Set("COMMON", "FONT_SIZE", "9");
  Set("COMMON", "FONT_CHARSET", "238");
  Set("COMMON", "FONT_BOLD", "1");
  Set("COMMON", "FONT_ITALIC", "0");

  EXPECT_TRUE(ReadAgain());

  EXPECT_EQ(Process().gFontName, "Arial");
  EXPECT_EQ(Process().gFontSize, 9);
  EXPECT_EQ(Process().gFontCharset, 238);
  EXPECT_EQ(Process().gFontBold, 1);
  EXPECT_EQ(Process().gFontItalic, 0);
}

TEST_F(SettingsOfTheStart, ForgetTheFontOfAnEarlierStart) {
  Process().gFontName = "Arial";
  Process().gFontSize = Process().gFontCharset = Process().gFontBold = Process().gFontItalic = 7;

  ReadAgain();

  EXPECT_EQ(Process().gFontName, "");
  EXPECT_EQ(Process().gFontSize, -1);
  EXPECT_EQ(Process().gFontCharset, -1);
  EXPECT_EQ(Process().gFontBold, -1);
  EXPECT_EQ(Process().gFontItalic, -1);
}

TEST_F(SettingsOfTheStart, ReplaceThoseOfAnEarlierStart) {
  Process().gTreeViewSeparator = "?";
  Process().gAttrPartNumber = "?";
  Set("COMMON", "PART_NUMBER", "CN_ID");

  ReadAgain();

  EXPECT_EQ(Process().gTreeViewSeparator, " - ");
  EXPECT_EQ(Process().gAttrPartNumber, "CN_ID");
}

TEST_F(SettingsOfTheStart, LeaveWhatAnEarlierStartReadWhereNoRowNamesIt) {
  Empty("COMMON");
  Set("COMMON", "CN_ID", "ANOTHER_ID");

  EXPECT_TRUE(ReadAgain());

  EXPECT_EQ(Process().gAttrPartNumber, "NM_CN_PART_NUMBER");
  EXPECT_EQ(Process().gAttrId, "ANOTHER_ID");
}

TEST_F(SettingsOfTheStart, ThatAreMissingLeaveTheAttributesNamedAndTheFontForgotten) {
  Empty("COMMON");
  Process().gFontName = "Arial";
  Process().gFontSize = 7;
  Process().TDM_FILE_ID = "?";

  EXPECT_FALSE(ReadAgain());

  EXPECT_EQ(Process().gFontName, "");
  EXPECT_EQ(Process().gFontSize, -1);
  EXPECT_EQ(Process().TDM_FILE_ID, "TDM_FILE_ID");
}

TEST_F(SettingsOfTheStart, ThatCannotBeAskedForLeaveTheFontAsItWas) {
  Process().gFontName = "Arial";
  Process().gFontSize = 7;
  gate->FailOperation("VdQuery.RunWithBehavior");

  EXPECT_FALSE(ReadAgain());

  EXPECT_EQ(Process().gFontName, "Arial");
  EXPECT_EQ(Process().gFontSize, 7);
}

TEST_F(SettingsOfTheStart, OfTheFirstSectionStayWhereTheSecondIsMissing) {
  Set("COMMON", "FONT_NAME", "Arial");
  Empty("QD");

  EXPECT_FALSE(ReadAgain());

  EXPECT_EQ(Process().gFontName, "Arial");
  EXPECT_THAT(Process().gTreeViewAttributes, ElementsAre("NM_CN_PART_NUMBER", "REVISION"));
}

TEST_F(SettingsOfTheStart, ThatAreNoNumbersEndIt) {
  Set("COMMON", "FONT_SIZE", "large");

  EXPECT_FALSE(ReadAgain());

  EXPECT_THAT(platform.Boxes(), ElementsAre(Told("EN QD.INIT.ERROR_RETRIEVING_ADMIN_SETTINGS []")));
  EXPECT_EQ(Process().gFontSize, -1);
}

TEST_F(SettingsOfTheStart, ThatNeedMoreThanSixteenBitsEndIt) {
  Set("COMMON", "FONT_SIZE", "32768");
  EXPECT_FALSE(ReadAgain());

  Set("COMMON", "FONT_SIZE", "32767");
  EXPECT_TRUE(ReadAgain());
  EXPECT_EQ(Process().gFontSize, 32767);
}

TEST_F(SettingsOfTheStart, GiveTheFirstClassOfAList) {
  Set("QD", "CLASS_PRODUCTS", "ZORVA Product,Tool, Fixture");
  Set("QD", "CLASS_PARTS", ",ZORVA Part");

  EXPECT_TRUE(ReadAgain());

  EXPECT_EQ(Process().gClassProducts, "ZORVA Product,Tool, Fixture");
  EXPECT_EQ(Process().gFirstClassProducts, "ZORVA Product");
  EXPECT_EQ(Process().gClassParts, ",ZORVA Part");
  EXPECT_EQ(Process().gFirstClassParts, "");
}

TEST_F(SettingsOfTheStart, WithAnEmptyListGiveAnEmptyFirstClass) {
  Set("QD", "CLASS_PRODUCTS", "");

  EXPECT_TRUE(ReadAgain());

  EXPECT_EQ(Process().gClassProducts, "");
  EXPECT_EQ(Process().gFirstClassProducts, "");
}

TEST_F(SettingsOfTheStart, TrimTheAttributesOfTheTree) {
  Set("QD", "TREE_VIEW", "  CN_ID , NAME WITH BLANKS,\tREVISION\t,");

  EXPECT_TRUE(ReadAgain());

  EXPECT_EQ(Process().gTreeView, "  CN_ID , NAME WITH BLANKS,\tREVISION\t,");
  EXPECT_THAT(Process().gTreeViewAttributes, ElementsAre("CN_ID", "NAME WITH BLANKS", "\tREVISION\t", ""));
}

TEST_F(SettingsOfTheStart, WithAnEmptyTreeGiveOneEmptyAttribute) {
  Set("QD", "TREE_VIEW", "");

  EXPECT_TRUE(ReadAgain());

  EXPECT_THAT(Process().gTreeViewAttributes, ElementsAre(""));
}

TEST_F(SettingsOfTheStart, ThatNobodyKnowsArePassedOver) {
  Set("COMMON", "COFFEE", "black");
  Set("QD", "coffee", "white");

  EXPECT_TRUE(ReadAgain());
}

TEST_F(SettingsOfTheStart, CountOnlyInTheirSection) {
  Set("QD", "FONT_SIZE", "12");
  Set("COMMON", "TREE_VIEW", "CN_ID");

  EXPECT_TRUE(ReadAgain());

  EXPECT_EQ(Process().gFontSize, -1);
  EXPECT_EQ(Process().gTreeView, "NM_CN_PART_NUMBER,REVISION");
}

TEST_F(SettingsOfTheStart, MustBeThereInBothSections) {
  for (const auto* section : {"QD", "COMMON"}) {
    Empty(section);

    EXPECT_FALSE(ReadAgain());

    EXPECT_EQ(platform.Boxes().back(), Told("EN QD.INIT.ERROR_RETRIEVING_ADMIN_SETTINGS []"));
  }
}

TEST_F(SettingsOfTheStart, MayLackTheNameOfTheAttributeOfPartNumbers) {
  Empty("COMMON");
  Set("COMMON", "CN_ID", "CN_ID");
  ResetProcess();

  EXPECT_TRUE(Init());

  EXPECT_EQ(Process().gAttrPartNumber, "");
  EXPECT_EQ(Process().gAttrId, "CN_ID");
}

TEST_F(SettingsOfTheStart, AreThoseOfTheSessionThatWasFound) {
  Cls_Init init;

  EXPECT_TRUE(init.InitAdminSettings(nullptr));

  Process().gSession = nullptr;
  EXPECT_FALSE(init.InitAdminSettings(Session()));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(SettingsOfTheStart, AreThoseOfTheSiteInTheOrderOfTheSections) {
  gate->StartRecording();

  ReadAgain();

  EXPECT_THAT(CallsOf(gate->Record(), "VdMetaInfo.ClassByName"),
              ElementsAre("VdMetaInfo.ClassByName(Admin Setting)", "VdMetaInfo.ClassByName(Admin Setting)"));
  EXPECT_THAT(CallsOf(gate->Record(), "VdQueryWhere"),
              ElementsAre("VdQueryWhere.Add(TDMX_SECTION, COMMON, F)", "VdQueryWhere.Add(TDMX_SECTION, QD, F)"));
}

TEST_F(SettingsOfTheStart, AreLookedForInTablesThatAreKnown) {
  gate->StartRecording();

  ReadAgain();

  EXPECT_THAT(CallsOf(gate->Record(), "VdMetaInfo.ClassByTable"), IsEmpty());
}

// Columns with other prefixes than "TDMX_".
class SettingsOfAnotherGeneration : public SettingsOfTheStart, public testing::WithParamInterface<std::string> {
 protected:
  SettingsOfAnotherGeneration() : SettingsOfTheStart(GetParam()) {}
};

TEST_P(SettingsOfAnotherGeneration, AreNotReadAtTheStart) {
  EXPECT_FALSE(Process().gClsInit->Initialised);
  EXPECT_THAT(platform.Boxes(), ElementsAre(Told("Error retrieving admin settings -- ")));
}

INSTANTIATE_TEST_SUITE_P(Of, SettingsOfAnotherGeneration, testing::Values("TDM_", "CN_"), [](const auto& generation) {
  return generation.param.substr(0, generation.param.size() - 1);
});

}  // namespace
}  // namespace quintara::test
