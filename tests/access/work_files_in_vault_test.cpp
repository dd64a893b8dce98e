#include <filesystem>
#include <string>

#include "access/vault_bench.h"
#include "hosts/cad/cad_host.h"
#include "hosts/native/native_files.h"
#include "support/tiny_files.h"

namespace quintara::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

template <class Maker>
class CopiesFromVault : public VaultOn<Maker> {
 protected:
  CopiesFromVault() {
    auto& globals = Process();
    globals.gSessionUtil = this->Util();
    globals.gWorkDirectory = this->folder.Path("work");
    this->platform.Native().Register("Veldora.VdApplication", this->vault->Application());
  }

  Ref<VdObject> bolt = this->AddPart("BOLT", "bytes", "light");
  Ref<VdObject> nut = this->AddPart("NUT", "nut");
  Ref<VdObject> car = this->AddProduct("CAR", {bolt, nut});
  Ref<FileSystemObject> fs = MakeRef<NativeFileSystem>(this->gate);
};
TYPED_TEST_SUITE(CopiesFromVault, Databases, DatabaseName);

TYPED_TEST(CopiesFromVault, OfAnAssemblyBringTheFilesOfAllThatItHolds) {
  EXPECT_EQ(this->utils.CopyVeldoraObjectToWork(this->car), this->WorkPath("CAR.ZVAProduct"));

  EXPECT_EQ(this->ReadWork("CAR.ZVAProduct"), "product CAR");
  EXPECT_EQ(this->ReadWork("BOLT.stp"), "bytes");
  EXPECT_EQ(this->ReadWork("NUT.stp"), "nut");
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(CopiesFromVault, ReplaceTheFilesThatAreThereTheObjectsOwnWorkingCopyToo) {
  for (const auto& object : {this->bolt, this->nut}) {
    this->CheckIn(object);
    this->CheckOut(object);
  }
  this->utils.CopyVeldoraObjectToWork(this->car);
  this->WriteWork("BOLT.stp", "my bolt");
  this->WriteWork("NUT.stp", "my nut");
  this->WriteWork("CAR.ZVAProduct", "my car");

  EXPECT_EQ(this->utils.CopyVeldoraObjectToWork(this->bolt), this->WorkPath("BOLT.stp"));
  EXPECT_EQ(this->ReadWork("BOLT.stp"), "bytes");
  EXPECT_EQ(this->utils.CopyVeldoraObjectToWork(this->car), this->WorkPath("CAR.ZVAProduct"));
  EXPECT_EQ(this->ReadWork("CAR.ZVAProduct"), "product CAR");
  EXPECT_EQ(this->ReadWork("NUT.stp"), "my nut");
}

TYPED_TEST(CopiesFromVault, OfAnObjectWithoutAFileAreReported) {
  EXPECT_EQ(this->utils.CopyVeldoraObjectToWork(this->AddPart("EMPTY")), "");

  ASSERT_THAT(this->Boxes(), SizeIs(1));
  EXPECT_THAT(this->Boxes()[0].text, StartsWith("Failure in Cls_Utils.CopyVeldoraObjectToWork: "));
}

TYPED_TEST(CopiesFromVault, OfALightFileBearThePartNumber) {
  this->WriteWork("BOLT.lwt", "old");

  EXPECT_EQ(this->utils.CopyVeldoraObjectLWTToWork(this->bolt, this->fs), this->WorkPath("BOLT.lwt"));
  EXPECT_EQ(this->utils.CopyVeldoraObjectLWTToWork_Temp(this->bolt, "_1", this->fs), this->WorkPath("BOLT_1.lwt"));

  EXPECT_EQ(this->ReadWork("BOLT.lwt"), "light");
  EXPECT_EQ(this->ReadWork("BOLT_1.lwt"), "light");
}

TYPED_TEST(CopiesFromVault, OfALightFileThatIsMissingGiveItsPathAndNoFile) {
  this->WriteWork("NUT.lwt", "old");

  EXPECT_EQ(this->utils.CopyVeldoraObjectLWTToWork(this->nut, this->fs), this->WorkPath("NUT.lwt"));

  EXPECT_FALSE(this->WorkHas("NUT.lwt"));
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(CopiesFromVault, OfADocumentAndItsLightFileStandBesideEachOther) {
  this->WriteWork("BOLT.stp", "old");
  this->WriteWork("BOLT.stp.lwt", "old");

  EXPECT_EQ(this->utils.CopyVeldoraObjectToWorkAndGetLWT(this->session, this->bolt, this->fs),
            this->WorkPath("BOLT.stp.lwt"));

  EXPECT_EQ(this->ReadWork("BOLT.stp"), "bytes");
  EXPECT_EQ(this->ReadWork("BOLT.stp.lwt"), "light");
}

TYPED_TEST(CopiesFromVault, OfADocumentWithoutALightFileLeaveItThereAndGiveNothing) {
  this->WriteWork("NUT.stp.lwt", "old");

  EXPECT_EQ(this->utils.CopyVeldoraObjectToWorkAndGetLWT(this->session, this->nut, this->fs), "");

  EXPECT_EQ(this->ReadWork("NUT.stp"), "nut");
  EXPECT_FALSE(this->WorkHas("NUT.stp.lwt"));
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

TYPED_TEST(CopiesFromVault, NeverLeaveTheWorkDirectory) {
  this->folder.Write("source/x.stp", "bytes");
  this->folder.Write("x.lwt", "not ours");
  for (const auto* partNumber : {"../x", "a/b", "CON"}) {
    const auto part =
        this->vault->AddObject("ZORVA Part", {{"NM_CN_PART_NUMBER", partNumber}}, this->folder.Path("source/x.stp"));
    EXPECT_EQ(this->utils.CopyVeldoraObjectLWTToWork(part, this->fs), "") << partNumber;
    EXPECT_EQ(this->utils.CopyVeldoraObjectLWTToWork_Temp(part, "", this->fs), "") << partNumber;
    EXPECT_EQ(this->utils.CopyVeldoraObjectToWorkAndGetLWT(this->session, part, this->fs), "") << partNumber;
  }

  EXPECT_EQ(this->folder.Read("x.lwt"), "not ours");
  EXPECT_TRUE(std::filesystem::is_empty(this->folder.Path("work")));
  EXPECT_THAT(this->Boxes(), IsEmpty());
}

class CopiesWithFailures : public CopiesFromVault<OnSqlite> {};

TEST_F(CopiesWithFailures, AreReportedWhicheverCallOfTheVaultFails) {
  const auto reported = [&](int n) {
    gate->FailCall(n);
    const auto path = utils.CopyVeldoraObjectToWork(bolt);
    const bool failed = gate->HasFailed();
    gate->Reset();
    EXPECT_EQ(path, failed ? "" : WorkPath("BOLT.stp")) << n;
    return failed;
  };

  int n = 1;
  while (reported(n)) ++n;

  EXPECT_GT(n, 10);
  EXPECT_THAT(Boxes(), SizeIs(static_cast<std::size_t>(n - 1)));
  EXPECT_THAT(Boxes(), testing::Each(Report("Cls_Utils.CopyVeldoraObjectToWork", "Injected failure")));
}

TEST_F(CopiesWithFailures, OfLightFilesFailInSilence) {
  FailingEachCall([&](int n) { EXPECT_EQ(utils.CopyVeldoraObjectLWTToWork(bolt, fs).empty(), n != 0) << n; });
  FailingEachCall(
      [&](int n) { EXPECT_EQ(utils.CopyVeldoraObjectToWorkAndGetLWT(session, bolt, fs).empty(), n != 0) << n; });

  EXPECT_THAT(Boxes(), IsEmpty());
}

// The embedded CAD host beside the vault, with an axle in a car.
class BesideCadHost : public WithVault {
 protected:
  BesideCadHost() {
    AssemblyStructure structure;
    structure.definitions = {{"WHEEL", false, {}},
                             {"AXLE", true, {{"WHEEL.1", 0, kIdentityPosition}, {"WHEEL.2", 0, kIdentityPosition}}},
                             {"CAR", true, {{"AXLE.1", 1, kIdentityPosition}}}};
    structure.root = 2;
    tree = structure;
    Process().gZorva = host.Application();
  }

  AssemblyStructure tree;
  CadHost host{{gate, files, {}}};
};

TEST_F(BesideCadHost, NamesGoFromTheComponentUpToTheRoot) {
  const auto car = host.Build(tree)->Product();
  const auto axle = car->Products()->Item(1);

  EXPECT_EQ(utils.BuildFullName(axle->Products()->Item(2), car), "WHEEL.2\\AXLE.1\\" + car->Name());
  EXPECT_EQ(utils.BuildFullName(car, car), car->Name());
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(BesideCadHost, NamesOfWhatStandsBelowAnotherRootAreReported) {
  const auto car = host.Build(tree)->Product();
  const auto other = host.Application()->Documents()->Add("ZVAProduct")->AsProductDocument()->Product();
  other->SetName("OTHER");

  EXPECT_EQ(utils.BuildFullName(car->Products()->Item(1), other), "");

  ASSERT_THAT(Boxes(), SizeIs(1));
  EXPECT_THAT(Boxes()[0].text, StartsWith("Failure in Cls_Utils.BuildFullName: "));
}

TEST_F(BesideCadHost, TheMacroProjectOfAVaultUpdatesTheDisplay) {
  EXPECT_TRUE(utils.ExecuteZorvaScript("RetrieveMatrix", "UpdateDisplay"));

  EXPECT_EQ(host.Redraws(), 1);
  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(BesideCadHost, WhatTheMacroProjectDoesNotHoldIsReported) {
  EXPECT_FALSE(utils.ExecuteZorvaScript("RetrieveMatrix", "updatedisplay"));

  EXPECT_EQ(host.Redraws(), 0);
  ASSERT_THAT(Boxes(), SizeIs(1));
  EXPECT_EQ(Boxes()[0].style, kCritical);
  EXPECT_THAT(Boxes()[0].text, StartsWith("Failure in Cls_Utils.ExecuteZorvaScript: "));
  EXPECT_THAT(Boxes()[0].text, HasSubstr("RetrieveMatrix.updatedisplay"));
}

TEST_F(BesideCadHost, AMacroProjectThatIsMissingIsReported) {
  std::filesystem::remove_all(vault->Folder().base);

  EXPECT_FALSE(utils.ExecuteZorvaScript("RetrieveMatrix", "UpdateDisplay"));

  ASSERT_THAT(Boxes(), SizeIs(1));
  EXPECT_THAT(Boxes()[0].text, HasSubstr("ProjectQNTR.zvavba"));
}

TEST_F(BesideCadHost, AProductDocumentIsAnActiveDocument) {
  host.Build(tree);

  EXPECT_TRUE(utils.HasActiveDocument(host.Application()));
}

TEST_F(BesideCadHost, APartIsNoActiveDocument) {
  host.Build(tree);
  WriteWork("BOLT.stp", TinyStep("BOLT"));
  WriteWork("BOLT.lwt", TinyLight("BOLT"));

  for (const auto* name : {"BOLT.stp", "BOLT.lwt"}) {
    host.Application()->Documents()->Open(WorkPath(name));
    EXPECT_FALSE(utils.HasActiveDocument(host.Application())) << name;
  }
}

TEST_F(BesideCadHost, ADocumentThatIsReadOnlyInTheBackgroundIsNotActive) {
  WriteWork("BOLT.stp", TinyStep("BOLT"));
  host.Application()->Documents()->Read(WorkPath("BOLT.stp"));

  EXPECT_FALSE(utils.HasActiveDocument(host.Application()));
}

TEST_F(BesideCadHost, WithoutADocumentOrAHostNoneIsActive) {
  EXPECT_FALSE(utils.HasActiveDocument(host.Application()));
  EXPECT_FALSE(utils.HasActiveDocument(nullptr));
  const auto document = host.Build(tree);
  document->Close();
  EXPECT_FALSE(utils.HasActiveDocument(host.Application()));

  EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(BesideCadHost, NoDocumentIsActiveWhicheverCallFails) {
  host.Build(tree);

  FailingEachCall([&](int n) { EXPECT_EQ(utils.HasActiveDocument(host.Application()), n == 0) << n; });

  EXPECT_THAT(Boxes(), IsEmpty());
}

}  // namespace
}  // namespace quintara::test
