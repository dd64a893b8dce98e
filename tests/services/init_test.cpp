#include "services/Cls_Init.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "access/utils/Cls_Utils.h"
#include "services/running_hosts.h"
#include "services/substitutes.h"

namespace quintara::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SessionStart : public testing::Test, public RunningHosts {
 protected:
  SessionStart() {
    RunVault();
    RunZorva();
  }
  std::vector<std::string> CallsOfInit() {
    gate->StartRecording();
    Init();
    gate->Reset();
    return gate->Record();
  }
};

// All that the first steps ask the hosts for, in this order, on every command.
const std::vector<std::string> kFirstSteps = {
    "Platform.Attach(Veldora.VdApplication)",
    "VdApplication.Engine",
    "VdEngine.Sessions(0)",
    "VdEngine.Databases(0)",
    "VdDatabase.ConnectionString",
    "VdEngine.Databases(0)",
    "VdDatabase.ConnectionPassword(***)",
    "VdSession.OpenDatabaseConnection(***)",
};
const std::vector<std::string> kAttachingToZorva = {"Platform.Attach(ZORVA.Application)", "Application.AsApplication"};
const std::vector<std::string> kIntegration = {"Application.GetItem(HIXEngine)", "HIXEngine.IsConnected"};
const std::vector<std::string> kServices = {
    "VdSession.GetService(VeldoraClientContextService.VdClientContextService)",
    "VdClientContextService.Context",
    "VdServiceContext.Paths",
    "VdClientPaths.CurrentKey",
    "VdClientPaths.WorkDirectoryOf(WORK)",
    "Platform.Create(Scripting.FileSystemObject)",
    "VdSession.GetService(VdUtil.VdSessionUtil)",
};

std::vector<std::string> Joined(const std::vector<std::vector<std::string>>& lists) {
  std::vector<std::string> all;
  for (const auto& list : lists) all.insert(all.end(), list.begin(), list.end());
  return all;
}

TEST_F(SessionStart, FillsTheGlobalsWithoutAWord) {
  EXPECT_TRUE(Init());

  EXPECT_THAT(platform.Boxes(), IsEmpty());
  const auto& process = Process();
  EXPECT_EQ(process.gSession, Session());
  EXPECT_EQ(process.gZorva, host.Application());
  EXPECT_EQ(process.gHIX, Ref<veldora::HIXEngine>(engine));
  EXPECT_EQ(process.gWorkDirectory, folder.Path("work"));
  EXPECT_TRUE(process.gFileSystem->FolderExists(process.gWorkDirectory));
  EXPECT_TRUE(process.gSessionUtil);
  EXPECT_EQ(process.gMatrixType, MatrixType::XML);
  EXPECT_EQ(process.gLanguage, "EN");
  EXPECT_TRUE(process.gClsInit->Initialised);
  EXPECT_TRUE(process.gClsInit->Xml);
  EXPECT_TRUE(process.gClsAdminSettings);
}

TEST_F(SessionStart, ReadsTheSettings) {
  Init();

  const auto& process = Process();
  EXPECT_EQ(process.gAttrPartNumber, "NM_CN_PART_NUMBER");
  EXPECT_EQ(process.gAttrId, "CN_ID");
  EXPECT_EQ(process.gAttrDescription, "CN_DESCRIPTION");
  EXPECT_EQ(process.gClassDocuments, "Document");
  EXPECT_EQ(process.gClassDocLink, "Document Link");
  EXPECT_EQ(process.gClassProducts, "ZORVA Product");
  EXPECT_EQ(process.gFirstClassProducts, "ZORVA Product");
  EXPECT_EQ(process.gClassParts, "ZORVA Part");
  EXPECT_EQ(process.gFirstClassParts, "ZORVA Part");
  EXPECT_EQ(process.gTreeViewSeparator, " - ");
  EXPECT_EQ(process.gTreeView, "NM_CN_PART_NUMBER,REVISION");
  EXPECT_THAT(process.gTreeViewAttributes, ElementsAre("NM_CN_PART_NUMBER", "REVISION"));
}

