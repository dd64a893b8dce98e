#pragma once

#include "hosts/vault/contract/fixture.h"

namespace quintara::test {

template <class Host>
class VaultSessionContract : public VaultContract<Host> {};
TYPED_TEST_SUITE(VaultSessionContract, VaultContractHosts, VaultHostName);

TYPED_TEST(VaultSessionContract, TheRunningClientHasOneSessionAndOneDatabase) {
  const auto engine = this->application->Engine();

  EXPECT_EQ(engine->Sessions(0), engine->Sessions(0));
  EXPECT_EQ(engine->Databases(0)->Alias(), "quintara");
  EXPECT_THAT(FailureOf([&] { engine->Sessions(1); }), FailsWith(failure::kSubscriptOutOfRange));
  EXPECT_THAT(FailureOf([&] { engine->Databases(-1); }), FailsWith(failure::kSubscriptOutOfRange));
}

TYPED_TEST(VaultSessionContract, OpeningTheConnectionOfAJoinedSessionDoesNothing) {
  const auto database = this->application->Engine()->Databases(0);

  this->Session()->OpenDatabaseConnection(database->ConnectionString(), database->ConnectionPassword(), true);

  EXPECT_EQ(this->Session()->UserMetaInfo()->Login(), "admin");
}

TYPED_TEST(VaultSessionContract, TheUserIsKnown) {
  const auto user = this->Session()->UserMetaInfo();

  EXPECT_EQ(user->Login(), "admin");
  EXPECT_EQ(user->Password(), "secret");
  EXPECT_GT(user->UserId(), 0);
}

TYPED_TEST(VaultSessionContract, ObjectsFailBetweenLogOffAndLogOn) {
  const auto session = this->Session();
  const auto part = this->AddPart("BOLT");
  const auto store = session->ObjectStore();
  const auto config = session->Config();
  session->UserLogoff();

  EXPECT_THAT(FailureOf([&] { part->Retrieve(); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { store->NewObjects(); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { config->Value("x"); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { session->MetaInfo(); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->Add("ZORVA Part", {}); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { session->UserLogoff(); }), FailsWith(failure::kPermissionDenied));

  session->UserLogin("admin", "secret");
  part->Retrieve();
  EXPECT_EQ(part->Record()->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
  EXPECT_EQ(store->NewObjects()->Count(), 0);
}

TYPED_TEST(VaultSessionContract, AFailedLogOnLeavesTheSessionLoggedOff) {
  this->Session()->UserLogoff();

  EXPECT_THAT(FailureOf([&] { this->Session()->UserLogin("admin", "wrong"); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->Session()->ObjectStore(); }), FailsWith(failure::kPermissionDenied));
}

TYPED_TEST(VaultSessionContract, ServicesAreFoundWithoutRegardToCase) {
  EXPECT_TRUE(this->Session()->GetService("Vdutil.VdSessionUtil")->AsVdSessionUtil());
  EXPECT_TRUE(this->Session()->GetService("VDGUISRV.VDCOMMONGUI")->AsVdCommonGUI());
  EXPECT_TRUE(this->Session()->GetService("VdGUISrv.VdGUIServices")->AsVdGUIServices());
  EXPECT_FALSE(this->Session()->GetService("VdUtil.Nonsense"));
}

TYPED_TEST(VaultSessionContract, TheWorkDirectoryIsFoundThroughTheContextService) {
  const auto service =
      this->Session()->GetService("VeldoraClientContextService.VdClientContextService")->AsVdClientContextService();
  const auto paths = service->Context()->Paths();

  EXPECT_EQ(paths->WorkDirectoryOf(paths->CurrentKey()), this->folder.Path("work"));
  EXPECT_THAT(FailureOf([&] { paths->WorkDirectoryOf("nonsense"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultSessionContract, ConfigurationPathsCompareExactly) {
  const auto config = this->Session()->Config();
  config->SetValue("$User\\LifeCycleSetUp\\CopyOverwrite", "YES");

  EXPECT_EQ(config->Value("$User\\LifeCycleSetup\\CopyOverwrite"), "");
  EXPECT_EQ(config->Value("$User\\LifeCycleSetUp\\CopyOverwrite"), "YES");
  EXPECT_EQ(config->Value("$User\\Nothing"), "");
}

TYPED_TEST(VaultSessionContract, ADismissedDialogGivesNothing) {
  const auto list = this->Store()->NewObjects();
  list->Add(this->AddPart("A"));
  const auto dialog = this->Session()->GetService("VdGUISrv.VdCommonGUI")->AsVdCommonGUI()->Dialogs()->New(1);
  dialog->Input()->SetObjects(list);

  dialog->Window()->Show();

  EXPECT_EQ(dialog->Window()->Result(), 2);
  EXPECT_EQ(dialog->Output()->Objects()->Count(), 0);
}

TYPED_TEST(VaultSessionContract, UnknownDialogsAndForeignListsFail) {
  const auto pickers = this->Session()->GetService("VdGUISrv.VdCommonGUI")->AsVdCommonGUI()->Dialogs();

  EXPECT_THAT(FailureOf([&] { pickers->New(8); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { pickers->New(1)->Input()->SetObjects(this->AddPart("A")); }),
              FailsWith(failure::kTypeMismatch));
  EXPECT_THAT(FailureOf([&] { pickers->New(1)->Input()->SetObjects(nullptr); }), FailsWith(failure::kObjectNotSet));
}

TYPED_TEST(VaultSessionContract, AFailedLogOnOfAnotherLeavesTheOneWhoIsLoggedOn) {
  EXPECT_THAT(FailureOf([&] { this->Session()->UserLogin("eve", "x"); }), FailsWith(failure::kPermissionDenied));

  EXPECT_EQ(this->Session()->UserMetaInfo()->Login(), "admin");
}

}  // namespace quintara::test
