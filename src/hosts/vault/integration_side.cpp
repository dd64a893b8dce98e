#include "hosts/vault/integration_side.h"

#include <utility>

#include "hosts/vault/file_copies.h"
#include "hosts/vault/links.h"
#include "hosts/vault/object.h"
#include "hosts/vault/object_storage.h"
#include "hosts/vault/working_copies.h"

namespace quintara::vault {

IntegrationSide::IntegrationSide(std::shared_ptr<Core> core) : core_(std::move(core)) {}

std::optional<IntegrationVault::Identity> IntegrationSide::NotedObject(const std::string& path) {
  core_->TheGate().Pass("IntegrationVault.NotedObject", [&] { return path; });
  core_->RequireLoggedOn();
  const auto id = vault::NotedObject(*core_, path);
  if (!id) return std::nullopt;
  return Identity{FindRow(core_->Data(), *id)->classId, *id};
}

void IntegrationSide::InTransaction(const std::function<void()>& body) {
  core_->InTransaction(body);
}

void IntegrationSide::ReplaceChildren(const Ref<veldora::VdObject>& parent,
                                      const std::vector<Replacement>& replacements) {
  core_->TheGate().Pass("IntegrationVault.ReplaceChildren");
  core_->RequireLoggedOn();
  std::vector<ChildReplacement> own;
  for (const auto& one : replacements) own.push_back({DataOf(one.held).get(), DataOf(one.by).get()});
  vault::ReplaceChildren(*DataOf(parent), own);
}

bool IntegrationSide::StoreWorkingCopy(const Ref<veldora::VdObject>& object) {
  core_->TheGate().Pass("IntegrationVault.StoreWorkingCopy");
  core_->RequireLoggedOn();
  bool changed = false;
  auto stored = *DataOf(object);
  core_->InTransaction([&] {
    changed = vault::StoreWorkingCopy(stored);
    if (changed) RefreshKept(stored);
  });
  DataOf(object)->Become(std::move(stored));
  return changed;
}

void IntegrationSide::CopyStructureToWork(const Ref<veldora::VdObject>& object) {
  core_->TheGate().Pass("IntegrationVault.CopyStructureToWork");
  core_->RequireLoggedOn();
  CopyStructure(*DataOf(object));
}

std::vector<std::string> IntegrationSide::FilesToReplace(const Ref<veldora::VdObject>& object) {
  core_->TheGate().Pass("IntegrationVault.FilesToReplace");
  core_->RequireLoggedOn();
  return vault::FilesToReplace(*DataOf(object));
}

std::string IntegrationSide::ConfigInForce(const std::string& path) {
  core_->TheGate().Pass("IntegrationVault.ConfigInForce", [&] { return path; });
  core_->RequireLoggedOn();
  if (core_->Options().zorvaStartedFirst) return core_->ConfigValue(path);
  const auto value = core_->ConfigAtLogOn().find(path);
  return value == core_->ConfigAtLogOn().end() ? std::string() : value->second;
}

std::string IntegrationSide::WorkDirectory() {
  return core_->Options().workDirectory;
}

}  // namespace quintara::vault
