#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "apps/hosts/hosts_process.h"
#include "base/text.h"
#include "support/test_platform.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

template <class Body>
Failure FailureOf(Body&& body) {
  try {
    body();
  } catch (const Failure& failure) {
    return failure;
  }
  return Failure(0, "no failure");
}

// One process for all tests, each of which begins with hosts of its own in it.
class TheControl : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    hosts_ = new HostsProcess({"--control", "--init", "--vault", shared_->Path("first")});
  }
  static void TearDownTestSuite() {
    delete hosts_;
    delete shared_;
  }

  TheControl() {
    std::filesystem::create_directory(ToPath(folder.Path("work")));
    std::filesystem::create_directory(ToPath(folder.Path("split")));
    control->DisarmGate();
    control->OpenVault(folder.Path("quintara.vault"), folder.Path("work"), "admin", "secret");
    control->StartCad();
    control->ReadShown();
    vault = HostsProcess::Attach<veldora::VdApplication>("Veldora.VdApplication");
    cad = HostsProcess::Attach<zorva::Application>("ZORVA.Application");
  }
  // Objects of a process that has ended must not be held beyond it.
  ~TheControl() override {
    try {
      control->AnswerBoxes(-2);
      control->AnswerDialogs(-2);
    } catch (const Failure&) {
      return;
    }
  }

  // A product of two parts, one of them twice, as an import splits it.
  void WriteSplit() const {
    folder.Write("split/CAR.ZVAProduct",
                 "<ZVAProduct partNumber=\"CAR\">"
                 "<Component name=\"WHEEL.1\" file=\"WHEEL.stp\" position=\"1 0 0 0 1 0 0 0 1 0 0 0\"/>"
                 "<Component name=\"BODY.1\" file=\"BODY.stp\" position=\"1 0 0 0 1 0 0 0 1 5 0 0\"/>"
                 "<Component name=\"WHEEL.2\" file=\"WHEEL.stp\" position=\"1 0 0 0 1 0 0 0 1 9 0 0\"/>"
                 "</ZVAProduct>");
    for (const std::string part : {"WHEEL", "BODY"}) {
      folder.Write("split/" + part + ".stp", TinyStep(part));
      folder.Write("split/" + part + ".lwt", TinyLight(part));
    }
  }
  std::string PartNumberOf(const Ref<veldora::VdRecord>& record) const {
    return record->ValueAsString("NM_CN_PART_NUMBER");
  }

  static inline TemporaryFolder* shared_ = new TemporaryFolder;
  static inline HostsProcess* hosts_ = nullptr;
  TemporaryFolder folder;
  Ref<automation::HostsControl> control = HostsProcess::Control();
  Ref<veldora::VdApplication> vault;
  Ref<zorva::Application> cad;
};

TEST_F(TheControl, GivesTheHostsToThoseWhoCannotAttach) {
  const auto created = HostsProcess::Create<automation::HostsControl>("QuintaraHosts.Control");

  EXPECT_EQ(created->Vault()->Engine()->Sessions(0)->UserMetaInfo()->Login(), "admin");
  EXPECT_EQ(created->Cad()->Documents()->Count(), 0);
  EXPECT_EQ(created->ProcessId(), static_cast<std::int32_t>(hosts_->Id()));
}

TEST_F(TheControl, StartsACadHostWithoutDocuments) {
  cad->Documents()->Add("ZVAProduct");

  control->StartCad();

  EXPECT_EQ(HostsProcess::Attach<zorva::Application>("ZORVA.Application")->Documents()->Count(), 0);
  EXPECT_NE(FailureOf([&] { cad->Documents(); }).Number(), 0);
}

TEST_F(TheControl, OpensAVaultOfItsOwnForWhoeverAsks) {
  const TemporaryFolder other;
  const auto part = vault->Engine()->Sessions(0)->ObjectStore()->NewObjects();

  control->OpenVault(other.Path("v"), "", "eve", "");

  EXPECT_EQ(control->VaultFolder(), FromPath(std::filesystem::canonical(ToPath(other.Path("v")))));
  EXPECT_THAT(control->WorkDirectory(), HasSubstr("eve"));
  const auto now = HostsProcess::Attach<veldora::VdApplication>("Veldora.VdApplication");
  EXPECT_EQ(now->Engine()->Sessions(0)->UserMetaInfo()->Login(), "eve");
  EXPECT_EQ(part->Count(), 0);
}

