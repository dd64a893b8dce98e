#include "hosts/cad/embedded.h"
#include "hosts/cad/name_ledger.h"
#include "hosts/cad/properties.h"

namespace quintara::test {
namespace {

constexpr int kMost = 32767;

using CadScale = EmbeddedCad;

TEST_F(CadScale, ThirtyThousandPastesAreNamedPlacedAndFound) {
  const auto document = host->Build(Flat(1));
  const auto root = document->Product();
  const auto selection = document->Selection();
  selection->Add(root->Products()->Item(1));
  selection->Copy();
  selection->Clear();
  root->Products()->Item(1)->SetName("ROOT\\PLATE.1");

  for (int i = 2; i <= kMost; ++i) {
    selection->Add(root->Products());
    selection->Paste();
    selection->Clear();
    const auto pasted = root->Products()->Item(i);
    ASSERT_EQ(pasted->Name(), "PLATE.1");
    pasted->SetName("ROOT\\PLATE." + std::to_string(i));
    pasted->Position()->SetComponents(At(i));
  }

  EXPECT_EQ(root->Products()->Count(), kMost);
  EXPECT_EQ(root->Products()->Item(kMost)->Name(), "ROOT\\PLATE.32767");
  EXPECT_EQ(PositionOf(root->Products()->Item(20000)), At(20000));
}

TEST_F(CadScale, ThirtyThousandPastesOfAnAssemblyGetNumbersOfTheirOwn) {
  AssemblyStructure structure{
      {{"PLATE", false, {}}, {"SUB", true, {}}, {"ROOT", true, {{"SUB.1", 1, At(0)}}}}, 2, {}, 0};
  for (int i = 0; i < 2000; ++i) structure.definitions[1].children.push_back({"P" + std::to_string(i), 0, At(i)});
  const auto document = host->Build(structure);
  const auto children = document->Product()->Products();
  document->Selection()->Add(children->Item(1));
  document->Selection()->Copy();
  document->Selection()->Clear();
  document->Selection()->Add(children);

  for (int i = 1; i < 30000; ++i) document->Selection()->Paste();

  EXPECT_EQ(children->Item(30000)->Name(), "SUB.30000");
  EXPECT_EQ(children->Item(30000)->Products()->Count(), 2000);
}

TEST_F(CadScale, RemovingEverySecondOfManyChildrenLeavesTheOthers) {
  const auto children = host->Build(Flat(kMost))->Product()->Products();
  for (int i = 1; i <= children->Count(); ++i) children->Item(i);

  for (int i = 2; i <= children->Count(); ++i) children->Remove(i);

  EXPECT_EQ(children->Count(), 16384);
  EXPECT_EQ(children->Item(2)->Name(), "PLATE.3");
  EXPECT_EQ(children->Item(16384)->Name(), "PLATE.32767");
}

TEST_F(CadScale, ManyChildrenAreReplacedOneByOne) {
  folder.Write("BOLT.lwt", TinyLight("BOLT"));
  const auto children = host->Build(Flat(2000))->Product()->Products();

  for (int i = 1; i <= 2000; ++i) children->ReplaceWithFile(children->Item(i), folder.Path("BOLT.lwt"), false);

  EXPECT_EQ(children->Item(2000)->PartNumber(), "BOLT");
  EXPECT_EQ(children->Item(1)->Reference(), children->Item(2000)->Reference());
}

TEST_F(CadScale, AChainOfAHundredThousandLevelsIsWalkedAndDropped) {
  constexpr int kDepth = 100000;
  const auto document = host->Build(Chain(kDepth));
  auto product = document->Product();

  int depth = 0;
  for (; product->Products()->Count() > 0; ++depth) product = product->Products()->Item(1);

  EXPECT_EQ(depth, kDepth);
  EXPECT_EQ(product->PartNumber(), "PART");
  document->Close();
  FailureOf([&] { product->PartNumber(); });
}

TEST_F(CadScale, ADeepComponentCanBeRemovedWhileItIsHeld) {
  const auto root = host->Build(Chain(100000))->Product();
  auto product = root;
  while (product->Products()->Count() > 0) product = product->Products()->Item(1);

  root->Products()->Remove(1);

  FailureOf([&] { product->Name(); });
  EXPECT_EQ(root->Products()->Count(), 0);
}

TEST_F(CadScale, ADeepChainOfFilesIsOpenedWithFormsAndDropped) {
  constexpr int kDepth = 100;
  folder.Write("PART.stp", TinyStep("PART"));
  NativeContents files(gate);
  WriteProductFiles(Chain(kDepth), folder.Path(), files);
  std::size_t nodes = 0;

  const auto document = host->Open(folder.Path("A99.ZVAProduct"), [&](const std::string&) {
    ++nodes;
    return ComponentForm::kWithoutDesign;
  });

  EXPECT_EQ(nodes, kDepth + 1U);
  document->Close();
}

TEST_F(CadScale, AHundredThousandPropertiesAreMadeMergedAndFound) {
  constexpr int kProperties = 100000;
  cad::PropertyList one;
  cad::PropertyList other;
  for (int i = 0; i < kProperties; ++i) {
    one.Create("A" + std::to_string(i), "1");
    other.Create("A" + std::to_string(i + kProperties / 2), "2");
  }

  one.AddMissing(other);

  EXPECT_EQ(one.All().size(), kProperties + kProperties / 2U);
  EXPECT_EQ(one.Find("A99999")->value, "1");
  EXPECT_EQ(one.Find("A100000")->value, "2");
  EXPECT_EQ(one.All().back()->name, "A149999");
}

TEST(NameLedgerTest, AsksForEachNumberOnceWhateverIsRenamedInBetween) {
  cad::NameLedger names;
  for (int i = 1; i <= kMost; ++i) names.Add(names.FirstFree("P"));
  EXPECT_EQ(names.FirstFree("P"), "P.32768");

  names.Remove("P.7");
  names.Remove("P.3");
  names.Remove("P.03");
  names.Remove("P.x");
  names.Remove("Q.1");

  EXPECT_EQ(names.FirstFree("P"), "P.3");
  names.Add("P.3");
  EXPECT_EQ(names.FirstFree("P"), "P.7");
}

TEST(NameLedgerTest, ABaseMayHoldPointsAndNumbers) {
  cad::NameLedger names;
  names.Add("A.1.1");
  names.Add("A.1");

  EXPECT_EQ(names.FirstFree("A.1"), "A.1.2");
  EXPECT_EQ(names.FirstFree("A"), "A.2");
  names.Remove("A.1.1");
  EXPECT_EQ(names.FirstFree("A.1"), "A.1.1");
  EXPECT_EQ(names.FirstFree("A"), "A.2");
}

}  // namespace
}  // namespace quintara::test
