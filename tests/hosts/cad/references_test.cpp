#include "hosts/cad/embedded.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;
using CadReferences = EmbeddedCad;

TEST_F(CadReferences, OneFileAndContentIsOneReference) {
  WritePart("PLATE");
  const auto root = NewDocument()->Product();
  const auto first = Added(root, "PLATE.stp");
  const auto second = Added(root, "PLATE.stp");

  EXPECT_EQ(first->Reference(), second->Reference());
  EXPECT_EQ(first->Reference()->Parent(), Ref<AnyObject>(Documents()->Read(folder.Path("PLATE.stp"))));
}

TEST_F(CadReferences, TheSameFileUnderAnotherSpellingIsTheSameReference) {
  WritePart("PLATE");
  const auto root = NewDocument()->Product();
  const auto first = Added(root, "PLATE.stp");

  const auto second = Added(root, "./PLATE.stp");

  EXPECT_EQ(first->Reference(), second->Reference());
}

TEST_F(CadReferences, EqualContentInTwoFilesIsTwoReferences) {
  folder.Write("a.lwt", TinyLight("PLATE"));
  folder.Write("b.lwt", TinyLight("PLATE"));
  const auto root = NewDocument()->Product();

  EXPECT_FALSE(Added(root, "a.lwt")->Reference() == Added(root, "b.lwt")->Reference());
}

TEST_F(CadReferences, AChangedFileIsANewReferenceAndOldInstancesKeepTheirs) {
  folder.Write("PLATE.stp", TinyStep("PLATE"));
  const auto root = NewDocument()->Product();
  const auto old = Added(root, "PLATE.stp");
  folder.Write("PLATE.stp", TinyStep("DISCS"));

  const auto added = Added(root, "PLATE.stp");

  EXPECT_EQ(old->PartNumber(), "PLATE");
  EXPECT_EQ(added->PartNumber(), "DISCS");
  EXPECT_FALSE(old->Reference() == added->Reference());
  EXPECT_EQ(Documents()->Read(folder.Path("PLATE.stp"))->AsDocument(), added->Reference()->Parent()->AsDocument());
}

TEST_F(CadReferences, AFileChangedBackIsItsOldReferenceAgain) {
  folder.Write("PLATE.stp", TinyStep("PLATE", "one"));
  const auto root = NewDocument()->Product();
  const auto first = Added(root, "PLATE.stp");
  folder.Write("PLATE.stp", TinyStep("PLATE", "two"));
  const auto second = Added(root, "PLATE.stp");
  folder.Write("PLATE.stp", TinyStep("PLATE", "one"));

  const auto third = Added(root, "PLATE.stp");

  EXPECT_FALSE(first->Reference() == second->Reference());
  EXPECT_EQ(first->Reference(), third->Reference());
}

TEST_F(CadReferences, AReplacementByTheSamePathTakesTheChangedContent) {
  folder.Write("PLATE.lwt", TinyLight("PLATE", "A"));
  const auto root = NewDocument()->Product();
  const auto old = Added(root, "PLATE.lwt");
  old->Reference()->UserProperties()->CreateString("TYPE", "LWT");
  folder.Write("PLATE.lwt", TinyLight("PLATE", "B"));

  const auto replaced = root->Products()->ReplaceWithFile(old, folder.Path("PLATE.lwt"), false);

  EXPECT_EQ(replaced->Parameters()->Count(), 0);
}

TEST_F(CadReferences, AReferenceKeepsItsPropertiesWhileItIsUsed) {
  WritePart("PLATE");
  const auto root = NewDocument()->Product();
  Added(root, "PLATE.stp")->Reference()->UserProperties()->CreateString("TYPE", "3D");

  Documents()->Read(folder.Path("PLATE.stp"))->Close();

  EXPECT_EQ(ValueOf(Added(root, "PLATE.stp")->Parameters(), "TYPE"), "3D");
}

TEST_F(CadReferences, AReferenceWhoseDocumentWasClosedStillNamesItsFile) {
  WritePart("PLATE");
  const auto document = Documents()->Read(folder.Path("PLATE.stp"));
  const auto component = Added(NewDocument()->Product(), "PLATE.stp");

  document->Close();

  EXPECT_EQ(component->Reference()->Parent()->AsDocument()->FullName(), folder.Path("PLATE.stp"));
  FailureOf([&] { document->FullName(); });
}

TEST_F(CadReferences, TheComponentsOfAFileAreFoundBesideIt) {
  WritePart("PLATE");
  WriteProduct("SUB", {{"left", "PLATE.stp"}, {"right", folder.Path("PLATE.stp")}});

  const auto root = Opened("SUB.ZVAProduct")->Product();

  EXPECT_EQ(root->Products()->Item(1)->Reference(), root->Products()->Item(2)->Reference());
}

