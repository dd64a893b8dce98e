#include "services/Cls_XML.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

#include "access/host_mocks.h"
#include "access/session/process.h"
#include "base/failure.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using testing::NiceMock;
using testing::Return;
using testing::Throw;

constexpr auto kNameSpace = "norvik.solutions.NLS.Controls.QNTR";

class Database : public veldora::VdDatabase {
 public:
  MOCK_METHOD(std::string, ConnectionString, (), (override));
  MOCK_METHOD(std::string, ConnectionPassword, (), (override));
  MOCK_METHOD(std::string, Alias, (), (override));
  MOCK_METHOD(int, DatabaseType, (), (override));
};

class Configuration : public veldora::VdConfig {
 public:
  MOCK_METHOD(std::string, BaseDirectory, (), (override));
  MOCK_METHOD(std::string, Value, (const std::string&), (override));
  MOCK_METHOD(void, SetValue, (const std::string&, const std::string&), (override));
};

class Provider : public veldora::VdConfigProvider {
 public:
  MOCK_METHOD(Variant, Value, (const std::string&, const std::string&), (override));
};

class ClientContext : public veldora::VdClientContext, public std::enable_shared_from_this<ClientContext> {
 public:
  MOCK_METHOD(Ref<veldora::VdConfigProvider>, Open,
              (const std::string&, const std::string&, const std::string&, const std::string&, const std::string&),
              (override));
  Ref<veldora::VdClientContext> AsVdClientContext() override {
    return Ref<veldora::VdClientContext>(shared_from_this());
  }
};

class Translator : public veldora::VdTranslator, public std::enable_shared_from_this<Translator> {
 public:
  MOCK_METHOD(void, SetLanguage, (const std::string&), (override));
  MOCK_METHOD(std::string, Translate, (const std::string&, const std::string&, const std::string&, const std::string&),
              (override));
  Ref<veldora::VdTranslator> AsVdTranslator() override { return Ref<veldora::VdTranslator>(shared_from_this()); }
};

class TextReader : public testing::Test {
 protected:
  TextReader() {
    platform.Native().RegisterMaker("Veldora.VdClientContext", [this] { return Ref<AnyObject>(context); });
    platform.Native().RegisterMaker("Veldora.VdTranslator", [this] { return Ref<AnyObject>(translator); });
    ON_CALL(*session, ClientName).WillByDefault(Return("the client"));
    ON_CALL(*session, ApplicationName).WillByDefault(Return("the application"));
    ON_CALL(*session, Database).WillByDefault(Return(Ref<veldora::VdDatabase>(database)));
    ON_CALL(*session, Config).WillByDefault(Return(Ref<veldora::VdConfig>(configuration)));
    ON_CALL(*database, Alias).WillByDefault(Return("works"));
    ON_CALL(*database, DatabaseType).WillByDefault(Return(7));
    ON_CALL(*configuration, BaseDirectory).WillByDefault(Return(folder.Path("base")));
    ON_CALL(*context, Open).WillByDefault(Return(Ref<veldora::VdConfigProvider>(provider)));
    Process().gLanguage = "EN";
  }
  void MakeNLSFile(const std::string& language) const {
    const auto path = folder.Path("base/NLS/" + language + "/Custom/Controls/" + kNameSpace + "/1.0");
    std::filesystem::create_directories(path);
    folder.Write("base/NLS/" + language + "/Custom/Controls/" + kNameSpace + "/1.0/NLS.xml", "<NLS/>");
  }
  // As a start leaves the reader.
  void Open() {
    reader.Init(session);
    reader.InitTranslator();
    reader.InitLanguage();
  }

  TestPlatform platform;
  TemporaryFolder folder;
  Ref<NiceMock<Database>> database = MakeRef<NiceMock<Database>>();
  Ref<NiceMock<Configuration>> configuration = MakeRef<NiceMock<Configuration>>();
  Ref<NiceMock<MockSession>> session = MakeRef<NiceMock<MockSession>>();
  Ref<NiceMock<Provider>> provider = MakeRef<NiceMock<Provider>>();
  Ref<NiceMock<ClientContext>> context = MakeRef<NiceMock<ClientContext>>();
  Ref<NiceMock<Translator>> translator = MakeRef<NiceMock<Translator>>();
  Cls_XML reader;
};

TEST_F(TextReader, OpensTheConfigurationOfTheSessionsDatabase) {
  EXPECT_CALL(*context, Open("the client", "7", "the application", "veldora://works", ""));

  reader.Init(session);
}

TEST_F(TextReader, LetsAFailureOfItsOpeningOut) {
  EXPECT_CALL(*context, Open).WillOnce(Throw(Failure(failure::kPermissionDenied)));

  EXPECT_THROW(reader.Init(session), Failure);
  EXPECT_EQ(reader.GetConfigParam("veldora://works", "Key"), "");
}

TEST_F(TextReader, LetsAMissingClientContextOut) {
  platform.Native().RegisterMaker("Veldora.VdClientContext", [] { return Ref<AnyObject>(); });

  EXPECT_THROW(reader.Init(session), Failure);
}

TEST_F(TextReader, LetsAMissingTranslatorOut) {
  platform.Native().RegisterMaker("Veldora.VdTranslator",
                                  []() -> Ref<AnyObject> { throw Failure(failure::kCannotCreateObject); });

  EXPECT_THROW(reader.InitTranslator(), Failure);
}

TEST_F(TextReader, NeedsATranslatorToTakeALanguage) {
  EXPECT_THROW(reader.InitLanguage(), Failure);
}

