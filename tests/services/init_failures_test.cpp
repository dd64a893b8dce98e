#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "services/ailing_hosts.h"

namespace quintara::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Box kEmptyBox = Told("");

// The standard report of a failure that was injected.
Box Report(const std::string& label) {
  return Told("EN COMMON.UNEXPECTED_ERROR [" + label + "] [Injected failure]");
}

Ref<AnyObject> CannotBeMade() {
  throw Failure(failure::kCannotCreateObject, "Injected failure");
}

class WithoutSessionUtil : public HandingOn {
 public:
  using HandingOn::HandingOn;

  Ref<AnyObject> GetService(const std::string& programName) override {
    return programName == "VdUtil.VdSessionUtil" ? nullptr : HandingOn::GetService(programName);
  }
};

// Something that a step needs and doesn't find.
struct Lack {
  std::string name;
  std::function<void(AilingHosts&)> make;
  std::string literal;
  CatalogueText<1> Texts::*global;
  std::string key;
};

void PrintTo(const Lack& lack, std::ostream* out) {
  *out << lack.name;
}

class StartThatLacks : public testing::TestWithParam<Lack>, public AilingHosts {
 protected:
  void Make() { GetParam().make(*this); }
  const std::string& Global() const { return (Process().texts.*GetParam().global).text; }
};

TEST_P(StartThatLacks, SaysSoWithALiteralWhileThereIsNoCatalogue) {
  Make();

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(GetParam().literal)));

  EXPECT_FALSE(Process().gClsInit->Initialised);
}

TEST_P(StartThatLacks, KeepsTheLiteralForTheNextTime) {
  Make();
  Init();

  EXPECT_EQ(Global(), GetParam().literal);
  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told(GetParam().literal)));
}

TEST_P(StartThatLacks, SaysSoWithTheTextOfTheCatalogueOnceItIsLoaded) {
  Make();
  Init();
  LoadCatalogue();
  Make();

  // Nothing has failed, so that there is no error to fill in.
  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told("EN " + GetParam().key + " []")));
}

TEST_P(StartThatLacks, ComesThroughOnceItIsThere) {
  Make();
  ASSERT_FALSE(Init());
  Mend();

  EXPECT_THAT(BoxesOfInit(), IsEmpty());

  EXPECT_TRUE(Process().gClsInit->Initialised);
  EXPECT_THAT(TextsUnlike("EN"), IsEmpty());
}

constexpr auto kSessionLiteral = "Error retrieving Veldora session -- ";
constexpr auto kSessionKey = "QD.INIT.ERROR_RETRIEVING_VELDORA_SESSION";
constexpr auto kSettingsLiteral = "Error retrieving admin settings -- ";
constexpr auto kSettingsKey = "QD.INIT.ERROR_RETRIEVING_ADMIN_SETTINGS";

const std::vector<Lack> kLacks = {
    {"AVaultClient", [](AilingHosts& hosts) { hosts.RunVault(nullptr); }, kSessionLiteral,
     &Texts::QD_INIT_ERROR_RETRIEVING_VELDORA_SESSION, kSessionKey},
    {"ASession", [](AilingHosts& hosts) { hosts.RunVaultWithSession(nullptr); }, kSessionLiteral,
     &Texts::QD_INIT_ERROR_RETRIEVING_VELDORA_SESSION, kSessionKey},
    {"AReachableDatabase", [](AilingHosts& hosts) { hosts.gate->FailOperation("VdSession.OpenDatabaseConnection"); },
     kSessionLiteral, &Texts::QD_INIT_ERROR_RETRIEVING_VELDORA_SESSION, kSessionKey},
    {"AWorkDirectory", [](AilingHosts& hosts) { hosts.RunVaultWithWorkDirectory(""); },
     "Error retrieving Veldora working directory -- ", &Texts::QD_INIT_ERROR_RETRIEVING_WORK,
     "QD.INIT.ERROR_RETRIEVING_WORK"},
    {"AFileSystemObject",
     [](AilingHosts& hosts) {
       hosts.platform.Native().RegisterMaker("Scripting.FileSystemObject", [] { return Ref<AnyObject>(); });
     },
     "Error retrieving File System Object -- ", &Texts::QD_INIT_ERROR_RETRIEVING_FILE_SYSTEM_OBJECT,
     "QD.INIT.ERROR_RETRIEVING_FILE_SYSTEM_OBJECT"},
    {"ASessionUtil",
     [](AilingHosts& hosts) { hosts.RunVaultWithSession(MakeRef<WithoutSessionUtil>(hosts.Session())); },
     "Error retrieving Veldora Util Session -- ", &Texts::QD_INIT_ERROR_RETRIEVING_UTIL_SESSION,
     "QD.INIT.ERROR_RETRIEVING_UTIL_SESSION"},
    {"ReadableSettings", [](AilingHosts& hosts) { hosts.gate->FailOperation("VdQuery.RunWithBehavior"); },
     kSettingsLiteral, &Texts::QD_INIT_ERROR_RETRIEVING_ADMIN_SETTINGS, kSettingsKey},
    {"TheOwnSection", [](AilingHosts& hosts) { hosts.gate->FailOperation("VdQuery.RunWithBehavior", 2); },
     kSettingsLiteral, &Texts::QD_INIT_ERROR_RETRIEVING_ADMIN_SETTINGS, kSettingsKey},
};

