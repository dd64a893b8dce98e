#include "hosts/cad/embedded.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

class CadForms : public EmbeddedCad {
 protected:
  CadForms() {
    WritePart("PLATE");
    WriteProduct("SUB", {{"plate", "PLATE.stp"}});
    WriteProduct("ROOT", {{"left", "SUB.ZVAProduct"}, {"right", "SUB.ZVAProduct"}});
  }

  Ref<zorva::Product> OpenedWith(const FormChoice& form) {
    return host->Open(folder.Path("ROOT.ZVAProduct"), form)->AsProductDocument()->Product();
  }
};

TEST_F(CadForms, EachNodeIsAskedForByItsPath) {
  std::vector<std::string> paths;

  OpenedWith([&](const std::string& path) {
    paths.push_back(path);
    return ComponentForm::kDesign;
  });

  EXPECT_EQ(paths, (std::vector<std::string>{"", "left", "left\\plate", "right", "right\\plate"}));
}

TEST_F(CadForms, AnyNodeCanBeOpenedInAnyForm) {
  const auto root = OpenedWith([](const std::string& path) {
    if (path == "left\\plate") return ComponentForm::kUnloaded;
    return path == "right" ? ComponentForm::kWithoutDesign : ComponentForm::kDesign;
  });

  const auto left = root->Products()->Item(1);
  const auto right = root->Products()->Item(2);
  EXPECT_EQ(left->PartNumber(), "SUB");
  FailureOf([&] { right->PartNumber(); });
  FailureOf([&] { left->Products()->Item(1)->SetWorkMode(0); });
  EXPECT_EQ(right->Products()->Item(1)->PartNumber(), "PLATE");
}

TEST_F(CadForms, AFormBelongsToOneNodeOnly) {
  const auto root = OpenedWith({});
  const auto left = root->Products()->Item(1)->Products()->Item(1);

  host->SetForm(left, ComponentForm::kWithoutDesign);

  FailureOf([&] { left->PartNumber(); });
  EXPECT_EQ(root->Products()->Item(2)->Products()->Item(1)->PartNumber(), "PLATE");
  EXPECT_EQ(left->Reference()->PartNumber(), "PLATE");
}

TEST_F(CadForms, WhatIsBelowAnUnloadedComponentKeepsItsForm) {
  const auto root = OpenedWith({});
  const auto left = root->Products()->Item(1);
  const auto plate = left->Products()->Item(1);
  host->SetForm(left, ComponentForm::kUnloaded);
  EXPECT_EQ(plate->PartNumber(), "PLATE");

  host->SetForm(left, ComponentForm::kDesign);

  EXPECT_EQ(left->Products()->Item(1), plate);
}

TEST_F(CadForms, AChoiceThatFailsOpensNothing) {
  FailureOf([&] { OpenedWith([](const std::string&) -> ComponentForm { throw Failure(failure::kInternal); }); });

  EXPECT_EQ(Documents()->Count(), 0);
}

TEST_F(CadForms, ACopyIsInTheFormOfItsSource) {
  const auto root = OpenedWith({});
  host->SetForm(root->Products()->Item(1), ComponentForm::kWithoutDesign);
  const auto selection = root->Parent()->AsDocument()->Selection();
  selection->Add(root->Products()->Item(1));
  selection->Copy();
  selection->Clear();
  selection->Add(root->Products());

  selection->Paste();

  FailureOf([&] { root->Products()->Item(3)->PartNumber(); });
  EXPECT_EQ(root->Products()->Item(3)->Name(), "SUB.1");
}

class CadAlerts : public EmbeddedCad {
 protected:
  CadAlerts() { WriteProduct("ROOT", {{"light", "ABSENT.lwt"}}); }
};