TEST_F(CadReferences, AComponentInsideASharedAssemblyKnowsTheProductItWasReachedBy) {
  WritePart("PLATE");
  WriteProduct("SUB", {{"plate", "PLATE.stp"}});
  WriteProduct("ROOT", {{"left", "SUB.ZVAProduct"}, {"right", "SUB.ZVAProduct"}});
  const auto root = Opened("ROOT.ZVAProduct")->Product();
  const auto left = root->Products()->Item(1);
  const auto right = root->Products()->Item(2);

  EXPECT_EQ(left->Products()->Item(1)->Parent(), Ref<AnyObject>(left));
  EXPECT_EQ(right->Products()->Item(1)->Parent(), Ref<AnyObject>(right));
  EXPECT_EQ(right->Products()->Item(1)->Parent()->Parent(), Ref<AnyObject>(root));
}

TEST_F(CadReferences, AChangeInASharedAssemblyShowsAtEachInstance) {
  WritePart("PLATE");
  WritePart("BOLT");
  WriteProduct("SUB", {{"plate", "PLATE.stp"}, {"other", "PLATE.stp"}});
  WriteProduct("ROOT", {{"left", "SUB.ZVAProduct"}, {"right", "SUB.ZVAProduct"}});
  const auto root = Opened("ROOT.ZVAProduct")->Product();
  const auto left = root->Products()->Item(1)->Products();
  const auto right = root->Products()->Item(2)->Products();
  const auto goingFromRight = right->Item(1);
  right->Item(2)->SetName("kept");

  left->Remove(1);
  left->AddComponentsFromFiles({folder.Path("BOLT.stp")}, "All");
  left->Item(2)->Position()->SetComponents(At(8));

  EXPECT_EQ(NamesOf(right), (std::vector<std::string>{"kept", "BOLT.1"}));
  EXPECT_EQ(PositionOf(right->Item(2)), At(8));
  FailureOf([&] { goingFromRight->Name(); });
}

TEST_F(CadReferences, AReplacementInASharedAssemblyShowsAtEachInstance) {
  WritePart("PLATE");
  WritePart("BOLT");
  WriteProduct("SUB", {{"plate", "PLATE.stp"}});
  WriteProduct("ROOT", {{"left", "SUB.ZVAProduct"}, {"right", "SUB.ZVAProduct"}});
  const auto root = Opened("ROOT.ZVAProduct")->Product();
  const auto left = root->Products()->Item(1)->Products();
  const auto right = root->Products()->Item(2)->Products();
  const auto old = right->Item(1);

  left->ReplaceWithFile(left->Item(1), folder.Path("BOLT.stp"), false);

  EXPECT_EQ(right->Item(1)->PartNumber(), "BOLT");
  FailureOf([&] { old->PartNumber(); });
}

TEST_F(CadReferences, AProductBelowAnAssemblyIsNoDirectChildOfTheRoot) {
  WritePart("PLATE");
  WriteProduct("SUB", {{"plate", "PLATE.stp"}});
  WriteProduct("ROOT", {{"sub", "SUB.ZVAProduct"}});
  const auto root = Opened("ROOT.ZVAProduct")->Product();
  const auto deep = root->Products()->Item(1)->Products()->Item(1);

  const auto failure = FailureOf([&] { root->Products()->ReplaceWithFile(deep, folder.Path("PLATE.stp"), false); });

  EXPECT_THAT(failure.Description(), HasSubstr("plate"));
  EXPECT_EQ(deep->PartNumber(), "PLATE");
}

TEST_F(CadReferences, AFileThatHoldsItselfIsRefused) {
  WriteProduct("ONE", {{"two", "TWO.ZVAProduct"}});
  WriteProduct("TWO", {{"one", "ONE.ZVAProduct"}});
  WriteProduct("SELF", {{"self", "SELF.ZVAProduct"}});

  EXPECT_THAT(FailureOf([&] { Opened("ONE.ZVAProduct"); }).Description(), HasSubstr("holds itself"));
  EXPECT_THAT(FailureOf([&] { Opened("SELF.ZVAProduct"); }).Description(), HasSubstr("SELF.ZVAProduct"));
  EXPECT_EQ(Documents()->Count(), 0);
}

