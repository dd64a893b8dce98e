#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "access/host_mocks.h"
#include "access/session/process.h"
#include "access/utils/Cls_Utils.h"
#include "base/failure.h"
#include "base/text.h"
#include "commands/global_refresh_internals.h"
#include "hosts/vault/database.h"
#include "services/running_hosts.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using testing::_;
using testing::AnyNumber;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::InSequence;
using testing::IsEmpty;
using testing::NiceMock;
using testing::Not;
using testing::Return;
using testing::Throw;

using Lines = std::vector<std::string>;

class MockUserInfo : public veldora::VdUserInfo {
 public:
  MOCK_METHOD(std::string, Login, (), (override));
  MOCK_METHOD(std::string, Password, (), (override));
  MOCK_METHOD(std::int32_t, UserId, (), (override));
};

constexpr auto kLogin = "margot";
constexpr auto kPassword = "xylophone";

const Lines kStart = {"INFORMATION Reload session started...", "INFORMATION Current veldora session retrieved",
                      "INFORMATION Current veldora session retrieved"};
const Lines kWhole = {"INFORMATION Reload session started...",
                      "INFORMATION Current veldora session retrieved",
                      "INFORMATION Current veldora session retrieved",
                      "INFORMATION Veldora launched before ZORVA",
                      "INFORMATION User login retrieved",
                      "INFORMATION User password retrieved",
                      "INFORMATION HIX disconnected",
                      "INFORMATION Veldora session logoff",
                      "INFORMATION Veldora session logon",
                      "INFORMATION HIX connected",
                      "INFORMATION Reload session terminated successfully"};

Lines With(Lines lines, const std::string& last) {
  lines.push_back(last);
  return lines;
}

// The first lines of a whole reload, then that of a failure.
Lines FailedAfter(std::size_t count, const std::string& description) {
  return With({kWhole.begin(), kWhole.begin() + static_cast<std::ptrdiff_t>(count)},
              "ERROR Error during the reload session function : " + description);
}

class ReloadSession : public testing::Test {
 protected:
  ReloadSession() {
    Process().gWorkDirectory = folder.Path();
    Process().texts.COMMON_UNEXPECTED_ERROR.text = CatalogueTextOf("EN", kError);
    ON_CALL(*session, ApplicationName).WillByDefault(Return("Veldora"));
    ON_CALL(*session, UserMetaInfo).WillByDefault(Return(Ref<veldora::VdUserInfo>(user)));
    ON_CALL(*user, Login).WillByDefault(Return(kLogin));
    ON_CALL(*user, Password).WillByDefault(Return(kPassword));
  }

  bool Reload(bool withLog) { return GlobalRefreshInternals::ReloadSession(session, engine, withLog); }
  bool Has(const std::string& name) const { return folder.Has(name); }
  Lines Log() const {
    std::istringstream text(folder.Read("ReloadSession.log"));
    Lines lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
  }

  const TextKey kError{Catalogue::kMessages, "COMMON.UNEXPECTED_ERROR", {"label", "error"}};
  TestPlatform platform;
  TemporaryFolder folder;
  Ref<NiceMock<MockSession>> session = MakeRef<NiceMock<MockSession>>();
  Ref<NiceMock<MockUserInfo>> user = MakeRef<NiceMock<MockUserInfo>>();
  Ref<NiceMock<MockEngine>> engine = MakeRef<NiceMock<MockEngine>>();
};

