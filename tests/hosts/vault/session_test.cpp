#include "hosts/vault/database.h"
#include "hosts/vault/vault_fixture.h"

namespace quintara::test {
namespace {

template <class Maker>
class VaultSession : public VaultTest<Maker> {};
TYPED_TEST_SUITE(VaultSession, Databases, DatabaseName);

TYPED_TEST(VaultSession, AWrongPasswordOrLoginOpensNothing) {
  auto options = this->Options();
  options.password = "wrong";
  EXPECT_THAT(FailureOf([&] { this->OpenAnother(options); }), FailsWith(failure::kPermissionDenied));

  options.login = "nobody";
  EXPECT_THAT(FailureOf([&] { this->OpenAnother(options); }), FailsWith(failure::kPermissionDenied));
}

TYPED_TEST(VaultSession, TheApplicationNameTellsWhatWasStartedFirst) {
  EXPECT_EQ(this->Session()->ApplicationName(), "Veldora");

  auto options = this->Options();
  options.zorvaStartedFirst = true;
  this->Open(options);
  EXPECT_EQ(this->Session()->ApplicationName(), "ZORVA");
}

TYPED_TEST(VaultSession, AConfigurationValueIsThereForEveryProcessAtOnce) {
  const auto config = this->Session()->Config();
  const auto other = this->OpenAnother(this->Options());

  config->SetValue("$User\\LIFE CYCLE\\X", "TRUE");
  config->SetValue("$User\\LIFE CYCLE\\X", "FALSE");

  EXPECT_EQ(other->Application()->Engine()->Sessions(0)->Config()->Value("$User\\LIFE CYCLE\\X"), "FALSE");
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

TYPED_TEST(VaultSession, TheConfigurationOfAllIsInForceFromTheLogOnToo) {
  this->Session()->Config()->SetValue("Site\\X", "YES");
  EXPECT_EQ(this->vault->Integration().ConfigInForce("Site\\X"), "");

  this->Session()->UserLogin("admin", "secret");

  EXPECT_EQ(this->vault->Integration().ConfigInForce("Site\\X"), "YES");
}

TYPED_TEST(VaultSession, PasswordsAreKeptAsSaltedDigests) {
  this->vault->AddUser("eve", "open sesame", false);
  this->vault->AddUser("bob", "open sesame", false);

  EXPECT_THAT(this->Dump(), testing::Not(testing::HasSubstr("open sesame")));
  vault::Database database(this->vault->Folder().connection);
  const auto rows = database.Query("tt", "SELECT salt, password_hash FROM vd_user WHERE login IN ('eve', 'bob')");
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_NE(vault::TextOf(rows[0][0]), vault::TextOf(rows[1][0]));
  EXPECT_NE(vault::TextOf(rows[0][1]), vault::TextOf(rows[1][1]));
  EXPECT_THAT(vault::TextOf(rows[0][1]), testing::StartsWith("pbkdf2-sha256:"));
}

TYPED_TEST(VaultSession, NothingOfTheUsersIsChangedBetweenLogOffAndLogOn) {
  this->Session()->UserLogoff();

  EXPECT_THAT(FailureOf([&] { this->vault->AddUser("eve", "", true); }), FailsWith(failure::kPermissionDenied));
  EXPECT_THAT(FailureOf([&] { this->vault->Check(); }), FailsWith(failure::kPermissionDenied));
}

}  // namespace
}  // namespace quintara::test
