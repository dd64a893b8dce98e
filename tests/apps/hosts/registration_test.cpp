#include "hosts/registration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "access/contracts/spreadsheet.h"
#include "apps/hosts/hosts_process.h"
#include "base/failure.h"
#include "hosts/registry_key.h"
#include "support/test_platform.h"

namespace quintara::hosts {
namespace {

using test::HostsProcess;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::string kClasses = "Software\\Classes";

// All that stands below a key of the current user.
std::string Dump(const std::string& path) {
  auto text = path + "\n";
  for (const auto& [name, value] : TextsAt(path)) text += "  " + name + " = " + value + "\n";
  for (const auto& subkey : SubkeysOf(path)) text += Dump(path + "\\" + subkey);
  return text;
}

std::string DumpOfUser() {
  return Dump(kClasses) + Dump("Software\\QuintaraHosts");
}

// Tells the first line that is another one now.
testing::AssertionResult IsAs(const std::string& before) {
  const auto now = DumpOfUser();
  if (now == before) return testing::AssertionSuccess();
  const auto [left, right] = std::ranges::mismatch(now, before);
  const auto position = static_cast<std::size_t>(left - now.begin());
  const auto start = now.rfind('\n', position) + 1;
  return testing::AssertionFailure() << "now '" << now.substr(start, 120) << "', before '"
                                     << before.substr(std::min(start, before.size()), 120) << "'";
}

const ServedName& Name(const char* programName) {
  return *FindServedName(programName);
}

std::string Command(const ServedName& name) {
  return std::string("command of ") + name.programName;
}

std::vector<const ServedName*> AllNames() {
  std::vector<const ServedName*> names;
  for (const auto& name : ServedNames()) names.push_back(&name);
  return names;
}

std::string KeyOf(const char* programName) {
  return kClasses + "\\" + programName;
}

// Whether any process serves, as the registry tells.
bool IsServing() {
  return std::ranges::any_of(SubkeysOf("Software\\QuintaraHosts"),
                             [](const auto& name) { return name.starts_with("Running"); });
}

bool EndsServing() {
  for (int i = 0; i < 6000 && IsServing(); ++i) Sleep(20);
  return !IsServing();
}

// What a test writes beside goes again.
class TheRegistration : public testing::Test {
 protected:
  TheRegistration() {
    MakeKey(kClasses);
    Registration::TidyUp();
    before_ = DumpOfUser();
  }
  ~TheRegistration() override {
    Registration::ForGood().Unregister();
    Registration::OfProcess(1).Unregister();
    for (auto made = made_.rbegin(); made != made_.rend(); ++made) {
      for (const auto& [value, text] : TextsAt(*made)) EraseValue(*made, value);
      EraseEmptyKey(*made);
    }
    EXPECT_TRUE(IsAs(before_));
  }

  void GivenKey(const std::string& path, const std::string& text) {
    made_.push_back(path);
    MakeKey(path);
    WriteText(path, "", text);
  }
  void GivenThatExcelIsHeld() {
    GivenKey(KeyOf("Excel.Application"), "Another program");
    GivenKey(KeyOf("Excel.Application") + "\\CLSID", "{00024500-1111-2222-3333-000000000046}");
  }