TEST_F(TheControl, KeepsTheVaultWhereAnotherCannotBeOpened) {
  const auto before = control->VaultFolder();

  EXPECT_NE(FailureOf([&] { control->OpenVault(before, "", "admin", "wrong"); }).Number(), 0);

  EXPECT_EQ(control->VaultFolder(), before);
  EXPECT_EQ(HostsProcess::Attach<veldora::VdApplication>("Veldora.VdApplication")
                ->Engine()
                ->Sessions(0)
                ->UserMetaInfo()
                ->Login(),
            "admin");
}

TEST_F(TheControl, ConnectsTheEngineBetweenTheHostsThatAreServed) {
  EXPECT_TRUE(cad->GetItem("HIXEngine")->AsHIXEngine()->IsConnected());
}

TEST_F(TheControl, ImportsWhatWasSplitBefore) {
  WriteSplit();

  const auto lines = control->Import(folder.Path("split/CAR.ZVAProduct"));

  EXPECT_EQ(lines, "added\tWHEEL\tA\nadded\tBODY\tA\nadded\tCAR\tA\n");
  EXPECT_EQ(control->FindObject("CAR")->Record()->ValueAsInteger("STATE"), 1);
}

TEST_F(TheControl, ImportsTheOneTreeOfAFolder) {
  WriteSplit();
  control->Import(folder.Path("split"));

  const auto again = control->Import(folder.Path("split"));

  EXPECT_EQ(again, "unchanged\tWHEEL\tA\nunchanged\tBODY\tA\nunchanged\tCAR\tA\n");
}

TEST_F(TheControl, ImportsLightFilesAlong) {
  WriteSplit();
  control->Import(folder.Path("split"));

  control->FindObject("BODY")->CopyFileTo("BODY.stp", folder.Path("work"));

  EXPECT_EQ(folder.Read("work/BODY.stp.lwt"), TinyLight("BODY"));
}

TEST_F(TheControl, ImportsNoStepAssembly) {
  folder.Write("split/CAR.stp", TinyStep("CAR") + "#9=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#1,#2,$);");

  const auto failure = FailureOf([&] { control->Import(folder.Path("split/CAR.stp")); });

  EXPECT_THAT(failure.Description(), HasSubstr("is a STEP assembly"));
  EXPECT_NE(FailureOf([&] { control->FindObject("CAR"); }).Number(), 0);
}

TEST_F(TheControl, ImportsNothingWhereAFileIsMissing) {
  WriteSplit();
  std::filesystem::remove(ToPath(folder.Path("split/BODY.stp")));

  const auto failure = FailureOf([&] { control->Import(folder.Path("split")); });

  EXPECT_THAT(failure.Description(), HasSubstr("BODY.stp' isn't there"));
  EXPECT_NE(FailureOf([&] { control->FindObject("WHEEL"); }).Number(), 0);
}

TEST_F(TheControl, SelectsNamedObjectsAsTheVaultDoes) {
  WriteSplit();
  control->Import(folder.Path("split"));

  const auto records = control->SelectedRecords("CAR|BODY@A");

  ASSERT_EQ(records->RecordCount(), 2);
  EXPECT_EQ(PartNumberOf(records->GetRecord(0)), "CAR");
  EXPECT_EQ(PartNumberOf(records->GetRecord(1)), "BODY");
  EXPECT_EQ(control->SelectedRecords("")->RecordCount(), 0);
  EXPECT_THAT(FailureOf([&] { control->SelectedRecords("CAR|NONE"); }).Description(), HasSubstr("'NONE'"));
}

TEST_F(TheControl, LoadsAComponentInEachForm) {
  const auto root = cad->Documents()->Add("ZVAProduct")->AsProductDocument()->Product();
  folder.Write("work/PLATE.stp", TinyStep("PLATE"));
  root->Products()->AddComponentsFromFiles({folder.Path("work/PLATE.stp")}, "All");
  const auto plate = root->Products()->Item(1);

  control->SetForm(plate, 2);
  EXPECT_NE(FailureOf([&] { plate->Products(); }).Number(), 0);
  control->SetForm(plate, 1);
  EXPECT_NE(FailureOf([&] { plate->PartNumber(); }).Number(), 0);
  EXPECT_EQ(plate->Products()->Count(), 0);
  control->SetForm(plate, 0);
  EXPECT_EQ(plate->PartNumber(), "PLATE");

  EXPECT_NE(FailureOf([&] { control->SetForm(plate, 3); }).Number(), 0);
  EXPECT_EQ(FailureOf([&] { control->SetForm(nullptr, 0); }).Number(), failure::kObjectNotSet);
}

