#include "hosts/switches.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apps/hosts/hosts_process.h"
#include "base/text.h"

namespace quintara::hosts {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using Arguments = std::vector<std::string>;

std::string Complaint(const Arguments& arguments) {
  try {
    ParseSwitches(arguments);
  } catch (const WrongSwitch& wrong) {
    return wrong.what();
  }
  return {};
}

TEST(Switches, AllHostsAreServedWhereNoneIsNamed) {
  EXPECT_THAT(ParseSwitches({}).hosts, UnorderedElementsAre(Host::kVault, Host::kCad, Host::kExcel));
  EXPECT_THAT(ParseSwitches({"--control"}).hosts,
              UnorderedElementsAre(Host::kVault, Host::kCad, Host::kExcel, Host::kControl));
}

TEST(Switches, NameTheHostsThatAreServed) {
  EXPECT_THAT(ParseSwitches({"--serve", "vault,EXCEL"}).hosts, UnorderedElementsAre(Host::kVault, Host::kExcel));
  EXPECT_THAT(ParseSwitches({"--cad-only", "--control"}).hosts, UnorderedElementsAre(Host::kCad, Host::kControl));
}

TEST(Switches, TakeTheirValueBesideOrBehindThem) {
  EXPECT_EQ(ParseSwitches({"--vault", "C:\\my vault"}).vault, "C:\\my vault");
  EXPECT_EQ(ParseSwitches({"--vault=C:\\a=b"}).vault, "C:\\a=b");
  EXPECT_EQ(ParseSwitches({"--lang", "fr"}).language, "FR");
}

TEST(Switches, OfAutomationAreKnownInEverySpelling) {
  EXPECT_TRUE(ParseSwitches({"-Embedding"}).startedByAutomation);
  EXPECT_TRUE(ParseSwitches({"/automation"}).startedByAutomation);
  EXPECT_EQ(ParseSwitches({"/RegServer"}).task, Switches::Task::kRegister);
  EXPECT_EQ(ParseSwitches({"-unregserver"}).task, Switches::Task::kUnregister);
  EXPECT_EQ(ParseSwitches({"/?"}).task, Switches::Task::kHelp);
}

TEST(Switches, OfTheVaultAreKeptForAStartByAutomation) {
  const auto switches = ParseSwitches({"/regserver", "--user", "me", "--ready", "x", "--hidden", "--control"});

  EXPECT_THAT(switches.kept, ElementsAre("--user", "me", "--hidden"));
}

TEST(Switches, NameFoldersAsTheyStandWhereverAProcessIsStarted) {
  const auto switches = ParseSwitches({"--vault", "here"});

  EXPECT_TRUE(ToPath(switches.vault).is_absolute());
  EXPECT_THAT(switches.kept, ElementsAre("--vault", switches.vault));
}

TEST(Switches, ServeOneNameAlone) {
  const auto switches = ParseSwitches({"--only", "zorva.application"});

  EXPECT_TRUE(switches.Serves(*FindServedName("ZORVA.Application")));
  EXPECT_FALSE(switches.Serves(*FindServedName("Veldora.VdApplication")));
  EXPECT_FALSE(switches.Serves(*FindServedName("Excel.Application")));
}

TEST(Switches, WithoutSenseAreRefusedByName) {
  EXPECT_THAT(Complaint({"--nonsense"}), HasSubstr("'--nonsense'"));
  EXPECT_THAT(Complaint({"vault"}), HasSubstr("'vault'"));
  EXPECT_THAT(Complaint({"---vault", "x"}), HasSubstr("'---vault'"));
  EXPECT_THAT(Complaint({""}), HasSubstr("''"));
  EXPECT_THAT(Complaint({"--vault"}), HasSubstr("--vault needs a value"));
  EXPECT_THAT(Complaint({"--vault="}), HasSubstr("--vault needs a value"));
  EXPECT_THAT(Complaint({"--hidden=yes"}), HasSubstr("--hidden takes no value"));
  EXPECT_THAT(Complaint({"--serve", "vault,mail"}), HasSubstr("'mail'"));
  EXPECT_THAT(Complaint({"--lang", "english"}), HasSubstr("'english'"));
  EXPECT_THAT(Complaint({"--ends-with", "me"}), HasSubstr("'me'"));
  EXPECT_THAT(Complaint({"--only", "Veldora.VdApplication"}), HasSubstr("'Veldora.VdApplication'"));
  EXPECT_THAT(Complaint({"--init"}), HasSubstr("--init needs --vault"));
  EXPECT_THAT(Complaint({"--init", "--excel-only"}), HasSubstr("--init is of no use"));
}

TEST(Switches, AreToldByTheHelp) {
  for (const auto* name : {"--serve", "--vault ", "--init", "--user", "--lang", "--work", "/regserver", "/unregserver",
                           "-Embedding", "--hidden", "--ready", "--log", "--ends-with", "--control"}) {
    EXPECT_THAT(HelpText(), HasSubstr(name));
  }
}

TEST(AProcessWithWrongSwitches, EndsWithTwoAndTellsWhy) {
  test::HostsProcess hosts({"--nonsense"});

  EXPECT_EQ(hosts.WaitForEnd(), 2);
  EXPECT_THAT(hosts.Errors(), HasSubstr("'--nonsense'"));
}

}  // namespace
}  // namespace quintara::hosts