  std::string before_;
  std::vector<std::string> made_;
};

TEST_F(TheRegistration, WritesNamesAndHowTheirServersAreStarted) {
  const auto registered = Registration::ForGood().Register(AllNames(), Command);

  EXPECT_EQ(registered.taken.size(), ServedNames().size());
  EXPECT_THAT(registered.held, IsEmpty());
  for (const auto& name : ServedNames()) {
    const auto clsid = TextAt(HKEY_CURRENT_USER, KeyOf(name.programName) + "\\CLSID", "");
    ASSERT_EQ(clsid, TextOf(name.clsid));
    const auto server = TextAt(HKEY_CURRENT_USER, kClasses + "\\CLSID\\" + *clsid + "\\LocalServer32", "");
    EXPECT_EQ(server.has_value(), name.isStarted) << name.programName;
    EXPECT_EQ(server.value_or(Command(name)), Command(name));
  }
}

TEST_F(TheRegistration, LeavesNothingBehind) {
  const auto before = DumpOfUser();
  Registration::ForGood().Register(AllNames(), Command);
  EXPECT_NE(DumpOfUser(), before);

  Registration::ForGood().Unregister();

  EXPECT_TRUE(IsAs(before));
}

TEST_F(TheRegistration, MayBeMadeAndTakenBackTwice) {
  const auto before = DumpOfUser();
  Registration::ForGood().Register(AllNames(), Command);
  const auto once = DumpOfUser();

  Registration::ForGood().Register(AllNames(), Command);
  EXPECT_TRUE(IsAs(once));
  Registration::ForGood().Unregister();
  Registration::ForGood().Unregister();

  EXPECT_TRUE(IsAs(before));
}

TEST_F(TheRegistration, LeavesANameToTheProgramThatHoldsIt) {
  GivenThatExcelIsHeld();
  const auto before = Dump(KeyOf("Excel.Application"));

  const auto registered = Registration::ForGood().Register(AllNames(), Command);

  EXPECT_THAT(registered.held, ElementsAre(&Name("Excel.Application")));
  EXPECT_EQ(registered.taken.size(), ServedNames().size() - 1);
  EXPECT_EQ(Dump(KeyOf("Excel.Application")), before);
  EXPECT_FALSE(HasKey(HKEY_CURRENT_USER, kClasses + "\\CLSID\\" + TextOf(Name("Excel.Application").clsid)));
  Registration::ForGood().Unregister();
  EXPECT_EQ(Dump(KeyOf("Excel.Application")), before);
}

TEST_F(TheRegistration, LeavesANameThatHasNoClass) {
  GivenKey(KeyOf("ZORVA.Application"), "half of something");

  const auto registered = Registration::ForGood().Register(AllNames(), Command);

  EXPECT_THAT(registered.held, ElementsAre(&Name("ZORVA.Application")));
  EXPECT_EQ(SubkeysOf(KeyOf("ZORVA.Application")), std::vector<std::string>());
}

TEST_F(TheRegistration, LeavesWhatHasChangedSince) {
  Registration::ForGood().Register(AllNames(), Command);
  const auto key = KeyOf("ZORVA.Application");
  WriteText(key, "", "mine");
  GivenKey(key + "\\Further", "mine too");
  made_.insert(made_.begin(), key);

  Registration::ForGood().Unregister();

  EXPECT_EQ(Dump(key), key + "\n   = mine\n" + key + "\\Further\n   = mine too\n");
  EXPECT_FALSE(HasKey(HKEY_CURRENT_USER, KeyOf("Excel.Application")));
}

TEST_F(TheRegistration, OfAProcessLeavesThatOfAnInstallation) {
  Registration::ForGood().Register(AllNames(), Command);
  const auto registered = DumpOfUser();

  Registration::OfProcess(1).Register(AllNames(), [](const ServedName&) { return std::string("other"); });
  Registration::OfProcess(1).Unregister();

  EXPECT_TRUE(IsAs(registered));
}

TEST_F(TheRegistration, LastsUntilTheLastThatHasItEnds) {
  const auto before = DumpOfUser();
  Registration::OfProcess(1).Register({&Name("ZORVA.Application")}, Command);
  Registration::ForGood().Register(AllNames(), Command);

  Registration::OfProcess(1).Unregister();
  EXPECT_TRUE(HasKey(HKEY_CURRENT_USER, KeyOf("ZORVA.Application") + "\\CLSID"));
  Registration::ForGood().Unregister();

  EXPECT_TRUE(IsAs(before));
}

TEST_F(TheRegistration, OfAProcessThatDiedIsTakenBackByTheNext) {
  const auto before = DumpOfUser();
  {
    HostsProcess hosts({"--cad-only", "--control"});
    HostsProcess::Control()->EndInMidCall("Documents", 1);
    const auto cad = HostsProcess::Attach<zorva::Application>("ZORVA.Application");
    EXPECT_THROW(cad->Documents(), Failure);
    hosts.WaitForEnd();
    EXPECT_NE(DumpOfUser(), before);
  }

  { const HostsProcess next({"--excel-only"}); }

  EXPECT_TRUE(IsAs(before));
}

TEST_F(TheRegistration, OfAServingProcessEndsWithIt) {
  const auto before = DumpOfUser();
  {
    const HostsProcess hosts({"--cad-only"});
    EXPECT_TRUE(HasKey(HKEY_CURRENT_USER, KeyOf("ZORVA.Application")));
    EXPECT_FALSE(HasKey(HKEY_CURRENT_USER, KeyOf("Excel.Application")));
  }

  EXPECT_TRUE(IsAs(before));
}

TEST_F(TheRegistration, ByTheProgramItselfIsTakenBackByTheProgram) {
  const auto before = DumpOfUser();
  HostsProcess registering({"/regserver"});
  EXPECT_EQ(registering.WaitForEnd(), 0);
  EXPECT_THAT(registering.Errors(), HasSubstr("registered  Excel.Application\n"));
  EXPECT_TRUE(HasKey(HKEY_CURRENT_USER, KeyOf("Veldora.VdApplication")));
  EXPECT_FALSE(HasKey(HKEY_CURRENT_USER, KeyOf("QuintaraHosts.Control")));

  HostsProcess unregistering({"/unregserver"});
  EXPECT_EQ(unregistering.WaitForEnd(), 0);

  EXPECT_TRUE(IsAs(before));
}

TEST_F(TheRegistration, TellsOfANameThatAnotherProgramHolds) {
  GivenThatExcelIsHeld();

  HostsProcess registering({"/regserver"});

  EXPECT_EQ(registering.WaitForEnd(), 0);
  EXPECT_THAT(registering.Errors(), HasSubstr("left        Excel.Application"));
}

TEST_F(TheRegistration, OfAServingProcessLeavesAHeldNameToo) {
  GivenThatExcelIsHeld();
  const auto before = DumpOfUser();
  {
    const HostsProcess hosts({"--serve", "excel,cad"});

    EXPECT_THAT(hosts.Errors(), HasSubstr("\"Excel.Application\" stays with the program that holds it"));
    EXPECT_TRUE(HasKey(HKEY_CURRENT_USER, KeyOf("ZORVA.Application")));
  }

  EXPECT_TRUE(IsAs(before));
}

TEST_F(TheRegistration, LetsAutomationStartTheCadHostAndLeaveItToItsUser) {
  const test::TemporaryFolder folder;
  { const HostsProcess making({"--vault-only", "--init", "--vault", folder.Path("my vault")}); }
  HostsProcess registering({"/regserver", "--vault", folder.Path("my vault")});
  ASSERT_EQ(registering.WaitForEnd(), 0);

  HostsProcess::Created("ZORVA.Application");

  {
    const auto cad = HostsProcess::Attach<zorva::Application>("ZORVA.Application");
    EXPECT_TRUE(cad->GetItem("HIXEngine")->AsHIXEngine()->IsConnected());
  }
  HostsProcess::CloseAll();
  EXPECT_TRUE(EndsServing());
}

TEST_F(TheRegistration, LetsAutomationStartAProcessThatEndsWithItsLastObject) {
  HostsProcess registering({"/regserver"});
  ASSERT_EQ(registering.WaitForEnd(), 0);

  auto excel = HostsProcess::Create<excel::Application>("Excel.Application");
  EXPECT_EQ(excel->Workbooks()->Add()->Worksheets()->Item(1)->Range("A1")->Value().ToText(), "");
  EXPECT_TRUE(IsServing());
  excel = nullptr;

  EXPECT_TRUE(EndsServing());
}

}  // namespace
}  // namespace quintara::hosts
