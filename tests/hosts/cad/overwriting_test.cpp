#include <bit>
#include <cstdint>
#include <filesystem>

#include "base/text.h"
#include "hosts/cad/embedded.h"

namespace quintara::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class CadOverwriting : public EmbeddedCad {
 protected:
  Ref<zorva::Product> Reopened(const std::string& name) {
    StartHost();
    return Opened(name)->Product();
  }
  void Stamp(const Ref<zorva::Product>& component, const std::string& value) {
    component->Reference()->UserProperties()->CreateString("OBJECT_ID", value);
  }
  Failure SavingFailure(const Ref<zorva::Document>& document, const std::string& name) {
    return FailureOf([&] { host->Save(document, folder.Path(name)); });
  }
};

TEST_F(CadOverwriting, AContentFoundAgainIsTheNewestOne) {
  folder.Write("PLATE.lwt", TinyLight("PLATE", "A"));
  const auto document = NewDocument();
  Stamp(Added(document->Product(), "PLATE.lwt"), "1");
  folder.Write("PLATE.lwt", TinyLight("PLATE", "B"));
  Stamp(Added(document->Product(), "PLATE.lwt"), "2");
  folder.Write("PLATE.lwt", TinyLight("PLATE", "A"));
  Documents()->Read(folder.Path("PLATE.lwt"));

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  EXPECT_EQ(ValueOf(Reopened("WIP.ZVAProduct")->Products()->Item(2)->Parameters(), "OBJECT_ID"), "1");
}

TEST_F(CadOverwriting, TakesNoPathOfAnotherOpenDocument) {
  WriteProduct("OTHER", {});
  Opened("OTHER.ZVAProduct");
  const auto before = folder.Read("OTHER.ZVAProduct");
  const auto document = NewDocument();

  EXPECT_THAT(SavingFailure(document, "OTHER.ZVAProduct").Description(), HasSubstr("OTHER.ZVAProduct"));

  EXPECT_EQ(folder.Read("OTHER.ZVAProduct"), before);
  EXPECT_EQ(document->FullName(), "");
}

TEST_F(CadOverwriting, TakesThePathOfADocumentThatWasClosed) {
  WriteProduct("OTHER", {});
  Opened("OTHER.ZVAProduct")->Close();
  const auto document = NewDocument();

  host->Save(document, folder.Path("OTHER.ZVAProduct"));

  EXPECT_EQ(document->Name(), "OTHER.ZVAProduct");
}

TEST_F(CadOverwriting, LeavesAFileThatSomebodyElseHasChangedSinceItWasOpened) {
  WriteProduct("WIP", {});
  const auto document = Opened("WIP.ZVAProduct");
  const std::string changed = "<ZVAProduct partNumber=\"THEIRS\"/>";
  folder.Write("WIP.ZVAProduct", changed);

  EXPECT_THAT(SavingFailure(document, "WIP.ZVAProduct").Description(), HasSubstr("WIP.ZVAProduct"));

  EXPECT_EQ(folder.Read("WIP.ZVAProduct"), changed);
}

TEST_F(CadOverwriting, SavesAgainWhatItSavedAndWhatWasDeleted) {
  const auto document = NewDocument();
  host->Save(document, folder.Path("WIP.ZVAProduct"));
  document->Product()->SetPartNumber("B");
  host->Save(document, folder.Path("WIP.ZVAProduct"));
  fs::remove(ToPath(folder.Path("WIP.ZVAProduct")));

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  EXPECT_EQ(Reopened("WIP.ZVAProduct")->PartNumber(), "B");
}

TEST_F(CadOverwriting, LeavesAReadOnlyFile) {
  const auto document = NewDocument();
  host->Save(document, folder.Path("WIP.ZVAProduct"));
  const auto before = folder.Read("WIP.ZVAProduct");
  fs::permissions(ToPath(folder.Path("WIP.ZVAProduct")), fs::perms::owner_read);
  document->Product()->SetPartNumber("B");

  const auto failure = SavingFailure(document, "WIP.ZVAProduct");

  EXPECT_EQ(failure.Number(), failure::kPermissionDenied);
  EXPECT_THAT(failure.Description(), HasSubstr("WIP.ZVAProduct"));
  EXPECT_EQ(folder.Read("WIP.ZVAProduct"), before);
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"WIP.ZVAProduct"}));
}