TEST_F(TheControl, SavesTheActiveDocument) {
  EXPECT_NE(FailureOf([&] { control->Save(""); }).Number(), 0);
  cad->Documents()->Add("ZVAProduct")->AsProductDocument()->Product()->SetPartNumber("NEW");

  const auto first = control->Save("");
  const auto second = control->Save(folder.Path("work/OTHER.ZVAProduct"));
  const auto third = control->Save("");

  EXPECT_THAT(first, EndsWith("NEW.ZVAProduct"));
  EXPECT_THAT(second, EndsWith("OTHER.ZVAProduct"));
  EXPECT_EQ(third, second);
  EXPECT_TRUE(folder.Has("work/NEW.ZVAProduct"));
  EXPECT_TRUE(folder.Has("work/OTHER.ZVAProduct"));
}

TEST_F(TheControl, LetsANewDocumentAppearLater) {
  control->AddDuringSleep(1);

  EXPECT_FALSE(cad->Documents()->Add("ZVAProduct"));

  for (int i = 0; i < 1000 && cad->Documents()->Count() == 0; ++i) control->NoteSleep();
  EXPECT_EQ(cad->Documents()->Count(), 1);
}

TEST_F(TheControl, FailsTheNthOperation) {
  const auto documents = cad->Documents();
  control->ArmGate(2);

  EXPECT_EQ(documents->Count(), 0);
  EXPECT_EQ(FailureOf([&] { documents->Count(); }).Number(), failure::kDeviceError);
  EXPECT_EQ(documents->Count(), 0);
}

TEST_F(TheControl, FailsEveryOperationOfAName) {
  control->ArmOperation("Documents.Add", 2);
  cad->Documents()->Add("ZVAProduct");

  EXPECT_EQ(FailureOf([&] { cad->Documents()->Add("ZVAProduct"); }).Number(), failure::kDeviceError);
  EXPECT_EQ(FailureOf([&] { cad->Documents()->Add("ZVAProduct"); }).Number(), failure::kDeviceError);

  control->DisarmGate();
  cad->Documents()->Add("ZVAProduct");
  EXPECT_EQ(cad->Documents()->Count(), 2);
}

TEST_F(TheControl, RecordsWhatIsAskedOfTheHostsAndNotOfItself) {
  WriteSplit();
  const auto documents = cad->Documents();
  control->ClearRecord();

  documents->Add("ZVAProduct");
  control->Import(folder.Path("split"));
  control->FindObject("CAR");
  control->Save("");

  EXPECT_THAT(control->ReadRecord(), StartsWith("Documents.Add"));
  EXPECT_EQ(Split(control->ReadRecord(), '\n').size(), 2u) << control->ReadRecord();
}

TEST_F(TheControl, CountsTheCallsOfOthersAndNotItsOwn) {
  const auto documents = cad->Documents();
  const auto before = control->Calls();

  documents->Count();

  EXPECT_EQ(control->Calls(), before + 1);
}

TEST_F(TheControl, AnswersTheQuestionsOfTheCadHost) {
  folder.Write("work/MENDED.ZVAProduct",
               "<ZVAProduct partNumber=\"MENDED\"><Component name=\"\" file=\"A.stp\" "
               "position=\"1 0 0 0 1 0 0 0 1 0 0 0\"/></ZVAProduct>");
  folder.Write("work/A.stp", TinyStep("A"));
  cad->SetDisplayFileAlerts(true);

  control->AnswerBoxes(0);
  EXPECT_NE(FailureOf([&] { cad->Documents()->Open(folder.Path("work/MENDED.ZVAProduct")); }).Number(), 0);
  control->AnswerBoxes(1);
  cad->Documents()->Open(folder.Path("work/MENDED.ZVAProduct"));

  const auto shown = Split(control->ReadShown(), '\n');
  ASSERT_EQ(shown.size(), 3u);
  EXPECT_THAT(shown[0], StartsWith("box\t"));
  EXPECT_THAT(control->ReadShown(), IsEmpty());
}

TEST_F(TheControl, RefusesWhatMakesNoSense) {
  for (const auto& body : std::vector<std::function<void()>>{
           [&] { control->ArmGate(0); }, [&] { control->ArmOperation("Documents.Add", 0); },
           [&] { control->EndInMidCall("", -1); }, [&] { control->AnswerBoxes(-3); },
           [&] { control->AnswerDialogs(-3); }, [&] { control->AddDuringSleep(0); },
           [&] { control->Import(folder.Path("absent")); }, [&] { control->FindObject("NONE"); },
           [&] { control->OpenVault("", "", "admin", ""); }}) {
    EXPECT_NE(FailureOf(body).Number(), 0);
  }
}

}  // namespace
}  // namespace quintara::test
