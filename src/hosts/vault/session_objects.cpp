#include "hosts/vault/session_objects.h"

#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "hosts/vault/connection_text.h"
#include "hosts/vault/dialogs.h"
#include "hosts/vault/meta_objects.h"
#include "hosts/vault/object.h"
#include "hosts/vault/object_store.h"
#include "hosts/vault/rec_list.h"
#include "hosts/vault/service_objects.h"
#include "hosts/vault/users.h"

namespace quintara::vault {
namespace {

constexpr int kSqlite = 1;
constexpr int kPostgres = 2;

std::string Hidden() {
  return "***";
}

void RequireFirst(int index, const char* what) {
  if (index != 0) {
    throw Failure(failure::kSubscriptOutOfRange,
                  "Subscript out of range: the vault has one " + std::string(what) + ", index 0");
  }
}

}  // namespace

std::string AliasOf(const Core& core) {
  const auto folder = ToPath(core.Folder().folder);
  return FromPath(folder.has_filename() ? folder.stem() : folder.parent_path().stem());
}

std::string ApplicationNameOf(const Core& core) {
  return core.Options().zorvaStartedFirst ? "ZORVA" : "Veldora";
}

std::string DatabaseObject::ConnectionString() {
  PassLoggedOff<"ConnectionString">();
  return WithoutPassword(core_->Folder().connection);
}

std::string DatabaseObject::ConnectionPassword() {
  PassLoggedOff<"ConnectionPassword">(Hidden);
  return PasswordIn(core_->Folder().connection);
}

std::string DatabaseObject::Alias() {
  PassLoggedOff<"Alias">();
  return AliasOf(*core_);
}

int DatabaseObject::DatabaseType() {
  PassLoggedOff<"DatabaseType">();
  return core_->Data().IsPostgres() ? kPostgres : kSqlite;
}

std::string UserInfoObject::Login() {
  Pass<"Login">();
  return core_->Login();
}

std::string UserInfoObject::Password() {
  Pass<"Password">(Hidden);
  return core_->Password();
}

std::int32_t UserInfoObject::UserId() {
  Pass<"UserId">();
  return core_->UserId();
}

std::string ConfigObject::BaseDirectory() {
  Pass<"BaseDirectory">();
  return core_->Folder().base;
}

std::string ConfigObject::Value(const std::string& path) {
  Pass<"Value">([&] { return path; });
  return core_->ConfigValue(path);
}

void ConfigObject::SetValue(const std::string& path, const std::string& text) {
  Pass<"SetValue">([&] { return path + ", " + text; });
  core_->SetConfigValue(path, text);
}

bool AuthorizationsObject::IsAllowed(std::int32_t userId, std::int32_t operationId,
                                     const Ref<veldora::VdObject>& object) {
  Pass<"IsAllowed">([&] { return std::to_string(userId) + ", " + std::to_string(operationId); });
  return vault::IsAllowed(core_->Data(), userId, operationId, DataOf(object)->Info().id);
}

void SessionObject::OpenDatabaseConnection(const std::string& /*connection*/, const std::string& /*password*/,
                                           bool /*join*/) {
  // The session of a running vault is joined from its start.
  PassLoggedOff<"OpenDatabaseConnection">(Hidden);
}

Ref<veldora::VdUserInfo> SessionObject::UserMetaInfo() {
  Pass<"UserMetaInfo">();
  return MakeRef<UserInfoObject>(core_);
}

void SessionObject::UserLogin(const std::string& login, const std::string& password) {
  PassLoggedOff<"UserLogin">(Hidden);
  core_->LogOn(login, password);
}

void SessionObject::UserLogoff() {
  Pass<"UserLogoff">();
  core_->LogOff();
}

Ref<veldora::VdDatabase> SessionObject::Database() {
  PassLoggedOff<"Database">();
  return MakeRef<DatabaseObject>(core_);
}

Ref<veldora::VdMetaInfo> SessionObject::MetaInfo() {
  Pass<"MetaInfo">();
  return MakeRef<MetaInfoObject>(core_);
}

Ref<veldora::VdConfig> SessionObject::Config() {
  Pass<"Config">();
  return MakeRef<ConfigObject>(core_);
}

Ref<veldora::VdObjectStore> SessionObject::ObjectStore() {
  Pass<"ObjectStore">();
  return MakeRef<ObjectStoreObject>(core_);
}

std::string SessionObject::Language() {
  Pass<"Language">();
  return core_->Options().language;
}

Ref<AnyObject> SessionObject::GetService(const std::string& programName) {
  Pass<"GetService">([&] { return programName; });
  const auto name = Capitals(programName);
  if (name == "VDUTIL.VDSESSIONUTIL") return MakeRef<SessionUtilObject>(core_);
  if (name == "VDGUISRV.VDCOMMONGUI") return MakeRef<CommonGuiObject>(core_);
  if (name == "VDGUISRV.VDGUISERVICES") return MakeRef<GuiServicesObject>(core_);
  if (name == "VELDORACLIENTCONTEXTSERVICE.VDCLIENTCONTEXTSERVICE") return MakeRef<ClientContextServiceObject>(core_);
  return nullptr;
}

Ref<veldora::VdAuthorizations> SessionObject::Authorizations() {
  Pass<"Authorizations">();
  return MakeRef<AuthorizationsObject>(core_);
}

std::string SessionObject::ApplicationName() {
  PassLoggedOff<"ApplicationName">();
  return ApplicationNameOf(*core_);
}

std::string SessionObject::ClientName() {
  PassLoggedOff<"ClientName">();
  return kClientName;
}

Ref<veldora::VdSession> SessionObject::AsVdSession() {
  return Ref<veldora::VdSession>(shared_from_this());
}

EngineObject::EngineObject(std::shared_ptr<Core> core)
    : Served(std::move(core)), session_(MakeRef<SessionObject>(core_)) {}

Ref<veldora::VdSession> EngineObject::Sessions(int index) {
  PassLoggedOff<"Sessions">([&] { return std::to_string(index); });
  RequireFirst(index, "session");
  return session_;
}

Ref<veldora::VdDatabase> EngineObject::Databases(int index) {
  PassLoggedOff<"Databases">([&] { return std::to_string(index); });
  RequireFirst(index, "database");
  return MakeRef<DatabaseObject>(core_);
}

ApplicationObject::ApplicationObject(std::shared_ptr<Core> core)
    : Served(std::move(core)), engine_(MakeRef<EngineObject>(core_)) {}

Ref<veldora::VdEngine> ApplicationObject::Engine() {
  PassLoggedOff<"Engine">();
  return engine_;
}

Ref<veldora::VdRecList> ApplicationObject::NewRecList() {
  PassLoggedOff<"NewRecList">();
  return MakeRef<RecListObject>(core_, std::make_shared<Table>());
}

Ref<veldora::VdApplication> ApplicationObject::AsVdApplication() {
  return Ref<veldora::VdApplication>(shared_from_this());
}

}  // namespace quintara::vault