TEST_F(CadOverwriting, AFailedRenameLeavesNothingBesideAndNoOtherFileIsTouched) {
  folder.Write("WIP.ZVAProduct.new", "mine");
  const auto document = NewDocument();
  gate->FailOperation("Files.Rename");
  SavingFailure(document, "WIP.ZVAProduct");
  gate->Reset();
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"WIP.ZVAProduct.new"}));

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  EXPECT_EQ(folder.Read("WIP.ZVAProduct.new"), "mine");
}

TEST_F(CadOverwriting, KeepsEveryBitOfTheRootsPosition) {
  auto odd = kIdentityPosition;
  odd[1] = -0.0;
  const auto document = NewDocument();
  document->Product()->Position()->SetComponents(odd);

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  const auto back = PositionOf(Reopened("WIP.ZVAProduct"));
  EXPECT_EQ(std::bit_cast<std::uint64_t>(back[1]), std::bit_cast<std::uint64_t>(-0.0));
}

#ifndef _WIN32
TEST_F(CadOverwriting, KnowsOneOfItsComponentsBehindALinkedFolder) {
  WriteProduct("SUB", {});
  const TemporaryFolder elsewhere;
  fs::create_directory_symlink(ToPath(folder.Path()), ToPath(elsewhere.Path("link")));
  const auto document = NewDocument();
  Added(document->Product(), "SUB.ZVAProduct");
  const auto before = folder.Read("SUB.ZVAProduct");

  FailureOf([&] { host->Save(document, elsewhere.Path("link/SUB.ZVAProduct")); });

  EXPECT_EQ(folder.Read("SUB.ZVAProduct"), before);
}

TEST_F(CadOverwriting, SavesBehindALinkAndLeavesTheLink) {
  const TemporaryFolder elsewhere;
  elsewhere.Write("REAL.ZVAProduct", "<ZVAProduct partNumber=\"A\"/>");
  fs::create_symlink(ToPath(elsewhere.Path("REAL.ZVAProduct")), ToPath(folder.Path("WIP.ZVAProduct")));
  const auto document = Opened("WIP.ZVAProduct");
  document->Product()->SetPartNumber("B");

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  EXPECT_TRUE(fs::is_symlink(ToPath(folder.Path("WIP.ZVAProduct"))));
  EXPECT_THAT(elsewhere.Read("REAL.ZVAProduct"), HasSubstr("\"B\""));
}

TEST_F(CadOverwriting, ANameThatGoesUpBehindALinkedFolderIsTheRealOne) {
  const TemporaryFolder elsewhere;
  fs::create_directory(ToPath(elsewhere.Path("deep")));
  fs::create_directory_symlink(ToPath(elsewhere.Path("deep")), ToPath(folder.Path("link")));
  elsewhere.Write("PLATE.stp", TinyStep("PLATE"));

  const auto document = Documents()->Open(folder.Path("link/../PLATE.stp"));

  EXPECT_EQ(document->FullName(), FromPath(fs::canonical(ToPath(elsewhere.Path("PLATE.stp")))));
}
#endif

TEST_F(CadOverwriting, AStructureWhosePartNumbersLeadElsewhereIsNotWritten) {
  NativeContents files(gate);

  for (const auto* const bad : {"", "/x", "../x", "a\\b", "C:x"}) {
    AssemblyStructure structure{{{bad, false, {}}, {"ROOT", true, {{"a", 0, At(0)}}}}, 1, {}, 0};
    FailureOf([&] { WriteProductFiles(structure, folder.Path(), files); });
    structure.definitions[0] = {"GOOD", true, {}};
    structure.definitions[1].partNumber = bad;
    FailureOf([&] { WriteProductFiles(structure, folder.Path(), files); });
  }

  EXPECT_TRUE(folder.Names().empty());
}

}  // namespace
}  // namespace quintara::test