TEST_F(SessionStart, NamesTheAttributes) {
  Init();

  const auto& process = Process();
  EXPECT_THAT(
      (std::vector<std::string>{process.OBJECT_ID, process.CLASS_ID, process.REVISION, process.STATE,
                                process.CAD_REF_FILE_NAME, process.FILE_NAME, process.FILE_TYPE,
                                process.VAULT_OBJECT_ID, process.DIRECTORY, process.OPERATION_ID, process.TDM_FILE_ID}),
      ElementsAre("OBJECT_ID", "CLASS_ID", "REVISION", "STATE", "CAD_REF_FILE_NAME", "FILE_NAME", "FILE_TYPE",
                  "VAULT_OBJECT_ID", "DIRECTORY", "OPERATION_ID", "TDM_FILE_ID"));
}

TEST_F(SessionStart, ReadsEveryTextIntoItsGlobal) {
  Init();

  EXPECT_THAT(TextsUnlike("EN"), IsEmpty());
  EXPECT_EQ(Process().texts.QD_WIP_CMDFIND.text, "EN QD.WIP_CMDFIND");
}

TEST_F(SessionStart, AsksTheHostsInTheOrderOfTheSteps) {
  const auto calls = CallsOfInit();

  const auto steps = Joined({kFirstSteps, kAttachingToZorva, kIntegration, kFirstSteps, kServices});
  ASSERT_GT(calls.size(), steps.size());
  EXPECT_EQ(std::vector<std::string>(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(steps.size())), steps);
  EXPECT_THAT(CallsOf(calls, "Platform.Create"),
              ElementsAre("Platform.Create(Scripting.FileSystemObject)", "Platform.Create(Veldora.VdClientContext)",
                          "Platform.Create(Veldora.VdTranslator)", "Platform.Create(Scripting.FileSystemObject)"));
  EXPECT_THAT(CallsOf(calls, "VdTranslator.SetLanguage"), ElementsAre("VdTranslator.SetLanguage(EN)"));
}

TEST_F(SessionStart, OpensTheReaderOnceSettingsAndLanguageAreRead) {
  const auto calls = CallsOfInit();

  const auto language = std::ranges::find(calls, "VdSession.Language");
  EXPECT_THAT((std::vector<std::string>(calls.begin(), language)), Contains("VdQueryWhere.Add(TDMX_SECTION, QD, F)"));
  const std::vector<std::string> expected = {
      "VdSession.Language",
      "Platform.Create(Veldora.VdClientContext)",
      "VdSession.ClientName",
      "VdSession.Database",
      "VdDatabase.DatabaseType",
      "VdSession.ApplicationName",
      "VdSession.Database",
      "VdDatabase.Alias",
      "VdClientContext.Open(Quintara, 1, Veldora, veldora://quintara)",
      "Platform.Create(Veldora.VdTranslator)",
      "VdTranslator.SetLanguage(EN)",
  };
  ASSERT_GE(calls.end() - language, static_cast<std::ptrdiff_t>(expected.size()));
  EXPECT_EQ(std::vector<std::string>(language, language + static_cast<std::ptrdiff_t>(expected.size())), expected);
}

TEST_F(SessionStart, ReadsTheTextsInTheOrderOfTheTables) {
  const auto calls = CallsOf(CallsOfInit(), "VdTranslator.Translate");

  std::vector<std::string> expected;
  for (int i = 0; i < 2; ++i) {
    expected.emplace_back("VdTranslator.Translate(norvik.solutions.NLS.Controls.QNTR, , , 1.0)");
    expected.emplace_back("VdTranslator.Translate(norvik.solutions.NLS.Errors.QNTR, , , 1.0)");
  }
  Texts texts;
  ForEachText(texts, [&](const std::string&, const TextKey& key) {
    const std::string appendix = key.catalogue == Catalogue::kControls ? "Controls" : "Errors";
    expected.push_back("VdTranslator.Translate(norvik.solutions.NLS." + appendix + ".QNTR, " + std::string(key.key) +
                       ", " + appendix + ", 1.0)");
  });
  EXPECT_EQ(calls, expected);
}

TEST_F(SessionStart, AttachesAgainButReadsSettingsAndTextsOnce) {
  Init();

  const auto calls = CallsOfInit();

  EXPECT_EQ(calls, Joined({kFirstSteps, kIntegration, kFirstSteps, kServices}));
  EXPECT_TRUE(Process().gClsInit->Initialised);
}

