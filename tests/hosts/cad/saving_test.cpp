#include <bit>
#include <filesystem>
#include <limits>

#include "hosts/cad/embedded.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

class CadSaving : public EmbeddedCad {
 protected:
  /// What a fresh session finds in a saved file.
  Ref<zorva::Product> Reopened(const std::string& name) {
    StartHost();
    return Opened(name)->Product();
  }
};

TEST_F(CadSaving, GivesTheDocumentItsName) {
  const auto document = NewDocument();

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  EXPECT_EQ(document->FullName(), folder.Path("WIP.ZVAProduct"));
  EXPECT_EQ(document->Name(), "WIP.ZVAProduct");
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"WIP.ZVAProduct"}));
}

TEST_F(CadSaving, KeepsNamesPartNumbersAndOrder) {
  WritePart("PLATE");
  WritePart("BOLT");
  const auto document = NewDocument();
  const auto root = document->Product();
  root->SetPartNumber("WIP~~Gehäuse <\"&'>");
  Added(root, "BOLT.stp")->SetName("ROOT\\SUB\\\"B\"\n\t<&>");
  Added(root, "PLATE.stp")->SetName("ROOT\\SUB\\\"B\"\n\t<&>");

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  const auto back = Reopened("WIP.ZVAProduct");
  EXPECT_EQ(back->PartNumber(), "WIP~~Gehäuse <\"&'>");
  EXPECT_EQ(back->Name(), "WIP~~Gehäuse <\"&'>");
  EXPECT_EQ(NamesOf(back->Products()), (std::vector<std::string>(2, "ROOT\\SUB\\\"B\"\n\t<&>")));
  EXPECT_EQ(back->Products()->Item(1)->PartNumber(), "BOLT");
}

TEST_F(CadSaving, KeepsEveryBitOfAPosition) {
  const PositionMatrix odd = {-0.0,
                              5e-324,
                              1.0 / 3,
                              std::numeric_limits<double>::max(),
                              -1,
                              0.1,
                              1e23,
                              1e-17,
                              0,
                              123456789.123456789,
                              std::numeric_limits<double>::min(),
                              2.0 / 3};
  WritePart("PLATE");
  const auto document = NewDocument();
  Added(document->Product(), "PLATE.stp")->Position()->SetComponents(odd);

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  const auto back = PositionOf(Reopened("WIP.ZVAProduct")->Products()->Item(1));
  for (std::size_t i = 0; i < odd.size(); ++i) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(back[i]), std::bit_cast<std::uint64_t>(odd[i])) << i;
  }
}

TEST_F(CadSaving, KeepsTheRootsOwnNameAndPosition) {
  const auto document = NewDocument();
  document->Product()->SetName("Bench");
  document->Product()->Position()->SetComponents(At(12));

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  const auto back = Reopened("WIP.ZVAProduct");
  EXPECT_EQ(back->Name(), "Bench");
  EXPECT_EQ(back->PartNumber(), "Product1");
  EXPECT_EQ(PositionOf(back), At(12));
}

TEST_F(CadSaving, KeepsThePropertiesOfRootInstanceAndReference) {
  folder.Write("PLATE.lwt", TinyLight("PLATE"));
  const auto document = NewDocument();
  const auto root = document->Product();
  root->UserProperties()->CreateString("WIP", "TRUE");
  const auto first = Added(root, "PLATE.lwt");
  Added(root, "PLATE.lwt");
  first->UserProperties()->CreateString("OWN", "");
  first->Reference()->UserProperties()->CreateString("TYPE", "LWT");
  first->Reference()->UserProperties()->CreateString("OBJECT_ID", "12");

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  const auto back = Reopened("WIP.ZVAProduct");
  const auto second = back->Products()->Item(2);
  EXPECT_EQ(ValueOf(back->Parameters(), "WIP"), "TRUE");
  EXPECT_EQ(ValueOf(back->Products()->Item(1)->UserProperties(), "OWN"), "");
  EXPECT_EQ(second->UserProperties()->Count(), 0);
  EXPECT_EQ(ValueOf(second->Parameters(), "TYPE"), "LWT");
  EXPECT_EQ(ValueOf(second->Reference()->UserProperties(), "OBJECT_ID"), "12");
}

