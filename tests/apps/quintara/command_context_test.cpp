#include "quintara/command_context.h"

#include "access/contracts/hix_engine.h"
#include "access/contracts/zorva.h"
#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "apps/quintara/vault_cli_fixture.h"
#include "base/failure.h"
#include "quintara/wrong_use.h"

namespace quintara::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class AContext : public VaultCli {
 protected:
  AContext() {
    options.vault = Folder();
    options.workFolder = work.Path();
  }
  CommandContext& Start() {
    context.emplace(ProgramSurroundings{in, out, errors, terminal, gate}, options);
    return *context;
  }
  Ref<veldora::VdSession> Session() {
    return ThePlatform().Attach("Veldora.VdApplication")->AsVdApplication()->Engine()->Sessions(0);
  }
  // Lets the vault ask which of "axle", "gear" and "nut" is meant, and gives how many were picked.
  int Pick() {
    auto& vault = context->RequireVault();
    const auto objects = Session()->ObjectStore()->NewObjects();
    for (const auto& one : vault.List(false)) {
      objects->Add(Session()->ObjectStore()->ObjectById(one.identity.classId, one.identity.objectId));
    }
    const auto dialog = Session()->GetService("VdGuiSrv.VdCommonGUI")->AsVdCommonGUI()->Dialogs()->New(1);
    dialog->Input()->SetObjects(objects);
    dialog->Window()->SetTitle("Which one?");
    dialog->Window()->Show();
    const auto picked = dialog->Output()->Objects();
    if (picked->Count() == 1) pickedId = picked->Item(0)->ObjectId();
    return picked->Count();
  }

  CommonOptions options;
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream errors;
  std::int32_t pickedId = 0;
  std::optional<CommandContext> context;
};

TEST_F(AContext, OpensTheVaultOnlyWhenItIsNeeded) {
  Start();

  EXPECT_THROW(ThePlatform().Attach("Veldora.VdApplication"), Failure);
}

TEST_F(AContext, WithAnOpenVaultRunsBothClients) {
  auto& vault = Start().RequireVault();

  EXPECT_EQ(&vault, context->Vault());
  EXPECT_EQ(Session()->UserMetaInfo()->Login(), "admin");
  EXPECT_TRUE(ThePlatform().Create("Veldora.VdClientContext"));
  EXPECT_TRUE(ThePlatform().Create("veldora.vdtranslator"));
  EXPECT_TRUE(ThePlatform().Attach("ZORVA.Application"));
}

TEST_F(AContext, PutsTheIntegrationEngineIntoTheCadHost) {
  Start().RequireVault();

  const auto engine = context->Host().Application()->GetItem("HIXEngine")->AsHIXEngine();

  ASSERT_TRUE(engine);
  EXPECT_TRUE(engine->IsConnected());
  EXPECT_FALSE(engine->DocumentInfo(work.Path("unknown.stp")));
}

TEST_F(AContext, TellsTheVaultWhichClientIsSaidToRunLonger) {
  options.zorvaStartedFirst = true;

  Start().RequireVault();

  EXPECT_EQ(Session()->ApplicationName(), "ZORVA");
}

TEST_F(AContext, TellsTheVaultTheLanguage) {
  options.language = "fr";

  Start().RequireVault();

  EXPECT_EQ(Session()->Language(), "FR");
}

TEST_F(AContext, WithoutAVaultHasNone) {
  options.vault.clear();
  Start();

  EXPECT_EQ(context->Vault(), nullptr);
  EXPECT_THROW(context->RequireVault(), WrongUse);
}

TEST_F(AContext, WithAVaultThatIsNoneHasWrongUse) {
  options.vault = work.Path();
  Start();

  EXPECT_THROW(context->Vault(), WrongUse);
}

TEST_F(AContext, LetsSomeoneAtATerminalPick) {
  AddGear();
  terminal.input = terminal.errors = true;
  in.str("2\n");
  Start();

  EXPECT_EQ(Pick(), 1);

  EXPECT_EQ(pickedId, context->RequireVault().FindNewest("gear").at(0).identity.objectId);
  EXPECT_THAT(errors.str(), ::testing::StartsWith("Which one?\n  1  axle  A  ZORVA Product  axle.stp\n"));
}

TEST_F(AContext, DismissesADialogThatNobodyCanAnswer) {
  AddGear();
  in.str("2\n");
  Start();

  EXPECT_EQ(Pick(), 0);
  EXPECT_THAT(errors.str(), IsEmpty());
}

TEST_F(AContext, DismissesADialogWhenToldNo) {
  AddGear();
  terminal.input = terminal.errors = true;
  options.no = true;
  in.str("2\n");
  Start();

  EXPECT_EQ(Pick(), 0);
}

TEST_F(AContext, KnowsTheTextsThatTellOfSuccess) {
  Start();
  auto& texts = Process().texts;
  texts.QD_GETMATRIX_SUCCESSFUL.text = "The matrix is there";

  ThePlatform().ShowBox("The matrix is there", box::kInformation + box::kSystemModal, "Quintara");

  EXPECT_TRUE(context->AllWentWell());
}

TEST_F(AContext, TakesEveryOtherTextForAFailure) {
  for (const auto* text : {"", "The matrix isn't there"}) {
    context.reset();
    Start();
    Process().texts.QD_GETMATRIX_SUCCESSFUL.text = "The matrix is there";

    ThePlatform().ShowBox(text, box::kInformation + box::kSystemModal, "Quintara");

    EXPECT_FALSE(context->AllWentWell()) << text;
  }
}

TEST_F(AContext, LeavesNothingOfTheSessionBehind) {
  Start().RequireVault();
  Process().gSession = Session();

  context.reset();

  EXPECT_FALSE(Process().gSession);
}

TEST_F(AContext, MakesTheLightFileOfWhatIsCommittedAnew) {
  ASSERT_EQ(RunBare({"import", Data("as1-oc-214.stp"), "--vault", Folder()}).exitCode, kDone);
  auto& vault = Start().RequireVault();
  const auto found = vault.FindNewest("bolt").at(0).identity;
  const auto bolt = Session()->ObjectStore()->ObjectById(found.classId, found.objectId);
  Session()->GetService("VdUtil.VdSessionUtil")->AsVdSessionUtil()->CheckOut(bolt, nullptr, false);
  bolt->CopyFileTo("bolt.stp", work.Path());
  // The edit is told by the part number that it leaves in the file.
  const auto nut = vault.FindNewest("nut").at(0).identity;
  work.Write("bolt.stp", vault.FileOf(Session()->ObjectStore()->ObjectById(nut.classId, nut.objectId)));
  ASSERT_THAT(vault.LightFileOf(bolt), HasSubstr("\"PartNumber\":\"bolt\""));
  const auto engine = context->Host().Application()->GetItem("HIXEngine")->AsHIXEngine();

  engine->CommitStep1(engine->DocumentHandle(found.classId, found.objectId));

  EXPECT_THAT(vault.LightFileOf(bolt), HasSubstr("\"PartNumber\":\"nut\""));
}

}  // namespace
}  // namespace quintara::test