INSTANTIATE_TEST_SUITE_P(Of, StartThatLacks, testing::ValuesIn(kLacks),
                         [](const auto& lack) { return lack.param.name; });

// A call that isn't foreseen to fail, and does.
class StartWithAFailing : public testing::TestWithParam<std::string>, public AilingHosts {};

TEST_P(StartWithAFailing, CallShowsTheEmptyReportWhileThereIsNoCatalogue) {
  gate->FailOperation(GetParam());

  EXPECT_THAT(BoxesOfInit(), ElementsAre(kEmptyBox));

  EXPECT_FALSE(Process().gClsInit->Initialised);
}

TEST_P(StartWithAFailing, CallIsReportedOnceTheCatalogueIsLoaded) {
  LoadCatalogue();
  gate->FailOperation(GetParam());

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Report("Cls_Init.Init")));
}

INSTANTIATE_TEST_SUITE_P(Of, StartWithAFailing,
                         testing::Values("Application.GetItem", "HIXEngine.IsConnected", "VdSession.GetService",
                                         "VdClientContextService.Context", "VdServiceContext.Paths",
                                         "VdClientPaths.CurrentKey", "VdClientPaths.WorkDirectoryOf", "Platform.Create",
                                         "VdSession.Language", "VdSession.ClientName", "VdSession.Database",
                                         "VdDatabase.DatabaseType", "VdSession.ApplicationName", "VdDatabase.Alias",
                                         "VdClientContext.Open"),
                         [](const auto& operation) {
                           auto name = operation.param;
                           std::erase(name, '.');
                           return name;
                         });

class FailingStart : public testing::Test, public AilingHosts {};

TEST_F(FailingStart, SaysNothingWhenTheTranslatorCannotBeMade) {
  platform.Native().RegisterMaker("Veldora.VdTranslator", CannotBeMade);

  EXPECT_THAT(BoxesOfInit(), IsEmpty());

  EXPECT_FALSE(Process().gClsInit->Initialised);
}

TEST_F(FailingStart, SaysNothingWhenTheTranslatorTakesNoLanguage) {
  gate->FailOperation("VdTranslator.SetLanguage");

  EXPECT_THAT(BoxesOfInit(), IsEmpty());

  EXPECT_FALSE(Process().gClsInit->Initialised);
}

TEST_F(FailingStart, SaysNothingWhenTheTranslatorTakesNoEnglishEither) {
  RunVaultIn("FR");
  gate->FailOperation("VdTranslator.SetLanguage", 2);

  EXPECT_THAT(BoxesOfInit(), IsEmpty());

  EXPECT_FALSE(Process().gClsInit->Initialised);
  EXPECT_EQ(Process().gLanguage, "EN");
}

TEST_F(FailingStart, TakesNoLanguageWithoutSettings) {
  gate->FailOperation("VdQuery.RunWithBehavior");

  Init();

  EXPECT_EQ(Process().gLanguage, "");
}

TEST_F(FailingStart, NamesTheEnglishCatalogueThatIsMissingToo) {
  LoadCatalogue();
  RemoveNLSFile("EN", "Errors");
  RunVaultIn("FR");

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told("EN QD.INIT.NLS_UNVALID [norvik.solutions.NLS.Errors.QNTR]")));

  EXPECT_EQ(Process().gLanguage, "EN");
}