TEST_F(CadSaving, LeavesThePropertiesOfAnAssemblyToItsOwnFile) {
  WriteProduct("SUB", {});
  const auto document = NewDocument();
  Added(document->Product(), "SUB.ZVAProduct")->Reference()->UserProperties()->CreateString("TYPE", "3D");

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  EXPECT_THAT(folder.Read("WIP.ZVAProduct"), testing::Not(HasSubstr("TYPE")));
}

TEST_F(CadSaving, APropertyThatTheSessionHasAlreadyIsNotOverwritten) {
  folder.Write("PLATE.lwt", TinyLight("PLATE"));
  const auto document = NewDocument();
  const auto reference = Added(document->Product(), "PLATE.lwt")->Reference();
  reference->UserProperties()->CreateString("TYPE", "LWT");
  host->Save(document, folder.Path("WIP.ZVAProduct"));
  StartHost();
  const auto here = Documents()->Read(folder.Path("PLATE.lwt"));
  const auto properties = Added(NewDocument()->Product(), "PLATE.lwt")->Reference()->UserProperties();
  properties->CreateString("TYPE", "3D");

  Opened("WIP.ZVAProduct");

  EXPECT_EQ(ValueOf(properties, "TYPE"), "3D");
}

TEST_F(CadSaving, TwoContentsOfOneFileAreSavedAsOneReferenceAndOpenAgain) {
  folder.Write("PLATE.lwt", TinyLight("PLATE", "A"));
  const auto document = NewDocument();
  Added(document->Product(), "PLATE.lwt")->Reference()->UserProperties()->CreateString("OBJECT_ID", "1");
  folder.Write("PLATE.lwt", TinyLight("PLATE", "B"));
  Added(document->Product(), "PLATE.lwt")->Reference()->UserProperties()->CreateString("OBJECT_ID", "2");

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  const auto back = Reopened("WIP.ZVAProduct")->Products();
  EXPECT_EQ(back->Count(), 2);
  EXPECT_EQ(ValueOf(back->Item(1)->Parameters(), "OBJECT_ID"), "2");
  EXPECT_EQ(back->Item(1)->Reference(), back->Item(2)->Reference());
}

TEST_F(CadSaving, NamesFilesOfTheSameFolderWithoutIt) {
  const TemporaryFolder elsewhere;
  elsewhere.Write("BOLT.stp", TinyStep("BOLT"));
  WritePart("PLATE");
  const auto document = NewDocument();
  document->Product()->Products()->AddComponentsFromFiles({folder.Path("PLATE.stp"), elsewhere.Path("BOLT.stp")},
                                                          "All");

  host->Save(document, folder.Path("WIP.ZVAProduct"));

  EXPECT_THAT(folder.Read("WIP.ZVAProduct"), HasSubstr("file=\"PLATE.stp\""));
  EXPECT_THAT(folder.Read("WIP.ZVAProduct"), HasSubstr("file=\"" + elsewhere.Path("BOLT.stp") + "\""));
  EXPECT_EQ(Reopened("WIP.ZVAProduct")->Products()->Count(), 2);
}

TEST_F(CadSaving, TheSameTreeGivesTheSameBytes) {
  WritePart("PLATE");
  const auto document = NewDocument();
  Added(document->Product(), "PLATE.stp");
  host->Save(document, folder.Path("A.ZVAProduct"));
  const auto first = folder.Read("A.ZVAProduct");

  const auto back = Reopened("A.ZVAProduct");
  host->Save(back->Parent()->AsDocument(), folder.Path("B.ZVAProduct"));

  EXPECT_EQ(folder.Read("B.ZVAProduct"), first);
}

