#include "hosts/vault/embedded_vault.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "hosts/vault/core.h"
#include "hosts/vault/file_names.h"
#include "hosts/vault/integration_side.h"
#include "hosts/vault/life_cycle.h"
#include "hosts/vault/links.h"
#include "hosts/vault/object.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/query.h"
#include "hosts/vault/schema_setup.h"
#include "hosts/vault/service_objects.h"
#include "hosts/vault/session_objects.h"
#include "hosts/vault/translator.h"
#include "hosts/vault/users.h"

namespace quintara {
namespace {

std::int32_t KnownUser(vault::Core& core, const std::string& login) {
  if (const auto id = vault::UserIdOf(core.Data(), login)) return *id;
  throw Failure(failure::kInvalidCall, "The vault has no user \"" + login + "\"");
}

std::int32_t OperationOrAll(const vault::Core& core, const std::string& name) {
  return name.empty() ? 0 : core.TheSchema().OperationByName(name);
}

std::int16_t ClassOrAll(const vault::Core& core, const std::string& name) {
  return name.empty() ? std::int16_t{0} : core.TheSchema().ClassByName(name).id;
}

}  // namespace

EmbeddedVault::EmbeddedVault(const std::string& folder, const Options& options) {
  if (!options.files) throw Failure(failure::kObjectNotSet, "The vault was opened without an access to files");
  core_ = std::make_shared<vault::Core>(options, ReadVaultFolder(folder, *options.files));
  core_->LogOn(options.login, options.password);
  application_ = MakeRef<vault::ApplicationObject>(core_);
  integration_ = std::make_unique<vault::IntegrationSide>(core_);
}

EmbeddedVault::~EmbeddedVault() = default;

Ref<veldora::VdApplication> EmbeddedVault::Application() {
  return application_;
}

Ref<veldora::VdClientContext> EmbeddedVault::NewClientContext() {
  return MakeRef<vault::ClientContextObject>(core_);
}

Ref<veldora::VdTranslator> EmbeddedVault::NewTranslator() {
  return MakeRef<vault::TranslatorObject>(core_);
}

IntegrationVault& EmbeddedVault::Integration() {
  return *integration_;
}

const VaultFolder& EmbeddedVault::Folder() const {
  return core_->Folder();
}

void EmbeddedVault::InTransaction(const std::function<void()>& body) {
  core_->InTransaction(body);
}

void EmbeddedVault::AddUser(const std::string& login, const std::string& password, bool allRights) {
  core_->TheGate().Pass("EmbeddedVault.AddUser", [&] { return login + ", ***"; });
  core_->RequireAdministrator();
  core_->InTransaction([&] {
    const auto id = vault::AddUser(core_->Data(), login, password);
    if (allRights) vault::Grant(core_->Data(), id, 0, 0);
  });
}

void EmbeddedVault::Grant(const std::string& login, const std::string& operation, const std::string& className) {
  core_->TheGate().Pass("EmbeddedVault.Grant", [&] { return login + ", " + operation + ", " + className; });
  core_->RequireAdministrator();
  core_->InTransaction([&] {
    vault::Grant(core_->Data(), KnownUser(*core_, login), OperationOrAll(*core_, operation),
                 ClassOrAll(*core_, className));
  });
}

void EmbeddedVault::Revoke(const std::string& login, const std::string& operation, const std::string& className) {
  core_->TheGate().Pass("EmbeddedVault.Revoke", [&] { return login + ", " + operation + ", " + className; });
  core_->RequireAdministrator();
  core_->InTransaction([&] {
    vault::Revoke(core_->Data(), KnownUser(*core_, login), OperationOrAll(*core_, operation),
                  ClassOrAll(*core_, className));
  });
}

Ref<veldora::VdObject> EmbeddedVault::AddObject(const std::string& className, const AttributeTexts& attributes,
                                                const std::string& path) {
  core_->TheGate().Pass("EmbeddedVault.AddObject", [&] { return className + ", " + path; });
  core_->RequireLoggedOn();
  vault::ObjectData object(core_, core_->TheSchema().ClassByName(className), 0);
  core_->InTransaction([&] {
    for (const auto& [name, text] : attributes) {
      if (path.empty() || name != vault::attribute::kFileName) object.SetText(name, text);
    }
    vault::InsertNow(object);
    object.ForgetChanges();
    if (path.empty()) return;
    const auto name = attributes.find(vault::attribute::kFileName);
    vault::SetValues(
        object, {{vault::attribute::kFileName, name == attributes.end() ? vault::FileNameOf(path) : name->second}});
    vault::TakeContent(object, path);
    object.Read();
  });
  return vault::ObjectOf(std::move(object));
}

void EmbeddedVault::StoreFile(const Ref<veldora::VdObject>& object, const std::string& path) {
  core_->TheGate().Pass("EmbeddedVault.StoreFile", [&] { return path; });
  core_->RequireLoggedOn();
  auto stored = *vault::DataOf(object);
  core_->InTransaction([&] {
    vault::RequireChangeable(stored);
    vault::TakeContent(stored, path);
    vault::RefreshKept(stored);
  });
  vault::DataOf(object)->Become(std::move(stored));
}

void EmbeddedVault::SetStructure(const Ref<veldora::VdObject>& parent, const std::vector<Component>& components) {
  core_->TheGate().Pass("EmbeddedVault.SetStructure");
  core_->RequireLoggedOn();
  std::vector<vault::Link> links;
  for (const auto& component : components) {
    const auto& data = vault::DataOf(component.object);
    links.push_back({0, vault::RowOf(*data).classId, data->Id(), component.quantity});
  }
  vault::SetChildren(*vault::DataOf(parent), links);
}

std::vector<EmbeddedVault::Component> EmbeddedVault::Structure(const Ref<veldora::VdObject>& parent) {
  core_->TheGate().Pass("EmbeddedVault.Structure");
  core_->RequireLoggedOn();
  std::vector<Component> components;
  for (const auto& link : vault::ChildrenOf(*vault::DataOf(parent))) {
    const auto& info = core_->TheSchema().ClassById(link.otherClass);
    components.push_back({vault::ObjectOf(vault::ObjectData(core_, info, link.other)), link.quantity});
  }
  return components;
}

Ref<veldora::VdObject> EmbeddedVault::NewRevision(const Ref<veldora::VdObject>& object) {
  core_->TheGate().Pass("EmbeddedVault.NewRevision");
  core_->RequireLoggedOn();
  return vault::ObjectOf(vault::NewRelease(*vault::DataOf(object), true));
}

std::string EmbeddedVault::FileOf(const Ref<veldora::VdObject>& object) {
  core_->TheGate().Pass("EmbeddedVault.FileOf");
  core_->RequireLoggedOn();
  const auto& data = *vault::DataOf(object);
  core_->RequireRight(vault::operation::kCopyFile, data.Info());
  const auto deposit = vault::DepositOf(data);
  return deposit ? core_->Store().Read(deposit->file) : std::string();
}

std::string EmbeddedVault::LightFileOf(const Ref<veldora::VdObject>& object) {
  core_->TheGate().Pass("EmbeddedVault.LightFileOf");
  core_->RequireLoggedOn();
  const auto& data = *vault::DataOf(object);
  core_->RequireRight(vault::operation::kCopyFile, data.Info());
  const auto deposit = vault::DepositOf(data);
  return deposit && deposit->light ? core_->Store().Read(*deposit->light) : std::string();
}

int EmbeddedVault::FileTypeId(const std::string& name) {
  core_->TheGate().Pass("EmbeddedVault.FileTypeId", [&] { return name; });
  const auto& info = core_->TheSchema().ClassByName("FILE_TYPE");
  const auto id = vault::IntegerOf(core_->Data().QueryOne(
      vault::ColumnType::kInteger, "SELECT \"OBJECT_ID\" FROM " + vault::Quoted(info.table) + " WHERE \"TDM_NAME\" = ?",
      {name}));
  if (id == 0) throw Failure(failure::kInvalidCall, "The vault has no file type \"" + name + "\"");
  return static_cast<int>(id);
}

std::int64_t EmbeddedVault::StatementCount() const {
  return core_->Data().StatementCount();
}

std::vector<std::string> EmbeddedVault::ExplainQuery(const Ref<veldora::VdQueryDefinition>& definition) {
  core_->TheGate().Pass("EmbeddedVault.ExplainQuery");
  core_->RequireLoggedOn();
  return vault::ExplainQuery(*core_, vault::PlanOf(definition));
}

}  // namespace quintara
