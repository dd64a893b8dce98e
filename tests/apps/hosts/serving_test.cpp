#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "access/contracts/spreadsheet.h"
#include "apps/hosts/hosts_process.h"
#include "base/failure.h"
#include "support/test_platform.h"

namespace quintara::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

template <class Body>
int NumberOf(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return 0;
}

// A vault in a folder of the test's own, made by the process itself.
class TheHosts : public testing::Test {
 protected:
  std::vector<std::string> WithVault(const std::vector<std::string>& further = {}) const {
    std::vector<std::string> arguments{"--init", "--vault", folder.Path("quintara.vault")};
    arguments.insert(arguments.end(), further.begin(), further.end());
    return arguments;
  }
  static Ref<veldora::VdApplication> Vault() {
    return HostsProcess::Attach<veldora::VdApplication>("Veldora.VdApplication");
  }
  static Ref<zorva::Application> Cad() { return HostsProcess::Attach<zorva::Application>("ZORVA.Application"); }

  TemporaryFolder folder;
};

TEST_F(TheHosts, ServeTheVaultToAnotherProgram) {
  const HostsProcess hosts(WithVault({"--lang", "de"}));

  const auto session = Vault()->Engine()->Sessions(0);

  EXPECT_EQ(session->UserMetaInfo()->Login(), "admin");
  EXPECT_EQ(session->Language(), "DE");
}

TEST_F(TheHosts, ServeTheCadHostToAnotherProgram) {
  const HostsProcess hosts({"--cad-only"});

  EXPECT_EQ(Cad()->Documents()->Add("ZVAProduct")->AsProductDocument()->Product()->PartNumber(), "Product1");
}

TEST_F(TheHosts, ServeWorkbooksOfTheirOwnToEachWhoCreatesAnApplication) {
  const HostsProcess hosts({"--excel-only"});

  const auto first = HostsProcess::Create<excel::Application>("Excel.Application");
  const auto second = HostsProcess::Create<excel::Application>("Excel.Application");
  first->Workbooks()->Add();

  EXPECT_EQ(first->Workbooks()->Count(), 1);
  EXPECT_EQ(second->Workbooks()->Count(), 0);
}

TEST_F(TheHosts, LetOthersCreateWhatBelongsToTheVault) {
  const HostsProcess hosts(WithVault());
  const auto session = Vault()->Engine()->Sessions(0);

  const auto translator = HostsProcess::Create<veldora::VdTranslator>("Veldora.VdTranslator");
  translator->SetLanguage("EN");
  const auto context = HostsProcess::Create<veldora::VdClientContext>("Veldora.VdClientContext");

  EXPECT_FALSE(
      translator->Translate("norvik.solutions.NLS.Controls.QNTR", "QD.WIP_CAPTION", "Controls", "1.0").empty());
  EXPECT_TRUE(context->Open(session->ClientName(), "0", session->ApplicationName(), "veldora://x", ""));
}

TEST_F(TheHosts, NeverLetTheVaultBeCreated) {
  const HostsProcess hosts(WithVault());

  EXPECT_EQ(NumberOf([] { HostsProcess::Created("Veldora.VdApplication"); }), static_cast<int>(REGDB_E_CLASSNOTREG));
}

TEST_F(TheHosts, GiveTheRunningCadHostToWhoeverCreatesOne) {
  const HostsProcess hosts({"--cad-only"});
  Cad()->Documents()->Add("ZVAProduct");

  EXPECT_EQ(HostsProcess::Create<zorva::Application>("ZORVA.Application")->Documents()->Count(), 1);
}

TEST_F(TheHosts, ConnectTheEngineWhereTheyHaveAVault) {
  const HostsProcess hosts(WithVault({"--serve", "cad"}));

  EXPECT_TRUE(Cad()->GetItem("HIXEngine")->AsHIXEngine()->IsConnected());
  EXPECT_NE(NumberOf([] { Vault(); }), 0);
}