TEST_F(CadSaving, ASavedDocumentIsTheReferenceOfItsFile) {
  const auto document = NewDocument();
  host->Save(document, folder.Path("WIP.ZVAProduct"));

  const auto component = Added(NewDocument()->Product(), "WIP.ZVAProduct");

  EXPECT_EQ(component->Reference(), document->Product());
  EXPECT_EQ(Documents()->Open(folder.Path("WIP.ZVAProduct")), Ref<zorva::Document>(document));
}

TEST_F(CadSaving, ADocumentSavedElsewhereLeavesItsOldFileToANewReference) {
  const auto document = NewDocument();
  host->Save(document, folder.Path("A.ZVAProduct"));
  host->Save(document, folder.Path("B.ZVAProduct"));

  EXPECT_FALSE(Documents()->Read(folder.Path("A.ZVAProduct")) == Ref<zorva::Document>(document));
}

TEST_F(CadSaving, RefusesWhatAFileCannotHoldBeforeAnythingIsWritten) {
  WritePart("PLATE");
  const auto document = NewDocument();
  const auto child = Added(document->Product(), "PLATE.stp");
  const auto path = folder.Path("WIP.ZVAProduct");

  for (const auto& bad :
       {std::string("a\x01z"), std::string("a\0z", 3), std::string("a\xFFz"), std::string("a\xEF\xBF\xBFz")}) {
    child->SetName(bad);
    EXPECT_THAT(FailureOf([&] { host->Save(document, path); }).Description(), HasSubstr("name"));
  }
  child->SetName("good");
  child->UserProperties()->CreateString("TYPE", "\x02");
  EXPECT_THAT(FailureOf([&] { host->Save(document, path); }).Description(), HasSubstr("TYPE"));

  EXPECT_FALSE(folder.Has("WIP.ZVAProduct"));
  EXPECT_EQ(document->FullName(), "");
}

TEST_F(CadSaving, RefusesAComponentWithoutAFile) {
  const auto document = host->Build(Flat(1));

  EXPECT_THAT(FailureOf([&] { host->Save(document, folder.Path("WIP.ZVAProduct")); }).Description(),
              HasSubstr("PLATE.1"));
}

TEST_F(CadSaving, RefusesThePathOfOneOfItsComponents) {
  WriteProduct("SUB", {});
  WriteProduct("MID", {{"sub", "SUB.ZVAProduct"}});
  const auto document = NewDocument();
  Added(document->Product(), "MID.ZVAProduct");
  const auto before = folder.Read("SUB.ZVAProduct");

  FailureOf([&] { host->Save(document, folder.Path("SUB.ZVAProduct")); });

  EXPECT_EQ(folder.Read("SUB.ZVAProduct"), before);
}

TEST_F(CadSaving, RefusesWhatIsNoProductDocumentAndOtherExtensions) {
  WritePart("PLATE");
  const auto part = Documents()->Open(folder.Path("PLATE.stp"));
  const auto document = NewDocument();

  FailureOf([&] { host->Save(part, folder.Path("P.ZVAProduct")); });
  FailureOf([&] { host->Save(document, folder.Path("P.stp")); });
  FailureOf([&] { host->Save(document, ""); });
  FailureOf([&] { host->Save(nullptr, folder.Path("P.ZVAProduct")); });
  document->Close();
  FailureOf([&] { host->Save(document, folder.Path("P.ZVAProduct")); });
}

TEST_F(CadSaving, AFailedWriteLeavesTheOldFileAndTheDocument) {
  const auto document = NewDocument();
  host->Save(document, folder.Path("A.ZVAProduct"));
  const auto before = folder.Read("A.ZVAProduct");
  document->Product()->SetPartNumber("OTHER");

  for (const auto* const operation : {"Files.Write", "Files.Rename"}) {
    gate->FailOperation(operation, 1, Failure(failure::kDiskFull));
    EXPECT_EQ(FailureOf([&] { host->Save(document, folder.Path("A.ZVAProduct")); }).Number(), failure::kDiskFull);
    EXPECT_EQ(FailureOf([&] { host->Save(document, folder.Path("B.ZVAProduct")); }).Number(), failure::kDiskFull);
    gate->Reset();
  }

  EXPECT_EQ(folder.Read("A.ZVAProduct"), before);
  EXPECT_EQ(document->FullName(), folder.Path("A.ZVAProduct"));
}

