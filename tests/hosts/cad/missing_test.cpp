#include "base/text.h"
#include "hosts/cad/embedded.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

/// Components whose files come and change while the session runs.
class CadMissing : public EmbeddedCad {
 protected:
  CadMissing() {
    WriteProduct("SUB", {{"plate", "PLATE.stp"}});
    WriteProduct("ROOT", {{"left", "SUB.ZVAProduct"}, {"right", "SUB.ZVAProduct"}});
  }
};

TEST_F(CadMissing, AComponentWhoseFileHasComeIsThereAtTheNextLoad) {
  const auto plate = Opened("SUB.ZVAProduct")->Product()->Products()->Item(1);
  FailureOf([&] { plate->PartNumber(); });
  WritePart("PLATE");

  const auto again = Opened("SUB.ZVAProduct");

  EXPECT_EQ(again->Product()->Products()->Item(1)->PartNumber(), "PLATE");
  EXPECT_EQ(plate->PartNumber(), "PLATE");
}

TEST_F(CadMissing, ItIsThereAlsoBelowWhatIsLoaded) {
  const auto root = Opened("ROOT.ZVAProduct")->Product();
  WritePart("PLATE");

  const auto added = Added(NewDocument()->Product(), "ROOT.ZVAProduct");

  EXPECT_EQ(added->Products()->Item(2)->Products()->Item(1)->PartNumber(), "PLATE");
  EXPECT_EQ(root->Products()->Item(1)->Products()->Item(1)->PartNumber(), "PLATE");
}

TEST_F(CadMissing, ItIsTheReferenceThatIsLoadedInTheSameOperation) {
  Opened("SUB.ZVAProduct");
  WritePart("PLATE");
  WriteProduct("TOP", {{"sub", "SUB.ZVAProduct"}, {"plate", "PLATE.stp"}});

  const auto top = Opened("TOP.ZVAProduct")->Product()->Products();

  EXPECT_EQ(top->Item(1)->Products()->Item(1)->Reference(), top->Item(2)->Reference());
}

TEST_F(CadMissing, AFileThatHasComeDamagedFailsTheLoad) {
  Opened("SUB.ZVAProduct");
  folder.Write("PLATE.stp", "damaged");

  EXPECT_THAT(FailureOf([&] { Opened("SUB.ZVAProduct"); }).Description(), HasSubstr("PLATE.stp"));
}

TEST_F(CadMissing, AFileThatHasComeAndHoldsItsHolderStaysOut) {
  WriteProduct("SUB", {{"loop", "LOOP.ZVAProduct"}});
  const auto sub = Opened("SUB.ZVAProduct")->Product();
  WriteProduct("LOOP", {{"sub", "SUB.ZVAProduct"}});

  const auto loop = Opened("LOOP.ZVAProduct")->Product();
  Opened("SUB.ZVAProduct");

  FailureOf([&] { sub->Products()->Item(1)->Products(); });
  EXPECT_EQ(loop->Products()->Item(1)->Products()->Count(), 1);
}

TEST_F(CadMissing, AFileThatHasComeAndHoldsTheTargetStaysOut) {
  WriteProduct("SUB", {{"top", "TOP.ZVAProduct"}});
  Opened("SUB.ZVAProduct");
  const auto top = NewDocument();
  host->Save(top, folder.Path("TOP.ZVAProduct"));

  const auto sub = Added(top->Product(), "SUB.ZVAProduct");

  FailureOf([&] { sub->Products()->Item(1)->Products(); });
}

TEST_F(CadMissing, AnUnchangedAssemblyKeepsItsOldPart) {
  WritePart("PLATE");
  Opened("SUB.ZVAProduct");
  folder.Write("PLATE.stp", TinyStep("DISC"));

  const auto sub = Added(NewDocument()->Product(), "SUB.ZVAProduct");

  EXPECT_EQ(sub->Products()->Item(1)->PartNumber(), "PLATE");
}

TEST_F(CadMissing, ARefusedTargetIsNotAskedAboutAndChangesNoReference) {
  WritePart("PLATE");
  WriteProduct("STAMPED", {{"plate", "PLATE.stp"}, {"gone", "GONE.stp"}, {"me", "ME.ZVAProduct"}});
  auto text = folder.Read("STAMPED.ZVAProduct");
  text.insert(text.rfind("</"), "<Reference file=\"PLATE.stp\"><Property name=\"TYPE\" value=\"3D\"/></Reference>");
  folder.Write("STAMPED.ZVAProduct", text);
  const auto me = NewDocument();
  host->Save(me, folder.Path("ME.ZVAProduct"));
  const auto plate = Added(NewDocument()->Product(), "PLATE.stp");

  FailureOf([&] { Added(plate, "STAMPED.ZVAProduct"); });
  FailureOf([&] { Added(me->Product(), "STAMPED.ZVAProduct"); });
  answer = false;
  FailureOf([&] { Opened("STAMPED.ZVAProduct"); });

  EXPECT_EQ(plate->Parameters()->Count(), 0);
  EXPECT_EQ(questions.size(), 1U);
}

TEST_F(CadMissing, AnUnreadableComponentFailsTheWholeLoadWithoutAQuestion) {
  folder.Write("PLATE.stp", "damaged");
  WriteProduct("TOP", {{"gone", "GONE.stp"}, {"plate", "PLATE.stp"}});

  EXPECT_THAT(FailureOf([&] { Opened("TOP.ZVAProduct"); }).Description(), HasSubstr("PLATE.stp"));

  EXPECT_TRUE(questions.empty());
  EXPECT_EQ(Documents()->Count(), 0);
}

TEST_F(CadMissing, AReplacementAsksWhileAlertsAreOn) {
  WritePart("BOLT");
  const auto root = NewDocument()->Product();
  const auto bolt = Added(root, "BOLT.stp");

  root->Products()->ReplaceWithFile(bolt, folder.Path("SUB.ZVAProduct"), false);

  ASSERT_EQ(questions.size(), 1U);
  EXPECT_THAT(questions[0], HasSubstr("PLATE.stp"));
}

TEST_F(CadMissing, TheRootCanBeOpenedWithoutDesignAndUnloaded) {
  for (const auto form : {ComponentForm::kWithoutDesign, ComponentForm::kUnloaded}) {
    const auto document = host->Open(folder.Path("SUB.ZVAProduct"), [&](const std::string& path) {
      return path.empty() ? form : ComponentForm::kDesign;
    });
    const auto product = document->Parent()->Application()->ActiveDocument()->AsProductDocument()->Product();

    FailureOf([&] { product->PartNumber(); });
    EXPECT_EQ(product->Name(), "SUB");
    if (form == ComponentForm::kUnloaded) {
      FailureOf([&] { product->Products(); });
      FailureOf([&] { document->GetItem("SUB"); });
    } else {
      EXPECT_EQ(product->Products()->Count(), 1);
      EXPECT_EQ(document->GetItem("SUB"), Ref<AnyObject>(product));
    }
    document->Close();
  }
}

TEST_F(CadMissing, TheChildOfASisterIsNoDirectChild) {
  WritePart("PLATE");
  WritePart("BOLT");
  const auto root = Opened("ROOT.ZVAProduct")->Product()->Products();
  const auto right = root->Item(2)->Products()->Item(1);

  FailureOf([&] { root->Item(1)->Products()->ReplaceWithFile(right, folder.Path("BOLT.stp"), false); });

  EXPECT_EQ(right->PartNumber(), "PLATE");
}

}  // namespace
}  // namespace quintara::test
