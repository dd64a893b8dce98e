#pragma once

#include "hosts/cad/contract/fixture.h"

namespace quintara::test {

template <class Host>
class CadSessionContract : public CadContract<Host> {};
TYPED_TEST_SUITE(CadSessionContract, CadContractHosts);

TYPED_TEST(CadSessionContract, BeginsWithoutDocuments) {
  EXPECT_EQ(this->Documents()->Count(), 0);
}

TYPED_TEST(CadSessionContract, HasNoActiveDocumentWithNoneOpen) {
  FailureOf([&] { this->application->ActiveDocument(); });
}

TYPED_TEST(CadSessionContract, HasNoActiveWindowWithNoDocumentOpen) {
  FailureOf([&] { this->application->ActiveWindow(); });
}

TYPED_TEST(CadSessionContract, ANewDocumentIsAnEmptyActiveProductDocument) {
  const auto document = this->NewDocument();

  EXPECT_EQ(document->Product()->Products()->Count(), 0);
  EXPECT_EQ(this->application->ActiveDocument()->Name(), document->Name());
  EXPECT_TRUE(this->application->ActiveDocument()->AsProductDocument());
  EXPECT_EQ(this->Documents()->Count(), 1);
}

TYPED_TEST(CadSessionContract, ADocumentOfAnotherTypeIsRefused) {
  FailureOf([&] { this->Documents()->Add("Drawing"); });

  EXPECT_EQ(this->Documents()->Count(), 0);
}

TYPED_TEST(CadSessionContract, NewDocumentsGetDifferentPartNumbers) {
  EXPECT_EQ(this->NewDocument()->Product()->PartNumber(), "Product1");
  EXPECT_EQ(this->NewDocument()->Product()->PartNumber(), "Product2");
}

TYPED_TEST(CadSessionContract, ADocumentNeverSavedHasNoFullName) {
  EXPECT_EQ(this->NewDocument()->FullName(), "");
}

TYPED_TEST(CadSessionContract, AnOpenedFileBecomesActiveUnderItsFullName) {
  this->NewDocument();
  const auto path = this->Part("PLATE");

  const auto document = this->Documents()->Open(path);

  EXPECT_EQ(document->FullName(), path);
  EXPECT_EQ(document->Name(), "PLATE.stp");
  EXPECT_EQ(this->application->ActiveDocument()->Name(), "PLATE.stp");
}

TYPED_TEST(CadSessionContract, AReadFileLeavesTheActiveDocumentActive) {
  const auto active = this->NewDocument();

  const auto document = this->Documents()->Read(this->Part("PLATE"));

  EXPECT_EQ(document->Name(), "PLATE.stp");
  EXPECT_EQ(this->application->ActiveDocument()->Name(), active->Name());
}

TYPED_TEST(CadSessionContract, APartOpensAsADocumentThatIsNoProductDocument) {
  EXPECT_FALSE(this->Documents()->Open(this->Part("PLATE"))->AsProductDocument());
  EXPECT_FALSE(this->Documents()->Open(this->Light("BOLT"))->AsProductDocument());
  EXPECT_TRUE(this->application->ActiveDocument()->AsDocument());
}

TYPED_TEST(CadSessionContract, ClosingTheActiveDocumentHandsOnToTheOneBefore) {
  const auto first = this->NewDocument();
  const auto second = this->NewDocument();
  const auto third = this->NewDocument();

  second->Close();
  third->Close();

  EXPECT_EQ(this->application->ActiveDocument()->Name(), first->Name());
  EXPECT_EQ(this->Documents()->Count(), 1);
}

TYPED_TEST(CadSessionContract, ClosingHandsOnPastADocumentThatWasOnlyRead) {
  const auto first = this->NewDocument();
  this->Documents()->Read(this->Part("PLATE"));
  const auto last = this->NewDocument();

  last->Close();

  EXPECT_EQ(this->application->ActiveDocument()->Name(), first->Name());
}

TYPED_TEST(CadSessionContract, TheLastDocumentThatIsClosedLeavesNoneActive) {
  this->Documents()->Read(this->Part("PLATE"));

  this->NewDocument()->Close();

  FailureOf([&] { this->application->ActiveDocument(); });
  EXPECT_EQ(this->Documents()->Count(), 1);
}

TYPED_TEST(CadSessionContract, MembersThatAnObjectHasNotFail) {
  const auto root = this->NewDocument()->Product();

  EXPECT_EQ(FailureOf([&] { this->Documents()->SetName("x"); }).Number(), failure::kNoSuchMember);
  EXPECT_EQ(FailureOf([&] { this->application->SetName("x"); }).Number(), failure::kNoSuchMember);
  EXPECT_EQ(FailureOf([&] { root->GetItem("x"); }).Number(), failure::kNoSuchMember);
  EXPECT_EQ(FailureOf([&] { root->Position()->GetItem("x"); }).Number(), failure::kNoSuchMember);
}

TYPED_TEST(CadSessionContract, AConversionToAnotherKindGivesNothing) {
  const auto document = this->NewDocument();

  EXPECT_FALSE(document->AsProduct());
  EXPECT_FALSE(document->AsApplication());
  EXPECT_FALSE(document->Product()->AsDocument());
  EXPECT_FALSE(document->Product()->AsProducts());
  EXPECT_FALSE(document->Product()->Products()->AsProduct());
  EXPECT_FALSE(this->Documents()->AsDocument());
  EXPECT_FALSE(this->application->AsFileSystemObject());
  EXPECT_FALSE(this->application->AsHIXEngine());
}

TYPED_TEST(CadSessionContract, OpeningAnOpenDocumentAgainMakesItActive) {
  const auto path = this->Part("PLATE");
  const auto first = this->Documents()->Open(path);
  this->NewDocument();

  this->Documents()->Open(path);

  EXPECT_EQ(this->application->ActiveDocument()->Name(), first->Name());
  EXPECT_EQ(this->Documents()->Count(), 2);
}

TYPED_TEST(CadSessionContract, AClosedDocumentAndItsObjectsFail) {
  const auto document = this->NewDocument();
  const auto root = document->Product();
  const auto selection = document->Selection();
  const auto component = this->Added(root, "PLATE");

  document->Close();

  FailureOf([&] { document->Close(); });
  FailureOf([&] { document->FullName(); });
  FailureOf([&] { document->Product(); });
  FailureOf([&] { root->PartNumber(); });
  FailureOf([&] { component->Name(); });
  FailureOf([&] { selection->Count(); });
}

TYPED_TEST(CadSessionContract, UnreadablePathsAreRefusedAndNothingIsOpened) {
  const auto damaged = this->Written("damaged.stp", "no STEP");
  const auto foreign = this->Written("text.txt", "text");

  for (const auto& path : {std::string(), this->folder.Path("absent.stp"), this->folder.Path("no/where.lwt"),
                           this->folder.Path(), damaged, foreign}) {
    EXPECT_NE(FailureOf([&] { this->Documents()->Open(path); }).Number(), 0) << path;
    EXPECT_NE(FailureOf([&] { this->Documents()->Read(path); }).Number(), 0) << path;
  }
  EXPECT_EQ(this->Documents()->Count(), 0);
}

TYPED_TEST(CadSessionContract, TheFailureOfAMissingFileNamesIt) {
  const auto failure = FailureOf([&] { this->Documents()->Open(this->folder.Path("absent.stp")); });

  EXPECT_EQ(failure.Number(), failure::kFileNotFound);
  EXPECT_THAT(failure.Description(), testing::HasSubstr("absent.stp"));
}

TYPED_TEST(CadSessionContract, AlertsAreShownUntilTheyAreSwitchedOff) {
  EXPECT_TRUE(this->application->DisplayFileAlerts());

  this->application->SetDisplayFileAlerts(false);

  EXPECT_FALSE(this->application->DisplayFileAlerts());
}

TYPED_TEST(CadSessionContract, AnUnknownItemOfTheApplicationFails) {
  FailureOf([&] { this->application->GetItem("nothing of that name"); });
}

TYPED_TEST(CadSessionContract, TheDisplayCanBeRefreshed) {
  this->NewDocument();

  this->application->SetRefreshDisplay(true);
  this->application->ActiveWindow()->ActiveViewer()->RefreshView();
}

TYPED_TEST(CadSessionContract, EveryObjectLeadsToTheApplication) {
  const auto document = this->NewDocument();
  const auto root = document->Product();

  EXPECT_TRUE(this->application->AsApplication());
  EXPECT_TRUE(this->Documents()->Application()->AsApplication());
  EXPECT_TRUE(document->Application()->AsApplication());
  EXPECT_TRUE(root->Application()->AsApplication());
  EXPECT_TRUE(root->Products()->Application()->AsApplication());
  EXPECT_TRUE(root->Parameters()->Application()->AsApplication());
  EXPECT_TRUE(root->Position()->Application()->AsApplication());
  EXPECT_TRUE(root->UserProperties()->CreateString("A", "")->Application()->AsApplication());
  document->Selection()->Add(root);
  EXPECT_TRUE(document->Selection()->Application()->AsApplication());
  EXPECT_TRUE(document->Selection()->Item(1)->Application()->AsApplication());
  EXPECT_TRUE(Ref<AnyObject>(this->application)->Application()->AsApplication());
  EXPECT_TRUE(this->application->ScriptService()->Application()->AsApplication());
  EXPECT_TRUE(this->application->ActiveWindow()->Application()->AsApplication());
  EXPECT_TRUE(this->application->ActiveWindow()->ActiveViewer()->Application()->AsApplication());
}

TYPED_TEST(CadSessionContract, AScriptThatIsListedRuns) {
  const auto project = this->Written("project.zvavba", "# display\n\n  RetrieveMatrix.UpdateDisplay  # redraws\r\n");

  this->application->ScriptService()->ExecuteScript(project, 2, "RetrieveMatrix", "UpdateDisplay", {});
}

TYPED_TEST(CadSessionContract, AScriptFailsForWhatIsNotKnown) {
  const auto project = this->Written("project.zvavba", "RetrieveMatrix.UpdateDisplay\nOther.Unheard\n# Some.Comment\n");
  const auto service = this->application->ScriptService();

  FailureOf([&] { service->ExecuteScript(this->folder.Path("absent"), 2, "RetrieveMatrix", "UpdateDisplay", {}); });
  FailureOf([&] { service->ExecuteScript(project, 1, "RetrieveMatrix", "UpdateDisplay", {}); });
  FailureOf([&] { service->ExecuteScript(project, 2, "Module", "UpdateDisplay", {}); });
  FailureOf([&] { service->ExecuteScript(project, 2, "RetrieveMatrix", "Update", {}); });
  FailureOf([&] { service->ExecuteScript(project, 2, "Some", "Comment", {}); });
  FailureOf([&] { service->ExecuteScript(project, 2, "Other", "Unheard", {}); });
  FailureOf([&] { service->ExecuteScript(project, 2, "RetrieveMatrix", "UpdateDisplay", {"argument"}); });
}

}  // namespace quintara::test