TEST_F(CadAlerts, AMissingComponentComesInUnloadedAfterAQuestion) {
  const auto component = Opened("ROOT.ZVAProduct")->Product()->Products()->Item(1);

  ASSERT_EQ(questions.size(), 1U);
  EXPECT_THAT(questions[0], HasSubstr("ROOT.ZVAProduct"));
  EXPECT_THAT(questions[0], HasSubstr("ABSENT.lwt"));
  EXPECT_EQ(component->Name(), "light");
  EXPECT_EQ(component->UserProperties()->Count(), 0);
  FailureOf([&] { component->PartNumber(); });
  FailureOf([&] { component->Products(); });
  FailureOf([&] { component->Reference(); });
  FailureOf([&] { component->SetWorkMode(0); });
}

TEST_F(CadAlerts, NoGivesTheLoadingUp) {
  WritePart("PLATE");
  const auto root = NewDocument()->Product();
  answer = false;

  FailureOf([&] { Opened("ROOT.ZVAProduct"); });
  FailureOf([&] {
    root->Products()->AddComponentsFromFiles({folder.Path("PLATE.stp"), folder.Path("ROOT.ZVAProduct")}, "All");
  });

  EXPECT_EQ(questions.size(), 2U);
  EXPECT_EQ(Documents()->Count(), 1);
  EXPECT_EQ(root->Products()->Count(), 0);
}

TEST_F(CadAlerts, NothingIsAskedWhileAlertsAreOff) {
  answer = false;
  host->Application()->SetDisplayFileAlerts(false);

  EXPECT_EQ(Opened("ROOT.ZVAProduct")->Product()->Products()->Count(), 1);

  EXPECT_TRUE(questions.empty());
}

TEST_F(CadAlerts, NothingIsAskedAboutAGoodFileOrOneThatIsLoaded) {
  WriteProduct("GOOD", {});
  Opened("GOOD.ZVAProduct");
  Opened("ROOT.ZVAProduct");
  questions.clear();

  Opened("ROOT.ZVAProduct");
  Opened("GOOD.ZVAProduct");

  EXPECT_TRUE(questions.empty());
}

TEST_F(CadAlerts, UnnamedComponentsAreNamedAfterAQuestion) {
  WritePart("PLATE");
  WriteProduct("ROOT", {{"", "PLATE.stp"}, {"PLATE.1", "PLATE.stp"}, {"", "ABSENT.lwt"}});

  const auto root = Opened("ROOT.ZVAProduct")->Product();

  EXPECT_EQ(NamesOf(root->Products()), (std::vector<std::string>{"PLATE.2", "PLATE.1", "ABSENT.1"}));
  ASSERT_EQ(questions.size(), 1U);
  EXPECT_THAT(questions[0], HasSubstr("Component 1 has no name"));
}

TEST_F(CadAlerts, EachFileWithAWarningIsAskedAbout) {
  WriteProduct("TOP", {{"root", "ROOT.ZVAProduct"}, {"other", "GONE.stp"}});

  Opened("TOP.ZVAProduct");

  EXPECT_EQ(questions.size(), 2U);
}

TEST_F(CadAlerts, AnUnloadedComponentIsLoadedOnceItsFileIsThere) {
  const auto component = Opened("ROOT.ZVAProduct")->Product()->Products()->Item(1);
  EXPECT_EQ(FailureOf([&] { host->SetForm(component, ComponentForm::kDesign); }).Number(), failure::kFileNotFound);
  folder.Write("ABSENT.lwt", TinyLight("LIGHT"));

  host->SetForm(component, ComponentForm::kDesign);

  EXPECT_EQ(component->PartNumber(), "LIGHT");
  EXPECT_EQ(component->Reference()->Parent()->AsDocument()->Name(), "ABSENT.lwt");
}

TEST_F(CadAlerts, AMissingComponentThatHoldsItsHolderStaysUnloaded) {
  WriteProduct("ROOT", {{"sub", "SUB.ZVAProduct"}});
  const auto component = Opened("ROOT.ZVAProduct")->Product()->Products()->Item(1);
  WriteProduct("SUB", {{"root", "ROOT.ZVAProduct"}});

  FailureOf([&] { host->SetForm(component, ComponentForm::kDesign); });

  FailureOf([&] { component->Products(); });
}