TEST_F(CadSaving, KeepsAComponentWhoseFileIsMissing) {
  WritePart("PLATE");
  const auto document = NewDocument();
  const auto child = Added(document->Product(), "PLATE.stp");
  child->Reference()->UserProperties()->CreateString("TYPE", "3D");
  host->Save(document, folder.Path("WIP.ZVAProduct"));
  const auto before = folder.Read("WIP.ZVAProduct");
  std::filesystem::remove(folder.Path("PLATE.stp"));
  const auto back = Reopened("WIP.ZVAProduct");

  host->Save(back->Parent()->AsDocument(), folder.Path("AGAIN.ZVAProduct"));

  EXPECT_EQ(folder.Read("AGAIN.ZVAProduct"), before);
}

class WritingProductFiles : public EmbeddedCad {
 protected:
  AssemblyStructure structure{{{"PLATE", false, {}},
                               {"SUB", true, {{"plate", 0, At(1)}}},
                               {"ROOT", true, {{"left", 1, At(2)}, {"right", 1, At(3)}}}},
                              2,
                              {},
                              0};
  NativeContents files{gate};
};

TEST_F(WritingProductFiles, GivesOneFileForEachAssembly) {
  WritePart("PLATE");

  WriteProductFiles(structure, folder.Path(), files);

  const auto root = Opened("ROOT.ZVAProduct")->Product();
  EXPECT_EQ(folder.Names(), (std::vector<std::string>{"PLATE.stp", "ROOT.ZVAProduct", "SUB.ZVAProduct"}));
  EXPECT_EQ(NamesOf(root->Products()), (std::vector<std::string>{"left", "right"}));
  EXPECT_EQ(PositionOf(root->Products()->Item(2)), At(3));
  EXPECT_EQ(root->Products()->Item(2)->Products()->Item(1)->PartNumber(), "PLATE");
}

TEST_F(WritingProductFiles, WritesChildrenBeforeWhatHoldsThem) {
  gate->StartRecording();

  WriteProductFiles(structure, folder.Path(), files);

  EXPECT_THAT(gate->Record(),
              testing::ElementsAre(HasSubstr("SUB"), HasSubstr("SUB"), HasSubstr("ROOT"), HasSubstr("ROOT")));
}

TEST_F(WritingProductFiles, AFailureLeavesOldFilesWhole) {
  WriteProductFiles(structure, folder.Path(), files);
  const auto before = folder.Read("ROOT.ZVAProduct");
  structure.definitions[2].children.pop_back();
  gate->FailOperation("Files.Write", 2, Failure(failure::kDiskFull));

  FailureOf([&] { WriteProductFiles(structure, folder.Path(), files); });

  EXPECT_EQ(folder.Read("ROOT.ZVAProduct"), before);
}

TEST_F(WritingProductFiles, RefusesAStructureThatPointsForwardOrOutside) {
  structure.definitions[1].children[0].definition = 2;
  FailureOf([&] { WriteProductFiles(structure, folder.Path(), files); });
  structure.definitions[1].children[0].definition = 99;
  FailureOf([&] { WriteProductFiles(structure, folder.Path(), files); });
  structure.root = 99;
  FailureOf([&] { WriteProductFiles(structure, folder.Path(), files); });

  EXPECT_TRUE(folder.Names().empty());
}

TEST_F(WritingProductFiles, NeedsItsFolder) {
  EXPECT_EQ(FailureOf([&] { WriteProductFiles(structure, folder.Path("absent"), files); }).Number(),
            failure::kPathNotFound);
}

}  // namespace
}  // namespace quintara::test