TEST_F(FailingStart, ReportsAClientContextThatCannotBeMade) {
  LoadCatalogue();
  platform.Native().RegisterMaker("Veldora.VdClientContext", CannotBeMade);

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Report("Cls_Init.Init")));
}

TEST_F(FailingStart, ReportsAMissingVaultForTheWorkDirectory) {
  LoadCatalogue();
  gate->FailOperation("VdEngine.Sessions", 2);

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told("EN COMMON.UNEXPECTED_ERROR [Cls_Init.Init] [" +
                                              Failure(failure::kObjectNotSet).Description() + "]")));
}

TEST_F(FailingStart, ShowsTwoBoxesWhenTheSettingsTablesCannotBeLookedAt) {
  gate->FailOperation("VdMetaInfo.ClassByTable");

  EXPECT_THAT(BoxesOfInit(), ElementsAre(kEmptyBox, Told(kSettingsLiteral)));

  LoadCatalogue();
  Process().gClsAdminSettings = nullptr;
  gate->FailOperation("VdMetaInfo.ClassByTable");
  EXPECT_THAT(BoxesOfInit(),
              ElementsAre(Report("Cls_AdminSettings.InitSettings"), Told("EN " + std::string(kSettingsKey) + " []")));
}

class StartWithoutACatalogue : public testing::TestWithParam<std::string>, public AilingHosts {
 protected:
  std::string NameSpace() const { return "norvik.solutions.NLS." + GetParam() + ".QNTR"; }
};

TEST_P(StartWithoutACatalogue, ShowsAnEmptyBoxWhileNoneIsLoaded) {
  RemoveNLSFile("EN", GetParam());

  EXPECT_THAT(BoxesOfInit(), ElementsAre(kEmptyBox));

  EXPECT_FALSE(Process().gClsInit->Initialised);
}

TEST_P(StartWithoutACatalogue, NamesItOnceTheTextsAreLoaded) {
  LoadCatalogue();
  RemoveNLSFile("EN", GetParam());

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told("EN QD.INIT.NLS_UNVALID [" + NameSpace() + "]")));
}

TEST_P(StartWithoutACatalogue, KeepsTheTextsOfBefore) {
  LoadCatalogue();
  RemoveNLSFile("EN", GetParam());

  Init();

  EXPECT_THAT(TextsUnlike("EN"), ElementsAre("QD.INIT.NLS_UNVALID"));
}

TEST_P(StartWithoutACatalogue, TakesABrokenOneForMissing) {
  LoadCatalogue();
  files->WriteWhole(NLSPath("EN", GetParam()), "<NLS><Text");

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told("EN QD.INIT.NLS_UNVALID [" + NameSpace() + "]")));
}

INSTANTIATE_TEST_SUITE_P(Of, StartWithoutACatalogue, testing::Values("Controls", "Errors"),
                         [](const auto& appendix) { return appendix.param; });

TEST_F(FailingStart, KeepsWhatWasFilledBefore) {
  Init();
  engine->Disconnect();

  EXPECT_FALSE(Init());

  EXPECT_TRUE(Process().gSession);
  EXPECT_TRUE(Process().gHIX);
  EXPECT_EQ(Process().gWorkDirectory, folder.Path("work"));
  EXPECT_TRUE(Process().gClsInit->Initialised);
}

TEST_F(FailingStart, LosesTheSessionWhenThereIsNoneAnyMore) {
  Init();
  RunVault(nullptr);

  EXPECT_FALSE(Init());

  EXPECT_FALSE(Process().gSession);
}

TEST_F(FailingStart, FillsTheReasonInOnceAndForAll) {
  LoadCatalogue();
  gate->FailOperation("HIXEngine.IsConnected", 1, Failure(failure::kDeviceError, "the first"));
  Init();
  gate->Reset();
  gate->FailOperation("HIXEngine.IsConnected", 1, Failure(failure::kDeviceError, "the second"));

  EXPECT_THAT(BoxesOfInit(), ElementsAre(Told("EN COMMON.UNEXPECTED_ERROR [Cls_Init.Init] [the first]")));
}

}  // namespace
}  // namespace quintara::test