TEST_F(CadReferences, AFileThatHoldsTheTargetIsRefused) {
  WritePart("PLATE");
  WriteProduct("SUB", {{"plate", "PLATE.stp"}});
  WriteProduct("ROOT", {{"sub", "SUB.ZVAProduct"}});
  const auto root = Opened("ROOT.ZVAProduct")->Product();
  const auto sub = root->Products()->Item(1);

  FailureOf([&] { Added(sub, "ROOT.ZVAProduct"); });
  FailureOf([&] { Added(root, "ROOT.ZVAProduct"); });
  FailureOf([&] { sub->Products()->ReplaceWithFile(sub->Products()->Item(1), folder.Path("SUB.ZVAProduct"), false); });

  EXPECT_EQ(NamesOf(sub->Products()), (std::vector<std::string>{"plate"}));
  EXPECT_EQ(NamesOf(root->Products()), (std::vector<std::string>{"sub"}));
}

TEST_F(CadReferences, APasteThatWouldCloseACircleThroughAnAssemblyIsRefused) {
  WriteProduct("SUB", {});
  WriteProduct("ROOT", {{"sub", "SUB.ZVAProduct"}});
  const auto document = Opened("ROOT.ZVAProduct");
  const auto selection = document->Selection();
  selection->Add(document->Product());
  selection->Copy();
  selection->Clear();
  selection->Add(document->Product()->Products()->Item(1));

  FailureOf([&] { selection->Paste(); });

  EXPECT_EQ(document->Product()->Products()->Item(1)->Products()->Count(), 0);
}

TEST_F(CadReferences, ALinkMadeInBetweenIsSeenByTheNextPaste) {
  WriteProduct("A", {});
  WriteProduct("B", {});
  const auto document = NewDocument();
  const auto root = document->Product();
  const auto a = Added(root, "A.ZVAProduct");
  const auto b = Added(root, "B.ZVAProduct");
  const auto selection = document->Selection();
  selection->Add(a);
  selection->Copy();
  selection->Clear();
  selection->Add(b);
  selection->Paste();
  b->Products()->Remove(1);
  Added(a, "B.ZVAProduct");

  FailureOf([&] { selection->Paste(); });

  EXPECT_EQ(b->Products()->Count(), 0);
}

TEST_F(CadReferences, EachFileIsReadOnceInOneOperation) {
  WritePart("PLATE");
  WriteProduct("SUB", {{"plate", "PLATE.stp"}, {"again", "PLATE.stp"}});
  WriteProduct("ROOT", {{"left", "SUB.ZVAProduct"}, {"right", "SUB.ZVAProduct"}, {"plate", "PLATE.stp"}});
  gate->StartRecording();

  Opened("ROOT.ZVAProduct");

  EXPECT_EQ(std::ranges::count(gate->Record(), "Files.Read(" + folder.Path("PLATE.stp") + ")"), 1);
  EXPECT_EQ(std::ranges::count(gate->Record(), "Files.Read(" + folder.Path("SUB.ZVAProduct") + ")"), 1);
}

TEST_F(CadReferences, AnUnreadableFileDeepDownOpensNothing) {
  folder.Write("PLATE.stp", "damaged");
  WriteProduct("SUB", {{"plate", "PLATE.stp"}});
  WriteProduct("ROOT", {{"sub", "SUB.ZVAProduct"}});
  WritePart("BOLT");
  const auto root = NewDocument()->Product();

  const auto failure = FailureOf([&] {
    root->Products()->AddComponentsFromFiles({folder.Path("BOLT.stp"), folder.Path("ROOT.ZVAProduct")}, "All");
  });

  EXPECT_THAT(failure.Description(), HasSubstr("PLATE.stp"));
  EXPECT_EQ(failure.Number(), failure::kInvalidFormat);
  EXPECT_EQ(root->Products()->Count(), 0);
}

TEST_F(CadReferences, ALightFileOpensUnderAnyOfItsNames) {
  for (const auto* const name : {"PN.lwt", "PN.stp.lwt", "PN_B.LWT"}) {
    folder.Write(name, TinyLight("PN"));

    EXPECT_EQ(Added(NewDocument()->Product(), name)->PartNumber(), "PN") << name;
  }
}

TEST_F(CadReferences, TheObjectsOfAnEndedSessionFail) {
  WritePart("PLATE");
  const auto application = host->Application();
  const auto document = NewDocument();
  const auto root = document->Product();
  const auto reference = Added(root, "PLATE.stp")->Reference();

  host = nullptr;

  FailureOf([&] { application->Documents(); });
  FailureOf([&] { document->FullName(); });
  FailureOf([&] { root->Products(); });
  FailureOf([&] { reference->PartNumber(); });
}

}  // namespace
}  // namespace quintara::test
