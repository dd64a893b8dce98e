#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class VaultSession : public VaultTest<Maker> {};
TYPED_TEST_SUITE(VaultSession, Databases, DatabaseName);

TYPED_TEST(VaultSession, TheRunningClientHasOneSessionAndOneDatabase) {
  const auto engine = this->vault->Application()->Engine();

  EXPECT_EQ(engine->Sessions(0), engine->Sessions(0));
  EXPECT_EQ(engine->Databases(0)->Alias(), "quintara");
  EXPECT_THAT(FailureOf([&] { engine->Sessions(1); }), FailsWith(failure::kSubscriptOutOfRange));
  EXPECT_THAT(FailureOf([&] { engine->Databases(-1); }), FailsWith(failure::kSubscriptOutOfRange));
}

TYPED_TEST(VaultSession, OpeningTheConnectionOfAJoinedSessionDoesNothing) {
  const auto database = this->vault->Application()->Engine()->Databases(0);

  this->Session()->OpenDatabaseConnection(database->ConnectionString(), database->ConnectionPassword(), true);

  EXPECT_EQ(this->Session()->UserMetaInfo()->Login(), "admin");
}

TYPED_TEST(VaultSession, TheUserIsKnown) {
  const auto user = this->Session()->UserMetaInfo();

  EXPECT_EQ(user->Login(), "admin");
  EXPECT_EQ(user->Password(), "secret");
  EXPECT_GT(user->UserId(), 0);
}

TYPED_TEST(VaultSession, AWrongPasswordOrLoginOpensNothing) {
  auto options = this->Options();
  options.password = "wrong";
  EXPECT_THAT(FailureOf([&] { this->OpenAnother(options); }), FailsWith(failure::kPermissionDenied));

  options.login = "nobody";
  EXPECT_THAT(FailureOf([&] { this->OpenAnother(options); }), FailsWith(failure::kPermissionDenied));
}