TEST_F(ReloadSession, LogsOffAndOnWithTheEngineDisconnected) {
  const InSequence inThisOrder;
  EXPECT_CALL(*session, ApplicationName).WillOnce(Return("Veldora"));
  EXPECT_CALL(*session, UserMetaInfo);
  EXPECT_CALL(*user, Login);
  EXPECT_CALL(*user, Password);
  EXPECT_CALL(*engine, Disconnect);
  EXPECT_CALL(*session, UserLogoff);
  EXPECT_CALL(*session, UserLogin(kLogin, kPassword));
  EXPECT_CALL(*engine, Connect(kLogin, kPassword));

  EXPECT_TRUE(Reload(false));

  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(ReloadSession, LeavesNoLogUnlessOneIsWanted) {
  platform.TheGate()->StartRecording();

  Reload(false);

  EXPECT_THAT(platform.TheGate()->Record(), IsEmpty());
  EXPECT_FALSE(Has("ReloadSession.log"));
}

TEST_F(ReloadSession, LogsEachStep) {
  EXPECT_TRUE(Reload(true));

  EXPECT_EQ(Log(), kWhole);
}

TEST_F(ReloadSession, GoesOnInTheLogOfTheOneBefore) {
  Reload(true);
  Reload(true);

  EXPECT_EQ(Log().size(), 2 * kWhole.size());
}

TEST_F(ReloadSession, LogsEachStepWhenItIsDone) {
  std::vector<std::size_t> lines;
  const auto note = [&] { lines.push_back(Log().size()); };
  ON_CALL(*user, Login).WillByDefault([&] { return note(), std::string(kLogin); });
  ON_CALL(*user, Password).WillByDefault([&] { return note(), std::string(kPassword); });
  ON_CALL(*engine, Disconnect).WillByDefault(note);
  ON_CALL(*session, UserLogoff).WillByDefault(note);
  ON_CALL(*session, UserLogin).WillByDefault([&](const auto&, const auto&) { note(); });
  ON_CALL(*engine, Connect).WillByDefault([&](const auto&, const auto&) { note(); });

  Reload(true);

  EXPECT_THAT(lines, ElementsAre(4, 5, 6, 7, 8, 9));
}

TEST_F(ReloadSession, HasNothingToDoWhereTheCadHostWasStartedFirst) {
  for (const auto* name : {"ZORVA", "zorva", "Zorva"}) {
    EXPECT_CALL(*session, ApplicationName).WillOnce(Return(name));
    EXPECT_CALL(*session, UserMetaInfo).Times(0);
    EXPECT_CALL(*session, UserLogoff).Times(0);
    EXPECT_CALL(*engine, Disconnect).Times(0);

    EXPECT_TRUE(Reload(false)) << name;
  }
}

TEST_F(ReloadSession, LogsThatThereIsNothingToDo) {
  ON_CALL(*session, ApplicationName).WillByDefault(Return("ZORVA"));

  Reload(true);

  EXPECT_EQ(Log(), With(kStart, "INFORMATION Reload session terminated successfully"));
}

TEST_F(ReloadSession, KnowsTheVaultsNameInAnyLetters) {
  for (const auto* name : {"veldora", "VELDORA", "Veldora"}) {
    EXPECT_CALL(*session, ApplicationName).WillOnce(Return(name));
    EXPECT_CALL(*session, UserLogoff).Times(1).RetiresOnSaturation();

    EXPECT_TRUE(Reload(false)) << name;
  }
}

TEST_F(ReloadSession, OfAnyOtherNameIsRefusedWithoutABox) {
  for (const auto* name : {"", "Veldora ", "ZORVA2", "other"}) {
    EXPECT_CALL(*session, ApplicationName).WillOnce(Return(name));
    EXPECT_CALL(*session, UserLogoff).Times(0);

    EXPECT_FALSE(Reload(false)) << name;
  }
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(ReloadSession, LogsAnUnknownNameAsInformation) {
  ON_CALL(*session, ApplicationName).WillByDefault(Return("other"));

  EXPECT_FALSE(Reload(true));

  EXPECT_EQ(Log(), With(kStart, "INFORMATION Can't retrieve Application Name"));
}

TEST_F(ReloadSession, WithoutASessionEndsTheLogAfterTwoLines) {
  EXPECT_FALSE(GlobalRefreshInternals::ReloadSession(nullptr, engine, true));

  EXPECT_THAT(Log(),
              ElementsAre("INFORMATION Reload session started...", "ERROR Can't get the current veldora session"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(ReloadSession, WithoutAnEngineEndsTheLogAfterThree) {
  EXPECT_CALL(*session, ApplicationName).Times(0);

  EXPECT_FALSE(GlobalRefreshInternals::ReloadSession(session, nullptr, true));

  EXPECT_THAT(Log(), ElementsAre("INFORMATION Reload session started...",
                                 "INFORMATION Current veldora session retrieved", "ERROR Can't get the HIX Engine"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(ReloadSession, WithoutASessionOrAnEngineIsQuietWithoutALog) {
  EXPECT_FALSE(GlobalRefreshInternals::ReloadSession(nullptr, engine, false));
  EXPECT_FALSE(GlobalRefreshInternals::ReloadSession(session, nullptr, false));

  EXPECT_FALSE(Has("ReloadSession.log"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(ReloadSession, GoesOnWhereTheLogCannotBeHad) {
  Process().gWorkDirectory = folder.Path("absent");
  platform.TheGate()->StartRecording();
  EXPECT_CALL(*engine, Connect);

  EXPECT_TRUE(Reload(true));

  EXPECT_THAT(platform.TheGate()->Record(), ElementsAre("Platform.LogEvent(Reload session started...)"));
  EXPECT_THAT(platform.Boxes(), IsEmpty());
}

TEST_F(ReloadSession, LeavesTheRestOutWhereTheLogBreaksOff) {
  platform.TheGate()->FailCall(4);

  EXPECT_TRUE(Reload(true));

  EXPECT_EQ(Log(), kStart);
}

TEST_F(ReloadSession, KeepsLoginAndPasswordToItself) {
  Reload(true);
  ON_CALL(*session, UserLogin).WillByDefault(Throw(Failure(failure::kPermissionDenied, "no")));
  Reload(true);

  EXPECT_THAT(folder.Read("ReloadSession.log"), Not(HasSubstr(kLogin)));
  EXPECT_THAT(folder.Read("ReloadSession.log"), Not(HasSubstr(kPassword)));
  EXPECT_THAT(folder.Names(), ElementsAre("ReloadSession.log"));
}

// One failing call, and the lines of the log before it.
struct Failing {
  const char* call;
  std::size_t lines;
};
void PrintTo(const Failing& failing, std::ostream* out) {
  *out << failing.call;
}

class FailedReload : public ReloadSession, public testing::WithParamInterface<Failing> {
 protected:
  FailedReload() {
    const Failure failure(failure::kDeviceError, "out of order");
    const std::string call = GetParam().call;
    if (call == "ApplicationName") ON_CALL(*session, ApplicationName).WillByDefault(Throw(failure));
    if (call == "UserMetaInfo") ON_CALL(*session, UserMetaInfo).WillByDefault(Throw(failure));
    if (call == "Login") ON_CALL(*user, Login).WillByDefault(Throw(failure));
    if (call == "Password") ON_CALL(*user, Password).WillByDefault(Throw(failure));
    if (call == "Disconnect") ON_CALL(*engine, Disconnect).WillByDefault(Throw(failure));
    if (call == "UserLogoff") ON_CALL(*session, UserLogoff).WillByDefault(Throw(failure));
    if (call == "UserLogin") ON_CALL(*session, UserLogin).WillByDefault(Throw(failure));
    if (call == "Connect") ON_CALL(*engine, Connect).WillByDefault(Throw(failure));
  }

  const Box box{
      Cls_Utils().GetMessage(CatalogueTextOf("EN", kError), {"Cls_GlobalRefreshVD.ReloadSession", "out of order"}), 16,
      "Quintara"};
};

TEST_P(FailedReload, IsShown) {
  EXPECT_FALSE(Reload(false));

  EXPECT_THAT(platform.Boxes(), ElementsAre(box));
  EXPECT_FALSE(Has("ReloadSession.log"));
}

TEST_P(FailedReload, IsShownAndLogged) {
  EXPECT_FALSE(Reload(true));

  EXPECT_THAT(platform.Boxes(), ElementsAre(box));
  EXPECT_EQ(Log(), FailedAfter(GetParam().lines, "out of order"));
}

INSTANTIATE_TEST_SUITE_P(EachCall, FailedReload,
                         testing::Values(Failing{"ApplicationName", 3}, Failing{"UserMetaInfo", 4}, Failing{"Login", 4},
                                         Failing{"Password", 5}, Failing{"Disconnect", 6}, Failing{"UserLogoff", 7},
                                         Failing{"UserLogin", 8}, Failing{"Connect", 9}),
                         testing::PrintToStringParamName());

TEST_F(ReloadSession, OfAUserWhoIsNobodyFailsAsOnNothing) {
  ON_CALL(*session, UserMetaInfo).WillByDefault(Return(nullptr));
  EXPECT_CALL(*session, UserLogoff).Times(0);

  EXPECT_FALSE(Reload(true));

  EXPECT_THAT(Log().back(), HasSubstr("Object variable or With block variable not set"));
}

// On the embedded hosts.
class ReloadOfHosts : public testing::Test, protected RunningHosts {
 protected:
  ReloadOfHosts() {
    RunVault();
    RunZorva();
    EXPECT_TRUE(Init());
  }

  bool Reload(bool withLog = false) { return GlobalRefreshInternals::ReloadSession(Session(), engine, withLog); }
  static std::string Value() { return R"($User\LifeCycleSetUp\CopyOverwrite)"; }
};

TEST_F(ReloadOfHosts, LetsTheConfigurationTakeHold) {
  Session()->Config()->SetValue(Value(), "YES");
  EXPECT_EQ(vault->Integration().ConfigInForce(Value()), "");

  EXPECT_TRUE(Reload());

  EXPECT_EQ(vault->Integration().ConfigInForce(Value()), "YES");
  EXPECT_TRUE(engine->IsConnected());
}

TEST_F(ReloadOfHosts, LetsObjectsServeThatWereTakenBefore) {
  const auto part = AddPart("BOLT");
  const auto config = Session()->Config();

  EXPECT_TRUE(Reload());

  EXPECT_EQ(part->Record()->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
  EXPECT_NO_THROW(config->SetValue(Value(), "NO"));
}

TEST_F(ReloadOfHosts, ThatCannotLogOnAgainLeavesNobodyLoggedOn) {
  const auto part = AddPart("BOLT");
  gate->FailOperation("VdSession.UserLogin");

  EXPECT_FALSE(Reload());
  gate->Reset();

  EXPECT_FALSE(engine->IsConnected());
  EXPECT_THAT(FailureOf([&] { part->Retrieve(); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { Session()->Config(); }), FailsWith(failure::kPermissionDenied));
}

TEST_F(ReloadOfHosts, WhoseConfigurationCannotBeReadLeavesNobodyLoggedOn) {
  const auto part = AddPart("BOLT");
  vault::Database(vault->Folder().connection).Execute("ALTER TABLE vd_config RENAME TO elsewhere");

  EXPECT_FALSE(Reload());

  EXPECT_FALSE(engine->IsConnected());
  EXPECT_THAT(FailureOf([&] { part->Retrieve(); }), FailsWith(failure::kPermissionDenied));
}

TEST_F(ReloadOfHosts, NamesTheUserInNoLineOfTheLog) {
  for (const auto* call : {"VdUserInfo.Login", "VdUserInfo.Password", "HIXEngine.Disconnect", "VdSession.UserLogoff",
                           "HIXEngine.Connect", "VdSession.ApplicationName"}) {
    gate->FailOperation(call);
    EXPECT_FALSE(Reload(true)) << call;
    gate->Reset();
  }
  EXPECT_TRUE(Reload(true));

  EXPECT_THAT(ReadWork("ReloadSession.log"), Not(HasSubstr("admin")));
  EXPECT_THAT(ReadWork("ReloadSession.log"), Not(HasSubstr("secret")));
}

}  // namespace
}  // namespace quintara::test