class NotesConnections : public HandingOn {
 public:
  using HandingOn::HandingOn;

  void OpenDatabaseConnection(const std::string& connection, const std::string& password, bool join) override {
    noted.emplace_back(connection, password, join);
  }

  std::vector<std::tuple<std::string, std::string, bool>> noted;
};

TEST_F(SessionStart, JoinsTheConnectionOfTheFirstDatabaseForTheSessionAndForTheWorkDirectory) {
  const auto session = MakeRef<NotesConnections>(Session());
  RunVault(MakeRef<ClientWithSession>(vault->Application(), session));
  const auto database = vault->Application()->Engine()->Databases(0);
  const std::tuple expected(database->ConnectionString(), database->ConnectionPassword(), true);

  Init();

  EXPECT_THAT(session->noted, ElementsAre(expected, expected));
  EXPECT_NE(std::get<0>(expected), std::get<1>(expected));
}

TEST_F(SessionStart, ReadsTheWorkDirectoryAgain) {
  Init();
  auto options = Options();
  options.workDirectory = folder.Path("source");
  Open(options);
  RunVault();

  EXPECT_TRUE(Init());

  EXPECT_EQ(Process().gWorkDirectory, folder.Path("source"));
}

TEST_F(SessionStart, SetsTheKindOfMatricesWithEachCommand) {
  Init();
  Process().gMatrixType = MatrixType::Excel;

  Init();

  EXPECT_EQ(Process().gMatrixType, MatrixType::XML);
}