TEST_F(CadAlerts, WithoutAnyoneToAskTheAnswerIsYes) {
  CadHost silent({gate, std::make_shared<NativeContents>(gate), {}});

  EXPECT_TRUE(silent.Application()->Documents()->Open(folder.Path("ROOT.ZVAProduct")));
}

using CadSession = EmbeddedCad;

TEST_F(CadSession, GivesRegisteredItems) {
  const auto item = host->Application();
  host->RegisterItem("HIXEngine", item);

  EXPECT_EQ(host->Application()->GetItem("HIXEngine"), Ref<AnyObject>(item));
  EXPECT_THAT(FailureOf([&] { host->Application()->GetItem("hixengine"); }).Description(), HasSubstr("hixengine"));
}

TEST_F(CadSession, ADocumentCanAppearDuringALaterSleep) {
  host->AddDuringSleep(2);
  EXPECT_FALSE(Documents()->Add("ZVAProduct"));

  host->NoteSleep();
  EXPECT_EQ(Documents()->Count(), 0);
  host->NoteSleep();

  EXPECT_EQ(Documents()->Count(), 1);
  EXPECT_EQ(host->Application()->ActiveDocument()->AsProductDocument()->Product()->PartNumber(), "Product1");
  host->NoteSleep();
  EXPECT_EQ(Documents()->Count(), 1);
}

TEST_F(CadSession, DocumentsThatArePendingAppearInOneSleep) {
  host->AddDuringSleep(1);
  Documents()->Add("ZVAProduct");
  Documents()->Add("ZVAProduct");

  host->NoteSleep();

  EXPECT_EQ(Documents()->Count(), 2);
  EXPECT_EQ(host->Application()->ActiveDocument()->Name(), "Product2.ZVAProduct");
}

TEST_F(CadSession, APlatformsSleepBringsAPendingDocument) {
  TestPlatform platform;
  platform.Native().OnSleep([this] { host->NoteSleep(); });
  host->AddDuringSleep(2);
  Documents()->Add("ZVAProduct");

  ThePlatform().Sleep(100);
  EXPECT_EQ(Documents()->Count(), 0);
  ThePlatform().Sleep(100);

  EXPECT_EQ(Documents()->Count(), 1);
}

TEST_F(CadSession, SleepsAreCountedFromOne) {
  FailureOf([&] { host->AddDuringSleep(0); });

  EXPECT_TRUE(Documents()->Add("ZVAProduct"));
}

TEST_F(CadSession, CountsHowOftenTheViewIsDrawnAgain) {
  folder.Write("project.zvavba", "RetrieveMatrix.UpdateDisplay");
  NewDocument();

  host->Application()->SetRefreshDisplay(false);
  EXPECT_EQ(host->Redraws(), 0);
  host->Application()->SetRefreshDisplay(true);
  host->Application()->ActiveWindow()->ActiveViewer()->RefreshView();
  host->Application()->ScriptService()->ExecuteScript(folder.Path("project.zvavba"), 2, "RetrieveMatrix",
                                                      "UpdateDisplay", {});

  EXPECT_EQ(host->Redraws(), 3);
}

TEST_F(CadSession, AnItemRegisteredAsNothingIsNothing) {
  host->RegisterItem("HIXEngine", nullptr);

  EXPECT_FALSE(host->Application()->GetItem("HIXEngine"));
}

TEST_F(CadSession, NeedsFiles) {
  EXPECT_THAT(FailureOf([&] { CadHost without({gate, nullptr, {}}); }).Description(), HasSubstr("files"));
}