TEST_F(TextReader, GivesTheTranslatorTheLanguageOfTheProcess) {
  Process().gLanguage = "DE";
  EXPECT_CALL(*translator, SetLanguage("DE"));

  reader.InitTranslator();
  reader.InitLanguage();
}

TEST_F(TextReader, GivesAConfigurationValueAsText) {
  EXPECT_CALL(*provider, Value("veldora://works", "Size")).WillOnce(Return(Variant(std::int32_t{12})));
  reader.Init(session);

  EXPECT_EQ(reader.GetConfigParam("veldora://works", "Size"), "12");
}

TEST_F(TextReader, GivesTheEmptyTextForAValueThatFails) {
  EXPECT_CALL(*provider, Value).WillOnce(Throw(Failure(failure::kInvalidCall)));
  reader.Init(session);

  EXPECT_EQ(reader.GetConfigParam("veldora://works", "Size"), "");
}

TEST_F(TextReader, GivesTheEmptyTextForAValueThatIsNoText) {
  EXPECT_CALL(*provider, Value).WillOnce(Return(Variant(Ref<AnyObject>(translator))));
  reader.Init(session);

  EXPECT_EQ(reader.GetConfigParam("veldora://works", "Size"), "");
}

TEST_F(TextReader, GivesTheEmptyTextBeforeItIsOpened) {
  EXPECT_EQ(reader.GetConfigParam("veldora://works", "Size"), "");
  EXPECT_EQ(reader.GetConfigParamNLS(kNameSpace, "Controls", "QD.FIND_CAPTION"), "");
  EXPECT_FALSE(reader.IsNLSValid(kNameSpace, "Controls"));
}

TEST_F(TextReader, AsksForATextWithTheKeyInFrontOfTheAppendix) {
  EXPECT_CALL(*translator, Translate(kNameSpace, "QD.FIND_CAPTION", "Controls", "1.0")).WillOnce(Return("Find"));
  Open();

  EXPECT_EQ(reader.GetConfigParamNLS(kNameSpace, "Controls", "QD.FIND_CAPTION"), "Find");
}

TEST_F(TextReader, GivesTheEmptyTextForAKeyThatTheTranslatorDoesNotKnow) {
  EXPECT_CALL(*translator, Translate).WillOnce(Throw(Failure(failure::kInvalidCall)));
  Open();

  EXPECT_EQ(reader.GetConfigParamNLS(kNameSpace, "Controls", "NONSENSE"), "");
  EXPECT_TRUE(platform.Boxes().empty());
}

TEST_F(TextReader, LetsTheTranslatorLoadAFileThatIsThere) {
  MakeNLSFile("EN");
  EXPECT_CALL(*translator, Translate(kNameSpace, "", "", "1.0")).WillOnce(Return("dropped"));
  Open();

  EXPECT_TRUE(reader.IsNLSValid(kNameSpace, "Controls"));
}

TEST_F(TextReader, DoesNotAskTheTranslatorForAFileThatIsMissing) {
  EXPECT_CALL(*translator, Translate).Times(0);
  Open();

  EXPECT_FALSE(reader.IsNLSValid(kNameSpace, "Controls"));
}

TEST_F(TextReader, TakesAFileThatTheTranslatorCannotLoadForMissing) {
  MakeNLSFile("EN");
  EXPECT_CALL(*translator, Translate).WillOnce(Throw(Failure(failure::kInvalidFormat)));
  Open();

  EXPECT_FALSE(reader.IsNLSValid(kNameSpace, "Controls"));
}

TEST_F(TextReader, LooksInNoOtherLanguage) {
  MakeNLSFile("EN");
  Process().gLanguage = "DE";
  Open();

  EXPECT_FALSE(reader.IsNLSValid(kNameSpace, "Controls"));
}

TEST_F(TextReader, LooksInNoOtherFolderOfTheLanguage) {
  MakeNLSFile("EN");
  std::filesystem::rename(folder.Path("base/NLS/EN/Custom"), folder.Path("base/NLS/EN/Standard"));
  Open();

  EXPECT_FALSE(reader.IsNLSValid(kNameSpace, "Controls"));
  EXPECT_FALSE(reader.IsNLSValid(kNameSpace, "Errors"));
}

TEST_F(TextReader, LooksForTheFileUnderTheBaseDirectory) {
  platform.TheGate()->StartRecording();
  Open();

  reader.IsNLSValid("A.NAME", "Extra");

  const auto file = std::string("/base/NLS/EN/Custom/Extra/A.NAME/1.0/NLS.xml");
  auto call = platform.TheGate()->Record().back();
  std::ranges::replace(call, '\\', '/');
  EXPECT_TRUE(call.starts_with("FileSystem.FileExists(")) << call;
  EXPECT_TRUE(call.ends_with(file + ")")) << call;
}

TEST_F(TextReader, MakesTheFileSystemObjectOnceAndOnlyWhenItIsNeeded) {
  int made = 0;
  platform.Native().RegisterMaker("Scripting.FileSystemObject", [&] {
    ++made;
    return Ref<AnyObject>(platform.Native().FileSystem());
  });
  Open();
  EXPECT_EQ(made, 0);

  reader.IsNLSValid(kNameSpace, "Controls");
  reader.IsNLSValid(kNameSpace, "Controls");

  EXPECT_EQ(made, 1);
}

TEST_F(TextReader, TakesAFileForMissingThatCannotBeLookedFor) {
  MakeNLSFile("EN");
  platform.Native().RegisterMaker("Scripting.FileSystemObject", [] { return Ref<AnyObject>(); });
  Open();

  EXPECT_FALSE(reader.IsNLSValid(kNameSpace, "Controls"));
}

}  // namespace
}  // namespace quintara::test