TEST_F(SessionStart, TakesEnglishWhereTheLanguageHasNoTexts) {
  RunVaultIn("FR");

  EXPECT_TRUE(Init());

  EXPECT_EQ(Process().gLanguage, "EN");
  EXPECT_THAT(TextsUnlike("EN"), IsEmpty());
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(SessionStart, TakesEnglishWhereOneCatalogueOfTheLanguageIsMissing) {
  WriteTexts("FR");
  RemoveNLSFile("FR", "Errors");
  RunVaultIn("FR");

  EXPECT_TRUE(Init());

  EXPECT_EQ(Process().gLanguage, "EN");
  EXPECT_THAT(TextsUnlike("EN"), IsEmpty());
}

TEST_F(SessionStart, LooksForTheSecondCatalogueOnlyWhereTheFirstIsThere) {
  WriteTexts("FR");
  RemoveNLSFile("FR", "Controls");
  RunVaultIn("FR");

  const auto calls = CallsOf(CallsOfInit(), "FileSystem.FileExists");

  const auto inFrench = [](const std::string& call) { return call.find("FR") != call.npos; };
  EXPECT_EQ(std::ranges::count_if(calls, inFrench), 1);
}

TEST_F(SessionStart, TakesEnglishWhereACatalogueOfTheLanguageIsBroken) {
  WriteTexts("FR");
  files->WriteWhole(NLSPath("FR", "Controls"), "<NLS><Text");
  RunVaultIn("FR");

  EXPECT_TRUE(Init());

  EXPECT_EQ(Process().gLanguage, "EN");
}

TEST_F(SessionStart, TakesTheTextsOfTheLanguage) {
  WriteTexts("DE");
  RunVaultIn("DE");

  EXPECT_TRUE(Init());

  EXPECT_EQ(Process().gLanguage, "DE");
  EXPECT_THAT(TextsUnlike("DE"), IsEmpty());
}

TEST_F(SessionStart, AChangeOfLanguageTakesEffectWithTheNextInstance) {
  WriteTexts("DE");
  Init();
  RunVaultIn("DE");

  Init();
  EXPECT_THAT(TextsUnlike("EN"), IsEmpty());

  EndInit();
  EXPECT_THAT(TextsUnlike("EN"), IsEmpty());
  EXPECT_TRUE(Init());
  EXPECT_THAT(TextsUnlike("DE"), IsEmpty());
}

TEST_F(SessionStart, AMissingKeyLeavesAnEmptyGlobal) {
  WriteTexts("EN", {"QD.FIND_CAPTION", "QD.SWITCH.ALREADY_IN_STATE"});
  Process().texts.QD_FIND_CAPTION.text = "of an earlier language";

  EXPECT_TRUE(Init());

  EXPECT_EQ(Process().texts.QD_FIND_CAPTION.text, "");
  EXPECT_EQ(Process().texts.QD_SWITCH_ALREADY_IN_STATE.text, "");
  EXPECT_EQ(Process().texts.QD_FIND_LBLFIND.text, "EN QD.FIND_LBLFIND");
  EXPECT_THAT(TextsUnlike("EN"), SizeIs(2));
}

TEST_F(SessionStart, AMissingTextShowsThatItIsEmptyAndNothingElse) {
  WriteTexts("EN", {"QD.SWITCH.ALREADY_IN_STATE"});
  Init();

  EXPECT_TRUE(Utils().ShowMessage(Process().texts.QD_SWITCH_ALREADY_IN_STATE.text, 64, {}).IsEmpty());

  EXPECT_THAT(platform.Boxes(), ElementsAre(Told("EN COMMON.UTILS.MESSAGE_IS_EMPTY")));
}

TEST_F(SessionStart, AKeyThatIsReadTwiceFillsBothGlobals) {
  Init();

  const auto& texts = Process().texts;
  EXPECT_EQ(texts.QD_GETMATRIX_NO_LINKED_MATRIX_2.text, texts.QD_GETMATRIX_NO_LINKED_MATRIX.text);
  EXPECT_EQ(texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_EMPTY_2.text, texts.QD_UTILS_UNABLE_TO_RETRIEVE_OBJECT_EMPTY.text);
  EXPECT_NE(texts.QD_GETMATRIX_NO_LINKED_MATRIX_2.text, "");
}

TEST_F(SessionStart, FillsConsumedTextsAnewWithTheNextInstance) {
  Init();
  Process().texts.QD_INIT_NLS_UNVALID.text = "consumed";
  EndInit();

  Init();

  EXPECT_THAT(TextsUnlike("EN"), IsEmpty());
}

TEST_F(SessionStart, TheEndOfTheInstanceLetsTheSessionsGo) {
  Init();

  EndInit();

  const auto& process = Process();
  EXPECT_FALSE(process.gSession);
  EXPECT_FALSE(process.gZorva);
  EXPECT_FALSE(process.gHIX);
  EXPECT_FALSE(process.gSessionUtil);
  EXPECT_FALSE(process.gFileSystem);
}

TEST_F(SessionStart, TheEndOfTheInstanceKeepsDirectorySettingsAndTexts) {
  Init();

  EndInit();

  const auto& process = Process();
  EXPECT_EQ(process.gWorkDirectory, folder.Path("work"));
  EXPECT_EQ(process.gLanguage, "EN");
  EXPECT_EQ(process.gAttrPartNumber, "NM_CN_PART_NUMBER");
  EXPECT_TRUE(process.gClsAdminSettings);
  EXPECT_THAT(TextsUnlike("EN"), IsEmpty());
}

TEST_F(SessionStart, TheEndOfAnyInstanceLetsTheSessionsGo) {
  Init();

  { const Cls_Init another; }

  EXPECT_FALSE(Process().gSession);
  EXPECT_TRUE(Process().gClsInit->Initialised);
}

TEST_F(SessionStart, ClosingLetsTheReaderGo) {
  Init();

  EXPECT_TRUE(Process().gClsInit->CloseXML());

  EXPECT_FALSE(Process().gClsInit->Xml);
}

TEST_F(SessionStart, WithoutAReaderTheStepsOfTheTextsFailQuietly) {
  Cls_Init init;

  EXPECT_FALSE(init.InitTrans());
  EXPECT_FALSE(init.InitLang());
  EXPECT_FALSE(init.NLSFilesExist());
  EXPECT_EQ(init.InitiateNLSVariable(), 1);
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(SessionStart, AReaderThatCannotBeOpenedIsAFailureOfTheCaller) {
  Cls_Init init;

  EXPECT_THAT(FailureOf([&] { init.InitXML(nullptr); }), FailsWith(failure::kObjectNotSet));
}

}  // namespace
}  // namespace quintara::test