TEST_F(CadSession, ObjectsOfAnotherSessionAreRefused) {
  WritePart("PLATE");
  CadHost other({gate, std::make_shared<NativeContents>(gate), {}});
  const auto foreign = other.Application()->Documents()->Add("ZVAProduct")->AsProductDocument();
  foreign->Product()->Products()->AddComponentsFromFiles({folder.Path("PLATE.stp")}, "All");
  const auto product = foreign->Product()->Products()->Item(1);
  const auto document = NewDocument();
  const auto selection = document->Selection();
  const auto numberOf = [](const auto& body) { return FailureOf(body).Number(); };

  EXPECT_EQ(numberOf([&] { selection->Add(product); }), failure::kTypeMismatch);
  EXPECT_EQ(numberOf([&] { selection->Add(foreign->Product()->Products()); }), failure::kTypeMismatch);
  EXPECT_EQ(numberOf([&] { host->Save(foreign, folder.Path("A.ZVAProduct")); }), failure::kTypeMismatch);
  EXPECT_EQ(numberOf([&] { host->SetForm(product, ComponentForm::kUnloaded); }), failure::kTypeMismatch);
  EXPECT_EQ(
      numberOf([&] { document->Product()->Products()->ReplaceWithFile(product, folder.Path("PLATE.stp"), false); }),
      failure::kTypeMismatch);

  EXPECT_EQ(selection->Count(), 0);
  FailureOf([&] { selection->Copy(); });
  EXPECT_FALSE(folder.Has("A.ZVAProduct"));
  EXPECT_EQ(product->PartNumber(), "PLATE");
}

TEST_F(CadSession, AForeignDocumentIsRefused) {
  class Foreign : public zorva::Document {
    Ref<zorva::Selection> Selection() override { return nullptr; }
    void Close() override {}
    std::string FullName() override { return {}; }
  };

  EXPECT_EQ(FailureOf([&] { host->Save(MakeRef<Foreign>(), folder.Path("A.ZVAProduct")); }).Number(),
            failure::kTypeMismatch);
  EXPECT_EQ(FailureOf([&] { host->SetForm(nullptr, ComponentForm::kDesign); }).Number(), failure::kObjectNotSet);
}

TEST_F(CadSession, EveryObjectHasANameAndAParent) {
  WritePart("PLATE");
  const auto document = NewDocument();
  const auto root = document->Product();
  const auto application = host->Application();
  document->Selection()->Add(root);
  root->UserProperties()->CreateString("WIP", "TRUE");

  EXPECT_EQ(application->Name(), "ZORVA");
  EXPECT_EQ(Documents()->Parent(), Ref<AnyObject>(application));
  EXPECT_EQ(document->Parent(), Ref<AnyObject>(Documents()));
  EXPECT_EQ(document->Name(), "Product1.ZVAProduct");
  EXPECT_EQ(root->Products()->Parent(), Ref<AnyObject>(root));
  EXPECT_EQ(root->Position()->Parent(), Ref<AnyObject>(root));
  EXPECT_EQ(root->Parameters()->Item("WIP")->Parent(), Ref<AnyObject>(root));
  EXPECT_EQ(document->Selection()->Parent(), Ref<AnyObject>(document));
  EXPECT_EQ(document->Selection()->Item(1)->Parent(), Ref<AnyObject>(document->Selection()));
  EXPECT_EQ(root->Products()->Name(), "Products");
}

TEST_F(CadSession, ABuiltTreeIsAnActiveDocumentWithoutFiles) {
  const auto document = host->Build(Flat(3));

  const auto part = document->Product()->Products()->Item(3);
  EXPECT_EQ(host->Application()->ActiveDocument(), Ref<AnyObject>(document));
  EXPECT_EQ(document->FullName(), "");
  EXPECT_EQ(part->Name(), "PLATE.3");
  EXPECT_EQ(PositionOf(part), At(3));
  EXPECT_EQ(part->Reference()->Parent()->AsDocument()->FullName(), "");
  EXPECT_FALSE(part->Reference()->Parent()->AsProductDocument());
}

TEST_F(CadSession, ABuiltTreeMustBeOneOfAnAssembly) {
  auto structure = Flat(1);
  structure.root = 0;
  FailureOf([&] { host->Build(structure); });
  structure.root = 5;
  FailureOf([&] { host->Build(structure); });
  structure.root = 1;
  structure.definitions[1].children[0].definition = 1;
  FailureOf([&] { host->Build(structure); });

  EXPECT_EQ(Documents()->Count(), 0);
}

}  // namespace
}  // namespace quintara::test