TEST_F(TheHosts, HaveNoEngineWithoutAVault) {
  const HostsProcess hosts({"--cad-only"});

  EXPECT_FALSE(Cad()->GetItem("HIXEngine"));
}

TEST_F(TheHosts, StandApartInTwoProcesses) {
  const HostsProcess vault(WithVault({"--vault-only"}));
  const HostsProcess cad({"--cad-only"});

  EXPECT_EQ(Vault()->Engine()->Sessions(0)->UserMetaInfo()->Login(), "admin");
  EXPECT_EQ(Cad()->Documents()->Count(), 0);
}

TEST_F(TheHosts, AreNotServedTwice) {
  const HostsProcess first({"--cad-only"});

  HostsProcess second({"--cad-only"});

  EXPECT_EQ(second.WaitForEnd(), 1);
  EXPECT_THAT(second.Errors(), HasSubstr("\"ZORVA.Application\""));
  EXPECT_EQ(Cad()->Documents()->Count(), 0);
}

TEST_F(TheHosts, AreNotServedWithoutAVaultThatIsMissing) {
  HostsProcess hosts({"--vault", folder.Path("absent"), "--log", folder.Path("log")});

  EXPECT_EQ(hosts.WaitForEnd(), 1);
  EXPECT_THAT(hosts.Errors(), HasSubstr("absent' is no vault"));
  EXPECT_THAT(folder.Read("log"), HasSubstr("absent' is no vault"));
}

TEST_F(TheHosts, AreNotServedToAUserWhomTheVaultDoesNotKnow) {
  { const HostsProcess hosts(WithVault()); }

  HostsProcess hosts(WithVault({"--user", "nobody"}));

  EXPECT_EQ(hosts.WaitForEnd(), 1);
  EXPECT_THAT(hosts.Errors(), AllOf(HasSubstr("nobody"), HasSubstr("QUINTARA_PASSWORD")));
}

TEST_F(TheHosts, TellTheirProcessWhenTheyServe) {
  const HostsProcess hosts({"--excel-only", "--ready", folder.Path("ready")});

  EXPECT_EQ(folder.Read("ready"), std::to_string(hosts.Id()) + "\n");
}

TEST_F(TheHosts, EndWhenTheirWindowIsClosed) {
  HostsProcess hosts({"--cad-only"});

  hosts.Close();

  EXPECT_EQ(hosts.WaitForEnd(), 0);
  EXPECT_NE(NumberOf([] { Cad(); }), 0);
}

TEST_F(TheHosts, EndWhenTheControlAsksThemTo) {
  HostsProcess hosts({"--cad-only", "--control"});

  HostsProcess::Control()->Quit();

  EXPECT_EQ(hosts.WaitForEnd(), 0);
}

TEST_F(TheHosts, EndInTheMiddleOfTheCallThatWasChosen) {
  HostsProcess hosts({"--cad-only", "--control"});
  const auto documents = Cad()->Documents();
  HostsProcess::Control()->EndInMidCall("documents.count", 2);

  EXPECT_EQ(documents->Count(), 0);
  documents->Add("ZVAProduct");
  EXPECT_EQ(NumberOf([&] { documents->Count(); }), failure::kServerGone);

  EXPECT_NE(hosts.WaitForEnd(), 0);
  EXPECT_EQ(NumberOf([&] { documents->Count(); }), failure::kServerGone);
}

TEST_F(TheHosts, ServeOnWhenAClientDiesInTheMiddle) {
  const HostsProcess hosts({"--cad-only", "--control"});
  const auto client = HostsProcess::Beside("dying_client");

  EXPECT_EQ(HostsProcess::RunToEnd(client), 7);

  EXPECT_EQ(Cad()->Documents()->Count(), 1);
  EXPECT_GT(HostsProcess::Control()->Calls(), 0);
}

}  // namespace
}  // namespace quintara::test