TYPED_TEST(VaultSession, ObjectsFailBetweenLogOffAndLogOn) {
  const auto session = this->Session();
  const auto part = this->AddPart("BOLT");
  const auto store = session->ObjectStore();
  const auto config = session->Config();
  session->UserLogoff();

  EXPECT_THAT(FailureOf([&] { part->Retrieve(); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { store->NewObjects(); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { config->Value("x"); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { session->MetaInfo(); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->vault->AddObject("ZORVA Part", {}, {}); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { session->UserLogoff(); }), FailsWith(failure::kPermissionDenied));

  session->UserLogin("admin", "secret");
  part->Retrieve();
  EXPECT_EQ(part->Record()->ValueAsString("NM_CN_PART_NUMBER"), "BOLT");
  EXPECT_EQ(store->NewObjects()->Count(), 0);
}

TYPED_TEST(VaultSession, AFailedLogOnLeavesTheSessionLoggedOff) {
  this->Session()->UserLogoff();

  EXPECT_THAT(FailureOf([&] { this->Session()->UserLogin("admin", "wrong"); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->Session()->ObjectStore(); }), FailsWith(failure::kPermissionDenied));
}

TYPED_TEST(VaultSession, TheApplicationNameTellsWhatWasStartedFirst) {
  EXPECT_EQ(this->Session()->ApplicationName(), "Veldora");

  auto options = this->Options();
  options.zorvaStartedFirst = true;
  this->Open(options);
  EXPECT_EQ(this->Session()->ApplicationName(), "ZORVA");
}

TYPED_TEST(VaultSession, ServicesAreFoundWithoutRegardToCase) {
  EXPECT_TRUE(this->Session()->GetService("Vdutil.VdSessionUtil")->AsVdSessionUtil());
  EXPECT_TRUE(this->Session()->GetService("VDGUISRV.VDCOMMONGUI")->AsVdCommonGUI());
  EXPECT_TRUE(this->Session()->GetService("VdGUISrv.VdGUIServices")->AsVdGUIServices());
  EXPECT_FALSE(this->Session()->GetService("VdUtil.Nonsense"));
}

TYPED_TEST(VaultSession, TheWorkDirectoryIsFoundThroughTheContextService) {
  const auto service =
      this->Session()->GetService("VeldoraClientContextService.VdClientContextService")->AsVdClientContextService();
  const auto paths = service->Context()->Paths();

  EXPECT_EQ(paths->WorkDirectoryOf(paths->CurrentKey()), this->folder.Path("work"));
  EXPECT_THAT(FailureOf([&] { paths->WorkDirectoryOf("nonsense"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultSession, AConfigurationValueIsThereForEveryProcessAtOnce) {
  const auto config = this->Session()->Config();
  const auto other = this->OpenAnother(this->Options());

  config->SetValue("$User\\LIFE CYCLE\\X", "TRUE");
  config->SetValue("$User\\LIFE CYCLE\\X", "FALSE");

  EXPECT_EQ(other->Application()->Engine()->Sessions(0)->Config()->Value("$User\\LIFE CYCLE\\X"), "FALSE");
}

TYPED_TEST(VaultSession, ConfigurationPathsCompareExactly) {
  const auto config = this->Session()->Config();
  config->SetValue("$User\\LifeCycleSetUp\\CopyOverwrite", "YES");

  EXPECT_EQ(config->Value("$User\\LifeCycleSetup\\CopyOverwrite"), "");
  EXPECT_EQ(config->Value("$User\\LifeCycleSetUp\\CopyOverwrite"), "YES");
  EXPECT_EQ(config->Value("$User\\Nothing"), "");
}

TYPED_TEST(VaultSession, AUsersConfigurationIsTheirOwn) {
  this->Session()->Config()->SetValue("$User\\X", "admin's");
  this->Session()->Config()->SetValue("Site\\X", "everybody's");
  this->vault->AddUser("eve", "", true);
  auto options = this->Options();
  options.login = "eve";
  options.password = "";
  this->Open(options);

  EXPECT_EQ(this->Session()->Config()->Value("$User\\X"), "");
  EXPECT_EQ(this->Session()->Config()->Value("Site\\X"), "everybody's");
}

TYPED_TEST(VaultSession, TheConfigurationInForceIsThatOfTheLastLogOn) {
  const std::string path = "$User\\LifeCycleSetUp\\CopyOverwrite";
  this->Session()->Config()->SetValue(path, "YES");
  EXPECT_EQ(this->vault->Integration().ConfigInForce(path), "");

  this->Session()->UserLogoff();
  this->Session()->UserLogin("admin", "secret");

  EXPECT_EQ(this->vault->Integration().ConfigInForce(path), "YES");
}

TYPED_TEST(VaultSession, WhereTheCadHostWasFirstTheConfigurationIsInForceAtOnce) {
  auto options = this->Options();
  options.zorvaStartedFirst = true;
  this->Open(options);

  this->Session()->Config()->SetValue("$User\\X", "YES");

  EXPECT_EQ(this->vault->Integration().ConfigInForce("$User\\X"), "YES");
}

TYPED_TEST(VaultSession, AuthorizationsKnowUserOperationAndClass) {
  this->vault->AddUser("eve", "", false);
  this->vault->Grant("eve", "VIEW OBJECT", "ZORVA Part");
  const auto eve = this->OpenAnother([&] {
    auto options = this->Options();
    options.login = "eve";
    options.password = "";
    return options;
  }());
  const auto id = eve->Application()->Engine()->Sessions(0)->UserMetaInfo()->UserId();
  const auto view = this->Session()->MetaInfo()->Operations(0)->Find("VIEW OBJECT")->OperationId();
  const auto rights = this->Session()->Authorizations();

  EXPECT_TRUE(rights->IsAllowed(id, view, this->AddPart("BOLT")));
  EXPECT_FALSE(rights->IsAllowed(id, view, this->AddProduct("CAR")));
  EXPECT_FALSE(rights->IsAllowed(id, this->Operation("CHECKIN")->OperationId(), this->AddPart("NUT")));
  EXPECT_TRUE(rights->IsAllowed(this->Session()->UserMetaInfo()->UserId(), view, this->AddProduct("BIKE")));
}

TYPED_TEST(VaultSession, UsersAreNamedOnceAndRightsKnowTheirNames) {
  EXPECT_THAT(FailureOf([&] { this->vault->AddUser("admin", "", false); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->AddUser("", "", false); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->Grant("nobody", "", ""); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { this->vault->Grant("admin", "NONSENSE", ""); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultSession, APickDialogGivesThePickedObject) {
  const auto list = this->Store()->NewObjects();
  list->Add(this->AddPart("A"));
  list->Add(this->AddPart("B"));
  const auto dialog = this->Session()->GetService("VdGUISrv.VdCommonGUI")->AsVdCommonGUI()->Dialogs()->New(1);
  dialog->Input()->SetObjects(this->Store()->ObjectsFromRecList(list->Records(), 0));
  this->dialogAnswer = 1;

  dialog->Window()->SetWindowOptionB(0);
  dialog->Window()->Show();

  EXPECT_EQ(dialog->Window()->Result(), 1);
  EXPECT_EQ(this->PartNumbers(dialog->Output()->Objects()), std::vector<std::string>{"B"});
  ASSERT_EQ(this->dialogs.size(), 1U);
  EXPECT_EQ(this->dialogs[0].kind, 1);
  EXPECT_EQ(this->dialogs[0].objects.size(), 2U);
}

TYPED_TEST(VaultSession, ADismissedDialogGivesNothing) {
  const auto list = this->Store()->NewObjects();
  list->Add(this->AddPart("A"));
  const auto dialog = this->Session()->GetService("VdGUISrv.VdCommonGUI")->AsVdCommonGUI()->Dialogs()->New(1);
  dialog->Input()->SetObjects(list);

  dialog->Window()->Show();

  EXPECT_EQ(dialog->Window()->Result(), 2);
  EXPECT_EQ(dialog->Output()->Objects()->Count(), 0);
}

TYPED_TEST(VaultSession, AnObjectIsShownWithATitle) {
  const auto list = this->Store()->NewObjects();
  list->Add(this->AddPart("A"));
  const auto dialog = this->Session()->GetService("VdGUISrv.VdGUIServices")->AsVdGUIServices()->New(8);
  dialog->Window()->SetTitle("Information");
  dialog->Window()->SetWindowOptionA(1);
  dialog->Input()->SetObjects(list);

  dialog->Window()->Show();

  ASSERT_EQ(this->dialogs.size(), 1U);
  EXPECT_EQ(this->dialogs[0].title, "Information");
  EXPECT_EQ(this->dialogs[0].kind, 8);
}

TYPED_TEST(VaultSession, UnknownDialogsAndForeignListsFail) {
  const auto pickers = this->Session()->GetService("VdGUISrv.VdCommonGUI")->AsVdCommonGUI()->Dialogs();

  EXPECT_THAT(FailureOf([&] { pickers->New(8); }), FailsWith(failure::kInvalidCall));
  EXPECT_THAT(FailureOf([&] { pickers->New(1)->Input()->SetObjects(this->AddPart("A")); }),
              FailsWith(failure::kTypeMismatch));
  EXPECT_THAT(FailureOf([&] { pickers->New(1)->Input()->SetObjects(nullptr); }), FailsWith(failure::kObjectNotSet));
}

TYPED_TEST(VaultSession, TheConfigurationProviderAnswersUnderTheVaultsUri) {
  this->Session()->Config()->SetValue("Site\\X", "7");
  const auto session = this->Session();

  const auto provider = this->vault->NewClientContext()->Open(
      session->ClientName(), std::to_string(session->Database()->DatabaseType()), session->ApplicationName(),
      "veldora://" + session->Database()->Alias(), "");

  EXPECT_EQ(provider->Value("veldora://quintara", "Site\\X").ToText(), "7");
  EXPECT_EQ(provider->Value("veldora://quintara", "Site\\Y").ToText(), "");
  EXPECT_THAT(FailureOf([&] { provider->Value("veldora://other", "Site\\X"); }), FailsWith(failure::kInvalidCall));
}

TYPED_TEST(VaultSession, SecretsAreNeverRecorded) {
  this->gate->StartRecording();
  this->Session()->OpenDatabaseConnection("connection-secret", "secret", true);
  this->Session()->UserMetaInfo()->Password();
  this->Session()->UserLogin("admin", "secret");
  this->Session()->Database()->ConnectionPassword();
  this->vault->AddUser("eve", "secret", false);
  this->gate->StopRecording();

  for (const auto& line : this->gate->Record()) EXPECT_THAT(line, testing::Not(testing::HasSubstr("secret")));
  EXPECT_THAT(this->gate->Record(), testing::Contains("VdSession.UserLogin(***)"));
  EXPECT_THAT(this->gate->Record(), testing::Contains("VdUserInfo.Password(***)"));
}

TYPED_TEST(VaultSession, EveryOperationIsRecordedInOrder) {
  const auto session = this->Session();
  this->gate->StartRecording();

  session->MetaInfo()->ClassByName("ZORVA Part")->ClassId();

  EXPECT_EQ(this->gate->Record(),
            (std::vector<std::string>{"VdSession.MetaInfo", "VdMetaInfo.ClassByName(ZORVA Part)", "VdClass.ClassId"}));
}

}  // namespace
}  // namespace quintara::test
